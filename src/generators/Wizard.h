#pragma once

#include "core/Prompt.h"
#include "generators/PageModel.h"
#include "generators/SetupMenu.h"

#include <QImage>

#include <optional>
#include <string>
#include <vector>

namespace mw {

class Project;
struct MenuVideoTools;

// The wizard's message line while it loads and makes the menus.
inline const ProgressChannel kWizardMessage{"lblMsg2"};

// The four panels, in the order the user goes through them.
enum class WizardPanel { SelectTitles = 0, SelectMenus = 1, Preview = 2, Finish = 3 };

// One movie of the list, with the menus the wizard makes for it. The chapter page and the setup
// page are loaded on the way to the preview and stay loaded when the user steps back, so that
// edits made to them survive.
struct WizardTitle {
    std::string TitleID{};
    std::string Path{};           // the row's text
    bool HasChapters = false;     // the row's item data
    bool WantsChapterMenu = false;
    bool WantsSetupMenu = false;
    std::string ChapterFile{};
    std::string SetupFile{};
    std::optional<MenuPage> Chapters{};
    std::optional<SetupPage> Setup{};
    std::vector<std::string> ChapterMenus{}; // made by the last step, one per page
    std::string SetupMenu{};
};

enum class WizardRowKind { Root, TitleMenu, ChapterMenu, SetupMenu };

// A row of the menu structure: a root, or one page of a menu.
struct WizardRow {
    WizardRowKind Kind = WizardRowKind::Root;
    std::string Key{};  // "k_" and the title's number (from 1) below a root; the root's caption for a root
    std::string Text{}; // ends in " <page>/<pages>" below a root
    int Title = -1;     // the row of List1; -1 for the roots and the title menu
    int Page = 0;       // 1-based; 0 for a root
};

inline constexpr const char* kTitlesRoot = "Titles";
inline constexpr const char* kChaptersRoot = "Chapters";
inline constexpr const char* kSetupRoot = "Setup";

// The wizard without its window.
struct Wizard {
    WizardPanel Panel = WizardPanel::SelectTitles;
    bool ProjectMade = false; // the first movie of the wizard makes the project

    std::vector<WizardTitle> List1{};
    int ListIndex = -1;
    std::string Info1{};              // the selected movie's video
    std::vector<std::string> Info2{}; // its audio and subtitle streams

    bool chkCreateTitleMenu = false;
    bool chkCreateChapterMenu = false;
    bool chkCreateSetupMenu = false;

    std::optional<MenuPage> TitlePage{}; // every title, on the title menu's page
    std::string TitleFile{};
    std::vector<std::string> TitleMenus{}; // made by the last step, one per page

    std::vector<WizardRow> TreeView1{};
    int TreeIndex = -1;
    std::string Text1{}; // the file of the selected row
    std::vector<std::string> List2{}; // the files that will be made
    std::vector<std::string> List3{}; // the files made

    bool btnNextEnabled = false;
    bool btnBackEnabled = false;
};

// "Add": the movies chosen in "Select movies", or those given. The first movie of the wizard
// makes the project; a movie the title dialog refuses is not listed. False when none was added.
bool WizardAddTitles(Project& project, Wizard& wizard, std::vector<std::string> files = {});
// "Remove": the selected row and its title.
void WizardRemoveTitle(Project& project, Wizard& wizard);
// "Create chapters": the chapter dialog for the selected title.
bool WizardCreateChapters(Project& project, Wizard& wizard);
// A click in the list: the movie's details, or "Error geting info for file".
void WizardSelectTitle(Project& project, Wizard& wizard, int index);

// "Next" from the titles: the boxes as the titles suggest them.
void WizardShowMenus(Wizard& wizard);
// The boxes as the user clicks them. A setup menu needs a chapter menu: clearing the chapter
// box while the setup box is set puts it back and says so.
void SetChapterMenuBox(Project& project, Wizard& wizard, bool on);
void SetSetupMenuBox(Wizard& wizard, bool on);

// "Next" from the boxes: loads the pages of every wanted menu, title by title, and lists their rows
// and files. False when a page could not be loaded.
bool WizardShowPreview(Project& project, Wizard& wizard);
// The rows and files again from the loaded pages, after one was edited.
void WizardRebuildRows(Wizard& wizard);
// A click on a row: its page is shown and its file goes to Text1.
void WizardSelectRow(Wizard& wizard, int index);
// A new name for the file of the selected row's menu.
void WizardSetFile(Wizard& wizard, const std::string& file);
// The page of a row as it will look; a null picture for a root.
QImage WizardRowPicture(const Wizard& wizard, int index);
// The page a row belongs to, for editing; nullptr for a root or a setup row.
MenuPage* WizardRowPage(Wizard& wizard, int index);
SetupPage* WizardRowSetup(Wizard& wizard, int index);

// "Back": one panel back.
void WizardBack(Wizard& wizard);

// "Create": every wanted menu made and linked. A cancel through the tools' runner, or any
// failure, leaves the project and the files as they were before this step, with the titles of
// the first panel in place.
bool WizardCreate(Project& project, Wizard& wizard, MenuVideoTools* tools = nullptr);

} // namespace mw
