#include "ui/mainwindow/TreePanes.h"

#include "document/SimpleTree.h"
#include "ui/mainwindow/DocTreeModel.h"
#include "ui/mainwindow/MenuBar.h"
#include "ui/mainwindow/NodeIcons.h"

#include <QAction>
#include <QTreeView>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace mw {

namespace {

// The row's key rides along in the item, for the click.
constexpr int kKeyRole = Qt::UserRole;

void AddRows(QTreeWidgetItem* parent, QTreeWidget* tree, const std::vector<SimpleRow>& rows)
{
    for (const SimpleRow& row : rows) {
        auto* item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(tree);
        item->setText(0, QString::fromStdString(row.Text));
        item->setIcon(0, NodeIcon(row.Icon));
        item->setData(0, kKeyRole, QString::fromStdString(row.Key));
        AddRows(item, tree, row.Children);
    }
}

} // namespace

TreePanes::TreePanes(QTreeView& treeView1, DocTreeModel& model, const DocTree& tree, const MenuBar& menus,
                     QWidget* parent)
    : QWidget(parent), treeView1_(treeView1), model_(model), tree_(tree), tv2_(new QTreeWidget),
      simple_(menus.Action("mnuSimpleMode")), expert_(menus.Action("mnuExpertMode"))
{
    tv2_->setObjectName("tv2");
    tv2_->setHeaderHidden(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(&treeView1_);
    layout->addWidget(tv2_);

    simple_->setCheckable(true);
    expert_->setCheckable(true);
    connect(simple_, &QAction::triggered, this, [this] { SetSimpleMode(true); });
    connect(expert_, &QAction::triggered, this, [this] { SetSimpleMode(false); });
    connect(tv2_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) { tv2_Click(item); });
    SetSimpleMode(false);
}

bool TreePanes::SimpleMode() const
{
    return simple_->isChecked();
}

void TreePanes::SetSimpleMode(bool simple)
{
    simple_->setChecked(simple);
    expert_->setChecked(!simple);
    if (simple)
        LoadToSimple();
    treeView1_.setVisible(!simple);
    tv2_->setVisible(simple);
}

void TreePanes::LoadToSimple()
{
    if (!SimpleMode())
        return;
    tv2_->clear();
    AddRows(nullptr, tv2_, mw::LoadToSimple(tree_));
    tv2_->expandToDepth(0);
}

void TreePanes::tv2_Click(QTreeWidgetItem* item)
{
    const SimpleRow row{item->data(0, kKeyRole).toString().toStdString(), item->text(0).toStdString(), "", {}};
    const std::string key = SimpleRowTarget(row);
    if (key.empty())
        return;
    if (DocNode* node = tree_.Find(key))
        SelectInTreeView1(node);
}

void TreePanes::SelectInTreeView1(DocNode* node)
{
    treeView1_.setCurrentIndex(model_.IndexOf(node));
}

} // namespace mw
