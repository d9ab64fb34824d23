#include "render/cDIB.h"

#include "core/ScratchFolder.h"
#include "render/TestBitmaps.h"

#include <gtest/gtest.h>

#include <QImage>

#include <set>

using mw::cDIB;
using mw::Colour;
using mw::Rgb;
using mw::test::Patterned;
using mw::test::ScratchFolder;

namespace {

std::set<std::uint32_t> ValuesIn(const cDIB& dib)
{
    std::set<std::uint32_t> values;
    for (int y = 0; y < dib.Height(); ++y) {
        for (int x = 0; x < dib.Width(); ++x)
            values.insert(dib.Pixel(x, y));
    }
    return values;
}

TEST(cDIB, CreateRoundsLinesUpToFourBytesAndRefusesWhatCannotBeMade)
{
    struct Case {
        int Width, Height, Bpp, Stride;
    };
    for (const Case& c : {Case{1, 1, 1, 4}, Case{33, 2, 1, 8}, Case{9, 3, 4, 8}, Case{4, 1, 8, 4}, Case{5, 2, 24, 16}}) {
        cDIB dib;
        ASSERT_TRUE(dib.Create(c.Width, c.Height, c.Bpp));
        EXPECT_EQ(dib.BytesPerScanLine(), c.Stride);
        EXPECT_EQ(dib.Size(), std::size_t(c.Stride * c.Height));
    }
    for (const Case& c : {Case{0, 1, 8, 0}, Case{1, -1, 8, 0}, Case{4, 4, 2, 0}, Case{4, 4, 32, 0},
                          Case{cDIB::kMaxSide + 1, 1, 1, 0}, Case{cDIB::kMaxSide, cDIB::kMaxSide, 24, 0}}) {
        cDIB dib = Patterned(2, 2, 4);
        EXPECT_FALSE(dib.Create(c.Width, c.Height, c.Bpp)) << c.Width << "x" << c.Height << "x" << c.Bpp;
        EXPECT_TRUE(dib.Empty());
    }
}

TEST(cDIB, DefaultTablesByDepth)
{
    cDIB dib;
    dib.Create(1, 1, 1);
    EXPECT_EQ(dib.GetColorTable(), (std::vector<Colour>{0x000000, 0xFFFFFF}));
    dib.Create(1, 1, 4);
    const std::vector<Colour> sixteen = {0x000000, 0x000080, 0x008000, 0x008080, 0x800000, 0x800080,
                                         0x808000, 0xC0C0C0, 0x808080, 0x0000FF, 0x00FF00, 0x00FFFF,
                                         0xFF0000, 0xFF00FF, 0xFFFF00, 0xFFFFFF};
    EXPECT_EQ(dib.GetColorTable(), sixteen);
    dib.Create(1, 1, 8);
    const std::vector<Colour> table = dib.GetColorTable();
    ASSERT_EQ(table.size(), 256u);
    EXPECT_TRUE(std::equal(sixteen.begin(), sixteen.end(), table.begin()));
    EXPECT_EQ(table[16 + 36 * 5 + 6 * 2 + 1], Rgb(255, 102, 51));
    EXPECT_EQ(table[232], Rgb(8, 8, 8));
    EXPECT_EQ(table[255], Rgb(238, 238, 238));
    dib.Create(1, 1, 24);
    EXPECT_TRUE(dib.GetColorTable().empty());
}

TEST(cDIB, ShortColourTableSetsOnlyItsEntries)
{
    cDIB dib;
    dib.Create(2, 2, 4);
    std::vector<Colour> expected = dib.GetColorTable();
    dib.SetColorTable({Rgb(1, 2, 3), Rgb(4, 5, 6)});
    expected[0] = Rgb(1, 2, 3);
    expected[1] = Rgb(4, 5, 6);
    EXPECT_EQ(dib.GetColorTable(), expected);

    dib.SetColorTable(std::vector<Colour>(20, Rgb(9, 9, 9)));
    EXPECT_EQ(dib.GetColorTable(), std::vector<Colour>(16, Rgb(9, 9, 9)));
}

TEST(cDIB, PixelsCountFromTheTopLeftOverBottomUpRows)
{
    cDIB dib;
    dib.Create(3, 2, 4);
    dib.SetPixel(0, 0, 0xA);
    dib.SetPixel(1, 0, 0x5);
    dib.SetPixel(2, 1, 0xF);
    dib.SetPixel(3, 0, 0x7);  // outside: ignored
    dib.SetPixel(0, -1, 0x7); // outside: ignored
    EXPECT_EQ(dib.lpBits()[4], 0xA5); // the top row is the last in memory
    EXPECT_EQ(dib.lpBits()[1], 0xF0);
    EXPECT_EQ(dib.Pixel(1, 0), 0x5u);
    EXPECT_EQ(dib.Pixel(5, 5), 0u);
    EXPECT_EQ(ValuesIn(dib), (std::set<std::uint32_t>{0x0, 0x5, 0xA, 0xF}));
}

TEST(cDIB, ClsTakesTheNearestEntryOfAPaletteBitmap)
{
    struct Case {
        int Bpp;
        Colour Clear;
        std::uint32_t Value;
    };
    for (const Case& c : {Case{4, Rgb(250, 10, 10), 9}, Case{4, Rgb(100, 100, 100), 8}, Case{1, Rgb(200, 200, 90), 1},
                          Case{8, Rgb(0, 0, 0x30), 16 + 1}, Case{24, Rgb(1, 2, 3), Rgb(1, 2, 3)}}) {
        cDIB dib;
        dib.Create(11, 3, c.Bpp);
        dib.Cls(c.Clear);
        EXPECT_EQ(ValuesIn(dib), std::set<std::uint32_t>{c.Value}) << c.Bpp << " " << c.Clear;
        dib.Reset();
        EXPECT_EQ(ValuesIn(dib), std::set<std::uint32_t>{0});
    }
}

TEST(cDIB, ColourAndValueConvertThroughTheTable)
{
    cDIB palette;
    palette.Create(1, 1, 4);
    palette.SetColorTable({Rgb(10, 20, 30), Rgb(10, 20, 30)});
    EXPECT_EQ(palette.ColourOf(1), Rgb(10, 20, 30));
    EXPECT_EQ(palette.ColourOf(16), 0u);
    EXPECT_EQ(palette.ValueOf(Rgb(10, 20, 30)), 0u); // the first of equal entries
    cDIB rgb;
    rgb.Create(1, 1, 24);
    EXPECT_EQ(rgb.ValueOf(0xFF123456), 0x123456u);
}

TEST(cDIB, StretchBetweenPaletteBitmapsKeepsIndexes)
{
    // Entries 3 and 5 share a colour: a copy by colour would turn 5 into 3.
    cDIB source;
    source.Create(2, 2, 4);
    source.SetColorTable({Rgb(0, 0, 255), Rgb(255, 0, 0), Rgb(255, 255, 0), Rgb(9, 9, 9), Rgb(1, 1, 1), Rgb(9, 9, 9)});
    source.SetPixel(0, 0, 5);
    source.SetPixel(1, 0, 1);
    source.SetPixel(0, 1, 2);
    source.SetPixel(1, 1, 0);
    cDIB target;
    target.Create(4, 4, 4);
    target.Cls(Rgb(255, 255, 255));
    source.Stretch(target, 0, 0, 4, 4, 0, 0, 2, 2);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 4; ++x)
            EXPECT_EQ(target.Pixel(x, y), source.Pixel(x / 2, y / 2)) << x << "," << y;
    }
    EXPECT_EQ(ValuesIn(target), (std::set<std::uint32_t>{0, 1, 2, 5}));
}

