#pragma once

#include "document/Project.h"

#include <vector>

class QAction;
class QMainWindow;
class QToolBar;

namespace mw {

class MenuBar;

// Toolbar1 (ToolbarPic stands over the canvas). A button whose command is in the menu bar runs that entry and is
// enabled with it; a button whose command is not in the program yet stays off.
class Toolbars {
public:
    Toolbars(QMainWindow& window, const MenuBar& menus);

    // EnableItems and the pressed state for the one button that has no menu entry to follow.
    void ApplyStates(const Project& project);
    // The two-state NoCreateOverlays; its state is the project's.
    QAction* NoCreateOverlays() const { return noCreateOverlays_; }
    // After the language file relabelled the buttons: those without a command say so again.
    void AfterRelabel();

    QToolBar* Toolbar1() const { return toolbar1_; }

private:
    QAction* noCreateOverlays_ = nullptr; // set while Toolbar1 is built, so it comes first
    std::vector<QAction*> notYet_;        // buttons whose command is not in the program yet
    QToolBar* toolbar1_;
};

} // namespace mw
