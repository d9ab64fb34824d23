#pragma once

#include "core/Prompt.h"
#include "render/cDIB.h"

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QRect>

#include <string>

namespace mw {

enum class TextAlign { Left, Centre, Right };
enum class TextVAlign { Top, Centre, Bottom };

// Where an overlay is drawn: an RGB picture cleared to the transparent blue, drawn on without
// anti-aliasing in the pure colours of the overlay scheme, then turned into the 4-bit picture.
// Coordinates are those of the Windows drawing calls: a rectangle from (x1, y1) to (x2, y2)
// covers the pixels x1 to x2 - 1 and y1 to y2 - 1, and a pen wider than one pixel is centred on
// that outline, an even width giving its extra pixel to the outer side of the left and top edge.
class OverlayCanvas {
public:
    OverlayCanvas(int width, int height);
    OverlayCanvas(const OverlayCanvas&) = delete;
    OverlayCanvas& operator=(const OverlayCanvas&) = delete;

    int Width() const { return image_.width(); }
    int Height() const { return image_.height(); }

    void DrawLine(int x1, int y1, int x2, int y2, int penWidth, Colour colour);
    void DrawRect(int x1, int y1, int x2, int y2, int penWidth, Colour colour);
    void DrawEllipse(int x1, int y1, int x2, int y2, int penWidth, Colour colour);

    Colour TextColor() const { return textColour_; }
    void SetTextColor(Colour colour) { textColour_ = colour; }
    void SetFont(const FontChoice& font);

    // The height of the text laid out in the width of the rectangle (line ends kept, words
    // broken when asked).
    int MeasureText(const std::string& text, const QRect& rect, bool wordBreak) const;
    // The text in the text colour, first drawn at every offset of up to `outline` pixels each way
    // in the outline colour. A text lower than the rectangle is placed in it as asked; a taller
    // one starts at its top.
    void DrawTextOutlined(const std::string& text, QRect rect, int outline, Colour outlineColour, TextAlign align,
                          TextVAlign vAlign, bool wordBreak);

    // The picture on indexes 0 to 3 with the scheme's table; empty for an empty size. Nothing
    // here draws in blue, so index 0 is exactly what was left untouched.
    cDIB ToDib() const;

private:
    int TextFlags(TextAlign align, bool wordBreak) const;
    void DrawOutline(const QString& layout, const QRect& rect, int flags, int n, Colour colour);

    QImage image_;
    QPainter painter_;
    QFont font_;
    Colour textColour_ = 0;
};

} // namespace mw
