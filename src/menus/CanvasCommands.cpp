#include "menus/CanvasCommands.h"

#include "core/Paths.h"
#include "core/Text.h"
#include "document/Project.h"
#include "media/FrameGrabber.h"
#include "media/mAVIDecs.h"
#include "menus/Buttons.h"
#include "menus/OverlayAttributes.h"
#include "menus/OverlayMenu.h"
#include "render/OverlayPainters.h"
#include "render/TransPaint.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>

namespace mw {

namespace {

long RowNumber(const DocNode& node, const char* name)
{
    return static_cast<long>(LeadingNumber(GetPropertyInNode(node, name)));
}

// Older files keep Buttons and menuID on the source: the track takes the source's extra info.
void CopyOldButtonsInfo(const DocNode& source, DocNode& track)
{
    if (track.Tag.empty() || !ExtraInfoElement(track.Tag).Get("Buttons"))
        track.Tag = source.Tag;
}

// The guide line within reach of an edge, if any.
std::optional<long> NearLine(long edge, const std::vector<long>& lines)
{
    for (long line : lines) {
        if (std::labs(edge - line) < kSnapDistance)
            return line;
    }
    return std::nullopt;
}

// Snaps one axis: a moved rectangle keeps its size, a resized one keeps the edge not dragged.
void SnapAxis(long& start, long& size, long oldStart, long oldSize, const std::vector<long>& lines)
{
    const bool moved = size == oldSize;
    if (moved || start != oldStart) {
        if (const auto line = NearLine(start, lines)) {
            if (!moved)
                size += start - *line;
            start = *line;
            return;
        }
    }
    if (moved || start + size != oldStart + oldSize) {
        if (const auto line = NearLine(start + size, lines)) {
            if (moved)
                start = *line - size;
            else
                size = *line - start;
        }
    }
}

} // namespace

CanvasButton ReadCanvasButton(const Project& project, const DocNode& button)
{
    CanvasButton b;
    b.Label.Tag = GetPropertyInNode(button, "objectid");
    if (const DocNode* rect = ChildNamed(&button, "MenuRectangle")) {
        b.Label.Left = RowNumber(*rect, "left");
        b.Label.Top = RowNumber(*rect, "top");
        b.Label.Width = RowNumber(*rect, "width");
        b.Label.Height = RowNumber(*rect, "height");
    }
    const OverlayAttributes a = ReadOverlayAttributes(button.Tag);
    b.Shape = a.Shape;
    b.Position = a.Position;
    b.LineWidth = a.Width;
    b.OverlayFile = OverlayFileFor(project.ProgramFolder(), a.Shape);
    PlaceShapeFromTag(b);
    return b;
}

std::array<std::uint32_t, 3> MenuOverlayColors(const Project& project, const DocNode& menu)
{
    const Settings& settings = project.Values();
    const ExtraInfoElement info(menu.Tag);
    const std::uint32_t defaults[] = {settings.defOverlayColor1, settings.defOverlayColor2, settings.defOverlayColor3};
    const char* colorNames[] = {"Color1", "Color2", "Color3"};
    std::array<std::uint32_t, 3> colors{};
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const auto color = info.Get(colorNames[i]);
        colors[i] = color ? static_cast<std::uint32_t>(LeadingNumber(*color)) : defaults[i];
    }
    return colors;
}

void LoadCanvasMenuRows(Project& project, DocNode& menu)
{
    CanvasMenuRows& rows = project.Canvas.Menu;
    rows = {};
    DocTree& tree = project.Doc.Tree;
    rows.BackgroundVideoID = GetPropertyInNode(menu, "backgroundvideoid");
    if (DocNode* track = tree.ObjectNode(rows.BackgroundVideoID)) {
        rows.MediaSourceID = GetPropertyInNode(*track, "mediasourceid");
        rows.StartFrame = GetPropertyInNode(*track, "startframe");
        rows.EndFrame = GetPropertyInNode(*track, "endframe");
        if (const DocNode* source = tree.ObjectNode(rows.MediaSourceID)) {
            rows.Location = ResolveLocation(project.Doc.ProjectFile, GetPropertyInNode(*source, "location"));
            CopyOldButtonsInfo(*source, *track);
        }
    }
    rows.BackgroundAudioID = GetPropertyInNode(menu, "backgroundaudioid");
    rows.StartingMenuItemID = GetPropertyInNode(menu, "startingmenuitemid");
    rows.EnterAction = GetPropertyInNode(menu, "enteraction");
    rows.ExitAction = GetPropertyInNode(menu, "exitaction");
    rows.MenuType = GetPropertyInNode(menu, "menutype");
    rows.MenuName = GetPropertyInNode(menu, "menuname");
}

