#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "i18n/LangDoc.h"
#include "render/BmpFile.h"
#include "render/OverlayFromPicture.h"
#include "render/OverlayScheme.h"
#include "render/OverlayStretch.h"
#include "render/TestBitmaps.h"
#include "render/TransPaint.h"

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

// A 40 by 40 overlay file whose pixels tell where they came from.
cDIB Source()
{
    cDIB dib = Patterned(40, 40, 4);
    dib.SetColorTable(OverlayColorTable());
    return dib;
}

class TransPaintTest : public ::testing::Test {
protected:
    ScratchFolder folder;
    ScriptedPrompt prompt;
    LangDoc lang;
    TransPaint paint{prompt, lang};

    std::string SaveSource(const std::string& name, const cDIB& dib)
    {
        const std::string file = (folder.Path() / name).string();
        EXPECT_TRUE(dib.Save(file));
        return file;
    }
};

} // namespace

TEST(OverlayStretch, ModeComesFromTheCharacterBeforeTheLastDot)
{
    const std::pair<const char*, OverlayStretchMode> cases[] = {
        {"frame_.bmp", OverlayStretchMode::NineSlice}, {"corner}.bmp", OverlayStretchMode::LowerCorners},
        {"plain.bmp", OverlayStretchMode::Whole},      {"a_b.c_.bmp", OverlayStretchMode::NineSlice},
        {"frame_", OverlayStretchMode::Whole},         {".bmp", OverlayStretchMode::Whole},
        {"_.bmp", OverlayStretchMode::NineSlice},      {"/x_.d/frame.bmp", OverlayStretchMode::Whole},
    };
    for (const auto& [name, mode] : cases)
        EXPECT_EQ(StretchModeOfFile(name), mode) << name;
}

TEST(OverlayStretch, NineSliceKeepsCornersStretchesEdgesAndLeavesTheMiddle)
{
    const cDIB source = Source();
    cDIB target = NewOverlayDib(100, 60);
    StretchOverlay(source, target, OverlayStretchMode::NineSlice);
    struct Case {
        int X, Y, SrcX, SrcY; // SrcX < 0: transparent
    };
    const Case cases[] = {
        {0, 0, 0, 0},      {14, 14, 14, 14}, {99, 0, 39, 0},   {85, 59, 25, 39}, // corners 1:1
        {15, 0, 15, 0},    {84, 14, 24, 14},                                     // top edge: 70 from 10
        {0, 15, 0, 15},    {14, 44, 14, 24},                                     // left edge: 30 from 10
        {50, 30, -1, -1},  {15, 15, -1, -1}, {84, 44, -1, -1},                   // the middle
    };
    for (const Case& c : cases) {
        const std::uint32_t expected = c.SrcX < 0 ? 0 : source.Pixel(c.SrcX, c.SrcY);
        EXPECT_EQ(target.Pixel(c.X, c.Y), expected) << c.X << "," << c.Y;
    }

    cDIB corners = NewOverlayDib(100, 60);
    StretchOverlay(source, corners, OverlayStretchMode::LowerCorners);
    EXPECT_EQ(corners.Pixel(0, 45), source.Pixel(0, 25));
    EXPECT_EQ(corners.Pixel(99, 59), source.Pixel(39, 39));
    EXPECT_EQ(corners.Pixel(0, 44), 0u);
    EXPECT_EQ(corners.Pixel(50, 59), 0u);

    // Under 30 pixels the edges get negative sizes: nothing is checked and nothing breaks.
    cDIB small = NewOverlayDib(20, 12);
    StretchOverlay(source, small, OverlayStretchMode::NineSlice);
    EXPECT_EQ(small.Pixel(19, 11), source.Pixel(39, 39));
}

