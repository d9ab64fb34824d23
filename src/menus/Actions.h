#pragma once

#include "media/LoadTitlesInForm.h"
#include "media/TrackRow.h"

#include <array>
#include <string>
#include <vector>

namespace mw {

class DocNode;
class DocTree;
class Prompt;
class Project;

// The action types in the order the dialog lists them.
inline constexpr std::array<const char*, 6> kActionTypes = {
    "SubtitleSelectAction", "AudioSelectAction", "PlayAction", "PlayFromCurrentOffsetAction",
    "MenuTransitionAction", "ButtonTransitionAction"};
inline constexpr const char* kNoButtonsInMenu = "No buttons in menu";

// One row of an action list: the type, its first target (title, menu or button) and its second
// (track or chapter); Tag is the identifier of the action node it came from, empty for a new one.
struct ActionRow {
    std::string Type;
    std::string Target1;
    std::string Target2;
    std::string Tag;
    bool operator==(const ActionRow&) const = default;
};

// The dialog that edits an action list (Form2).
struct ActionForm {
    std::string Caption;
    TitlesAndMenus Lists; // lstTitles and lstMenus
    std::vector<ActionRow> lstActions;
    int Selected = -1;
};

// What the user picked for one action before "Add": the track's row text is its kind as the
// track list shows it ("Audio", "Subtitle", ...), empty when no track is selected.
struct ActionChoice {
    std::string Type;
    std::string TitleID;
    std::string TrackID;
    std::string TrackKind;
    std::string ChapterID; // the title's own identifier for "The Title it self"
    std::string MenuID;
    std::string ButtonID;  // or kNoButtonsInMenu
};

// The checks of "Add": the row to add, or false when a message stopped it. A track of another
// kind is asked about; for a subtitle, No keeps the action with the track "<none>".
bool AcceptActionChoice(Prompt& prompt, const ActionChoice& choice, ActionRow& row);

// "Add or update" in the dialog: the checked row replaces the selected one (the row being
// edited), keeping the action it came from, or is added at the end. False when a check stopped it.
bool AddActionRow(Prompt& prompt, ActionForm& form, const ActionChoice& choice);
// Drops the selected row; the row after it, else the one before, is selected.
void RemoveActionRow(ActionForm& form);

// A title clicked in the dialog: its streams, and its chapters after "The Title it self".
struct ChapterChoiceRow {
    std::string ID;
    std::string StartFrame;
    std::string EndFrame;
    std::string Name; // "The Title it self" for the first row
};
struct TitleTargets {
    TrackRows Tracks;
    std::vector<ChapterChoiceRow> Chapters;
};
TitleTargets LoadTitleTargets(Project& project, const TitleListRow& title);

// The buttons that a ButtonTransitionAction may name: those of the menu of the list's latest
// MenuTransitionAction, else of the given menu; each "id action", or kNoButtonsInMenu alone.
std::vector<std::string> ButtonChoices(const DocTree& tree, const std::vector<ActionRow>& rows,
                                       const std::string& currentMenuID);

// The rows of an action list node; empty when the identifier names nothing.
std::vector<ActionRow> LoadActionRows(const DocTree& tree, const std::string& actionID);

// Writes the rows as the action list actionKey (a new list under the selected button, or the
// menu on the canvas, when the key is empty). Identifiers of existing rows are kept; the order
// of the rows is the order of the actions. Returns the list's identifier.
std::string UpdateOrAddActionNode(Project& project, const std::string& actionKey, bool isButton,
                                  const std::vector<ActionRow>& rows);

// Edits a list of the selected button ("selectAction") or of the menu on the canvas
// ("enterAction", "exitAction") in the dialog; ApplyActionList is its acceptance.
void EditActionList(Project& project, const std::string& listName, bool isButton);
void ApplyActionList(Project& project, const std::string& listName, bool isButton, const std::vector<ActionRow>& rows);

// The panels' "Delete current action": the action at index of the list goes, and the list's row
// is removed once it holds no action.
void RemoveActionAt(Project& project, const std::string& listName, bool isButton, int index);

// The button's list becomes one MenuTransitionAction to the menu.
void ActionFromButtonToMenu(Project& project, const std::string& buttonID, const std::string& menuID);

// The type names of the enter and exit lists of the menu on the canvas, as its panel lists them.
struct MenuActionLists {
    std::vector<std::string> Enter;
    std::vector<std::string> Exit;
};
MenuActionLists LoadActionsFromMenu(const Project& project);

// A double click on a button, as the setting DoubleClickInButtonsAction says: nothing, follow
// the button's first MenuTransitionAction to its menu, or edit the button's action list.
void Label1_DblClick(Project& project, int index);

} // namespace mw
