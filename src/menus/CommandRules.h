#pragma once

namespace mw {

class Project;

// When the menu and button commands of the main window may run; the window enables its entries
// by these, and each reads only the project.
bool MenuOnCanvas(const Project& project);    // add button, the property panels, export
bool CanCopyButtons(const Project& project);  // one or more buttons selected
bool CanPasteButtons(const Project& project); // something copied and a menu to paste into
bool CanCopySize(const Project& project);     // one button selected
bool CanPasteSize(const Project& project);    // one button selected and a size copied
bool CanInsertTemplate(const Project& project); // a language set to insert into

} // namespace mw
