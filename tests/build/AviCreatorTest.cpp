// The AVI writer as the menu video routes use it: errors, uncompressed and MPEG-4 streams, read
// back by our own reader and cross-checked with ffprobe.
#include "build/cAVICreator.h"

#include "build/BuildTestFiles.h"
#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "media/AviFile.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

namespace fs = std::filesystem;
using mw::cAVICreator;
using mw::cDIB;
using mw::FourCCFromString;
using mw::Rgb;

cDIB Frame(int i, int width = 64, int height = 48)
{
    return mw::test::SolidPicture(width, height, Rgb(static_cast<std::uint8_t>(40 * i), 128, 200));
}

std::string Bits(const cDIB& dib)
{
    return std::string(reinterpret_cast<const char*>(dib.lpBits()), dib.Size());
}

std::string ChunkBytes(const std::string& file, const mw::AviChunk& chunk)
{
    return mw::test::ReadAll(file).substr(static_cast<std::size_t>(chunk.Offset), chunk.Size);
}

class AviCreator : public ::testing::Test {
protected:
    // 24-bit frames, one per position, into a file of the scratch folder.
    void Prepare(cAVICreator& avi, const std::string& name) const
    {
        avi.bitsPerPixel = 24;
        avi.FrameDuration = 1;
        avi.Filename = (scratch_.Path() / name).string();
    }

    mw::Settings settings_;
    mw::ScriptedPrompt prompt_;
    mw::test::ScratchFolder scratch_;
};

TEST_F(AviCreator, RefusesWhatItCannotWriteWithItsMessage)
{
    constexpr const char* kBadDepth = "Unsupported bits/pixel setting: only 8 and 24 bpp AVIs are currently supported.";
    // Depth, handler, first bitmap empty, file, message.
    const std::tuple<int, const char*, bool, const char*, const char*> cases[] = {
        {16, "", false, "refused.avi", kBadDepth},
        {0, "", false, "refused.avi", kBadDepth},
        {24, "MJPG", false, "refused.avi", "Failed to create compressed AVI stream: no encoder for the handler MJPG"},
        {24, "", true, "refused.avi", "Failed to create a new AVI stream"},
        {24, "", false, "no/such/folder.avi", "Failed to open AVI file"},
    };
    for (const auto& [bits, handler, empty, file, message] : cases) {
        SCOPED_TRACE(message);
        cAVICreator avi(settings_, prompt_);
        Prepare(avi, file);
        avi.bitsPerPixel = bits;
        avi.VideoHandlerFourCC = *handler ? FourCCFromString(handler) : 0;
        EXPECT_FALSE(avi.StreamCreate(empty ? cDIB() : Frame(1)));
        ASSERT_TRUE(avi.LastError());
        EXPECT_EQ(avi.LastError()->Description(), message);
        EXPECT_FALSE(fs::exists(avi.Filename)); // no half-made file stays
        EXPECT_FALSE(avi.StreamAdd(Frame(2)));
        EXPECT_EQ(avi.LastError()->Description(), "Must have a valid open stream created using StreamCreate first.");
    }
}