TEST(cDIB, StretchAcrossDepthsGoesByColour)
{
    cDIB palette;
    palette.Create(2, 1, 4);
    palette.SetPixel(0, 0, 9);
    palette.SetPixel(1, 0, 14);
    cDIB rgb;
    rgb.Create(2, 1, 24);
    palette.Paint(rgb, 0, 0);
    EXPECT_EQ(rgb.Pixel(0, 0), Rgb(255, 0, 0));
    EXPECT_EQ(rgb.Pixel(1, 0), Rgb(0, 255, 255));

    rgb.SetPixel(0, 0, Rgb(120, 0, 10));
    cDIB back;
    back.Create(2, 1, 4);
    back.LoadBlt(rgb, 0, 0);
    EXPECT_EQ(back.Pixel(0, 0), 1u); // dark red
    EXPECT_EQ(back.Pixel(1, 0), 14u);
}

TEST(cDIB, NegativeSizesMirrorAndCopiesAreClipped)
{
    cDIB source;
    source.Create(3, 1, 8);
    for (int x = 0; x < 3; ++x)
        source.SetPixel(x, 0, std::uint32_t(x + 1));
    cDIB target;
    target.Create(4, 2, 8);
    source.Stretch(target, 3, 0, -3, 1, 0, 0, 3, 1);
    source.Paint(target, 2, 1); // only two pixels fit
    EXPECT_EQ(target.Pixel(0, 0), 3u);
    EXPECT_EQ(target.Pixel(2, 0), 1u);
    EXPECT_EQ(target.Pixel(3, 0), 0u);
    EXPECT_EQ(target.Pixel(2, 1), 1u);
    EXPECT_EQ(target.Pixel(3, 1), 2u);

    cDIB part;
    part.Create(2, 1, 8);
    part.LoadBlt(source, 1, 0);
    EXPECT_EQ(part.Pixel(0, 0), 2u);
    EXPECT_EQ(part.Pixel(1, 0), 3u);

    source.Paint(source, 1, 0); // overlapping: reads the pixels as they were
    EXPECT_EQ(source.Pixel(1, 0), 1u);
    EXPECT_EQ(source.Pixel(2, 0), 2u);
}

