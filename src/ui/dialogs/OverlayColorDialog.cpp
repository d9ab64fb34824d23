#include "ui/dialogs/OverlayColorDialog.h"

#include "ui/QtColor.h"

#include <QColorDialog>

namespace mw {

bool ShowOverlayColorDialog(std::array<std::uint32_t, 3>& colors, QWidget* parent)
{
    for (std::size_t i = 0; i < colors.size(); ++i)
        QColorDialog::setCustomColor(static_cast<int>(i), ToQColor(colors[i]));
    QColorDialog dialog(ToQColor(colors[0]), parent);
    dialog.setObjectName("SelectColor");
    // Qt's own dialog: the desktop's may not show the custom colours.
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    for (std::size_t i = 0; i < colors.size(); ++i)
        colors[i] = FromQColor(QColorDialog::customColor(static_cast<int>(i)));
    return true;
}

} // namespace mw
