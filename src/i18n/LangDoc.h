#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include <pugixml.hpp>

namespace mw {

// The loaded language file. Every lookup falls back to the caller's default: a missing file,
// section or attribute is never an error.
class LangDoc {
public:
    // Replaces the loaded document; false (and an empty document) when the file does not parse.
    bool LoadFile(const std::filesystem::path& file);
    bool LoadString(std::string_view xml);
    void Clear();
    bool Empty() const;

    // Text number `number` of a window, from "<form>_Module" attribute "s<number>".
    std::string LoadResText(std::string_view form, int number, const std::string& defaultText) const;
    // An attribute of "<form>_Design", when the file has it (an empty value counts).
    std::optional<std::string> DesignText(std::string_view form, std::string_view attribute) const;
    // An attribute of the root's "Private" element.
    std::optional<std::string> PrivateAttribute(std::string_view name) const;

private:
    pugi::xml_node Section(std::string_view name) const;
    pugi::xml_document doc_;
};

// The numbered texts of one window, so that a routine can say Text(26, "Error ...").
class FormTexts {
public:
    FormTexts(const LangDoc& lang, std::string form) : lang_(lang), form_(std::move(form)) {}
    std::string operator()(int number, const std::string& defaultText) const
    {
        return lang_.LoadResText(form_, number, defaultText);
    }

private:
    const LangDoc& lang_;
    std::string form_;
};

} // namespace mw
