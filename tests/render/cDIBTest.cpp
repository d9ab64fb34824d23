#include "render/cDIB.h"

#include "core/ScratchFolder.h"
#include "render/BmpFile.h"
#include "render/TestBitmaps.h"

#include <gtest/gtest.h>

#include <QImage>

#include <functional>
#include <set>
#include <vector>

using mw::cDIB;
using mw::Colour;
using mw::Rgb;
using mw::test::Blank;
using mw::test::Patterned;
using mw::test::ScratchFolder;
using mw::test::ValuesIn;

namespace {

std::vector<std::uint32_t> RowOf(const cDIB& dib, int y)
{
    std::vector<std::uint32_t> row;
    for (int x = 0; x < dib.Width(); ++x)
        row.push_back(dib.Pixel(x, y));
    return row;
}

using Row = std::vector<std::uint32_t>;
using Bytes = std::vector<std::uint8_t>;

Bytes ToBytes(const std::string& s) { return Bytes(s.begin(), s.end()); }

void Set32(Bytes& bytes, std::size_t at, std::uint32_t value)
{
    for (int i = 0; i < 4; ++i)
        bytes[at + i] = std::uint8_t(value >> (8 * i));
}

std::uint32_t Get32(const Bytes& bytes, std::size_t at)
{
    return bytes[at] | bytes[at + 1] << 8 | bytes[at + 2] << 16 | std::uint32_t(bytes[at + 3]) << 24;
}

TEST(cDIB, CreateRoundsLinesUpToFourBytesAndRefusesWhatCannotBeMade)
{
    struct Case {
        int Width, Height, Bpp, Stride;
    };
    for (const Case& c :
         {Case{1, 1, 1, 4}, Case{33, 2, 1, 8}, Case{9, 3, 4, 8}, Case{4, 1, 8, 4}, Case{5, 2, 24, 16}}) {
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
    cDIB dib = Blank(1, 1, 4);
    const std::vector<Colour> sixteen = dib.GetColorTable();
    dib.Create(1, 1, 8);
    const std::vector<Colour> table = dib.GetColorTable();
    ASSERT_EQ(table.size(), 256u);
    // The 4-bit colours first, so that 4-bit indexes keep their colours; then a cube; then greys.
    EXPECT_TRUE(std::equal(sixteen.begin(), sixteen.end(), table.begin()));
    EXPECT_EQ(table[16 + 36 * 5 + 6 * 2 + 1], Rgb(255, 102, 51));
    EXPECT_EQ(table[232], Rgb(8, 8, 8));
    EXPECT_EQ(table[255], Rgb(238, 238, 238));
}

TEST(cDIB, ShortColourTableSetsOnlyItsEntriesAndLongOneIsCut)
{
    cDIB dib = Blank(2, 2, 4);
    std::vector<Colour> expected = dib.GetColorTable();
    dib.SetColorTable({Rgb(1, 2, 3), Rgb(10, 20, 30), Rgb(10, 20, 30)});
    expected[0] = Rgb(1, 2, 3);
    expected[1] = expected[2] = Rgb(10, 20, 30);
    EXPECT_EQ(dib.GetColorTable(), expected);
    EXPECT_EQ(dib.ColourOf(1), Rgb(10, 20, 30));
    EXPECT_EQ(dib.ColourOf(16), 0u);
    EXPECT_EQ(dib.ValueOf(Rgb(10, 20, 30)), 1u); // the first of equal entries

    dib.SetColorTable(std::vector<Colour>(20, Rgb(9, 9, 9)));
    EXPECT_EQ(dib.GetColorTable(), std::vector<Colour>(16, Rgb(9, 9, 9)));
    cDIB rgb = Blank(1, 1, 24);
    EXPECT_EQ(rgb.ValueOf(0xFF123456), 0x123456u);
}

TEST(cDIB, PixelsCountFromTheTopLeftOverBottomUpRows)
{
    cDIB dib = Blank(3, 2, 4);
    dib.SetPixel(0, 0, 0xA);
    dib.SetPixel(1, 0, 0x5);
    dib.SetPixel(2, 1, 0xF);
    dib.SetPixel(3, 0, 0x7);  // outside: ignored
    dib.SetPixel(0, -1, 0x7); // outside: ignored
    EXPECT_EQ(dib.lpBits()[4], 0xA5); // the top row is the last in memory
    EXPECT_EQ(dib.lpBits()[1], 0xF0);
    EXPECT_EQ(RowOf(dib, 0), (Row{0xA, 0x5, 0}));
    EXPECT_EQ(dib.Pixel(5, 5), 0u);
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
        cDIB dib = Blank(11, 3, c.Bpp);
        dib.Cls(c.Clear);
        EXPECT_EQ(ValuesIn(dib), std::set<std::uint32_t>{c.Value}) << c.Bpp << " " << c.Clear;
        dib.Reset();
        EXPECT_EQ(ValuesIn(dib), std::set<std::uint32_t>{0});
    }
}

TEST(cDIB, StretchBetweenPaletteBitmapsKeepsIndexes)
{
    // Entries 3 and 5 share a colour: a copy by colour would turn 5 into 3.
    cDIB source = Blank(2, 2, 4);
    source.SetColorTable({Rgb(0, 0, 255), Rgb(255, 0, 0), Rgb(255, 255, 0), Rgb(9, 9, 9), Rgb(1, 1, 1), Rgb(9, 9, 9)});
    source.SetPixel(0, 0, 5);
    source.SetPixel(1, 0, 1);
    source.SetPixel(0, 1, 2);
    source.SetPixel(1, 1, 0);
    cDIB target = Blank(4, 4, 4);
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
    cDIB palette = Blank(2, 1, 4);
    palette.SetPixel(0, 0, 9);
    palette.SetPixel(1, 0, 14);
    cDIB rgb = Blank(2, 1, 24);
    palette.Paint(rgb, 0, 0);
    EXPECT_EQ(RowOf(rgb, 0), (Row{Rgb(255, 0, 0), Rgb(0, 255, 255)}));

    rgb.SetPixel(0, 0, Rgb(120, 0, 10));
    cDIB back = Blank(2, 1, 4);
    back.LoadBlt(rgb, 0, 0);
    EXPECT_EQ(RowOf(back, 0), (Row{1, 14})); // 1 is dark red
}

TEST(cDIB, NegativeSizesMirrorAndCopiesAreClipped)
{
    cDIB source = Blank(3, 1, 8);
    for (int x = 0; x < 3; ++x)
        source.SetPixel(x, 0, std::uint32_t(x + 1));
    cDIB target = Blank(4, 2, 8);
    source.Stretch(target, 3, 0, -3, 1, 0, 0, 3, 1);
    source.Paint(target, 2, 1); // only two pixels fit
    EXPECT_EQ(RowOf(target, 0), (Row{3, 2, 1, 0}));
    EXPECT_EQ(RowOf(target, 1), (Row{0, 0, 1, 2}));

    cDIB part = Blank(2, 1, 8);
    part.LoadBlt(source, 1, 0);
    EXPECT_EQ(RowOf(part, 0), (Row{2, 3}));

    source.Paint(source, 1, 0); // overlapping: reads the pixels as they were
    EXPECT_EQ(RowOf(source, 0), (Row{1, 1, 2}));
}

TEST(cDIB, StretchTransparentLeavesOutTheTransparentColour)
{
    cDIB source = Blank(2, 2, 24);
    source.Cls(Rgb(0, 255, 0));
    source.SetPixel(1, 1, Rgb(255, 0, 0));
    for (int bpp : {24, 4}) {
        cDIB target = Blank(4, 4, bpp);
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
    const auto fields = [](const mw::BestFit& f) { return std::vector<int>{f.Left, f.Top, f.Width, f.Height}; };
    for (const Case& c : cases)
        EXPECT_EQ(fields(mw::GetBestFitInfo(c.W, c.H, c.BoxW, c.BoxH)), fields(c.Fit)) << c.W << "x" << c.H;
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
    const QImage image = Patterned(5, 3, 24).ToImage().convertToFormat(QImage::Format_RGB888);
    cDIB dib;
    for (const char* name : {"p.jpg", "p.png"}) {
        const std::string file = (scratch.Path() / name).string();
        ASSERT_TRUE(image.save(QString::fromStdString(file))) << name;
        ASSERT_TRUE(dib.CreateFromPicture(file)) << name;
        EXPECT_EQ(dib.BPP(), 24) << name;
    }
    EXPECT_EQ(dib.ToImage().convertToFormat(QImage::Format_RGB888), image);
    const QRgb corner = image.pixel(4, 2);
    EXPECT_EQ(dib.Pixel(4, 2), Rgb(qRed(corner), qGreen(corner), qBlue(corner))); // red in the low byte, top row first

    EXPECT_FALSE(dib.CreateFromPicture((scratch.Path() / "none.png").string()));
    EXPECT_TRUE(dib.Empty());
}

// The pixels and the table are proved by Qt reading the files; these are the sizes and
// offsets that a reader may not check.
TEST(BmpFile, HeadersGiveSizesAndOffsetsOfEveryDepth)
{
    const struct {
        int Width, Height, Bpp;
        std::uint32_t FileSize, PixelOffset, ImageSize;
    } cases[] = {
        {3, 1, 1, 66, 62, 4}, {10, 10, 4, 198, 118, 80}, {5, 3, 8, 1102, 1078, 24}, {2, 2, 24, 70, 54, 16},
    };
    for (const auto& c : cases) {
        const Bytes bytes = ToBytes(mw::BmpFileBytes(Patterned(c.Width, c.Height, c.Bpp)));
        EXPECT_EQ(bytes.size(), c.FileSize) << c.Bpp;
        EXPECT_EQ(Get32(bytes, 2), c.FileSize) << c.Bpp;
        EXPECT_EQ(Get32(bytes, 10), c.PixelOffset) << c.Bpp;
        EXPECT_EQ(Get32(bytes, 34), c.ImageSize) << c.Bpp; // biSizeImage
    }
}

TEST(BmpFile, OursAndQtReadEachOthersFilesAtEveryDepth)
{
    const ScratchFolder scratch;
    for (int bpp : {1, 4, 8, 24}) {
        cDIB original = Patterned(13, 7, bpp);
        original.SetColorTable({Rgb(0x11, 0x22, 0x33), Rgb(0x44, 0x55, 0x66)}); // red and blue differ
        const std::string file = (scratch.Path() / ("p" + std::to_string(bpp) + ".bmp")).string();
        ASSERT_TRUE(original.Save(file)) << bpp;
        cDIB ours, viaQt;
        ASSERT_TRUE(ours.CreateFromBitmapFile(file)) << bpp;
        EXPECT_EQ(ours, original) << bpp;
        ASSERT_TRUE(viaQt.CreateFromPicture(file)) << bpp;
        EXPECT_EQ(viaQt.ToImage(), original.ToImage()) << bpp;
    }
    const cDIB picture = Patterned(6, 4, 24);
    const std::string theirs = (scratch.Path() / "q.bmp").string();
    ASSERT_TRUE(picture.ToImage().save(QString::fromStdString(theirs)));
    cDIB ours;
    ASSERT_TRUE(ours.CreateFromBitmapFile(theirs));
    EXPECT_EQ(ours.ToImage(), picture.ToImage());

    EXPECT_FALSE(ours.CreateFromBitmapFile((scratch.Path() / "none.bmp").string()));
    EXPECT_FALSE(ours.CreateFromBitmapFile(scratch.Path().string()));
    EXPECT_TRUE(ours.Empty());
}

TEST(BmpFile, TopDownRowsLaterInfoHeadersAndPackedBitmapsReadAsTheSameBitmap)
{
    const cDIB original = Patterned(3, 4, 8);
    const Bytes plain = ToBytes(mw::BmpFileBytes(original));
    Bytes topDown = plain;
    Set32(topDown, 22, std::uint32_t(-4));
    const std::size_t pixels = plain.size() - original.Size();
    for (int row = 0; row < 4; ++row)
        std::copy_n(original.lpBits() + (3 - row) * 4, 4, topDown.begin() + std::ptrdiff_t(pixels) + row * 4);
    Bytes v5 = plain;
    v5.insert(v5.begin() + 54, 124 - 40, 0); // a V5 header's extra fields
    Set32(v5, 14, 124);
    Set32(v5, 10, 14 + 124 + 1024);
    for (const Bytes& bytes : {topDown, v5}) {
        cDIB loaded;
        ASSERT_TRUE(mw::ReadBmpFile(bytes, loaded));
        EXPECT_EQ(loaded, original);
    }
    for (const cDIB& bitmap : {original, Patterned(5, 3, 24)}) { // the file without its first header
        const Bytes file = ToBytes(mw::BmpFileBytes(bitmap));
        cDIB packed;
        ASSERT_TRUE(packed.CreateFromPackedDIB(file.data() + 14, file.size() - 14));
        EXPECT_EQ(packed, bitmap);
    }
}

TEST(BmpFile, ShortTableIsFilledWithTheDefault)
{
    // A 4-bit file whose table has two entries, as biClrUsed says.
    const cDIB original = Patterned(4, 2, 4);
    Bytes bytes = ToBytes(mw::BmpFileBytes(original));
    bytes.erase(bytes.begin() + 54 + 8, bytes.begin() + 54 + 64);
    bytes[54] = 0x10; // entry 0 blue byte
    Set32(bytes, 10, 54 + 8);
    Set32(bytes, 46, 2);
    cDIB loaded;
    ASSERT_TRUE(mw::ReadBmpFile(bytes, loaded));
    std::vector<mw::Colour> expected = original.GetColorTable();
    expected[0] = Rgb(0, 0, 0x10);
    EXPECT_EQ(loaded.GetColorTable(), expected);
    EXPECT_TRUE(std::equal(loaded.lpBits(), loaded.lpBits() + loaded.Size(), original.lpBits()));
}

TEST(BmpFile, DamagedFilesAreRefused)
{
    const Bytes good = ToBytes(mw::BmpFileBytes(Patterned(4, 4, 4)));
    struct Damage {
        const char* What;
        bool InFileHeader; // a packed bitmap has no such header to damage
        std::function<void(Bytes&)> Apply;
    };
    const std::vector<Damage> damages = {
        {"empty", false, [](Bytes& b) { b.clear(); }},
        {"file header only", false, [](Bytes& b) { b.resize(14); }},
        {"truncated pixels", false, [](Bytes& b) { b.pop_back(); }},
        {"not BM", true, [](Bytes& b) { b[1] = 'A'; }},
        {"pixel offset past the end", true, [](Bytes& b) { Set32(b, 10, 0xFFFFFFF0); }},
        {"pixel offset inside the table", true, [](Bytes& b) { Set32(b, 10, 60); }},
        {"absurd width", false, [](Bytes& b) { Set32(b, 18, 0x7FFFFFFF); }},
        {"huge size", false, [](Bytes& b) { Set32(b, 18, 30000); Set32(b, 22, 30000); }},
        {"zero width", false, [](Bytes& b) { Set32(b, 18, 0); }},
        {"zero height", false, [](Bytes& b) { Set32(b, 22, 0); }},
        {"most negative height", false, [](Bytes& b) { Set32(b, 22, 0x80000000); }},
        {"16 bits", false, [](Bytes& b) { b[28] = 16; }},
        {"run-length coded", false, [](Bytes& b) { b[30] = 2; }},
        {"two planes", false, [](Bytes& b) { b[26] = 2; }},
        {"info header past the end", false, [](Bytes& b) { Set32(b, 14, 0xFFFFFFFF); }},
        {"core header", false, [](Bytes& b) { Set32(b, 14, 12); }},
        {"absurd table", false, [](Bytes& b) { Set32(b, 46, 0xFFFFFFFF); }},
    };
    for (const Damage& damage : damages) {
        Bytes bytes = good;
        damage.Apply(bytes);
        cDIB dib = Patterned(2, 2, 8);
        EXPECT_FALSE(mw::ReadBmpFile(bytes, dib)) << damage.What;
        EXPECT_TRUE(dib.Empty()) << damage.What;
        if (damage.InFileHeader)
            continue;
        const Bytes packed(bytes.begin() + std::min<std::ptrdiff_t>(14, std::ssize(bytes)), bytes.end());
        EXPECT_FALSE(mw::ReadPackedDib(packed, dib)) << damage.What;
    }
}

} // namespace
