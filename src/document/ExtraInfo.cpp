#include "document/ExtraInfo.h"

#include <sstream>

namespace mw {

bool ParseExtraInfo(const std::string& text, pugi::xml_document& doc)
{
    // pugixml is lenient with text at document level; a well-formed document has none.
    const auto result = doc.load_buffer(text.data(), text.size(), pugi::parse_default | pugi::parse_ws_pcdata);
    if (!result)
        return false;
    int elements = 0;
    for (pugi::xml_node child : doc.children()) {
        switch (child.type()) {
        case pugi::node_element: ++elements; break;
        case pugi::node_pcdata:
            if (std::string(child.value()).find_first_not_of(" \t\r\n") != std::string::npos)
                return false;
            break;
        case pugi::node_cdata: return false;
        default: break;
        }
    }
    return elements == 1;
}

bool IsExtraInfo(const std::string& text)
{
    pugi::xml_document doc;
    return ParseExtraInfo(text, doc);
}

std::string ExtraInfoText(const pugi::xml_document& doc)
{
    std::ostringstream out;
    doc.save(out, "", pugi::format_raw | pugi::format_no_declaration | pugi::format_attribute_single_quote);
    return out.str();
}

} // namespace mw
