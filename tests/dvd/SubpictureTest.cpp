#include "core/ScratchFolder.h"
#include "dvd/Subpicture.h"

#include <QImage>

#include <gtest/gtest.h>

namespace mw {
namespace {

// A 4-bit overlay of `index` everywhere but its top left pixel, which is 7.
cDIB Overlay(int width, int height, std::uint32_t index)
{
    cDIB overlay;
    overlay.Create(width, height, 4);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            overlay.SetPixel(x, y, x + y == 0 ? 7 : index);
    return overlay;
}

TEST(Subpicture, FullFramePalettePicturesWithTheButtonsInTheirColoursOrNeither)
{
    test::ScratchFolder work;
    const std::vector<SubpictureButton> buttons = {
        {10, 20, 40, 10, Overlay(40, 10, 1)},
        {100, 50, 20, 20, Overlay(10, 10, 3)}, // stretched to twice its size
        {700, 570, 40, 40, Overlay(40, 40, 2)}, // past the frame's edge
    };
    const auto h = work.Path() / "h.png";
    const auto s = work.Path() / "s.png";
    std::string error;
    ASSERT_TRUE(WriteSubpictures(buttons, 720, 576, {Rgb(255, 0, 0), Rgb(0, 255, 0), Rgb(0, 0, 255)},
                                 {Rgb(1, 2, 3), Rgb(4, 5, 6), Rgb(7, 8, 9)}, h, s, error))
        << error;
    const QImage hi(QString::fromStdString(h.string()));
    const QImage se(QString::fromStdString(s.string()));
    ASSERT_EQ(hi.size(), QSize(720, 576));
    ASSERT_EQ(hi.format(), QImage::Format_Indexed8);
    EXPECT_EQ(hi.colorTable(), (QList<QRgb>{qRgba(0, 0, 0, 0), qRgb(255, 0, 0), qRgb(0, 255, 0), qRgb(0, 0, 255)}));
    EXPECT_EQ(se.colorTable(), (QList<QRgb>{qRgba(0, 0, 0, 0), qRgb(1, 2, 3), qRgb(4, 5, 6), qRgb(7, 8, 9)}));
    for (const QImage& picture : {hi, se}) {
        const auto at = [&picture](int x, int y) { return picture.pixelIndex(x, y); };
        EXPECT_EQ(at(0, 0), 0);
        EXPECT_EQ(at(10, 20), 0) << "an index above 3 is clear";
        EXPECT_EQ(at(11, 20), 1);
        EXPECT_EQ(at(49, 29), 1);
        EXPECT_EQ(at(50, 29), 0);
        EXPECT_EQ(at(101, 51), 0) << "the stretched top left pixel covers 2x2";
        EXPECT_EQ(at(102, 51), 3);
        EXPECT_EQ(at(119, 69), 3);
        EXPECT_EQ(at(120, 69), 0);
        EXPECT_EQ(at(719, 575), 2);
    }

    const auto unwritable = work.Path() / "missing folder" / "s.png";
    EXPECT_FALSE(WriteSubpictures({}, 720, 480, {}, {}, h, unwritable, error));
    EXPECT_EQ(error, "Could not write " + unwritable.string());
    EXPECT_FALSE(std::filesystem::exists(h));
}

} // namespace
} // namespace mw
