#include "menus/TextOverlayForm.h"

#include "core/NumberText.h"
#include "core/Text.h"
#include "core/Version.h"
#include "document/ExtraInfo.h"
#include "render/OverlayFont.h"

#include <pugixml.hpp>

#include <charconv>

namespace mw {

namespace {

constexpr const char* kCorners[] = {"LT", "RT", "RB", "LB"};

std::string FontAttribute(const FontChoice& font)
{
    return font.Family + (font.Bold ? ",B" : "") + (font.Italic ? ",I" : "");
}

void Set(pugi::xml_node element, const char* name, const std::string& value)
{
    pugi::xml_attribute attribute = element.attribute(name);
    if (!attribute)
        attribute = element.append_attribute(name);
    attribute.set_value(value.c_str());
}

} // namespace

std::string TextOverlayForm::Shadow() const
{
    std::size_t corner = 0;
    while (corner < 3 && !Corners[corner])
        ++corner;
    return std::to_string(LeadingNumber(Trim(ShadowDistance))) + kCorners[corner];
}

std::optional<TextOverlayForm> TextOverlayFromTag(const std::string& tag)
{
    pugi::xml_document doc;
    if (!ParseExtraInfo(tag, doc))
        return std::nullopt;
    const pugi::xml_node element = doc.document_element();
    const auto value = [&](const char* name, const char* fallback) {
        const pugi::xml_attribute attribute = element.attribute(name);
        return std::string(attribute ? attribute.value() : fallback);
    };
    TextOverlayForm form;
    form.Text = value("Text", kAppTitle);
    const long long outline = LeadingNumber(value("Outline", "0"));
    form.Outline = outline < 0 || outline >= TextOverlayForm::kOutlineChoices ? 1 : int(outline);
    const std::string shadow = value("Shadow", "4RB");
    form.ShadowDistance = std::to_string(LeadingNumber(shadow));
    const std::string corner = shadow.size() >= 2 ? shadow.substr(shadow.size() - 2) : std::string();
    for (std::size_t i = 0; i < 4; ++i)
        form.Corners[i] = corner == kCorners[i];
    // Always a point, whatever the locale.
    const std::string size = value("FontSize", "18");
    double points = 18;
    std::from_chars(size.data(), size.data() + size.size(), points);
    form.Font = FontFromAttribute(value("Font", "Arial"), points);
    form.Charset = int(LeadingNumber(value("FontCharset", "0")));
    return form;
}

std::string UpdateTextOverlayTag(const std::string& tag, const TextOverlayForm& form)
{
    pugi::xml_document doc;
    if (!ParseExtraInfo(tag, doc))
        ParseExtraInfo("<" + std::string(kAppTitle) + " />", doc);
    const pugi::xml_node element = doc.document_element();
    Set(element, "Shape", "*Text");
    Set(element, "Text", form.Text);
    Set(element, "Outline", std::to_string(form.Outline));
    Set(element, "Shadow", form.Shadow());
    Set(element, "Font", FontAttribute(form.Font));
    Set(element, "FontSize", NumberText(form.Font.Size));
    Set(element, "FontCharset", std::to_string(form.Charset));
    return ExtraInfoText(doc);
}

} // namespace mw
