#include "core/ScratchFolder.h"
#include "render/OverlayFromPicture.h"
#include "render/OverlayScheme.h"

#include <QImage>

#include <gtest/gtest.h>

namespace mw::test {

namespace {

// A picture on a background colour with a black, a red and a near-white square on it.
std::string SavePicture(const ScratchFolder& folder, QColor background)
{
    QImage image(30, 10, QImage::Format_RGB32);
    image.fill(background);
    for (int y = 2; y < 8; ++y) {
        for (int x = 0; x < 6; ++x) {
            image.setPixelColor(2 + x, y, Qt::black);
            image.setPixelColor(12 + x, y, QColor(250, 5, 0));
            image.setPixelColor(22 + x, y, QColor(250, 250, 250));
        }
    }
    const std::string file = (folder.Path() / "picture.png").string();
    image.save(QString::fromStdString(file));
    return file;
}

} // namespace

TEST(OverlayFromPicture, TheTransparentColourTakesIndexZeroAndTheRestTheNearestColour)
{
    ScratchFolder folder;
    struct Case {
        QColor Background;
        std::uint32_t BlackIndex; // where black went
    };
    // Pure blue is a standard colour and swaps with black. A dark green-grey is nearest to black,
    // but black stays and the dark green (entry 2) gives way.
    for (const Case& c : {Case{QColor(0, 0, 255), 12}, Case{QColor(60, 70, 60), 2}, Case{QColor(0, 0, 0), 0}}) {
        OverlayFromPicture model;
        ASSERT_TRUE(model.LoadPicture(SavePicture(folder, c.Background)));
        EXPECT_FALSE(model.PickTransparent(30, 0));
        ASSERT_TRUE(model.PickTransparent(0, 0));
        const Colour transparent = Rgb(std::uint8_t(c.Background.red()), std::uint8_t(c.Background.green()),
                                       std::uint8_t(c.Background.blue()));
        EXPECT_EQ(model.Transparent(), transparent);
        EXPECT_EQ(model.ResultEntry0(), transparent);
        const cDIB& result = model.Result();
        ASSERT_EQ(result.BPP(), 4);
        EXPECT_EQ(result.Pixel(0, 0), 0u);
        EXPECT_EQ(result.Pixel(29, 9), 0u);
        EXPECT_EQ(result.Pixel(3, 3), c.BlackIndex);
        EXPECT_EQ(result.ColourOf(result.Pixel(13, 3)), Rgb(255, 0, 0));
        EXPECT_EQ(result.ColourOf(result.Pixel(23, 3)), Rgb(255, 255, 255));
        EXPECT_EQ(result.GetColorTable().size(), 16u);
    }
}

TEST(OverlayFromPicture, DefaultColoursAndSetFromPicChangeOnlyTheTable)
{
    ScratchFolder folder;
    OverlayFromPicture model;
    EXPECT_FALSE(model.PickTransparent(0, 0)); // no picture yet
    model.ShowWithDefaultColors();
    EXPECT_TRUE(model.Result().Empty());

    ASSERT_TRUE(model.LoadPicture(SavePicture(folder, QColor(0, 128, 0))));
    ASSERT_TRUE(model.PickTransparent(0, 0));
    const cDIB reduced = model.Result();
    model.ShowWithDefaultColors();
    const std::vector<Colour> table = model.Result().GetColorTable();
    const std::vector<Colour> before = reduced.GetColorTable();
    EXPECT_EQ(std::vector<Colour>(table.begin(), table.begin() + 4),
              std::vector<Colour>(kOverlayPaintColours.begin(), kOverlayPaintColours.end()));
    EXPECT_EQ(std::vector<Colour>(table.begin() + 4, table.end()),
              std::vector<Colour>(before.begin() + 4, before.end()));
    for (int x = 0; x < 30; ++x)
        EXPECT_EQ(model.Result().Pixel(x, 4), reduced.Pixel(x, 4));
    model.SetFromPic();
    EXPECT_EQ(model.ResultEntry0(), Rgb(0, 128, 0));

    // A new picture forgets the old result and colour.
    ASSERT_TRUE(model.LoadPicture(SavePicture(folder, Qt::white)));
    EXPECT_FALSE(model.Transparent());
    EXPECT_FALSE(model.ResultEntry0());
    EXPECT_FALSE(model.LoadPicture((folder.Path() / "none.jpg").string()));
    EXPECT_FALSE(model.PickTransparent(0, 0));
}

} // namespace mw::test
