#include "ui/mainwindow/PropertiesPane.h"

#include "core/Text.h"
#include "document/TreeQueries.h"

#include <QHeaderView>
#include <QLabel>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

namespace mw {

namespace {

bool IsPropertyRow(const DocNode& row)
{
    return !row.HasChildren() && (row.Image == "prop" || row.Image == "objectid");
}

} // namespace

PropertiesPane::PropertiesPane(QWidget* parent)
    : QWidget(parent), label_(new QLabel(this)), grid_(new QTableWidget(0, 2, this))
{
    label_->setObjectName("lblPropFor");
    grid_->setObjectName("Properties1");
    grid_->horizontalHeader()->hide();
    grid_->verticalHeader()->hide();
    grid_->horizontalHeader()->setStretchLastSection(true);
    grid_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    grid_->verticalHeader()->setDefaultSectionSize(grid_->fontMetrics().height() + 6);
    grid_->setSelectionMode(QAbstractItemView::SingleSelection);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label_);
    layout->addWidget(grid_);
    connect(grid_, &QTableWidget::itemChanged, this, &PropertiesPane::OnItemChanged);
}

void PropertiesPane::ShowNode(const DocNode* node)
{
    const QSignalBlocker quiet(grid_);
    grid_->setRowCount(0);
    label_->setText(node ? QString::fromStdString(node->Text) + " properties" : QString());
    if (!node)
        return;
    for (const auto& row : *node) {
        if (!IsPropertyRow(*row))
            continue;
        const int line = grid_->rowCount();
        grid_->insertRow(line);
        auto* name = new QTableWidgetItem(QString::fromStdString(RowName(row->Text)));
        name->setFlags(name->flags() & ~Qt::ItemIsEditable);
        auto* value = new QTableWidgetItem(QString::fromStdString(RowValue(row->Text)));
        if (EqualsNoCase(RowName(row->Text), "objectid"))
            value->setFlags(value->flags() & ~Qt::ItemIsEditable);
        grid_->setItem(line, 0, name);
        grid_->setItem(line, 1, value);
    }
}

void PropertiesPane::OnItemChanged(QTableWidgetItem* item)
{
    if (item->column() != 1)
        return;
    emit RowEdited(grid_->item(item->row(), 0)->text(), item->text());
}

} // namespace mw
