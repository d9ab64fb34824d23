#include "render/OverlayCanvas.h"

#include "render/OverlayFont.h"
#include "render/OverlayScheme.h"
#include "render/PixelRow.h"

#include <QFontMetrics>

#include <algorithm>
#include <vector>

namespace mw {

namespace {

QColor ToQColor(Colour colour) { return QColor(int(colour & 0xFF), int(colour >> 8 & 0xFF), int(colour >> 16 & 0xFF)); }

// Pens of more than one pixel have round ends and joins, as the Windows pens had.
QPen OverlayPen(int penWidth, Colour colour)
{
    QPen pen(ToQColor(colour), penWidth > 1 ? penWidth : 0);
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    return pen;
}

// Line ends as the text box holds them ("\r\n") are single line breaks for the layout.
QString LayoutText(const std::string& text)
{
    QString result = QString::fromStdString(text);
    result.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    result.replace(QChar('\r'), QChar('\n'));
    return result;
}

// A colour off the scheme would be a fault of the drawing (a blended pixel); it goes to a black
// entry, where it shows, rather than to a scheme colour, where it would hide.
constexpr std::uint32_t kStrayIndex = 4;

std::uint32_t IndexOf(QRgb pixel)
{
    switch (pixel & 0xFFFFFF) {
    case 0x0000FF:
        return 0;
    case 0xFF0000:
        return 1;
    case 0xFFFF00:
        return 2;
    case 0xFFFFFF:
        return 3;
    default:
        return kStrayIndex;
    }
}

} // namespace

OverlayCanvas::OverlayCanvas(int width, int height)
{
    if (width <= 0 || height <= 0 || width > cDIB::kMaxSide || height > cDIB::kMaxSide)
        return;
    image_ = QImage(width, height, QImage::Format_RGB32);
    image_.fill(ToQColor(kOverlayBlue));
    painter_.begin(&image_);
    painter_.setRenderHint(QPainter::Antialiasing, false);
    painter_.setRenderHint(QPainter::TextAntialiasing, false);
    painter_.setBrush(Qt::NoBrush);
    SetFont({"Arial", 18});
    // Shapes are drawn on the pixel centres, so a pen is centred on the pixels of its outline.
    painter_.translate(0.5, 0.5);
}

void OverlayCanvas::DrawLine(int x1, int y1, int x2, int y2, int penWidth, Colour colour)
{
    if (!painter_.isActive())
        return;
    painter_.setPen(OverlayPen(penWidth, colour));
    painter_.drawLine(x1, y1, x2, y2);
}

void OverlayCanvas::DrawRect(int x1, int y1, int x2, int y2, int penWidth, Colour colour)
{
    if (!painter_.isActive() || penWidth <= 0)
        return;
    // Four bands, so that the corners are square and every width lands where the header says.
    const int outer = penWidth / 2;
    const int left = x1 - outer;
    const int top = y1 - outer;
    const int right = x2 - 1 - outer;
    const int bottom = y2 - 1 - outer;
    const QColor c = ToQColor(colour);
    painter_.save();
    painter_.resetTransform();
    const int spanW = right + penWidth - left;
    const int spanH = bottom + penWidth - top;
    painter_.fillRect(left, top, spanW, penWidth, c);
    painter_.fillRect(left, bottom, spanW, penWidth, c);
    painter_.fillRect(left, top, penWidth, spanH, c);
    painter_.fillRect(right, top, penWidth, spanH, c);
    painter_.restore();
}

void OverlayCanvas::DrawEllipse(int x1, int y1, int x2, int y2, int penWidth, Colour colour)
{
    if (!painter_.isActive())
        return;
    painter_.setPen(OverlayPen(penWidth, colour));
    painter_.drawEllipse(QRectF(x1, y1, x2 - 1 - x1, y2 - 1 - y1));
}

void OverlayCanvas::SetFont(const FontChoice& font)
{
    font_ = OverlayFont(font);
    if (painter_.isActive())
        painter_.setFont(font_);
}

int OverlayCanvas::TextFlags(TextAlign align, bool wordBreak) const
{
    const int horizontal = align == TextAlign::Left     ? Qt::AlignLeft
                           : align == TextAlign::Centre ? Qt::AlignHCenter
                                                        : Qt::AlignRight;
    return horizontal | Qt::AlignTop | (wordBreak ? Qt::TextWordWrap : 0);
}

int OverlayCanvas::MeasureText(const std::string& text, const QRect& rect, bool wordBreak) const
{
    return QFontMetrics(font_).boundingRect(rect, TextFlags(TextAlign::Left, wordBreak), LayoutText(text)).height();
}

void OverlayCanvas::DrawTextOutlined(const std::string& text, QRect rect, int outline, Colour outlineColour,
                                     TextAlign align, TextVAlign vAlign, bool wordBreak)
{
    if (!painter_.isActive())
        return;
    const QString layout = LayoutText(text);
    const int flags = TextFlags(align, wordBreak);
    const int height = QFontMetrics(font_).boundingRect(rect, flags, layout).height();
    if (height < rect.height() && vAlign != TextVAlign::Top) {
        const int top = vAlign == TextVAlign::Centre ? rect.top() + (rect.height() - height) / 2
                                                     : rect.bottom() + 1 - height;
        rect = QRect(rect.left(), top, rect.width(), height);
    }
    if (outline > 0)
        DrawOutline(layout, rect, flags, outline, outlineColour);
    painter_.save();
    painter_.resetTransform();
    painter_.setPen(ToQColor(textColour_));
    painter_.drawText(rect, flags, layout);
    painter_.restore();
}

// The text drawn at every offset of up to n pixels each way covers what the text itself covers,
// grown by a square of 2n + 1 pixels. So it is drawn once into a mask, which is grown along the
// rows and then along the columns: the same pixels as (2n + 1) squared drawings, at the cost of
// one.
void OverlayCanvas::DrawOutline(const QString& layout, const QRect& rect, int flags, int n, Colour colour)
{
    // Glyphs may reach past the measured box (italics), and pixels up to n outside the canvas
    // grow into it.
    const int margin = n + font_.pixelSize();
    const QRect box = QFontMetrics(font_).boundingRect(rect, flags, layout).adjusted(-margin, -margin, margin, margin) &
                      image_.rect().adjusted(-n, -n, n, n);
    if (box.isEmpty())
        return;
    QImage mask(box.size(), QImage::Format_Grayscale8);
    mask.fill(0);
    {
        QPainter p(&mask);
        p.setFont(font_);
        p.setPen(Qt::white);
        p.translate(-box.topLeft());
        p.drawText(rect, flags, layout);
    }
    const int w = box.width();
    const int h = box.height();
    std::vector<std::uint8_t> rows(std::size_t(w) * std::size_t(h), 0);
    for (int y = 0; y < h; ++y) {
        const std::uint8_t* line = mask.constScanLine(y);
        std::uint8_t* grown = rows.data() + std::size_t(y) * std::size_t(w);
        for (int x = 0; x < w; ++x) {
            if (line[x] == 0)
                continue;
            std::fill(grown + std::max(0, x - n), grown + std::min(w, x + n + 1), std::uint8_t(1));
        }
    }
    const QRgb pen = ToQColor(colour).rgb();
    for (int y = 0; y < h; ++y) {
        const int top = std::max(0, y - n);
        const int bottom = std::min(h - 1, y + n);
        const int canvasY = box.top() + y;
        if (canvasY < 0 || canvasY >= Height())
            continue;
        auto* target = reinterpret_cast<QRgb*>(image_.scanLine(canvasY));
        for (int x = 0; x < w; ++x) {
            const int canvasX = box.left() + x;
            if (canvasX < 0 || canvasX >= Width())
                continue;
            for (int v = top; v <= bottom; ++v) {
                if (rows[std::size_t(v) * std::size_t(w) + std::size_t(x)] != 0) {
                    target[canvasX] = pen;
                    break;
                }
            }
        }
    }
}

cDIB OverlayCanvas::ToDib() const
{
    cDIB dib = NewOverlayDib(Width(), Height());
    if (dib.Empty())
        return dib;
    // Two pixels to a byte, the left one in the high half: this runs at every repaint.
    for (int y = 0; y < Height(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(image_.constScanLine(y));
        std::uint8_t* to = RowOf(dib, y);
        const int pairs = Width() / 2;
        for (int i = 0; i < pairs; ++i)
            to[i] = std::uint8_t(IndexOf(from[2 * i]) << 4 | IndexOf(from[2 * i + 1]));
        if (Width() % 2 != 0)
            to[pairs] = std::uint8_t(IndexOf(from[Width() - 1]) << 4);
    }
    return dib;
}

} // namespace mw
