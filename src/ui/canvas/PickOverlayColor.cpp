#include "ui/canvas/PickOverlayColor.h"

#include <QColorDialog>

namespace mw {

namespace {

QColor ToQColor(std::uint32_t c) { return QColor(int(c & 0xFF), int(c >> 8 & 0xFF), int(c >> 16 & 0xFF)); }

std::uint32_t FromQColor(const QColor& c)
{
    return std::uint32_t(c.red()) | std::uint32_t(c.green()) << 8 | std::uint32_t(c.blue()) << 16;
}

} // namespace

std::optional<std::array<std::uint32_t, 3>> PickOverlayColor(QWidget* parent, const std::array<std::uint32_t, 3>& colors,
                                                             int button)
{
    for (int i = 0; i < 3; ++i)
        QColorDialog::setCustomColor(i, ToQColor(colors[std::size_t(i)]));
    // The dialog edits the colour of the button clicked; the other two come back as they were
    // unless the user changed them among the custom colours.
    QColorDialog dialog(ToQColor(colors[std::size_t(button)]), parent);
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    std::array<std::uint32_t, 3> chosen{};
    for (int i = 0; i < 3; ++i)
        chosen[std::size_t(i)] = FromQColor(QColorDialog::customColor(i));
    chosen[std::size_t(button)] = FromQColor(dialog.selectedColor());
    return chosen;
}

} // namespace mw