void ParceMenu(Project& project, DocNode& menu)
{
    MenuCanvas& canvas = project.Canvas;
    const Settings& settings = project.Values();
    if (!settings.ShowRulers) {
        canvas.LinesH.clear();
        canvas.LinesV.clear();
    }
    canvas.Forget();
    canvas.CurrentMenuID = GetPropertyInNode(menu, "objectid");

    const ExtraInfoElement info(menu.Tag);
    canvas.Colors = MenuOverlayColors(project, menu);
    canvas.Lock = LeadingNumber(info.Get("lock").value_or("0")) != 0;
    canvas.Frame = static_cast<long>(LeadingNumber(info.Get("frame").value_or("-1")));

    for (const auto& child : menu) {
        if (EqualsNoCase(child->Text, "ButtonMenu"))
            canvas.Buttons.push_back(ReadCanvasButton(project, *child));
    }

    LoadCanvasMenuRows(project, menu);
    const CanvasMenuRows& rows = canvas.Menu;

    std::error_code ec;
    if (!std::filesystem::is_regular_file(rows.Location, ec)) {
        project.Ask().Message("File not found \"" + rows.Location +
                              "\"\r\nIs used for menu background. Assume that streams in file is 2");
        canvas.OverlayStream = 2;
    } else {
        canvas.OverlayStream = CountNonSubtitleStreams(rows.Location, project.Ask());
    }
}

void Label1_Click(Project& project, int index)
{
    MenuCanvas& canvas = project.Canvas;
    const CanvasButton& button = canvas.Buttons.at(static_cast<std::size_t>(index));
    canvas.Selected = index;
    canvas.LastSelected = index;
    if (DocNode* node = project.Doc.Tree.ObjectNode(button.Label.Tag))
        project.Doc.Tree.Select(node);
    canvas.shapeSelect = canvas.shapeName = canvas.buttonDel = true;
    const bool special = button.Shape.starts_with('*');
    canvas.shapeLineWidth = special && button.Shape != "*Text";
    project.Overlays.Checked = SetOverlayCheckItem(project.Overlays, button.Shape);
    project.Overlays.CheckedWidth = canvas.shapeLineWidth ? button.LineWidth : 0;
}

void SelectInBand(Project& project, long x1, long y1, long x2, long y2)
{
    MenuCanvas& canvas = project.Canvas;
    canvas.Selected = -1;
    canvas.shapeSelect = canvas.shapeName = canvas.buttonDel = canvas.shapeLineWidth = false;
    const long left = std::min(x1, x2), right = std::max(x1, x2);
    const long top = std::min(y1, y2), bottom = std::max(y1, y2);
    std::vector<int> inside;
    for (std::size_t i = 0; i < canvas.Buttons.size(); ++i) {
        CanvasButton& b = canvas.Buttons[i];
        const ButtonShape& r = b.Label;
        b.Selected = r.Left >= left && r.Top >= top && r.Left + r.Width <= right && r.Top + r.Height <= bottom;
        if (b.Selected)
            inside.push_back(static_cast<int>(i));
    }
    if (inside.size() == 1) {
        canvas.Buttons[static_cast<std::size_t>(inside.front())].Selected = false;
        Label1_Click(project, inside.front());
    }
}

} // namespace mw

namespace mw {

ButtonShape SnapToGuideLines(const MenuCanvas& canvas, int index, ButtonShape rect)
{
    const ButtonShape& old = canvas.Buttons.at(static_cast<std::size_t>(index)).Label;
    SnapAxis(rect.Left, rect.Width, old.Left, old.Width, canvas.LinesV);
    SnapAxis(rect.Top, rect.Height, old.Top, old.Height, canvas.LinesH);
    return rect;
}

bool EndButtonGesture(Project& project, int index, ButtonShape rect)
{
    MenuCanvas& canvas = project.Canvas;
    if (canvas.Lock)
        return false;
    CanvasButton& button = canvas.Buttons.at(static_cast<std::size_t>(index));
    const ButtonShape old = button.Label;
    rect = SnapToGuideLines(canvas, index, rect);
    project.UndoAdd();
    const long dx = rect.Left - old.Left;
    const long dy = rect.Top - old.Top;
    for (std::size_t i = 0; i < canvas.Buttons.size(); ++i) {
        CanvasButton& b = canvas.Buttons[i];
        if (static_cast<int>(i) == index) {
            b.Label = {old.Tag, rect.Left, rect.Top, rect.Width, rect.Height};
        } else if (b.Selected && button.Selected) {
            b.Label.Left += dx;
            b.Label.Top += dy;
        } else {
            continue;
        }
        PlaceShapeFromTag(b);
        UpDateTree(project.Doc.Tree, b.Label);
    }
    project.MarkDirty();
    return true;
}

} // namespace mw

