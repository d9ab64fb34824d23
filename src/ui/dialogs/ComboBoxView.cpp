#include "ui/dialogs/ComboBoxView.h"

#include "media/NewTitleForm.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QSignalBlocker>

namespace mw {

QComboBox* ComboBoxView(ComboList& list, const char* name, QWidget* parent)
{
    auto* combo = new QComboBox(parent);
    combo->setObjectName(name);
    RefillComboBox(*combo, list);
    combo->view()->setMinimumWidth(160);
    QObject::connect(combo, &QComboBox::currentIndexChanged, combo, [&list](int index) { list.ListIndex = index; });
    return combo;
}

void RefillComboBox(QComboBox& combo, const ComboList& list)
{
    const QSignalBlocker quiet(combo);
    combo.clear();
    for (const ComboItem& item : list.Items)
        combo.addItem(QString::fromStdString(item.Text), item.ItemData);
    combo.setCurrentIndex(list.ListIndex);
}

} // namespace mw
