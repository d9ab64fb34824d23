#include "ui/panels/frmProp.h"

#include "document/Project.h"
#include "menus/Actions.h"
#include "menus/PropertyPanels.h"
#include "ui/panels/PropertiesGrid.h"

#include <QGroupBox>
#include <QListWidget>
#include <QVBoxLayout>

namespace mw {

frmProp::frmProp(Project& project, EditRunner edit)
    : PropertyPanel(project, project.Values().PropMiddle, std::move(edit))
{
    auto* frame = new QGroupBox("Button action");
    frame->setObjectName("Frame1");
    auto* frameLayout = new QVBoxLayout(frame);
    lstButtonActions_ =
        AddActionList(*frameLayout, "lstButtonActions", "cmdAddButtonAction", "cmdRemoveButtonAction", "selectAction", true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(&Grid(), 1);
    layout->addWidget(frame);
    connect(&Grid(), &PropertiesGrid::ValueChanged, this, [this](int row, const QString& value) {
        Edit([&] { PropButton_ValueChanged(project_, row, value.toStdString()); });
    });
    Reload();
}

void frmProp::Reload()
{
    const std::vector<PanelRow> rows = ButtonPanelRows(project_);
    Grid().ShowRows(rows);
    std::vector<std::string> names;
    if (!rows.empty()) {
        for (const ActionRow& action : LoadActionRows(project_.Doc.Tree, rows[1].Value))
            names.push_back(action.Type);
    }
    ShowActionNames(*lstButtonActions_, names);
    setEnabled(!rows.empty());
}

} // namespace mw
