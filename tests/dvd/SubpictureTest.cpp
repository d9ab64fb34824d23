#include "core/ScratchFolder.h"
#include "dvd/Subpicture.h"

#include <QImage>

#include <gtest/gtest.h>

namespace mw {
namespace {

using test::ScratchFolder;

// A 4-bit overlay of the given size whose pixels are `index`, with one pixel of 7 at top left.
cDIB Overlay(int width, int height, std::uint32_t index)
{
    cDIB overlay;
    overlay.Create(width, height, 4);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            overlay.SetPixel(x, y, index);
    overlay.SetPixel(0, 0, 7);
    return overlay;
}

TEST(Subpicture, FullFramePalettePicturesWithTheButtonsInTheirColours)
{
    ScratchFolder work;
    std::vector<SubpictureButton> buttons(3);
    buttons[0] = {10, 20, 40, 10, Overlay(40, 10, 1)};
    // Half the size: stretched to its rectangle.
    buttons[1] = {100, 50, 20, 20, Overlay(10, 10, 3)};
    // Runs past the frame's edge.
    buttons[2] = {700, 570, 40, 40, Overlay(40, 40, 2)};
    const SubpictureColours highlight = {Rgb(255, 0, 0), Rgb(0, 255, 0), Rgb(0, 0, 255)};
    const SubpictureColours select = {Rgb(1, 2, 3), Rgb(4, 5, 6), Rgb(7, 8, 9)};
    const auto h = work.Path() / "h.png";
    const auto s = work.Path() / "s.png";
    std::string error;
    ASSERT_TRUE(WriteSubpictures(buttons, 720, 576, highlight, select, h, s, error)) << error;

    const QImage hi(QString::fromStdString(h.string()));
    const QImage se(QString::fromStdString(s.string()));
    ASSERT_EQ(hi.size(), QSize(720, 576));
    ASSERT_EQ(hi.format(), QImage::Format_Indexed8);
    ASSERT_EQ(se.format(), QImage::Format_Indexed8);
    EXPECT_EQ(hi.colorTable(), (QList<QRgb>{qRgba(0, 0, 0, 0), qRgb(255, 0, 0), qRgb(0, 255, 0), qRgb(0, 0, 255)}));
    EXPECT_EQ(se.colorTable(), (QList<QRgb>{qRgba(0, 0, 0, 0), qRgb(1, 2, 3), qRgb(4, 5, 6), qRgb(7, 8, 9)}));
    for (const QImage& picture : {hi, se}) {
        EXPECT_EQ(picture.pixelIndex(0, 0), 0);
        EXPECT_EQ(picture.pixelIndex(10, 20), 0) << "an index above 3 is clear";
        EXPECT_EQ(picture.pixelIndex(11, 20), 1);
        EXPECT_EQ(picture.pixelIndex(49, 29), 1);
        EXPECT_EQ(picture.pixelIndex(50, 29), 0);
        EXPECT_EQ(picture.pixelIndex(10, 30), 0);
        // The stretched overlay's top left pixel covers 2x2 of the frame.
        EXPECT_EQ(picture.pixelIndex(101, 51), 0);
        EXPECT_EQ(picture.pixelIndex(102, 51), 3);
        EXPECT_EQ(picture.pixelIndex(119, 69), 3);
        EXPECT_EQ(picture.pixelIndex(120, 69), 0);
        EXPECT_EQ(picture.pixelIndex(719, 575), 2);
    }
}

TEST(Subpicture, AFailedWriteLeavesNeitherPicture)
{
    ScratchFolder work;
    const auto h = work.Path() / "h.png";
    const auto s = work.Path() / "missing folder" / "s.png";
    std::string error;
    EXPECT_FALSE(WriteSubpictures({}, 720, 480, {}, {}, h, s, error));
    EXPECT_EQ(error, "Could not write " + s.string());
    EXPECT_FALSE(std::filesystem::exists(h));
}

} // namespace
} // namespace mw
