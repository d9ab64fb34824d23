#pragma once

#include <span>

namespace mw {

class Project;

// A menu bar entry and the core call it makes. Each of these changes the document tree, so the
// window runs them with its tree view detached.
struct MenuAction {
    const char* Name;
    void (*Run)(Project&);
};

// The entries for languages, menus, buttons, copy and paste, templates, the menu generators and
// the wizard.
std::span<const MenuAction> MenuActions();

} // namespace mw