TEST_F(TransPaintTest, FunctionModePaintsThePainterWithTheStoredColours)
{
    paint.SetSize(80, 40);
    paint.SetRGBColor(1, 10, 20, 30);
    paint.SetRGBColor(2, 40, 50, 60);
    paint.SetRGBColor(7, 70, 80, 90);
    paint.SetDIBFromFunc("CreateRect", 4, "", 0, "4RB", {"Arial", 18});
    EXPECT_TRUE(paint.FromFunction());
    cDIB expected = CreateRect(4, 80, 40);
    expected.SetColorTable({kOverlayBlue, Rgb(10, 20, 30), Rgb(40, 50, 60), Rgb(70, 80, 90)});
    EXPECT_EQ(paint.GetDib(), expected);

    paint.SetRGBColor(3, 1, 2, 3);
    EXPECT_EQ(paint.GetDib().GetColorTable()[3], Rgb(1, 2, 3));
    paint.SetSize(30, 20);
    EXPECT_EQ(paint.GetDib().Width(), 30);
    EXPECT_TRUE(prompt.Log.empty());
}

TEST_F(TransPaintTest, FileModeFitsTheFileAndTakesTheColours)
{
    const std::string file = SaveSource("frame_.bmp", Source());
    paint.SetDIBFromFunc("CreateOval", 3, "", 0, "", {});
    paint.SetSize(100, 60);
    paint.SetRGBColor(1, 9, 9, 9);
    paint.SetFilename("  " + file + " ");
    EXPECT_EQ(paint.Filename(), file);
    EXPECT_FALSE(paint.FromFunction());
    EXPECT_EQ(paint.StretchMode(), OverlayStretchMode::NineSlice);

    cDIB expected = NewOverlayDib(100, 60);
    StretchOverlay(Source(), expected, OverlayStretchMode::NineSlice);
    expected.SetColorTable({kOverlayBlue, Rgb(9, 9, 9), kOverlayYellow, kOverlayWhite});
    EXPECT_EQ(paint.GetDib(), expected);
    EXPECT_TRUE(prompt.Log.empty());

    paint.SetFilename("");
    EXPECT_TRUE(paint.GetDib().Empty());
}

TEST_F(TransPaintTest, MissingAndWrongDepthFilesAreToldAndLeaveItEmpty)
{
    paint.SetSize(50, 50);
    const std::string missing = (folder.Path() / "gone.bmp").string();
    paint.SetFilename(missing);
    EXPECT_TRUE(paint.GetDib().Empty());
    EXPECT_EQ(paint.Filename(), missing);

    const std::string eightBit = SaveSource("deep.bmp", Patterned(20, 20, 8));
    paint.SetFilename(eightBit);
    EXPECT_TRUE(paint.GetDib().Empty());
    EXPECT_EQ(paint.Filename(), "");
    EXPECT_EQ(prompt.Texts(), (std::vector<std::string>{"File '" + missing + "' not found",
                                                        "Not valid (4 bits per pixel) file\r\n" + eightBit}));
}

TEST_F(TransPaintTest, SaveFileWritesTheOverlayAndAFailedSaveKeepsTheOldFile)
{
    const std::string file = (folder.Path() / "out.bmp").string();
    EXPECT_FALSE(paint.SaveFile(file)); // nothing painted yet
    EXPECT_FALSE(std::filesystem::exists(file));

    paint.SetSize(10, 10);
    paint.SetDIBFromFunc("CreateRect", 1, "", 0, "", {});
    EXPECT_FALSE(paint.SaveFile("  "));
    ASSERT_TRUE(paint.SaveFile(file));
    EXPECT_EQ(std::filesystem::file_size(file), 14u + 40 + 64 + 80);
    cDIB back;
    ASSERT_TRUE(back.CreateFromBitmapFile(file));
    EXPECT_EQ(back, paint.GetDib());

    paint.SetSize(0, 0);
    EXPECT_FALSE(paint.SaveFile(file));
    cDIB still;
    ASSERT_TRUE(still.CreateFromBitmapFile(file));
    EXPECT_EQ(still, back);
}

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
