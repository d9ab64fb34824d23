#include "ui/mainwindow/MenuActions.h"

#include "document/Project.h"
#include "menus/Buttons.h"
#include "menus/LanguageCommands.h"
#include "menus/MenuBarCommands.h"
#include "menus/MenuTemplates.h"
#include "ui/generators/GeneratorWindow.h"
#include "ui/generators/ManyMoviesWindow.h"
#include "ui/mainwindow/MenuBar.h"
#include "ui/subedit/frmButtonsFromDVDSubEdit.h"
#include "ui/wizard/WizardWindow.h"

#include <array>

namespace mw {

namespace {

const std::array kActions{
    MenuAction{"mnuAddLang", &mnuAddLang},
    MenuAction{"mnuRemoveLang", &mnuRemoveLang},
    MenuAction{"mnuAddMenu", [](Project& project) { mnuAddMenu(project); }},
    MenuAction{"mnuRemoveMenu", &mnuRemoveMenu},
    MenuAction{"mnuAddButton", &mnuAddButton},
    MenuAction{"mnuRemoveButton", &mnuRemoveButton},
    MenuAction{"mnuCopyButtons2", &mnuCopyButtons},
    MenuAction{"mnuPasteButtons2", &mnuPasteButtons},
    MenuAction{"mnuCopySize2", &mnuCopySize},
    MenuAction{"mnuPasteSize2", &mnuPasteSize},
    MenuAction{"mnuExportToTemplate", [](Project& project) { mnuExportToTemplate(project); }},
    MenuAction{"mnuInsertTemplate", [](Project& project) { mnuInsertTemplate(project); }},
    MenuAction{"mnuMoviesWithMenu", &mnuMoviesWithMenu},
    MenuAction{"mnuCreateVisualMenuForChapters", &mnuCreateVisualMenuForChapters},
    MenuAction{"mnuSetup", &mnuSetup},
    MenuAction{"mnuButtonsFromDVDSubEdit", &mnuButtonsFromDVDSubEdit},
    MenuAction{"mnuNewWizard", &mnuNewWizard},
};

} // namespace

std::span<const MenuAction> MenuActions()
{
    return kActions;
}

} // namespace mw
