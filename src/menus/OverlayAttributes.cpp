#include "menus/OverlayAttributes.h"

#include "core/NumberText.h"
#include "core/ProgramFolder.h"
#include "core/Text.h"
#include "core/Version.h"
#include "document/ExtraInfo.h"
#include "document/Project.h"
#include "menus/OverlayMenu.h"
#include "render/OverlayFont.h"
#include "render/OverlayPainters.h"

#include <charconv>
#include <sstream>

namespace mw {

ExtraInfoElement::ExtraInfoElement(const std::string& tag)
{
    parsed_ = ParseExtraInfo(tag, doc_);
    if (!parsed_)
        doc_.reset();
}

std::optional<std::string> ExtraInfoElement::Get(const char* name) const
{
    const pugi::xml_attribute attribute = doc_.document_element().attribute(name);
    if (!attribute)
        return std::nullopt;
    return std::string(attribute.value());
}

void ExtraInfoElement::Set(const char* name, const std::string& value)
{
    pugi::xml_node element = doc_.document_element();
    if (!element)
        element = doc_.append_child(kAppTitle);
    pugi::xml_attribute attribute = element.attribute(name);
    if (!attribute)
        attribute = element.append_attribute(name);
    attribute.set_value(value.c_str());
}

std::string ExtraInfoElement::Text() const
{
    return ExtraInfoText(doc_);
}

OverlayAttributes ReadOverlayAttributes(const std::string& tag)
{
    OverlayAttributes a;
    a.Text = kAppTitle;
    if (tag.empty()) {
        a.Shape = "*Rect";
        return a;
    }
    const ExtraInfoElement element(tag);
    const auto number = [&](const char* name, long& value) {
        if (const auto text = element.Get(name))
            value = static_cast<long>(LeadingNumber(*text));
    };
    for (auto [name, value] : {std::pair{"Shape", &a.Shape}, {"Position", &a.Position}, {"Text", &a.Text},
                               {"Shadow", &a.Shadow}, {"Font", &a.Font}, {"FontSize", &a.FontSize}}) {
        if (const auto text = element.Get(name))
            *value = *text;
    }
    number("width", a.Width);
    number("Outline", a.Outline);
    number("FontCharset", a.FontCharset);
    return a;
}

std::string TextOverlayShadow(const TextOverlayForm& form)
{
    std::size_t corner = 0;
    while (corner < 3 && !form.Corners[corner])
        ++corner;
    return std::to_string(LeadingNumber(Trim(form.ShadowDistance))) + kShadowCorners[corner];
}

void SetTextOverlayShadow(TextOverlayForm& form, const std::string& shadow)
{
    form.ShadowDistance = std::to_string(LeadingNumber(shadow));
    const std::string corner = shadow.size() >= 2 ? shadow.substr(shadow.size() - 2) : std::string();
    for (std::size_t i = 0; i < form.Corners.size(); ++i)
        form.Corners[i] = corner == kShadowCorners[i];
}

std::optional<TextOverlayForm> TextOverlayFromTag(const std::string& tag)
{
    if (!ExtraInfoElement(tag).Parsed())
        return std::nullopt;
    const OverlayAttributes a = ReadOverlayAttributes(tag);
    TextOverlayForm form;
    form.Text = a.Text;
    form.Outline = a.Outline < 0 || a.Outline >= TextOverlayForm::kOutlineChoices ? 1 : int(a.Outline);
    SetTextOverlayShadow(form, a.Shadow);
    // Always a point, whatever the locale.
    double points = 18;
    std::from_chars(a.FontSize.data(), a.FontSize.data() + a.FontSize.size(), points);
    form.Font = FontFromAttribute(a.Font, points);
    form.Charset = int(a.FontCharset);
    return form;
}

std::string UpdateTextOverlayTag(const std::string& tag, const TextOverlayForm& form)
{
    ExtraInfoElement info(tag);
    info.Set("Shape", "*Text");
    info.Set("Text", form.Text);
    info.Set("Outline", std::to_string(form.Outline));
    info.Set("Shadow", TextOverlayShadow(form));
    info.Set("Font", form.Font.Family + (form.Font.Bold ? ",B" : "") + (form.Font.Italic ? ",I" : ""));
    info.Set("FontSize", NumberText(form.Font.Size));
    info.Set("FontCharset", std::to_string(form.Charset));
    return info.Text();
}

std::string OverlayFileFor(const std::filesystem::path& programFolder, const std::string& shape)
{
    if (shape == "*Rect")
        return (programFolder / kOverlaysFolder / "rectangle_.bmp").string();
    if (shape == "*Text")
        return shape + ".bmp";
    std::string relative = shape;
    for (char& c : relative) {
        if (c == '\\')
            c = '/';
    }
    if (!EndsWithNoCase(relative, ".bmp"))
        relative += ".bmp";
    return (programFolder / kOverlaysFolder / relative).string();
}

void PlaceShapeFromTag(CanvasButton& button)
{
    std::istringstream in(button.Position);
    long a = 0, b = 0, c = 0, d = 0;
    in >> a >> b >> c >> d;
    const ButtonShape& r = button.Label;
    button.Overlay = {r.Tag, r.Left - a, r.Top - b, r.Width - c, r.Height - d};
}

namespace {

// Runs the change for every button of the selection, with the button's node; one undo step first.
template <typename Change>
void ForSelection(Project& project, Change change)
{
    project.UndoAdd();
    MenuCanvas& canvas = project.Canvas;
    std::vector<int> buttons;
    for (std::size_t i = 0; i < canvas.Buttons.size(); ++i) {
        if (canvas.Buttons[i].Selected)
            buttons.push_back(static_cast<int>(i));
    }
    if (buttons.empty() && canvas.Selected >= 0)
        buttons.push_back(canvas.Selected);
    else if (buttons.empty() && canvas.LastSelected >= 0)
        buttons.push_back(canvas.LastSelected);
    for (int i : buttons) {
        CanvasButton& button = canvas.Buttons.at(static_cast<std::size_t>(i));
        if (DocNode* node = project.Doc.Tree.ObjectNode(button.Label.Tag)) {
            change(button, *node);
            project.MarkDirty();
        }
    }
}

} // namespace

CanvasButton* SelectedButton(Project& project, DocNode*& node)
{
    MenuCanvas& canvas = project.Canvas;
    if (canvas.Selected < 0)
        return nullptr;
    CanvasButton& button = canvas.Buttons.at(static_cast<std::size_t>(canvas.Selected));
    node = project.Doc.Tree.ObjectNode(button.Label.Tag);
    return node ? &button : nullptr;
}

void SetThisOverlay(Project& project, const std::string& name)
{
    project.Overlays.Checked = SetOverlayCheckItem(project.Overlays, name);
    ForSelection(project, [&](CanvasButton& button, DocNode& node) {
        button.OverlayFile = OverlayFileFor(project.ProgramFolder(), name);
        button.Shape = name;
        ExtraInfoElement info(node.Tag);
        const bool parsed = info.Parsed();
        info.Set("Shape", name);
        if (!parsed)
            info.Set("Position", button.Position);
        node.Tag = info.Text();
    });
    project.Canvas.shapeLineWidth = false;
}

void mnuOverlay_Click(Project& project, int index)
{
    SetThisOverlay(project, project.Overlays.Top.at(static_cast<std::size_t>(index)).Caption);
}

void SetOverlayInFolder(Project& project, int folder, int index)
{
    const OverlayFolderMenu& menu = project.Overlays.Folders.at(static_cast<std::size_t>(folder));
    SetThisOverlay(project, menu.Caption + "\\" + menu.Items.at(static_cast<std::size_t>(index)).Caption);
}

void SetSpecialOverlay(Project& project, const std::string& name)
{
    project.Overlays.Checked = SetOverlayCheckItem(project.Overlays, name);
    TextOverlayForm& panel = project.Overlays.TextPanel;
    const bool text = name == "*Text";
    ForSelection(project, [&](CanvasButton& button, DocNode& node) {
        ExtraInfoElement info(node.Tag);
        if (!info.Parsed()) {
            info.Set("Shape", name);
            info.Set("width", "3");
            info.Set("Position", button.Position);
        } else {
            info.Set("Shape", name);
        }
        node.Tag = info.Text();
        const OverlayAttributes a = ReadOverlayAttributes(node.Tag);
        button.Shape = name;
        button.LineWidth = a.Width;
        if (!text)
            return;
        if (const auto form = TextOverlayFromTag(node.Tag))
            panel = *form;
    });
    project.Overlays.TextPanelVisible = text;
    project.Canvas.shapeLineWidth = !text;
}

void UpdateTextOverlay(Project& project)
{
    DocNode* node = nullptr;
    CanvasButton* selected = SelectedButton(project, node);
    if (!selected)
        return;
    node->Tag = UpdateTextOverlayTag(node->Tag, project.Overlays.TextPanel);
    selected->Shape = "*Text";
    project.MarkDirty();
}

void mnuOverlayWidthValue_Click(Project& project, int index)
{
    const long width = kOverlayWidths.at(static_cast<std::size_t>(index));
    ForSelection(project, [&](CanvasButton& button, DocNode& node) {
        ExtraInfoElement info(node.Tag);
        if (!info.Parsed()) {
            info.Set("Shape", "*Shape1");
            info.Set("Position", button.Position);
        }
        info.Set("width", std::to_string(width));
        node.Tag = info.Text();
        const std::string painter = GetFuncToCallFromSpecialOverlay(info.Get("Shape").value_or(""));
        if (!painter.empty() && painter != "CreateText")
            button.LineWidth = width;
    });
    project.Overlays.CheckedWidth = width;
}

namespace {

// The overlay's offset against the rectangle into the button's extra info, which is made anew
// around the shape when it does not parse.
void StorePosition(CanvasButton& button, DocNode& node, const std::string& position)
{
    button.Position = position;
    ExtraInfoElement info(node.Tag);
    if (!info.Parsed())
        info.Set("Shape", button.Shape);
    info.Set("Position", button.Position);
    node.Tag = info.Text();
    PlaceShapeFromTag(button);
}

} // namespace

void ResetOverlayPos(Project& project)
{
    DocNode* node = nullptr;
    CanvasButton* selected = SelectedButton(project, node);
    if (!selected)
        return;
    project.UndoAdd();
    StorePosition(*selected, *node,
                  project.Values().DefOverlayPos == 0 ? kDefaultOverlayPosition : kSameOverlayPosition);
    project.MarkDirty();
}

void PlaceShapeToPos(Project& project, int index, const ButtonShape& overlay)
{
    CanvasButton& button = project.Canvas.Buttons.at(static_cast<std::size_t>(index));
    DocNode* node = project.Doc.Tree.ObjectNode(button.Label.Tag);
    if (!node)
        return;
    project.UndoAdd();
    const ButtonShape& r = button.Label;
    StorePosition(button, *node,
                  std::to_string(r.Left - overlay.Left) + " " + std::to_string(r.Top - overlay.Top) + " " +
                      std::to_string(r.Width - overlay.Width) + " " + std::to_string(r.Height - overlay.Height));
    project.MarkDirty();
}

} // namespace mw

