#pragma once

#include "media/NewTitleForm.h"

#include <string>

namespace mw {

class Project;

// The dialog that picks the language of a new menu set (frmNewLang).
struct NewLangForm {
    std::string Caption = "Add Language Menu";
    std::string Label = "Language Code";
    ComboList Combo1; // the rows of the language list
};

// The form as it opens: every language, the default menu language selected.
void LoadNewLangForm(NewLangForm& form, const std::string& defLang);
// Adds a menu set for the language of the chosen row. False, with "This language exist", when
// the project has one already; the project then stays as it was.
bool AddLanguage(Project& project, const NewLangForm& form);
// The "Add language menu" command: the form, then AddLanguage when it is accepted.
void mnuAddLang(Project& project);

// The "Remove language menu" command: the set of the selected node, after a question, with
// all its menus.
void mnuRemoveLang(Project& project);

} // namespace mw
