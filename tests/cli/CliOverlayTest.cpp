// Overlays rendered from the command line, as scripts make them without a window.
#include "cli/CliFixture.h"
#include "render/OverlayFont.h"
#include "render/OverlayPainters.h"
#include "render/OverlayScheme.h"
#include "render/OverlayStretch.h"
#include "render/TestBitmaps.h"

#include <QImage>

#include <gtest/gtest.h>

namespace mw::test {

namespace {

class CliOverlay : public CliFixture {
protected:
    cDIB Read(const std::string& name) const
    {
        cDIB dib;
        EXPECT_TRUE(dib.CreateFromBitmapFile((folder.Path() / name).string())) << name;
        return dib;
    }
};

} // namespace

TEST_F(CliOverlay, PaintsSpecialOverlaysWithTheColoursInEntriesOneToThree)
{
    NeedFontApplication();
    ASSERT_EQ(Run("overlay '*Rect' 40x20 -o rect.bmp --width 4 --colors 255,#00FF00,16711680").Exit, 0);
    cDIB expected = CreateRect(4, 40, 20);
    expected.SetColorTable({kOverlayBlue, Rgb(255, 0, 0), Rgb(0, 255, 0), Rgb(0, 0, 255)});
    EXPECT_EQ(Read("rect.bmp"), expected);

    ASSERT_EQ(Run("overlay '*Text' 160x60 -o text.bmp --text 'Go\nOn' --font 'Arial,B' --font-size 14.5 "
                  "--outline 1 --shadow 2LT")
                  .Exit,
              0);
    EXPECT_EQ(Read("text.bmp"), CreateText(160, 60, "Go\nOn", 1, "2LT", {"Arial", 14.5, true}));

    for (const char* bad : {"overlay '*Rect' 40 -o x.bmp", "overlay '*Rect' 0x20 -o x.bmp", "overlay '*Rect' 40x20",
                            "overlay '*Star' 40x20 -o x.bmp", "overlay '*Rect' 40x20 -o x.bmp --width 0",
                            "overlay '*Rect' 40x20 -o x.bmp --colors 1,2", "overlay '*Rect' 40x20 -o x.bmp --outline"}) {
        EXPECT_EQ(Run(bad).Exit, 2) << bad;
        EXPECT_FALSE(std::filesystem::exists(folder.Path() / "x.bmp")) << bad;
    }
}

TEST_F(CliOverlay, FitsALibraryFileByItsStretchModeOrSaysWhatIsWrong)
{
    cDIB source = Patterned(40, 40, 4);
    source.SetColorTable(OverlayColorTable());
    std::filesystem::create_directories(folder.Path() / "overlays" / "frames");
    ASSERT_TRUE(source.Save((folder.Path() / "overlays" / "frames" / "box_.bmp").string()));
    ASSERT_EQ(Run("overlay 'frames\\box_' 90x50 -o fitted.bmp").Exit, 0);
    cDIB expected = NewOverlayDib(90, 50);
    StretchOverlay(source, expected, OverlayStretchMode::NineSlice);
    EXPECT_EQ(Read("fitted.bmp"), expected);

    const CommandResult missing = Run("overlay nothing 90x50 -o none.bmp");
    EXPECT_EQ(missing.Exit, 1);
    EXPECT_EQ(missing.Out, "File '" + (folder.Path() / "overlays" / "nothing.bmp").string() + "' not found\n");
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "none.bmp"));
}

TEST_F(CliOverlay, TurnsAPictureIntoAnOverlayWithTheChosenPixelTransparent)
{
    QImage image(20, 10, QImage::Format_RGB32);
    image.fill(QColor(0, 128, 0));
    image.setPixelColor(15, 5, Qt::white);
    ASSERT_TRUE(image.save(QString::fromStdString((folder.Path() / "pic.png").string())));
    ASSERT_EQ(Run("overlay-from-picture pic.png -o pic.bmp --transparent 15,5").Exit, 0);
    const cDIB overlay = Read("pic.bmp");
    ASSERT_EQ(overlay.BPP(), 4);
    EXPECT_EQ(overlay.Pixel(15, 5), 0u);
    EXPECT_NE(overlay.Pixel(0, 0), 0u);
    const std::vector<Colour> table = overlay.GetColorTable();
    EXPECT_EQ(std::vector<Colour>(table.begin(), table.begin() + 4),
              std::vector<Colour>(kOverlayPaintColours.begin(), kOverlayPaintColours.end()));
    EXPECT_EQ(Run("overlay-from-picture pic.png -o out.bmp --transparent 20,0").Exit, 2);
    EXPECT_EQ(Run("overlay-from-picture gone.png -o out.bmp").Exit, 1);
}

} // namespace mw::test
