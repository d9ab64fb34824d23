#pragma once

#include "document/Project.h"

class QAction;
class QMainWindow;
class QToolBar;

namespace mw {

class MenuBar;

// Toolbar1 (ToolbarPic stands over the canvas). A button runs its entry of the menu bar and is enabled with it.
class Toolbars {
public:
    Toolbars(QMainWindow& window, const MenuBar& menus);

    // EnableItems and the pressed state for the one button that has no menu entry to follow.
    void ApplyStates(const Project& project);
    // The two-state NoCreateOverlays; its state is the project's.
    QAction* NoCreateOverlays() const { return noCreateOverlays_; }

    QToolBar* Toolbar1() const { return toolbar1_; }

private:
    QAction* noCreateOverlays_ = nullptr; // set while Toolbar1 is built, so it comes first
    QToolBar* toolbar1_;
};

} // namespace mw
