#pragma once

#include "document/Project.h"

#include <functional>

#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

class QAction;
class QMainWindow;
class QMenu;

namespace mw {

// What decides whether a menu entry is enabled.
enum class CommandSource {
    Always,   // a command that needs no project
    Document, // EnableItems: on while a project is open
    State,    // one of the project's command states
    Rule,     // a rule over the project's state
    Submenu,  // a menu holding the entries that name it
};

// One line of the menu bar. A separator has no caption.
struct MenuEntry {
    const char* Menu;     // object name of the menu holding it; empty for the bar
    const char* Caption;
    const char* Shortcut; // in QKeySequence's portable form
    const char* Name;     // the control name, which is the Qt object name
    CommandSource Source = CommandSource::Always;
    bool CommandStates::*State = nullptr;
    bool (*Rule)(const Project&) = nullptr;
    bool Checkable = false;
};

// The whole menu bar of the main window, in order.
std::span<const MenuEntry> MainMenuEntries();

// Builds the main window's menu bar from the table and keeps its entries enabled as the
// project says.
class MenuBar {
public:
    explicit MenuBar(QMainWindow& window);

    QAction* Action(const std::string& name) const;
    QMenu* Menu(const std::string& name) const;

    void ApplyStates(const Project& project);
    // After the language file relabelled the window: the recent entries show their files again.
    void AfterRelabel();
    // mnuRecent: one entry per file, or one disabled "No files". `open` gets the entry's index.
    // Does nothing while the list is the one shown.
    void FillRecent(const std::vector<std::string>& files, const LangDoc& lang,
                    const std::function<void(std::size_t)>& open);

private:
    std::map<std::string, QAction*> actions_;
    std::map<std::string, QMenu*> menus_;
    std::optional<std::vector<std::string>> recentShown_;
};

} // namespace mw
