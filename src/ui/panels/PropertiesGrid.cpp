#include "ui/panels/PropertiesGrid.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>

namespace mw {

namespace {

QString Q(const std::string& text)
{
    return QString::fromStdString(text);
}

} // namespace

PropertiesGrid::PropertiesGrid(QWidget* parent) : QTableWidget(0, 2, parent)
{
    setObjectName("Properties1");
    horizontalHeader()->hide();
    verticalHeader()->hide();
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setSectionResizeMode(0, QHeaderView::Interactive);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
}

void PropertiesGrid::ShowRows(const std::vector<PanelRow>& rows)
{
    setRowCount(0);
    setRowCount(static_cast<int>(rows.size()));
    for (int i = 0; i < rowCount(); ++i) {
        const PanelRow& row = rows[static_cast<std::size_t>(i)];
        const int number = i + 1;
        auto* label = new QTableWidgetItem(Q(row.Label));
        label->setToolTip(Q(row.LabelToolTip));
        setItem(i, 0, label);
        QWidget* editor = nullptr;
        if (row.Choices.empty()) {
            auto* text = new QLineEdit(Q(row.Value));
            text->setObjectName("Text1_" + QString::number(number));
            connect(text, &QLineEdit::editingFinished, this, [this, text, number, shown = text->text()] {
                if (text->text() != shown)
                    emit ValueChanged(number, text->text());
            });
            editor = text;
        } else {
            auto* combo = new QComboBox;
            combo->setObjectName("Combo1_" + QString::number(number));
            for (const std::string& choice : row.Choices)
                combo->addItem(Q(choice));
            if (combo->findText(Q(row.Value)) < 0)
                combo->insertItem(0, Q(row.Value));
            combo->setCurrentIndex(combo->findText(Q(row.Value)));
            connect(combo, &QComboBox::activated, this,
                    [this, combo, number](int index) { emit ValueChanged(number, combo->itemText(index)); });
            editor = combo;
        }
        editor->setToolTip(Q(row.TextToolTip));
        editor->setEnabled(row.Enabled);
        setCellWidget(i, 1, editor);
    }
}

int PropertiesGrid::MiddleWidth() const
{
    return columnWidth(0);
}

void PropertiesGrid::SetMiddleWidth(int width)
{
    setColumnWidth(0, width);
}

} // namespace mw
