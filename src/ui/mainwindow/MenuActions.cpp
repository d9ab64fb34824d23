#include "ui/mainwindow/MenuActions.h"

#include "document/Project.h"
#include "menus/Buttons.h"
#include "menus/LanguageCommands.h"
#include "menus/MenuBarCommands.h"
#include "ui/mainwindow/MenuBar.h"

#include <array>

namespace mw {

namespace {

// LEAD: at merge, each of these two becomes the one call of the template commands of src/menus/.
void ExportToTemplate(Project& project)
{
    project.Ask().Message(kNotAvailableYet);
}

void InsertTemplate(Project& project)
{
    project.Ask().Message(kNotAvailableYet);
}

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
    MenuAction{"mnuExportToTemplate", &ExportToTemplate},
    MenuAction{"mnuInsertTemplate", &InsertTemplate},
};

} // namespace

std::span<const MenuAction> MenuActions()
{
    return kActions;
}

} // namespace mw
