#pragma once

#include <string>

namespace mw {

class Project;

// When the menu and button commands of the main window may run; the window enables its entries
// by these, and each reads only the project.
bool MenuOnCanvas(const Project& project);    // add button, the property panels, export
bool CanCopyButtons(const Project& project);  // one or more buttons in the multi-selection
bool CanPasteButtons(const Project& project); // something copied and a menu to paste into
bool CanCopySize(const Project& project);     // one button selected
bool CanPasteSize(const Project& project);    // one button selected and a size copied
bool CanInsertTemplate(const Project& project); // a language set to insert into
bool HasTitles(const Project& project);       // the generator windows need a title to show

// mnuAddMenu: the new-menu dialog, then the new menu is selected. Returns its identifier, empty
// when cancelled.
std::string mnuAddMenu(Project& project);
// mnuRemoveMenu: the menu that holds the selected node.
void mnuRemoveMenu(Project& project);
// mnuAddButton: the canvas waits for the rectangle of a new button.
void mnuAddButton(Project& project);
// mnuRemoveButton: the buttons of the multi-selection, else the selected button, on the canvas or
// in the tree.
void mnuRemoveButton(Project& project);

} // namespace mw
