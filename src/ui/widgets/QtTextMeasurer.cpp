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

std::optional<PictureExtent> QtTextMeasurer::PictureSize(const std::string& file) const
{
    const QImage& picture = Picture(file);
    if (picture.isNull())
        return std::nullopt;
    return PictureExtent{picture.width(), picture.height()};
}

const QImage& QtTextMeasurer::Picture(const std::string& file) const
{
    auto it = pictures_.find(file);
    if (it == pictures_.end())
        it = pictures_.emplace(file, QImage(QString::fromStdString(file))).first;
    return it->second;
}

} // namespace mw
