#pragma once

#include "i18n/TextMeasurer.h"

#include <QFont>
#include <QStringList>

namespace mw {

// Measures formatted text with the fonts the widget paints with: font 0 is the base font, font n
// the n-th name of the font table.
class QtTextMeasurer : public TextMeasurer {
public:
    QtTextMeasurer(QFont base, QStringList fonts);

    QFont FontFor(const FontState& font) const;

    int TextWidth(const FontState& font, std::string_view text) const override;
    int Height(const FontState& font) const override;
    int Ascent(const FontState& font) const override;

private:
    QFont base_;
    QStringList fonts_;
};

} // namespace mw
