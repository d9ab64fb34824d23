#pragma once

#include "document/DocTree.h"

#include <QAbstractItemModel>

namespace mw {

// TreeView1's model: the document tree itself, read in place. Each index points at its DocNode.
class DocTreeModel : public QAbstractItemModel {
    Q_OBJECT
public:
    explicit DocTreeModel(const DocTree& tree, QObject* parent = nullptr) : QAbstractItemModel(parent), tree_(tree) {}

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    static DocNode* NodeOf(const QModelIndex& index);
    QModelIndex IndexOf(const DocNode* node) const;

    // Around any change of the tree's shape: replacing the project, removing or adding nodes.
    // While detached the view shows no rows and so holds no index into the tree: a command may
    // open dialogs, whose event loops repaint the view, and change the tree inside them. Each
    // reset is whole at once and never spans an event loop.
    void Detach();
    void Reattach();
    // The texts of a node's children changed, their number did not.
    void ChildrenChanged(const DocNode& node);

private:
    const DocTree& tree_;
    bool detached_ = false;
};

} // namespace mw
