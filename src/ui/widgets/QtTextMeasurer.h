#pragma once

#include "i18n/TextMeasurer.h"

#include <QFont>
#include <QImage>
#include <QStringList>

#include <map>
#include <string>

namespace mw {

// Measures formatted text with the fonts the widget paints with: font 0 is the base font, font n
// the n-th name of the font table. Pictures are read once, when measured, and kept for painting.
class QtTextMeasurer : public TextMeasurer {
public:
    QtTextMeasurer(QFont base, QStringList fonts);

    QFont FontFor(const FontState& font) const;

    int TextWidth(const FontState& font, std::string_view text) const override;
    int Height(const FontState& font) const override;
    int Ascent(const FontState& font) const override;
    std::optional<PictureExtent> PictureSize(const std::string& file) const override;

    // A null image for a file that cannot be read.
    const QImage& Picture(const std::string& file) const;

private:
    QFont base_;
    QStringList fonts_;
    mutable std::map<std::string, QImage> pictures_;
};

} // namespace mw
