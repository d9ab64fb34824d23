#include "render/OverlayCanvas.h"
#include "render/OverlayFont.h"
#include "render/OverlayPainters.h"
#include "render/OverlayScheme.h"
#include "render/TestBitmaps.h"

#include <QFontInfo>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <set>

namespace mw::test {

namespace {

// The pixels of one index as a picture of flags, shifted by (dx, dy); pixels shifted in from
// outside are false.
std::vector<bool> Mask(const cDIB& dib, std::uint32_t index, int dx = 0, int dy = 0)
{
    std::vector<bool> mask(std::size_t(dib.Width() * dib.Height()));
    for (int y = 0; y < dib.Height(); ++y) {
        for (int x = 0; x < dib.Width(); ++x)
            mask[std::size_t(y * dib.Width() + x)] = dib.Pixel(x - dx, y - dy) == index &&
                                                    x - dx >= 0 && y - dy >= 0 && x - dx < dib.Width() &&
                                                    y - dy < dib.Height();
    }
    return mask;
}

// The rows that hold any pixel of the index, as runs of consecutive rows.
int RowRuns(const cDIB& dib, std::uint32_t index)
{
    int runs = 0;
    bool previous = false;
    for (int y = 0; y < dib.Height(); ++y) {
        bool inked = false;
        for (int x = 0; x < dib.Width() && !inked; ++x)
            inked = dib.Pixel(x, y) == index;
        runs += inked && !previous;
        previous = inked;
    }
    return runs;
}

const FontChoice kArial{"Arial", 18};

} // namespace

// Odd and even pens both end up with their line right inside the one-pixel frame on all four
// sides: the even pen's extra outer pixel is what the shifted start makes up for.
TEST(OverlayPainters, RectLineSitsInsideTheFrameWithoutGapForOddAndEvenWidths)
{
    for (const int lineWidth : {1, 2, 3, 4, 5, 8}) {
        const int w = 40 + lineWidth;
        const int h = 27;
        const cDIB dib = CreateRect(lineWidth, w, h);
        ASSERT_EQ(dib.BPP(), 4);
        EXPECT_EQ(dib.GetColorTable(), OverlayColorTable());
        for (int y = 0; y < h; ++y) {
            for (int x = 0; x < w; ++x) {
                const bool frame = x == 0 || y == 0 || x == w - 1 || y == h - 1;
                const auto inBand = [&](int v, int size) { return v <= lineWidth || v >= size - 1 - lineWidth; };
                const std::uint32_t expected = frame ? 2 : (inBand(x, w) || inBand(y, h)) ? 1 : 0;
                ASSERT_EQ(dib.Pixel(x, y), expected) << "width " << lineWidth << " at " << x << "," << y;
            }
        }
    }
}

TEST(OverlayPainters, OvalTouchesItsBoxAtTheMiddlesAndLeavesCornersAndCentre)
{
    for (const int lineWidth : {1, 3}) {
        const cDIB dib = CreateOval(lineWidth, 61, 41);
        // The box runs from lineWidth - 1 to size - lineWidth, the pen centred on it.
        const int first = lineWidth - 1 - lineWidth / 2;
        for (int i = 0; i < lineWidth; ++i) {
            EXPECT_EQ(dib.Pixel(30, first + i), 1u) << lineWidth;
            EXPECT_EQ(dib.Pixel(first + i, 20), 1u) << lineWidth;
            EXPECT_EQ(dib.Pixel(30, 40 - first - i), 1u) << lineWidth;
        }
        EXPECT_EQ(dib.Pixel(30, first + lineWidth), 0u);
        EXPECT_EQ(dib.Pixel(30, 20), 0u);
        EXPECT_EQ(dib.Pixel(0, 0), 0u);
        EXPECT_EQ(dib.Pixel(60, 40), 0u);
        EXPECT_EQ(ValuesIn(dib), (std::set<std::uint32_t>{0, 1}));
    }
}

// 90 by 35 puts three of the coordinates on a half: X3 = 22.5, X4 = 67.5 and Y3 = 32.5 go to
// the even neighbours 22, 68 and 32.
TEST(OverlayPainters, Shape1RoundsItsCoordinatesToEven)
{
    const cDIB dib = CreateShape1(1, 90, 35);
    struct Case {
        int X, Y;
        std::uint32_t Index;
    };
    const Case cases[] = {
        {10, 32, 1}, {22, 32, 1}, {23, 32, 0}, {67, 32, 0}, {68, 32, 1}, {89, 32, 1}, // bracket feet
        {10, 33, 0}, {10, 31, 0},                                                     // Y3 is 32
        {0, 7, 1},   {17, 7, 1},  {18, 7, 1},  {72, 7, 1},  {89, 7, 1},               // Y1 lines and top
        {18, 27, 1}, {71, 27, 1}, {72, 27, 0}, {45, 28, 0}, {45, 20, 0},              // rectangle
    };
    for (const Case& c : cases)
        EXPECT_EQ(dib.Pixel(c.X, c.Y), c.Index) << c.X << "," << c.Y;
}

TEST(OverlayPainters, TextLayersBodyOutlineAndShadowOnTheirIndexes)
{
    NeedFontApplication();
    const std::string text = "Play";
    const cDIB plain = CreateText(120, 50, text, 0, "0RB", kArial);
    EXPECT_EQ(ValuesIn(plain), (std::set<std::uint32_t>{0, 1}));
    EXPECT_EQ(CreateText(120, 50, text, 0, "", kArial), plain);
    EXPECT_EQ(CreateText(120, 50, text, 0, "0LT", kArial), plain);

    EXPECT_EQ(ValuesIn(CreateText(120, 50, text, 2, "0RB", kArial)), (std::set<std::uint32_t>{0, 1, 2}));

    // The shadow is the body moved towards its corner, showing where the body is not.
    struct Corner {
        std::string Shadow;
        int Dx, Dy;
    };
    for (const Corner& c : {Corner{"3RB", 3, 3}, Corner{"3LT", -3, -3}, Corner{"3RT", 3, -3}, Corner{"3LB", -3, 3}}) {
        const cDIB shadowed = CreateText(120, 50, text, 0, c.Shadow, kArial);
        std::vector<bool> expected = Mask(plain, 1, c.Dx, c.Dy);
        const std::vector<bool> body = Mask(plain, 1);
        for (std::size_t i = 0; i < expected.size(); ++i)
            expected[i] = expected[i] && !body[i];
        EXPECT_EQ(Mask(shadowed, 3), expected) << c.Shadow;
        EXPECT_EQ(Mask(shadowed, 1), body) << c.Shadow;
    }
    EXPECT_EQ(CreateText(120, 50, text, 1, "2XY", kArial), CreateText(120, 50, text, 1, "2LB", kArial));
}

TEST(OverlayPainters, TextKeepsItsLineEndsAndIsCentredAsABlock)
{
    NeedFontApplication();
    const cDIB one = CreateText(200, 120, "HH", 0, "0RB", kArial);
    const cDIB two = CreateText(200, 120, "HH\r\nHH", 0, "0RB", kArial);
    EXPECT_EQ(RowRuns(one, 1), 1);
    EXPECT_EQ(RowRuns(two, 2), 0);
    EXPECT_EQ(RowRuns(two, 1), 2);
    // "HH" has no ascender or descender beyond the cap height, so its ink is as centred as the
    // block: equal margins within a pixel or two of rounding.
    int left = 200, right = 0, top = 120, bottom = 0;
    for (int y = 0; y < 120; ++y) {
        for (int x = 0; x < 200; ++x) {
            if (one.Pixel(x, y) == 1) {
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
        }
    }
    EXPECT_NEAR(left, 199 - right, 2);
    EXPECT_NEAR(top, 119 - bottom, 6);
}

TEST(OverlayPainters, ArialFallsBackToAMetricCompatibleFamily)
{
    NeedFontApplication();
    EXPECT_EQ(QFontInfo(OverlayFont(kArial)).family(), QStringLiteral("Liberation Sans"));
    const FontChoice parsed = FontFromAttribute("Times New Roman,B,I", 12.5);
    EXPECT_EQ(parsed.Family, "Times New Roman");
    EXPECT_TRUE(parsed.Bold);
    EXPECT_TRUE(parsed.Italic);
    EXPECT_FALSE(FontFromAttribute("Arial,I", 18).Bold);
    EXPECT_EQ(OverlayFont(parsed).pixelSize(), 17); // 12.5 pt at 96 dpi, 16.67 rounded
}

// The outline is made by growing the text once; it must be what drawing the text at every
// offset gives, also where the text runs off the canvas.
TEST(OverlayPainters, OutlineIsTheTextDrawnAtEveryOffset)
{
    NeedFontApplication();
    const FontChoice fonts[] = {kArial, {"Times New Roman", 26, true, true}};
    const QRect rects[] = {{0, 0, 160, 70}, {-40, -12, 160, 70}, {90, 40, 160, 70}};
    for (const FontChoice& font : fonts) {
        for (const QRect& rect : rects) {
            for (const int outline : {1, 3}) {
                const std::string text = "Wave fly\nÄj";
                OverlayCanvas canvas(160, 70);
                canvas.SetFont(font);
                canvas.SetTextColor(kOverlayRed);
                canvas.DrawTextOutlined(text, rect, outline, kOverlayYellow, TextAlign::Centre, TextVAlign::Top, true);
                const cDIB fast = canvas.ToDib();

                QImage reference(160, 70, QImage::Format_RGB32);
                reference.fill(QColor(0, 0, 255));
                QPainter p(&reference);
                p.setFont(OverlayFont(font));
                p.setPen(QColor(255, 255, 0));
                const int flags = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap;
                for (int dx = -outline; dx <= outline; ++dx) {
                    for (int dy = -outline; dy <= outline; ++dy)
                        p.drawText(rect.translated(dx, dy), flags, QString::fromStdString(text));
                }
                p.setPen(QColor(255, 0, 0));
                p.drawText(rect, flags, QString::fromStdString(text));
                p.end();
                int differences = 0;
                for (int y = 0; y < 70; ++y) {
                    for (int x = 0; x < 160; ++x)
                        differences += fast.ColourOf(fast.Pixel(x, y)) != Rgb(std::uint8_t(qRed(reference.pixel(x, y))),
                                                                              std::uint8_t(qGreen(reference.pixel(x, y))),
                                                                              std::uint8_t(qBlue(reference.pixel(x, y))));
                }
                EXPECT_EQ(differences, 0) << font.Family << " outline " << outline << " at " << rect.x() << ","
                                          << rect.y();
            }
        }
    }
}

// Whatever the painter, size, pen, font or outline, every pixel is on one of the four indexes:
// a blended pixel would land on a black entry above them. No painter draws in blue, so index 0
// is exactly the untouched area.
TEST(OverlayPainters, EveryPainterStaysOnTheFourIndexes)
{
    NeedFontApplication();
    const std::pair<int, int> sizes[] = {{1, 1}, {2, 5}, {15, 15}, {31, 17}, {100, 40}, {257, 91}};
    const FontChoice fonts[] = {kArial, {"Arial", 9, true, false}, {"Times New Roman", 24, false, true},
                                {"Courier New", 14, true, true}, {"DejaVu Sans", 30}};
    for (const auto& [w, h] : sizes) {
        for (int lineWidth = 1; lineWidth <= 6; ++lineWidth) {
            for (const char* painter : {"CreateRect", "CreateOval", "CreateShape1"}) {
                OverlayParams params;
                params.LineWidth = lineWidth;
                const cDIB dib = PaintByFunctionName(painter, w, h, params);
                ASSERT_EQ(dib.Width(), w);
                for (const std::uint32_t index : ValuesIn(dib))
                    ASSERT_LE(index, 3u) << painter << " " << w << "x" << h << " pen " << lineWidth;
            }
        }
        for (const FontChoice& font : fonts) {
            for (int outline = 0; outline <= 3; ++outline) {
                const cDIB dib = CreateText(w, h, "Menu ÄÖ\nàé", outline, "2RB", font);
                for (const std::uint32_t index : ValuesIn(dib))
                    ASSERT_LE(index, 3u) << font.Family << " " << w << "x" << h << " outline " << outline;
            }
        }
    }
}

TEST(OverlayPainters, SpecialOverlayNamesSelectTheirPainters)
{
    const std::pair<const char*, const char*> cases[] = {
        {"*Rect", "CreateRect"}, {"*Oval.bmp", "CreateOval"}, {"Shape1", "CreateShape1"}, {"*Text", "CreateText"},
        {"*rect", ""},           {"**Rect", ""},              {"frame_", ""},             {"*Rect.bmp.bmp", ""},
    };
    for (const auto& [name, painter] : cases)
        EXPECT_EQ(GetFuncToCallFromSpecialOverlay(name), painter) << name;
    EXPECT_TRUE(PaintByFunctionName("", 10, 10, {}).Empty());
    EXPECT_TRUE(CreateRect(3, 0, 10).Empty());
}

} // namespace mw::test
