#include "generators/PageComposer.h"

#include "core/ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace mw {
namespace {

using test::ScratchFolder;

QRgb At(const QImage& image, int x, int y) { return image.pixel(x, y) | 0xFF000000; }

// A 4 x 4 border: pure green inside, red at the four corners, grey elsewhere on the rim.
QImage Border()
{
    QImage border(4, 4, QImage::Format_RGB32);
    border.fill(qRgb(128, 128, 128));
    for (int y = 1; y < 3; ++y)
        for (int x = 1; x < 3; ++x)
            border.setPixel(x, y, kBorderWindow);
    for (const auto& [x, y] : {std::pair(0, 0), std::pair(3, 0), std::pair(0, 3), std::pair(3, 3)})
        border.setPixel(x, y, kOutsideShape);
    return border;
}

MenuPage GradientPage()
{
    MenuPage page;
    page.Width = 200;
    page.Height = 100;
    page.Gradient = GradientColors{.TopLeft = 0x0000FF, .TopRight = 0x00FF00, .BottomLeft = 0xFF0000, .BottomRight = 0xFFFFFF};
    return page;
}

TEST(PageComposer, GradientRunsFromCornerColours)
{
    MenuPage page = GradientPage();
    QImage image = ComposePage(page, PageArt{});
    EXPECT_EQ(image.format(), QImage::Format_RGB888);
    EXPECT_EQ(image.size(), QSize(200, 100));
    // Colours have red in the low byte.
    EXPECT_EQ(At(image, 0, 0), qRgb(255, 0, 0));
    EXPECT_EQ(At(image, 199, 0), qRgb(0, 255, 0));
    EXPECT_EQ(At(image, 0, 99), qRgb(0, 0, 255));
    EXPECT_EQ(At(image, 199, 99), qRgb(255, 255, 255));

    page.Gradient.Middle = 0x000000;
    image = ComposePage(page, PageArt{});
    const QRgb middle = At(image, 100, 50); // half a pixel from the exact middle
    EXPECT_LE(std::max({qRed(middle), qGreen(middle), qBlue(middle)}), 4);
    EXPECT_EQ(At(image, 0, 0), qRgb(255, 0, 0));
}

TEST(PageComposer, ThumbnailShowsItsFrameThroughTheBorderAtItsRectangle)
{
    MenuPage page = GradientPage();
    page.Gradient = GradientColors{.TopLeft = 0x00FFFF, .TopRight = 0x00FFFF, .BottomLeft = 0x00FFFF, .BottomRight = 0x00FFFF};
    page.ItemWidth = 40;
    page.ItemHeight = 20;
    QImage frame(40, 20, QImage::Format_RGB32);
    frame.fill(qRgb(10, 20, 30));
    page.Items.push_back(PageItem{.Caption = "Chapter 1", .Left = 30.7f, .Top = 10.2f, .Visible = true, .Picture = frame});
    PageArt art;
    art.Border = Border();

    const QImage image = ComposePage(page, art);
    const QRect rect = ItemRect(page, page.Items[0]);
    EXPECT_EQ(rect, QRect(30, 10, 40, 20));
    const QRgb background = qRgb(255, 255, 0);
    EXPECT_EQ(At(image, 50, 20), qRgb(10, 20, 30));               // through the window
    EXPECT_EQ(At(image, 31, 11), background);                      // red corner: the page shows
    EXPECT_EQ(At(image, 68, 28), background);
    EXPECT_EQ(At(image, 50, 10), qRgb(128, 128, 128));             // the rim
    EXPECT_EQ(At(image, 29, 20), background);                      // outside the rectangle
    // The caption prints just below the thumbnail, in group 1's black.
    bool inked = false;
    for (int y = 31; y < 60 && !inked; ++y)
        for (int x = 30; x < 70 && !inked; ++x)
            inked = At(image, x, y) == qRgb(0, 0, 0);
    EXPECT_TRUE(inked);
}

TEST(PageComposer, LabelPicturesLeaveBlueOutAndCaptionsCastShadows)
{
    ScratchFolder dir;
    QImage picture(2, 1, QImage::Format_RGB32);
    picture.setPixel(0, 0, qRgb(200, 0, 0));
    picture.setPixel(1, 0, kLabelSeeThrough);
    const std::string path = (dir.Path() / "next.png").string();
    ASSERT_TRUE(picture.save(QString::fromStdString(path)));

    MenuPage page = GradientPage();
    page.Gradient = GradientColors{.TopLeft = 0xFFFFFF, .TopRight = 0xFFFFFF, .BottomLeft = 0xFFFFFF, .BottomRight = 0xFFFFFF};
    page.Design.Next = PageLabel{.Caption = ">>", .Picture = path, .Left = 100, .Top = 0, .Width = 40, .Height = 20};
    page.Design.Main = PageLabel{.Caption = "MMMM", .Left = 0, .Top = 50, .Width = 100, .Height = 40};
    page.Design.Labels.Color = 0x00FF00;
    page.Design.Labels.ShadowColor = 0xFF0000;
    page.Design.Labels.ShadowDepth = 3;
    const QImage image = ComposePage(page, LoadPageArt(page));

    EXPECT_EQ(At(image, 105, 10), qRgb(200, 0, 0));
    EXPECT_EQ(At(image, 135, 10), qRgb(255, 255, 255));
    int green = 0;
    int shadow = 0;
    for (int y = 50; y < 100; ++y)
        for (int x = 0; x < 110; ++x) {
            green += At(image, x, y) == qRgb(0, 255, 0);
            shadow += At(image, x, y) == qRgb(0, 0, 255);
        }
    EXPECT_GT(green, 20);
    EXPECT_GT(shadow, 5);
}

} // namespace
} // namespace mw
