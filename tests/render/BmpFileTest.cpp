#include "render/BmpFile.h"

#include "core/ScratchFolder.h"
#include "render/TestBitmaps.h"

#include <gtest/gtest.h>

#include <QImage>

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

std::uint32_t Get32(const Bytes& bytes, std::size_t at)
{
    return bytes[at] | bytes[at + 1] << 8 | bytes[at + 2] << 16 | std::uint32_t(bytes[at + 3]) << 24;
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