TEST(cDIB, StretchTransparentLeavesOutTheTransparentColour)
{
    cDIB source;
    source.Create(2, 2, 24);
    source.Cls(Rgb(0, 255, 0));
    source.SetPixel(1, 1, Rgb(255, 0, 0));
    for (int bpp : {24, 4}) {
        cDIB target;
        target.Create(4, 4, bpp);
        target.Cls(Rgb(0, 0, 255));
        source.StretchTransparent(target, 0, 0, 4, 4, 0, 0, 2, 2, Rgb(0, 255, 0));
        for (int y = 0; y < 4; ++y) {
            for (int x = 0; x < 4; ++x) {
                const Colour expected = x >= 2 && y >= 2 ? Rgb(255, 0, 0) : Rgb(0, 0, 255);
                EXPECT_EQ(target.ColourOf(target.Pixel(x, y)), expected) << bpp << " " << x << "," << y;
            }
        }
    }
}

TEST(cDIB, CloneIsDeep)
{
    const cDIB original = Patterned(5, 4, 4);
    cDIB clone;
    original.CloneTo(clone);
    EXPECT_EQ(clone, original);
    clone.SetPixel(0, 0, original.Pixel(0, 0) ^ 1);
    clone.SetColorTable({Rgb(7, 7, 7)});
    EXPECT_NE(clone.Pixel(0, 0), original.Pixel(0, 0));
    EXPECT_EQ(original.GetColorTable()[0], 0u);
}

TEST(cDIB, BestFitKeepsTheRatioAndCentres)
{
    struct Case {
        int W, H, BoxW, BoxH;
        mw::BestFit Fit;
    };
    const Case cases[] = {
        {720, 576, 360, 360, {0, 36, 360, 288}}, // wider: fills the width
        {1, 2, 100, 100, {25, 0, 50, 100}},      // taller: fills the height
        {10, 5, 100, 100, {0, 25, 100, 50}},     // grows to the box
        {2, 3, 10, 10, {1, 0, 7, 10}},           // 6.67 rounds to 7
        {4, 1, 10, 10, {0, 3, 10, 3}},           // 2.5 rounds up
        {1000, 1, 10, 10, {0, 4, 10, 1}},        // never thinner than a pixel
        {0, 5, 10, 10, {}},
        {5, 5, 0, 10, {}},
        {5, -5, 10, 10, {}},
    };
    for (const Case& c : cases) {
        const mw::BestFit fit = mw::GetBestFitInfo(c.W, c.H, c.BoxW, c.BoxH);
        EXPECT_EQ(fit.Left, c.Fit.Left) << c.W << "x" << c.H;
        EXPECT_EQ(fit.Top, c.Fit.Top) << c.W << "x" << c.H;
        EXPECT_EQ(fit.Width, c.Fit.Width) << c.W << "x" << c.H;
        EXPECT_EQ(fit.Height, c.Fit.Height) << c.W << "x" << c.H;
    }
}