namespace mw {

void SelectColor(Project& project, const std::array<std::uint32_t, 3>& colors)
{
    MenuCanvas& canvas = project.Canvas;
    canvas.Colors = colors;
    DocNode* menu = project.Doc.Tree.ObjectNode(canvas.CurrentMenuID);
    if (!menu)
        return;
    ExtraInfoElement info(menu->Tag);
    const char* names[] = {"Color1", "Color2", "Color3"};
    for (std::size_t i = 0; i < colors.size(); ++i)
        info.Set(names[i], std::to_string(colors[i]));
    menu->Tag = info.Text();
    project.MarkDirty();
}

std::string ColorButtonToolTip(int index, std::uint32_t color)
{
    static const char* ordinals[] = {"2nd", "3rd", "4th"};
    return std::string(ordinals[index]) + " color in palette RGB = (" + std::to_string(color & 0xFF) + ", " +
           std::to_string((color >> 8) & 0xFF) + ", " + std::to_string((color >> 16) & 0xFF) + ")";
}

void ToggleLock(Project& project)
{
    MenuCanvas& canvas = project.Canvas;
    DocNode* menu = project.Doc.Tree.ObjectNode(canvas.CurrentMenuID);
    if (!menu)
        return;
    canvas.Lock = !canvas.Lock;
    ExtraInfoElement info(menu->Tag);
    info.Set("lock", canvas.Lock ? "1" : "0");
    menu->Tag = info.Text();
    project.MarkDirty();
}

} // namespace mw
