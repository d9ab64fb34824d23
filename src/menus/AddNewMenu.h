#pragma once

#include <string>

namespace mw {

class Project;
struct NewMenuForm;

// Makes a menu from the new-menu form: shown first when showDialog is set (the language combo
// filled for it), else taken as the caller filled it. Returns the new menu's identifier, empty
// when the dialog was cancelled. The first menu of a language becomes its starting menu.
std::string AddNewMenu(Project& project, NewMenuForm& form, bool showDialog);

} // namespace mw
