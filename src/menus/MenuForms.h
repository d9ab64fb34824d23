#pragma once

#include "media/NewTitleForm.h"

#include <string>

namespace mw {

class DocTree;
class Project;
class clsIniFile;

inline constexpr const char* kNewLanguageRow = "<new>";
inline constexpr const char* kCreateAfterRow = "<create after>";
inline constexpr const char* kPlayAgainRow = "Play this menu again";
inline constexpr const char* kMenuReference = "<Menu ";

// The dialog of a new menu (frmNewMenu).
struct NewMenuForm {
    std::string Caption = "New Menu";
    std::string FrameCaption = "Play background video from - to";
    std::string lblFrame = "0";
    std::string lblTime = "0:00:00";
    ComboList cmbfps;         // frames per second of a menu made from a picture
    std::string cmbfpsText;   // what the fps box shows or the user typed
    ComboList Combo1;         // the menu type
    ComboList Combo2;         // the language set
    ComboList Combo3;         // the exit action
    std::string txtMenuName;
    std::string lblVideo;     // the background file, or "<Menu N>" for the video of menu N
    std::string txtStartFrame;
    std::string txtEndFrame;
    std::string txtStartFrameToolTip;
    std::string txtEndFrameToolTip;
    bool cmdOKEnabled = false;
    bool Command10Enabled = false; // "Next key frame"
    bool Accepted = false;
};

// The dialog that picks a menu whose video a new menu shares (frmSelectMenu).
struct SelectMenuForm {
    std::string Caption = "Select Menu";
    std::string Label = "Select the menu you want";
    ComboList List;
};

// The form as it opens: the fps values (the user's own from "pic2aviFPS1", "pic2aviFPS2", ...
// of the settings file), the menu types at "other" and the exit choices at "Play this menu again".
void LoadNewMenuForm(NewMenuForm& form, const clsIniFile& settings);
// Enter in the fps box: a value from 1 to below 50 not yet listed is added and kept in the
// settings file; anything else does nothing. True when it was added.
bool cmbfps_Enter(NewMenuForm& form, clsIniFile& settings);
// The language sets of the document, "<new>" when there is none, at the set of the selected node.
void FillLanguageCombo(NewMenuForm& form, const DocTree& tree);
// A language chosen: the exit choices again, with one row per menu of that language. A video
// shared from a menu of the former language is dropped.
void Combo2_Click(NewMenuForm& form, const DocTree& tree);
std::string Combo3ToolTip(const NewMenuForm& form);

// The text of the selected entry; empty with none.
std::string ComboText(const ComboList& combo);
// The menu identifier at the end of a row "to Menu ... N" or of a reference "<Menu N>".
std::string MenuIdOfRow(const std::string& row);

// The rows that list the menus of a language, "to Menu NAME ID" or "to Menu ID".
void AddMenuRows(ComboList& list, const DocTree& tree, const std::string& languageCode);

// A background file chosen, or asked for when the name is empty: its video's start and length
// become the frames. False when nothing was chosen.
bool LoadMovieForMenu(Project& project, NewMenuForm& form, const std::string& fileName);
// "from menu": the menus of the chosen language into the selection dialog; false (and said)
// when the language has none.
bool LoadMenusToSelect(Project& project, const NewMenuForm& form, SelectMenuForm& select);
// The selection dialog accepted: the new menu shares that menu's video.
void AcceptSelectedMenu(Project& project, NewMenuForm& form, const SelectMenuForm& select);
// The "from menu" button: both of the above around the dialog.
void Command8_Click(Project& project, NewMenuForm& form);
// The help beside "from menu".
void Command9_Click(Project& project);
// "Next key frame": the start moves to the next key frame of the background file.
void Command10_Click(Project& project, NewMenuForm& form);
// "Ok": false, with "Error in frame ranges", when the start is after the end.
bool cmdOK_Click(Project& project, NewMenuForm& form);

// The absolute path of a menu's background video; empty, and said, when a link is missing.
std::string GetFileNameForMenu(Project& project, const std::string& menuID);

} // namespace mw
