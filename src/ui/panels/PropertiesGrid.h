#pragma once

#include "menus/PropertyPanels.h"

#include <QTableWidget>

#include <vector>

namespace mw {

// The grid of a property panel (Properties1): a label and an editor per row, a text box
// (Text1_N) or a combo box (Combo1_N), rows counted from 1. The split between the two columns
// is MiddleWidth.
class PropertiesGrid : public QTableWidget {
    Q_OBJECT
public:
    explicit PropertiesGrid(QWidget* parent = nullptr);

    // Clear, then AddLine for each row.
    void ShowRows(const std::vector<PanelRow>& rows);
    int MiddleWidth() const;
    void SetMiddleWidth(int width);

signals:
    // A value the user confirmed: Enter or leaving a text box, a pick in a combo box.
    void ValueChanged(int row, const QString& value);
};

} // namespace mw
