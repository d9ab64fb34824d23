#include "ui/panels/frmPropMenu.h"

#include "document/Project.h"
#include "menus/Actions.h"
#include "menus/PropertyPanels.h"
#include "ui/dialogs/NamedControls.h"
#include "ui/panels/PropertiesGrid.h"

#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

namespace mw {

frmPropMenu::frmPropMenu(Project& project, EditRunner edit)
    : PropertyPanel(project, project.Values().PropMenuMiddle, std::move(edit))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(&Grid(), 1);
    layout->addWidget(NamedLabel("Label1", "enterAction"));
    lstEnter_ = AddActionList(*layout, "lstEnter", "cmdAddMenuAction", "cmdRemoveMenuAction", "enterAction", false);
    layout->addWidget(NamedLabel("Label2", "exitAction"));
    lstExit_ = AddActionList(*layout, "lstExit", "Command1", "Command2", "exitAction", false);
    connect(&Grid(), &PropertiesGrid::ValueChanged, this, [this](int row, const QString& value) {
        Edit([&] { PropMenu_ValueChanged(project_, row, value.toStdString()); });
        // A refused value shows the old one again.
        Refresh();
    });
    Reload();
}

void frmPropMenu::Reload()
{
    const std::vector<PanelRow> rows = MenuPanelRows(project_);
    Grid().ShowRows(rows);
    const MenuActionLists lists = LoadActionsFromMenu(project_);
    ShowActionNames(*lstEnter_, lists.Enter);
    ShowActionNames(*lstExit_, lists.Exit);
    setEnabled(!rows.empty());
}

} // namespace mw
