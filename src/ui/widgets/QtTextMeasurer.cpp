#include "ui/widgets/QtTextMeasurer.h"

#include <QFontMetrics>
#include <QString>

#include <utility>

namespace mw {

QtTextMeasurer::QtTextMeasurer(QFont base, QStringList fonts) : base_(std::move(base)), fonts_(std::move(fonts)) {}

QFont QtTextMeasurer::FontFor(const FontState& font) const
{
    QFont result = base_;
    if (font.Font > 0 && font.Font <= fonts_.size())
        result.setFamily(fonts_[font.Font - 1]);
    result.setPointSize(font.Size > 0 ? font.Size : 1);
    result.setBold(font.Bold);
    result.setItalic(font.Italic);
    result.setUnderline(font.Underline);
    return result;
}

int QtTextMeasurer::TextWidth(const FontState& font, std::string_view text) const
{
    const QString shown = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    return QFontMetrics(FontFor(font)).horizontalAdvance(shown);
}

int QtTextMeasurer::Height(const FontState& font) const
{
    return QFontMetrics(FontFor(font)).height();
}

int QtTextMeasurer::Ascent(const FontState& font) const
{
    return QFontMetrics(FontFor(font)).ascent();
}

} // namespace mw
