#include "langfile/LangFileWriter.h"

#include "core/AtomicFile.h"
#include "langfile/DesignAttributes.h"

#include <pugixml.hpp>

#include <set>
#include <sstream>

namespace mw {

std::string LangFileText(const LangFileContents& contents, std::vector<std::string>& errors)
{
    pugi::xml_document doc;
    pugi::xml_node root = doc.append_child(contents.RootName.c_str());
    pugi::xml_node privateNode = root.append_child("Private");
    privateNode.append_attribute("Creator").set_value(contents.Creator.c_str());
    privateNode.append_attribute("ProgramVersion").set_value(contents.ProgramVersion.c_str());

    std::map<std::string, const FormDesign*> designs;
    for (const FormDesign& design : contents.Designs)
        designs[design.FormName] = &design;
    std::set<std::string> forms;
    for (const auto& [form, design] : designs)
        forms.insert(form);
    for (const auto& [form, texts] : contents.Modules)
        forms.insert(form);

    for (const std::string& form : forms) {
        if (const auto design = designs.find(form); design != designs.end()) {
            pugi::xml_node section = root.append_child((form + "_Design").c_str());
            for (const DesignAttribute& a : DesignAttributes(*design->second, errors))
                section.append_attribute(a.Name.c_str()).set_value(a.Value.c_str());
        }
        if (const auto module = contents.Modules.find(form); module != contents.Modules.end()) {
            pugi::xml_node section = root.append_child((form + "_Module").c_str());
            for (const auto& [number, text] : module->second)
                section.append_attribute(("s" + std::to_string(number)).c_str()).set_value(text.c_str());
        }
    }
    std::ostringstream out;
    // One attribute a line, so that a translator can work down the file.
    doc.save(out, "  ", pugi::format_default | pugi::format_indent_attributes, pugi::encoding_utf8);
    return out.str();
}

bool WriteLangFile(const std::string& path, const LangFileContents& contents, std::vector<std::string>& errors)
{
    const std::string text = LangFileText(contents, errors);
    if (!errors.empty())
        return false;
    std::string error;
    if (WriteFileAtomically(path, text, error))
        return true;
    errors.push_back(path + ": " + error);
    return false;
}

} // namespace mw
