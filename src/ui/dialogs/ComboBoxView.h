#pragma once

class QComboBox;
class QWidget;

namespace mw {

struct ComboList;

// A combo box showing a ComboList and keeping its ListIndex as the user picks; its list opens
// 160 pixels wide, as the entries are longer than the box.
QComboBox* ComboBoxView(ComboList& list, const char* name, QWidget* parent);

// Shows the list again after the model changed it.
void RefillComboBox(QComboBox& combo, const ComboList& list);

} // namespace mw
