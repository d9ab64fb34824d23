#include "i18n/LangDoc.h"

#include "core/Text.h"

namespace mw {

bool LangDoc::LoadFile(const std::filesystem::path& file)
{
    if (doc_.load_file(file.c_str()))
        return true;
    doc_.reset();
    return false;
}

bool LangDoc::LoadString(std::string_view xml)
{
    if (doc_.load_buffer(xml.data(), xml.size()))
        return true;
    doc_.reset();
    return false;
}

void LangDoc::Clear() { doc_.reset(); }

bool LangDoc::Empty() const { return !doc_.document_element(); }

pugi::xml_node LangDoc::Section(std::string_view name) const
{
    for (pugi::xml_node child : doc_.document_element().children()) {
        if (child.type() == pugi::node_element && std::string_view(child.name()) == name)
            return child;
    }
    return {};
}

std::string LangDoc::LoadResText(std::string_view form, int number, const std::string& defaultText) const
{
    const pugi::xml_node module = Section(std::string(form) + "_Module");
    const pugi::xml_attribute attr = module.attribute(("s" + std::to_string(number)).c_str());
    return attr ? attr.value() : defaultText;
}

std::optional<std::string> LangDoc::DesignText(std::string_view form, std::string_view attribute) const
{
    const pugi::xml_node design = Section(std::string(form) + "_Design");
    const pugi::xml_attribute attr = design.attribute(std::string(attribute).c_str());
    if (!attr)
        return std::nullopt;
    return std::string(attr.value());
}

std::optional<std::string> LangDoc::PrivateAttribute(std::string_view name) const
{
    const pugi::xml_attribute attr = Section("Private").attribute(std::string(name).c_str());
    if (!attr)
        return std::nullopt;
    return std::string(attr.value());
}

} // namespace mw
