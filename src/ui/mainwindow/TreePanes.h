#pragma once

#include "document/DocTree.h"

#include <QWidget>

class QAction;
class QTreeView;
class QTreeWidget;
class QTreeWidgetItem;

namespace mw {

class DocTreeModel;
class MenuBar;

// The left pane: TreeView1 (expert mode) or tv2 (simple mode), one of them shown. Selecting
// always goes through TreeView1, whose own selection handler does the rest.
class TreePanes : public QWidget {
    Q_OBJECT
public:
    TreePanes(QTreeView& treeView1, DocTreeModel& model, const DocTree& tree, const MenuBar& menus,
              QWidget* parent = nullptr);

    bool SimpleMode() const;
    void SetSimpleMode(bool simple);
    // Rebuilds tv2 from the document; a hidden tv2 waits until simple mode is chosen.
    void LoadToSimple();
    // TreeView1 shows the node as its selection, and its handler clicks it.
    void SelectInTreeView1(DocNode* node);

private:
    void tv2_Click(QTreeWidgetItem* item);

    QTreeView& treeView1_;
    DocTreeModel& model_;
    const DocTree& tree_;
    QTreeWidget* tv2_;
    QAction* simple_;
    QAction* expert_;
};

} // namespace mw
