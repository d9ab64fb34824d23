#include "menus/PropertyPanels.h"

#include "core/Text.h"
#include "document/Project.h"
#include "document/TreeQueries.h"
#include "menus/Actions.h"
#include "menus/Buttons.h"
#include "menus/CanvasCommands.h"
#include "menus/MenuCommands.h"

#include <array>

namespace mw {

namespace {

constexpr std::array<const char*, 9> kMenuRows = {"backgroundVideoID", "backgroundAudioID", "startingMenuItemID",
                                                  "enterAction",       "exitAction",        "menuType",
                                                  "menuName",          "startFrame",        "endFrame"};
constexpr std::array<const char*, 10> kButtonRows = {"overlayID",  "selectAction", "upAction", "downAction",
                                                     "leftAction", "rightAction",  "left",     "top",
                                                     "width",      "height"};
constexpr std::array<const char*, 4> kDirectionTips = {
    "Click to select the button to get focus when up key pressed",
    "Click to select the button to get focus when down key pressed",
    "Click to select the button to get focus when left key pressed",
    "Click to select the button to get focus when right key pressed"};

DocNode* CurrentMenu(Project& project)
{
    return project.Doc.Tree.ObjectNode(project.Canvas.CurrentMenuID);
}

DocNode* CurrentButton(Project& project)
{
    const MenuCanvas& canvas = project.Canvas;
    if (canvas.Selected < 0)
        return nullptr;
    return project.Doc.Tree.ObjectNode(canvas.Buttons.at(static_cast<std::size_t>(canvas.Selected)).Label.Tag);
}

// UpdateListsWithButtons: the no-choice row, then the menu's buttons.
std::vector<std::string> ButtonList(const MenuCanvas& canvas)
{
    std::vector<std::string> list{kNoneMarker};
    for (const CanvasButton& button : canvas.Buttons)
        list.push_back(button.Label.Tag);
    return list;
}

// The kind of a track entry "ID|source(file)-type trackID": the word after the file.
std::string TrackKind(const std::string& entry)
{
    const std::size_t close = entry.rfind(")-");
    if (close == std::string::npos)
        return "";
    const std::string rest = entry.substr(close + 2);
    return Lower(rest.substr(0, rest.find(' ')));
}

std::string ActionNames(const DocTree& tree, const std::string& listID)
{
    std::string names;
    for (const ActionRow& row : LoadActionRows(tree, listID))
        names += (names.empty() ? "" : " ") + row.Type;
    return names;
}

} // namespace

std::vector<PanelRow> MenuPanelRows(Project& project)
{
    std::vector<PanelRow> rows;
    const DocNode* menu = CurrentMenu(project);
    if (!menu)
        return rows;
    const DocTree& tree = project.Doc.Tree;
    std::vector<std::string> tracks;
    for (const MenuTrackEntry& entry : project.Doc.MenuTracks)
        tracks.push_back(entry.Text);
    const DocNode* video = tree.ObjectNode(GetPropertyInNode(*menu, "backgroundvideoid"));
    for (const char* name : kMenuRows) {
        PanelRow row;
        row.Name = row.Label = name;
        row.Value = GetPropertyInNode(*menu, name);
        const std::string key = Lower(name);
        if (key == "backgroundvideoid" || key == "backgroundaudioid") {
            if (const MenuTrackEntry* entry = project.Doc.MenuTracks.Find(row.Value))
                row.Value = entry->Text;
            row.Choices = tracks;
            row.LabelToolTip = row.TextToolTip = kMenuTracksToolTip;
        } else if (key == "startingmenuitemid") {
            row.Choices = ButtonList(project.Canvas);
        } else if (key == "menutype") {
            row.Choices = {"audio", "chapter", "other", "subtitle", "title"};
        } else if (key == "startframe" || key == "endframe") {
            row.Value = video ? GetPropertyInNode(*video, name) : "";
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

std::vector<PanelRow> ButtonPanelRows(Project& project)
{
    std::vector<PanelRow> rows;
    const DocNode* button = CurrentButton(project);
    if (!button)
        return rows;
    const ButtonShape& rect = project.Canvas.Buttons.at(static_cast<std::size_t>(project.Canvas.Selected)).Label;
    const DocTree& tree = project.Doc.Tree;
    const std::array<long, 4> geometry = {rect.Left, rect.Top, rect.Width, rect.Height};
    for (std::size_t i = 0; i < kButtonRows.size(); ++i) {
        const char* name = kButtonRows[i];
        PanelRow row;
        row.Name = row.Label = name;
        row.Value = GetPropertyInNode(*button, name);
        if (i == 0) {
            row.Enabled = false;
        } else if (i == 1) {
            for (const auto& child : *button) {
                if (EqualsNoCase(child->Text, "Action"))
                    row.Choices.push_back(GetPropertyInNode(*child, "objectid"));
            }
            if (const std::string names = ActionNames(tree, row.Value); !names.empty())
                row.Label = names;
        } else if (i <= 5) {
            row.Choices = ButtonList(project.Canvas);
            row.LabelToolTip = kDirectionTips[i - 2];
        } else {
            row.Value = std::to_string(geometry[i - 6]);
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

bool PropMenu_ValueChanged(Project& project, int row, const std::string& value)
{
    DocNode* menu = CurrentMenu(project);
    if (!menu || row < 1 || row > static_cast<int>(kMenuRows.size()))
        return true;
    DocTree& tree = project.Doc.Tree;
    const std::string name = kMenuRows[static_cast<std::size_t>(row - 1)];
    if (row <= 2) {
        if (TrackKind(value) != (row == 1 ? "video" : "audio")) {
            project.Ask().Message(kNotValidType);
            return false;
        }
    } else if (row <= 5 && value.empty()) {
        return true; // a cleared row stays as it is in the tree
    }
    project.UndoAdd();
    project.MarkDirty();
    if (row <= 2) {
        UpdatePropertyInNode(tree, *menu, name, value.substr(0, value.find('|')), true);
    } else if (row <= 7) {
        UpdatePropertyInNode(tree, *menu, name, value, true);
        DocNode* comment = menu->Previous();
        if (row >= 6 && comment && comment->Image == "comment") {
            comment->Text = MenuCommentText(GetPropertyInNode(*menu, "menuname"), GetPropertyInNode(*menu, "menutype"));
            comment->Tag = comment->Text;
        }
    } else {
        const std::string track = GetPropertyInNode(*menu, "backgroundvideoid");
        long start = -1, end = -1;
        GetStartFrameForButton(tree, track, start, end);
        (row == 8 ? start : end) = static_cast<long>(LeadingNumber(value));
        SetStartEndFrameForButton(tree, track, start, end);
    }
    LoadCanvasMenuRows(project, *menu);
    return true;
}

void PropButton_ValueChanged(Project& project, int row, const std::string& value)
{
    DocNode* button = CurrentButton(project);
    if (!button || row < 2 || row > static_cast<int>(kButtonRows.size()))
        return;
    if (row <= 6) {
        project.UndoAdd();
        project.MarkDirty();
        UpdatePropertyInNode(project.Doc.Tree, *button, kButtonRows[static_cast<std::size_t>(row - 1)], value, true);
        return;
    }
    const int index = project.Canvas.Selected;
    ButtonShape rect = project.Canvas.Buttons.at(static_cast<std::size_t>(index)).Label;
    const long number = static_cast<long>(LeadingNumber(value));
    if (row >= 9 && number <= 0)
        return;
    std::array<long*, 4> fields = {&rect.Left, &rect.Top, &rect.Width, &rect.Height};
    *fields[static_cast<std::size_t>(row - 7)] = number;
    EndButtonGesture(project, index, rect);
}

} // namespace mw
