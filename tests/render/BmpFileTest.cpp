#include "render/BmpFile.h"

#include "core/ScratchFolder.h"
#include "render/TestBitmaps.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

using mw::cDIB;
using mw::Rgb;
using mw::test::Patterned;
using mw::test::ScratchFolder;

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes ToBytes(const std::string& s) { return Bytes(s.begin(), s.end()); }

void Set32(Bytes& bytes, std::size_t at, std::uint32_t value)
{
    for (int i = 0; i < 4; ++i)
        bytes[at + i] = std::uint8_t(value >> (8 * i));
}

TEST(BmpFile, TwoByTwoAt24BitsByteForByte)
{
    cDIB dib;
    ASSERT_TRUE(dib.Create(2, 2, 24));
    dib.SetPixel(0, 0, Rgb(255, 0, 0));
    dib.SetPixel(1, 0, Rgb(0, 255, 0));
    dib.SetPixel(0, 1, Rgb(0, 0, 255));
    dib.SetPixel(1, 1, Rgb(255, 255, 255));
    const Bytes expected = {
        'B', 'M', 70, 0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0,                       // file header
        40, 0, 0, 0, 2, 0, 0, 0, 2, 0, 0, 0, 1, 0, 24, 0, 0, 0, 0, 0, 16, 0, 0, 0, // info header
        0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,                       //
        255, 0, 0, 255, 255, 255, 0, 0,                                       // bottom row: blue, white
        0, 0, 255, 0, 255, 0, 0, 0};                                          // top row: red, green
    EXPECT_EQ(ToBytes(mw::BmpFileBytes(dib)), expected);
}

TEST(BmpFile, ThreeByOneAt1BitByteForByte)
{
    cDIB dib;
    ASSERT_TRUE(dib.Create(3, 1, 1));
    dib.SetColorTable({Rgb(0x11, 0x22, 0x33), Rgb(0x44, 0x55, 0x66)});
    dib.SetPixel(0, 0, 1);
    dib.SetPixel(2, 0, 1);
    const Bytes expected = {
        'B', 'M', 66, 0, 0, 0, 0, 0, 0, 0, 62, 0, 0, 0,                    //
        40, 0, 0, 0, 3, 0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 0, 0, 0, 0, 0, 4, 0, 0, 0, //
        0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,                    //
        0x33, 0x22, 0x11, 0, 0x66, 0x55, 0x44, 0,                          // table as blue, green, red, 0
        0xA0, 0, 0, 0};                                                    // pixels 1 0 1, high bit first
    EXPECT_EQ(ToBytes(mw::BmpFileBytes(dib)), expected);
}

TEST(BmpFile, TenByTenAt4BitsSizes)
{
    const Bytes bytes = ToBytes(mw::BmpFileBytes(Patterned(10, 10, 4)));
    EXPECT_EQ(bytes.size(), 14u + 40 + 64 + 80);
    EXPECT_EQ(bytes[2], 198);   // total size
    EXPECT_EQ(bytes[10], 118);  // pixel offset
    EXPECT_EQ(bytes[34], 80);   // biSizeImage
}

TEST(BmpFile, SaveThenLoadGivesTheSameBitmapAtEveryDepth)
{
    const ScratchFolder scratch;
    for (int bpp : {1, 4, 8, 24}) {
        cDIB original = Patterned(13, 7, bpp);
        original.SetColorTable({Rgb(1, 2, 3)});
        const std::string file = (scratch.Path() / ("p" + std::to_string(bpp) + ".bmp")).string();
        ASSERT_TRUE(original.Save(file)) << bpp;
        cDIB loaded;
        ASSERT_TRUE(loaded.CreateFromBitmapFile(file)) << bpp;
        EXPECT_EQ(loaded, original) << bpp;
    }
}

TEST(BmpFile, PackedDibIsTheFileWithoutItsFirstHeader)
{
    for (int bpp : {4, 24}) {
        const cDIB original = Patterned(5, 3, bpp);
        const Bytes file = ToBytes(mw::BmpFileBytes(original));
        cDIB packed;
        ASSERT_TRUE(packed.CreateFromPackedDIB(file.data() + 14, file.size() - 14)) << bpp;
        EXPECT_EQ(packed, original) << bpp;
    }
}

TEST(BmpFile, TopDownRowsAreTurnedOver)
{
    const cDIB original = Patterned(3, 4, 8);
    Bytes bytes = ToBytes(mw::BmpFileBytes(original));
    Set32(bytes, 22, std::uint32_t(-4));
    const std::size_t pixels = bytes.size() - original.Size();
    for (int row = 0; row < 4; ++row)
        std::copy_n(original.lpBits() + (3 - row) * 4, 4, bytes.begin() + std::ptrdiff_t(pixels) + row * 4);
    cDIB loaded;
    ASSERT_TRUE(mw::ReadBmpFile(bytes, loaded));
    EXPECT_EQ(loaded, original);
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

TEST(BmpFile, LaterInfoHeadersAreSkippedToThePixels)
{
    const cDIB original = Patterned(6, 5, 8);
    Bytes bytes = ToBytes(mw::BmpFileBytes(original));
    bytes.insert(bytes.begin() + 54, 124 - 40, 0); // a V5 header's extra fields
    Set32(bytes, 14, 124);
    Set32(bytes, 10, 14 + 124 + 1024);
    cDIB loaded;
    ASSERT_TRUE(mw::ReadBmpFile(bytes, loaded));
    EXPECT_EQ(loaded, original);
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
        {"huge size", false, [](Bytes& b) {
             Set32(b, 18, 30000);
             Set32(b, 22, 30000);
         }},
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

TEST(BmpFile, MissingFileOrFolderIsRefused)
{
    const ScratchFolder scratch;
    cDIB dib;
    EXPECT_FALSE(dib.CreateFromBitmapFile((scratch.Path() / "none.bmp").string()));
    EXPECT_FALSE(dib.CreateFromBitmapFile(scratch.Path().string()));
    EXPECT_TRUE(dib.Empty());
}

} // namespace