TEST_F(AviCreator, CollectionKeepsItsOrderThroughInsertsAndRemovals)
{
    cAVICreator avi(settings_, prompt_);
    EXPECT_FALSE(avi.CreateFromCollection());
    EXPECT_EQ(avi.LastError()->Description(), "AVI contains no frames");

    avi.AddFrame(Frame(1));
    avi.AddFrame(Frame(3));
    EXPECT_TRUE(avi.InsertFrameBefore(1, Frame(2)));
    EXPECT_TRUE(avi.InsertFrameAfter(2, Frame(4)));
    EXPECT_FALSE(avi.InsertFrameAfter(4, Frame(5)));
    EXPECT_FALSE(avi.RemoveFrame(4));
    EXPECT_EQ(avi.Frame(4), nullptr);
    EXPECT_TRUE(avi.RemoveFrame(0));

    Prepare(avi, "collection.avi");
    ASSERT_TRUE(avi.CreateFromCollection());
    ASSERT_TRUE(avi.StreamClose());
    const auto read = mw::AviFile::Open(avi.Filename);
    ASSERT_TRUE(read);
    ASSERT_EQ(read->Stream(0).Chunks.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(ChunkBytes(avi.Filename, read->Stream(0).Chunks[i]), Bits(Frame(static_cast<int>(i) + 2))) << i;
}

TEST_F(AviCreator, UncompressedFramesAreTheBitmapsBitsInOrder)
{
    cDIB paletted; // a 24-bit frame after it goes onto its palette
    paletted.Create(64, 48, 8);
    paletted.SetColorTable({Rgb(10, 20, 30), Rgb(200, 100, 50)});
    paletted.Cls(Rgb(200, 100, 50));
    const std::tuple<int, cDIB, std::uint32_t, const char*> cases[] = {
        {24, Frame(0), 25000, "rawvideo bgr24 64x48 25/1 3"}, {8, paletted, 12500, "rawvideo pal8 64x48 25/2 3"}};
    for (const auto& [bits, first, rate, probed] : cases) {
        SCOPED_TRACE(bits);
        cAVICreator avi(settings_, prompt_);
        Prepare(avi, "raw.avi");
        avi.bitsPerPixel = bits;
        avi.dwRate = rate;
        avi.name = "stills";
        ASSERT_TRUE(avi.StreamCreate(first));
        ASSERT_TRUE(avi.StreamAdd(Frame(1)));
        ASSERT_TRUE(avi.StreamAdd(Frame(2)));
        ASSERT_TRUE(avi.StreamClose());

        const auto read = mw::AviFile::Open(avi.Filename);
        ASSERT_TRUE(read);
        const mw::AviStream& video = read->Stream(0);
        EXPECT_EQ(video.Info.fccHandler, 0u);
        EXPECT_EQ(video.Info.dwLength, 3u);
        EXPECT_EQ(video.Info.szName, "stills");
        EXPECT_EQ(video.Format.at(14), bits); // biBitCount
        ASSERT_EQ(video.Chunks.size(), 3u);
        EXPECT_TRUE(video.Chunks[0].KeyFrame && video.Chunks[1].KeyFrame && video.Chunks[2].KeyFrame);
        EXPECT_EQ(ChunkBytes(avi.Filename, video.Chunks[0]), Bits(first));
        if (bits == 24) {
            EXPECT_EQ(ChunkBytes(avi.Filename, video.Chunks[2]), Bits(Frame(2)));
        } else {
            ASSERT_EQ(video.Format.size(), 40u + 4 * 256);
            EXPECT_EQ(std::vector<std::uint8_t>(video.Format.begin() + 44, video.Format.begin() + 48),
                      (std::vector<std::uint8_t>{50, 100, 200, 0})); // entry 1, blue first
        }
        if (mw::test::HaveTool("ffprobe")) {
            auto probe = mw::test::ProbeStream(avi.Filename, "v:0");
            EXPECT_EQ(probe["codec_name"] + " " + probe["pix_fmt"] + " " + probe["width"] + "x" + probe["height"] +
                          " " + probe["r_frame_rate"] + " " + probe["nb_read_packets"],
                      probed);
        }
    }
}

TEST_F(AviCreator, FramesGoWhereFrameDurationPutsThemAtTheStreamsSize)
{
    cAVICreator avi(settings_, prompt_);
    Prepare(avi, "positions.avi");
    avi.FrameDuration = 0;
    ASSERT_TRUE(avi.StreamCreate(Frame(0)));
    ASSERT_TRUE(avi.StreamAdd(Frame(1))); // position 0 again: replaces the first frame
    avi.FrameDuration = 3;
    ASSERT_TRUE(avi.StreamAdd(Frame(2))); // at 3, after two dropped frames
    avi.FrameDuration = 1;
    ASSERT_TRUE(avi.StreamAdd(mw::test::SolidPicture(128, 96, Rgb(9, 8, 7)))); // scaled to the stream
    avi.FrameDuration = -1;
    EXPECT_FALSE(avi.StreamAdd(Frame(3))); // never backwards
    EXPECT_EQ(avi.LastError()->Description(), "Failed to add image to the AVI Stream.");
    ASSERT_TRUE(avi.StreamClose());

    const auto read = mw::AviFile::Open(avi.Filename);
    ASSERT_TRUE(read);
    const auto& chunks = read->Stream(0).Chunks;
    ASSERT_EQ(chunks.size(), 5u);
    EXPECT_EQ(read->Stream(0).Info.dwLength, 5u);
    EXPECT_EQ(ChunkBytes(avi.Filename, chunks[0]), Bits(Frame(1)));
    EXPECT_EQ(chunks[1].Size + chunks[2].Size, 0u);
    EXPECT_FALSE(chunks[1].KeyFrame);
    EXPECT_EQ(ChunkBytes(avi.Filename, chunks[3]), Bits(Frame(2)));
    EXPECT_EQ(chunks[4].Size, Frame(0).Size());
}

TEST_F(AviCreator, Mpeg4HandlersKeepTheirExactFourCCAndFlagKeyFrames)
{
    for (const char* other : {"MJPG", "H264", "DIB ", "div"})
        EXPECT_FALSE(mw::IsMpeg4Handler(FourCCFromString(other))) << other;
    for (const char* handler : {"DX50", "divx", "XviD"}) {
        SCOPED_TRACE(handler);
        EXPECT_TRUE(mw::IsMpeg4Handler(FourCCFromString(handler)));
        cAVICreator avi(settings_, prompt_);
        Prepare(avi, std::string(handler) + ".avi");
        avi.dwRate = 29970;
        avi.VideoHandlerFourCC = FourCCFromString(handler);
        ASSERT_TRUE(avi.StreamCreate(Frame(0, 96, 64)));
        for (int i = 1; i < 30; ++i)
            ASSERT_TRUE(avi.StreamAdd(Frame(i / 5, 96, 64)));
        ASSERT_TRUE(avi.StreamClose());

        const auto read = mw::AviFile::Open(avi.Filename);
        ASSERT_TRUE(read);
        const mw::AviStream& video = read->Stream(0);
        EXPECT_EQ(video.Info.fccHandler, FourCCFromString(handler));
        ASSERT_EQ(video.Chunks.size(), 30u);
        std::string indexTypes;
        long lastKey = -1;
        for (std::size_t i = 0; i < video.Chunks.size(); ++i) {
            indexTypes += video.Chunks[i].KeyFrame ? 'I' : 'P';
            if (video.Chunks[i].KeyFrame) {
                EXPECT_LE(long(i) - lastKey, mw::Mpeg4Encoder::kKeyFrameInterval) << i;
                lastKey = long(i);
            }
        }
        EXPECT_EQ(indexTypes[0], 'I');

        if (!mw::test::HaveTool("ffprobe"))
            continue;
        // The flags of the index are the frame types of the bitstream; the codec tag is the
        // format's biCompression.
        std::string decodedTypes;
        for (const char c : mw::test::CommandOutput("ffprobe -v error -show_entries frame=pict_type -of csv=p=0 '" +
                                                    avi.Filename + "'"))
            if (c == 'I' || c == 'P' || c == 'B')
                decodedTypes += c;
        EXPECT_EQ(decodedTypes, indexTypes);
        auto probe = mw::test::ProbeStream(avi.Filename, "v:0");
        EXPECT_EQ(probe["codec_name"] + " " + probe["codec_tag_string"] + " " + probe["r_frame_rate"],
                  std::string("mpeg4 ") + handler + " 30000/1001");
    }
}

TEST_F(AviCreator, BigFilesTurnIntoOpenDmlThatReadersFollowToTheEnd)
{
    constexpr int kFrames = 60;
    const auto picture = [](int i) { return mw::test::SolidPicture(64, 48, Rgb(static_cast<std::uint8_t>(i * 4), 0, 90)); };
    cAVICreator avi(settings_, prompt_, 64 * 1024); // about seven raw frames per RIFF
    Prepare(avi, "odml.avi");
    for (int i = 0; i < kFrames; ++i)
        ASSERT_TRUE(i == 0 ? avi.StreamCreate(picture(i)) : avi.StreamAdd(picture(i)));
    ASSERT_TRUE(avi.StreamClose());

    const std::string bytes = mw::test::ReadAll(avi.Filename);
    for (const char* chunk : {"AVIX", "indx", "dmlh"})
        EXPECT_NE(bytes.find(chunk), std::string::npos) << chunk;
    const auto read = mw::AviFile::Open(avi.Filename);
    ASSERT_TRUE(read);
    ASSERT_EQ(read->Stream(0).Chunks.size(), std::size_t(kFrames));
    EXPECT_EQ(read->Stream(0).Info.dwLength, std::uint32_t(kFrames));
    EXPECT_EQ(ChunkBytes(avi.Filename, read->Stream(0).Chunks[kFrames - 1]), Bits(picture(kFrames - 1)));
    if (mw::test::HaveTool("ffprobe")) {
        EXPECT_EQ(mw::test::ProbeStream(avi.Filename, "v:0").at("nb_read_packets"), std::to_string(kFrames));
    }
}

} // namespace
