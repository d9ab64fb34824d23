#pragma once

// Pictures as a subtitle editor shows a menu's highlight areas, drawn with known rectangles.

#include <QImage>
#include <QPainter>
#include <QRect>

#include <vector>

namespace mw::test {

struct Highlight {
    QRect Rect;
    QRgb Colour;
};

// On black: a red area with white text inside, a green bar only 4 pixels wide, a yellow square,
// a second red area and a blue square in the lower right corner of the picture.
inline const Highlight kHighlights[] = {
    {{10, 10, 40, 20}, qRgb(255, 0, 0)},  {{60, 10, 4, 30}, qRgb(0, 255, 0)},
    {{80, 10, 30, 30}, qRgb(255, 255, 0)}, {{10, 60, 25, 25}, qRgb(255, 0, 0)},
    {{170, 90, 30, 30}, qRgb(0, 0, 255)},
};

inline QImage HighlightPicture()
{
    QImage picture(200, 120, QImage::Format_RGB32);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    for (const Highlight& h : kHighlights)
        painter.fillRect(h.Rect, QColor::fromRgb(h.Colour));
    painter.fillRect(QRect(20, 16, 12, 6), Qt::white);
    return picture;
}

// What the scan must find in it, in the order of the rows.
inline std::vector<QRect> ExpectedHighlights()
{
    return {kHighlights[0].Rect, kHighlights[2].Rect, kHighlights[3].Rect, kHighlights[4].Rect};
}

// `count` squares of 6 pixels in one row, 10 pixels apart, on grey.
inline QImage GridPicture(int count)
{
    QImage picture(20 + count * 10, 30, QImage::Format_RGB32);
    picture.fill(Qt::gray);
    QPainter painter(&picture);
    for (int i = 0; i < count; ++i)
        painter.fillRect(QRect(10 + i * 10, 10, 6, 6), QColor(i % 2 ? Qt::cyan : Qt::magenta));
    return picture;
}

} // namespace mw::test
