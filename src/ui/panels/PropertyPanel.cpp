#include "ui/panels/PropertyPanel.h"

#include "menus/Actions.h"
#include "ui/dialogs/NamedControls.h"
#include "ui/panels/PropertiesGrid.h"

#include <QBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

namespace mw {

PropertyPanel::PropertyPanel(Project& project, int& middle, EditRunner edit)
    : project_(project), middle_(middle), edit_(std::move(edit)), grid_(new PropertiesGrid(this))
{
    grid_->SetMiddleWidth(middle);
}

void PropertyPanel::KeepSplit() const
{
    middle_ = grid_->MiddleWidth();
}

void PropertyPanel::Refresh()
{
    if (reloadPending_)
        return;
    reloadPending_ = true;
    QTimer::singleShot(0, this, [this] {
        reloadPending_ = false;
        Reload();
    });
}

QListWidget* PropertyPanel::AddActionList(QBoxLayout& layout, const char* list, const char* add, const char* remove,
                                          std::string listName, bool isButton)
{
    auto* names = new QListWidget;
    names->setObjectName(list);
    // A few actions show at once; the room goes to the grid.
    names->setMaximumHeight(names->fontMetrics().height() * 3 + 2 * names->frameWidth());
    auto* addButton = NamedButton(add, "Edit...");
    addButton->setToolTip("Add new or edit current action");
    auto* removeButton = NamedButton(remove, "Delete");
    removeButton->setToolTip("Delete current action");
    // The buttons stand beside the list, so that the grid keeps the height.
    auto* buttons = new QVBoxLayout;
    buttons->addWidget(addButton);
    buttons->addWidget(removeButton);
    buttons->addStretch();
    auto* line = new QHBoxLayout;
    line->addWidget(names, 1);
    line->addLayout(buttons);
    layout.addLayout(line);
    connect(addButton, &QPushButton::clicked, this,
            [this, listName, isButton] { Edit([&] { EditActionList(project_, listName, isButton); }); });
    connect(removeButton, &QPushButton::clicked, this, [this, names, listName, isButton] {
        const int row = names->currentRow();
        Edit([&] { RemoveActionAt(project_, listName, isButton, row); });
    });
    return names;
}

void PropertyPanel::ShowActionNames(QListWidget& list, const std::vector<std::string>& names)
{
    list.clear();
    for (const std::string& name : names)
        list.addItem(QString::fromStdString(name));
    if (list.count() > 0)
        list.setCurrentRow(0);
}

} // namespace mw
