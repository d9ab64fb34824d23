#pragma once

#include "document/DocTree.h"

#include <QWidget>

class QLabel;
class QTableWidget;
class QTableWidgetItem;

namespace mw {

// The right pane's property grid Properties1: one line per row "name = value" of the selected
// node, under the label lblPropFor. The objectID row cannot be edited.
class PropertiesPane : public QWidget {
    Q_OBJECT
public:
    explicit PropertiesPane(QWidget* parent = nullptr);

    // Shows the rows of a node; none clears the grid.
    void ShowNode(const DocNode* node);

signals:
    // The user changed the value of a row.
    void RowEdited(const QString& name, const QString& value);

private:
    void OnItemChanged(QTableWidgetItem* item);

    QLabel* label_;
    QTableWidget* grid_;
};

} // namespace mw