namespace mw {

std::string AddButtonFromBand(Project& project, long x1, long y1, long x2, long y2)
{
    if (x1 == x2 || y1 == y2)
        return {};
    const ButtonShape rect{"", std::min(x1, x2), std::min(y1, y2), std::labs(x2 - x1), std::labs(y2 - y1)};
    project.Canvas.AddMode = false;
    return AddButtonToMenu(project, rect, project.Values().DefOverlay);
}

std::size_t PickGuideLine(std::vector<long>& lines, long pos)
{
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (std::labs(pos + 2 - lines[i]) < kGuideLineReach)
            return i;
    }
    lines.push_back(pos);
    return lines.size() - 1;
}

void DropGuideLine(std::vector<long>& lines, std::size_t index, long pos, long extent)
{
    if (pos < 0 || pos >= extent)
        lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(index));
    else
        lines[index] = pos;
}

long ShownFrame(const MenuCanvas& canvas)
{
    return canvas.Frame != -1 ? canvas.Frame : static_cast<long>(LeadingNumber(canvas.Menu.StartFrame));
}

bool GrabMenuFrame(Project& project, cDIB& picture)
{
    const std::string& file = project.Canvas.Menu.Location;
    std::error_code ec;
    if (project.Canvas.CurrentMenuID.empty() || !std::filesystem::is_regular_file(file, ec))
        return false;
    long frame = ShownFrame(project.Canvas);
    return GrabFrameToPicture(file, picture, frame, true, project.Ask(), project.Lang());
}

void SetMenuFrame(Project& project, long frame)
{
    MenuCanvas& canvas = project.Canvas;
    DocNode* menu = project.Doc.Tree.ObjectNode(canvas.CurrentMenuID);
    if (!menu)
        return;
    canvas.Frame = std::max(frame, -1L);
    ExtraInfoElement info(menu->Tag);
    info.Set("frame", std::to_string(canvas.Frame));
    menu->Tag = info.Text();
    project.MarkDirty();
}

std::optional<long> AskMenuFrame(Project& project)
{
    if (project.Canvas.CurrentMenuID.empty())
        return std::nullopt;
    const auto answer = project.Ask().Input("Type the frame to use", "", std::to_string(ShownFrame(project.Canvas)));
    if (!answer)
        return std::nullopt;
    return static_cast<long>(LeadingNumber(*answer));
}

cDIB ButtonOverlayPicture(Project& project, int index)
{
    return ButtonOverlayPicture(project, project.Ask(), project.Canvas.Buttons.at(static_cast<std::size_t>(index)),
                                project.Canvas.Colors);
}

cDIB ButtonOverlayPicture(const Project& project, Prompt& prompt, const CanvasButton& button,
                          const std::array<std::uint32_t, 3>& colors)
{
    TransPaint shape(prompt, project.Lang());
    for (int i = 0; i < 3; ++i) {
        const std::uint32_t c = colors[static_cast<std::size_t>(i)];
        shape.SetRGBColor(i + 1, c & 0xFF, c >> 8 & 0xFF, c >> 16 & 0xFF);
    }
    shape.SetSize(static_cast<int>(button.Overlay.Width), static_cast<int>(button.Overlay.Height));
    const std::string painter = GetFuncToCallFromSpecialOverlay(button.Shape);
    if (painter.empty()) {
        shape.SetFilename(button.OverlayFile);
        return shape.GetDib();
    }
    const DocNode* node = project.Doc.Tree.ObjectNode(button.Label.Tag);
    const std::string tag = node ? node->Tag : std::string();
    const TextOverlayForm text = TextOverlayFromTag(tag).value_or(TextOverlayForm{});
    shape.SetDIBFromFunc(painter, static_cast<int>(button.LineWidth), text.Text, text.Outline,
                         TextOverlayShadow(text), text.Font);
    return shape.GetDib();
}

DocNode* ButtonLinkMenu(Project& project, int index)
{
    const CanvasButton& button = project.Canvas.Buttons.at(static_cast<std::size_t>(index));
    DocTree& tree = project.Doc.Tree;
    const DocNode* node = tree.ObjectNode(button.Label.Tag);
    const DocNode* action = ChildNamed(node, "Action");
    const DocNode* move = ChildNamed(action, "MenuTransitionAction");
    if (!move)
        return nullptr;
    DocNode* menu = tree.ObjectNode(GetPropertyInNode(*move, "menuid"));
    return menu && EqualsNoCase(menu->Text, "DivXMediaMenu") ? menu : nullptr;
}

} // namespace mw