TEST(cDIB, SaveFailsWithoutTouchingWhatWasThere)
{
    const ScratchFolder scratch;
    const cDIB dib = Patterned(3, 3, 4);
    const auto folder = scratch.Path() / "folder.bmp";
    std::filesystem::create_directory(folder);
    EXPECT_FALSE(dib.Save(folder.string()));
    EXPECT_TRUE(std::filesystem::is_directory(folder));

    const auto locked = scratch.Write("locked.bmp", "old");
    std::filesystem::permissions(locked, std::filesystem::perms::owner_read);
    EXPECT_FALSE(dib.Save(locked.string()));
    EXPECT_EQ(mw::test::ReadAll(locked), "old");

    EXPECT_FALSE(cDIB().Save((scratch.Path() / "empty.bmp").string()));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(scratch.Path()), {}), 2);
}

TEST(cDIB, PicturesReadAt24Bits)
{
    const ScratchFolder scratch;
    QImage image(5, 3, QImage::Format_RGB888);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 5; ++x)
            image.setPixel(x, y, qRgb(x * 50, y * 100, 255 - x * 20));
    }
    const std::string png = (scratch.Path() / "p.png").string();
    const std::string jpeg = (scratch.Path() / "p.jpg").string();
    ASSERT_TRUE(image.save(QString::fromStdString(png)));
    ASSERT_TRUE(image.save(QString::fromStdString(jpeg)));

    cDIB dib;
    ASSERT_TRUE(dib.CreateFromPicture(png));
    EXPECT_EQ(dib.BPP(), 24);
    ASSERT_EQ(dib.Width(), 5);
    ASSERT_EQ(dib.Height(), 3);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 5; ++x)
            EXPECT_EQ(dib.Pixel(x, y), Rgb(std::uint8_t(x * 50), std::uint8_t(y * 100), std::uint8_t(255 - x * 20)));
    }
    EXPECT_EQ(dib.ToImage().convertToFormat(QImage::Format_RGB888), image);

    ASSERT_TRUE(dib.CreateFromPicture(jpeg));
    EXPECT_EQ(dib.BPP(), 24);
    EXPECT_EQ(dib.Width(), 5);
    EXPECT_EQ(dib.Height(), 3);

    EXPECT_FALSE(dib.CreateFromPicture((scratch.Path() / "none.png").string()));
    EXPECT_TRUE(dib.Empty());
}

TEST(cDIB, OurBmpFilesAndQtsAgree)
{
    const ScratchFolder scratch;
    for (int bpp : {1, 4, 8, 24}) {
        const cDIB ours = Patterned(7, 5, bpp);
        const std::string file = (scratch.Path() / ("o" + std::to_string(bpp) + ".bmp")).string();
        ASSERT_TRUE(ours.Save(file));
        cDIB read;
        ASSERT_TRUE(read.CreateFromPicture(file)) << bpp;
        EXPECT_EQ(read.ToImage(), ours.ToImage()) << bpp;
    }
    const std::string theirs = (scratch.Path() / "q.bmp").string();
    ASSERT_TRUE(Patterned(6, 4, 24).ToImage().save(QString::fromStdString(theirs)));
    cDIB ours, viaQt;
    ASSERT_TRUE(ours.CreateFromBitmapFile(theirs));
    ASSERT_TRUE(viaQt.CreateFromPicture(theirs));
    EXPECT_EQ(ours.ToImage(), viaQt.ToImage());
}

} // namespace
