#include "ui/mainwindow/DocTreeModel.h"

#include "ui/mainwindow/NodeIcons.h"

namespace mw {

DocNode* DocTreeModel::NodeOf(const QModelIndex& index)
{
    return index.isValid() ? static_cast<DocNode*>(index.internalPointer()) : nullptr;
}

QModelIndex DocTreeModel::IndexOf(const DocNode* node) const
{
    if (!node)
        return {};
    return createIndex(static_cast<int>(node->PositionInParent()), 0, const_cast<DocNode*>(node));
}

void DocTreeModel::Detach()
{
    beginResetModel();
    detached_ = true;
    endResetModel();
}

void DocTreeModel::Reattach()
{
    beginResetModel();
    detached_ = false;
    endResetModel();
}

QModelIndex DocTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (detached_ || row < 0 || column != 0)
        return {};
    const auto at = static_cast<std::size_t>(row);
    if (const DocNode* holder = NodeOf(parent))
        return at < holder->ChildCount() ? createIndex(row, 0, holder->Child(at)) : QModelIndex();
    return at < tree_.TopLevelCount() ? createIndex(row, 0, tree_.TopLevel(at)) : QModelIndex();
}

QModelIndex DocTreeModel::parent(const QModelIndex& child) const
{
    const DocNode* node = NodeOf(child);
    return node ? IndexOf(node->Parent()) : QModelIndex();
}

int DocTreeModel::rowCount(const QModelIndex& parent) const
{
    if (detached_ || parent.column() > 0)
        return 0;
    if (const DocNode* node = NodeOf(parent))
        return static_cast<int>(node->ChildCount());
    return static_cast<int>(tree_.TopLevelCount());
}

int DocTreeModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant DocTreeModel::data(const QModelIndex& index, int role) const
{
    const DocNode* node = NodeOf(index);
    if (!node)
        return {};
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return QString::fromStdString(node->Text);
    if (role == Qt::DecorationRole)
        return NodeIcon(node->Image);
    return {};
}

void DocTreeModel::ChildrenChanged(const DocNode& node)
{
    if (!node.HasChildren())
        return;
    emit dataChanged(IndexOf(node.FirstChild()), IndexOf(node.LastChild()), {Qt::DisplayRole});
}

} // namespace mw
