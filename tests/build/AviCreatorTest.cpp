// The AVI writer as the menu video routes use it: properties, errors, uncompressed and MPEG-4
// streams, read back by our own reader and cross-checked with ffprobe.
#include "build/cAVICreator.h"

#include "build/BuildTestFiles.h"
#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "media/AviFile.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

namespace fs = std::filesystem;
using mw::cAVICreator;
using mw::cDIB;
using mw::Rgb;

class AviCreator : public ::testing::Test {
protected:
    fs::path File(const std::string& name) const { return scratch_.Path() / name; }

    mw::Settings settings_;
    mw::ScriptedPrompt prompt_;
    mw::test::ScratchFolder scratch_;
};

cDIB Frame(int i, int width = 64, int height = 48)
{
    return mw::test::SolidPicture(width, height, Rgb(static_cast<std::uint8_t>(40 * i), 128, 200));
}

TEST(AviCreatorFourCC, PacksFirstCharacterLowestAndKnowsTheMpeg4Handlers)
{
    EXPECT_EQ(mw::FourCCFromString("divx"), 0x78766964u);
    EXPECT_EQ(mw::FourCCToString(0x78766964u), "divx");
    EXPECT_EQ(mw::FourCCToString(mw::FourCCFromString("DX50")), "DX50");
    for (const char* handler : {"divx", "DIVX", "DX50", "dx50", "XVID", "xvid"})
        EXPECT_TRUE(mw::IsMpeg4Handler(mw::FourCCFromString(handler))) << handler;
    for (const char* handler : {"MJPG", "H264", "DIB ", "div"})
        EXPECT_FALSE(mw::IsMpeg4Handler(mw::FourCCFromString(handler))) << handler;
    EXPECT_FALSE(mw::IsMpeg4Handler(0));
}

TEST_F(AviCreator, StartsWithItsDefaults)
{
    cAVICreator avi(settings_, prompt_);
    EXPECT_EQ(avi.Width, 0);
    EXPECT_EQ(avi.Height, 0);
    EXPECT_EQ(avi.name, "");
    EXPECT_EQ(avi.VideoHandlerFourCC, 0u);
    EXPECT_EQ(avi.dwScale, 1000u);
    EXPECT_EQ(avi.dwRate, 10000u);
    EXPECT_EQ(avi.VideoTypeFourCC, mw::FourCCFromString("vids"));
    EXPECT_EQ(avi.FrameDuration, 0);
    EXPECT_EQ(avi.bitsPerPixel, 0);
    EXPECT_EQ(avi.Filename, "");
    EXPECT_EQ(avi.FrameCount(), 0u);
    EXPECT_FALSE(avi.LastError());
    EXPECT_TRUE(avi.StreamClose()); // nothing open is fine
}

TEST(AviCreatorErrors, CarryTheirCodeTextAndNumber)
{
    const std::pair<int, const char*> table[] = {
        {1, "File not found"},
        {2, "Failed to open AVI file"},
        {3, "Unable to open AVI frames"},
        {4, "AVI contains no frames"},
        {5, "Could not read the format of the AVI"},
        {6, "Unsupported AVI format"},
        {7, "Failed to create a new AVI stream"},
        {8, "Failed to create compressed AVI stream"},
        {9, "Failed to set compressed AVI stream format"},
        {10, "Unsupported bits/pixel setting: only 8 and 24 bpp AVIs are currently supported."},
        {11, "Must have a valid open stream created using StreamCreate first."},
        {12, "Failed to add image to the AVI Stream."},
        {13, "Unexpected error 13"},
        {0, "Unexpected error 0"},
    };
    for (const auto& [code, text] : table) {
        const mw::AviCreatorError error(code);
        EXPECT_EQ(error.Description(), text);
        EXPECT_EQ(error.Source(), "cAVICreator.cAVIFrameExtract");
        EXPECT_EQ(static_cast<std::uint32_t>(error.Number()), 0x80040000u + 512u + static_cast<std::uint32_t>(code));
    }
}

TEST_F(AviCreator, RefusesWhatItCannotWriteWithTheRightCode)
{
    struct Case {
        const char* Name;
        int Bits;
        const char* Handler;
        bool EmptyBitmap;
        bool MissingFolder;
        int Code;
    };
    const Case cases[] = {
        {"16 bits per pixel", 16, "", false, false, 10},
        {"no depth set", 0, "", false, false, 10},
        {"handler no encoder serves", 24, "MJPG", false, false, 8},
        {"empty first bitmap", 24, "", true, false, 7},
        {"folder that does not exist", 24, "", false, true, 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Name);
        cAVICreator avi(settings_, prompt_);
        avi.bitsPerPixel = c.Bits;
        avi.VideoHandlerFourCC = *c.Handler ? mw::FourCCFromString(c.Handler) : 0;
        const fs::path file = c.MissingFolder ? File("no/such/folder.avi") : File("refused.avi");
        avi.Filename = file.string();
        EXPECT_FALSE(avi.StreamCreate(c.EmptyBitmap ? cDIB() : Frame(1)));
        ASSERT_TRUE(avi.LastError());
        EXPECT_EQ(avi.LastError()->Code(), c.Code);
        EXPECT_FALSE(fs::exists(file)); // no half-made file stays
        EXPECT_FALSE(avi.StreamAdd(Frame(2)));
    }
}

TEST_F(AviCreator, StreamAddBeforeStreamCreateIsError11)
{
    cAVICreator avi(settings_, prompt_);
    EXPECT_FALSE(avi.StreamAdd(Frame(1)));
    ASSERT_TRUE(avi.LastError());
    EXPECT_EQ(avi.LastError()->Code(), 11);
}

TEST_F(AviCreator, CheckpointsShowOnlyWithTheDebugSetting)
{
    for (const bool debug : {false, true}) {
        settings_.ShowDebugMessage = debug;
        mw::ScriptedPrompt prompt;
        cAVICreator avi(settings_, prompt);
        avi.bitsPerPixel = 24;
        avi.Filename = File("checkpoints.avi").string();
        ASSERT_TRUE(avi.StreamCreate(Frame(1)));
        const std::vector<std::string> expected = {"Before AVI open", "Before AVI stream",
                                                   "Before AVI compressed stream", "Before AVI add frame",
                                                   "After AVI add frame"};
        EXPECT_EQ(prompt.Texts(), debug ? expected : std::vector<std::string>{});
    }
}

TEST_F(AviCreator, CollectionKeepsItsOrderThroughInsertsAndRemovals)
{
    cAVICreator avi(settings_, prompt_);
    EXPECT_FALSE(avi.CreateFromCollection());
    EXPECT_EQ(avi.LastError()->Code(), 4);

    avi.AddFrame(Frame(1));
    avi.AddFrame(Frame(3));
    EXPECT_TRUE(avi.InsertFrameBefore(1, Frame(2)));
    EXPECT_TRUE(avi.InsertFrameAfter(2, Frame(4)));
    EXPECT_FALSE(avi.InsertFrameAfter(4, Frame(5)));
    EXPECT_FALSE(avi.RemoveFrame(4));
    ASSERT_EQ(avi.FrameCount(), 4u);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(*avi.Frame(static_cast<std::size_t>(i)), Frame(i + 1));
    EXPECT_EQ(avi.Frame(4), nullptr);
    EXPECT_TRUE(avi.RemoveFrame(0));
    EXPECT_EQ(*avi.Frame(0), Frame(2));

    avi.bitsPerPixel = 24;
    avi.FrameDuration = 1;
    avi.Filename = File("collection.avi").string();
    ASSERT_TRUE(avi.CreateFromCollection());
    ASSERT_TRUE(avi.StreamClose());
    const auto read = mw::AviFile::Open(avi.Filename);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->Stream(0).Chunks.size(), 3u);
}

// Reads the bytes of frame n of stream 0.
std::string ChunkBytes(const fs::path& file, const mw::AviChunk& chunk)
{
    const std::string all = mw::test::ReadAll(file);
    return all.substr(static_cast<std::size_t>(chunk.Offset), chunk.Size);
}

std::string Bits(const cDIB& dib) { return std::string(reinterpret_cast<const char*>(dib.lpBits()), dib.Size()); }

TEST_F(AviCreator, UncompressedFramesAreTheBitmapsBitsInOrder)
{
    cAVICreator avi(settings_, prompt_);
    avi.bitsPerPixel = 24;
    avi.FrameDuration = 1;
    avi.dwRate = 25000;
    avi.name = "stills";
    avi.Filename = File("raw24.avi").string();
    ASSERT_TRUE(avi.StreamCreate(Frame(0)));
    for (int i = 1; i < 5; ++i)
        ASSERT_TRUE(avi.StreamAdd(Frame(i)));
    ASSERT_TRUE(avi.StreamClose());

    const auto read = mw::AviFile::Open(avi.Filename);
    ASSERT_TRUE(read);
    const mw::AviStream& video = read->Stream(0);
    EXPECT_EQ(video.Info.fccHandler, 0u);
    EXPECT_EQ(video.Info.dwRate, 25000u);
    EXPECT_EQ(video.Info.dwScale, 1000u);
    EXPECT_EQ(video.Info.dwLength, 5u);
    EXPECT_EQ(video.Info.szName, "stills");
    EXPECT_EQ(read->FileInfo().dwWidth, 64u);
    ASSERT_EQ(video.Chunks.size(), 5u);
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(video.Chunks[static_cast<std::size_t>(i)].KeyFrame);
        EXPECT_EQ(ChunkBytes(avi.Filename, video.Chunks[static_cast<std::size_t>(i)]), Bits(Frame(i))) << i;
    }

    if (!mw::test::HaveTool("ffprobe"))
        GTEST_SKIP() << "ffprobe is not installed";
    const auto probe = mw::test::ProbeStream(avi.Filename, "v:0");
    EXPECT_EQ(probe.at("codec_name"), "rawvideo");
    EXPECT_EQ(probe.at("pix_fmt"), "bgr24");
    EXPECT_EQ(probe.at("width"), "64");
    EXPECT_EQ(probe.at("height"), "48");
    EXPECT_EQ(probe.at("r_frame_rate"), "25/1");
    EXPECT_EQ(probe.at("nb_read_packets"), "5");
}

TEST_F(AviCreator, EightBitFramesCarryTheFirstFramesPalette)
{
    cDIB first;
    first.Create(20, 10, 8);
    first.SetColorTable({Rgb(10, 20, 30), Rgb(200, 100, 50)});
    first.Cls(Rgb(200, 100, 50));
    cAVICreator avi(settings_, prompt_);
    avi.bitsPerPixel = 8;
    avi.FrameDuration = 1;
    avi.dwRate = 12500;
    avi.Filename = File("raw8.avi").string();
    ASSERT_TRUE(avi.StreamCreate(first));
    ASSERT_TRUE(avi.StreamAdd(Frame(1, 20, 10))); // a 24-bit frame goes onto the palette
    ASSERT_TRUE(avi.StreamClose());

    const auto read = mw::AviFile::Open(avi.Filename);
    ASSERT_TRUE(read);
    const std::vector<std::uint8_t>& format = read->Stream(0).Format;
    ASSERT_EQ(format.size(), 40u + 4 * 256);
    EXPECT_EQ(format[14], 8);                                       // biBitCount
    EXPECT_EQ(std::vector<std::uint8_t>(format.begin() + 44, format.begin() + 48),
              (std::vector<std::uint8_t>{50, 100, 200, 0}));         // entry 1, blue first
    ASSERT_EQ(read->Stream(0).Chunks.size(), 2u);
    EXPECT_EQ(ChunkBytes(avi.Filename, read->Stream(0).Chunks[0]), Bits(first));

    if (!mw::test::HaveTool("ffprobe"))
        GTEST_SKIP() << "ffprobe is not installed";
    const auto probe = mw::test::ProbeStream(avi.Filename, "v:0");
    EXPECT_EQ(probe.at("codec_name"), "rawvideo");
    EXPECT_EQ(probe.at("pix_fmt"), "pal8");
    EXPECT_EQ(probe.at("width"), "20");
    EXPECT_EQ(probe.at("r_frame_rate"), "25/2");
    EXPECT_EQ(probe.at("nb_read_packets"), "2");
}

TEST_F(AviCreator, FrameDurationLeavesDroppedFramesAndASamePositionReplaces)
{
    cAVICreator avi(settings_, prompt_);
    avi.bitsPerPixel = 24;
    avi.FrameDuration = 0;
    avi.Filename = File("positions.avi").string();
    ASSERT_TRUE(avi.StreamCreate(Frame(0)));
    ASSERT_TRUE(avi.StreamAdd(Frame(1))); // position 0 again: replaces the first frame
    avi.FrameDuration = 3;
    ASSERT_TRUE(avi.StreamAdd(Frame(2))); // at 3, after two dropped frames
    avi.FrameDuration = -1;
    EXPECT_FALSE(avi.StreamAdd(Frame(3))); // never backwards
    EXPECT_EQ(avi.LastError()->Code(), 12);
    ASSERT_TRUE(avi.StreamClose());

    const auto read = mw::AviFile::Open(avi.Filename);
    ASSERT_TRUE(read);
    const auto& chunks = read->Stream(0).Chunks;
    ASSERT_EQ(chunks.size(), 4u);
    EXPECT_EQ(ChunkBytes(avi.Filename, chunks[0]), Bits(Frame(1)));
    EXPECT_EQ(chunks[1].Size, 0u);
    EXPECT_FALSE(chunks[1].KeyFrame);
    EXPECT_EQ(chunks[2].Size, 0u);
    EXPECT_EQ(ChunkBytes(avi.Filename, chunks[3]), Bits(Frame(2)));
    EXPECT_EQ(read->Stream(0).Info.dwLength, 4u);
}

TEST_F(AviCreator, FramesOfAnotherSizeAreScaledToTheStream)
{
    cAVICreator avi(settings_, prompt_);
    avi.bitsPerPixel = 24;
    avi.FrameDuration = 1;
    avi.Filename = File("scaled.avi").string();
    ASSERT_TRUE(avi.StreamCreate(Frame(0)));
    ASSERT_TRUE(avi.StreamAdd(mw::test::SolidPicture(128, 96, Rgb(9, 8, 7))));
    ASSERT_TRUE(avi.StreamClose());
    const auto read = mw::AviFile::Open(avi.Filename);
    ASSERT_TRUE(read);
    ASSERT_EQ(read->Stream(0).Chunks.size(), 2u);
    EXPECT_EQ(read->Stream(0).Chunks[1].Size, Frame(0).Size());
}

TEST_F(AviCreator, Mpeg4HandlersKeepTheirExactFourCCAndFlagKeyFrames)
{
    for (const char* handler : {"DX50", "divx", "XviD"}) {
        SCOPED_TRACE(handler);
        cAVICreator avi(settings_, prompt_);
        avi.bitsPerPixel = 24;
        avi.FrameDuration = 1;
        avi.dwRate = 29970;
        avi.VideoHandlerFourCC = mw::FourCCFromString(handler);
        avi.Filename = File(std::string(handler) + ".avi").string();
        ASSERT_TRUE(avi.StreamCreate(Frame(0, 96, 64)));
        for (int i = 1; i < 30; ++i)
            ASSERT_TRUE(avi.StreamAdd(Frame(i / 5, 96, 64)));
        ASSERT_TRUE(avi.StreamClose());

        const auto read = mw::AviFile::Open(avi.Filename);
        ASSERT_TRUE(read);
        const mw::AviStream& video = read->Stream(0);
        EXPECT_EQ(video.Info.fccHandler, mw::FourCCFromString(handler));
        ASSERT_GE(video.Format.size(), 20u);
        std::uint32_t compression = 0;
        std::memcpy(&compression, video.Format.data() + 16, 4);
        EXPECT_EQ(compression, mw::FourCCFromString(handler));
        ASSERT_EQ(video.Chunks.size(), 30u);
        long lastKey = -1;
        for (std::size_t i = 0; i < video.Chunks.size(); ++i) {
            if (video.Chunks[i].KeyFrame) {
                EXPECT_LE(long(i) - lastKey, mw::Mpeg4Encoder::kKeyFrameInterval) << i;
                lastKey = long(i);
            }
        }
        EXPECT_TRUE(video.Chunks[0].KeyFrame);
        EXPECT_EQ(read->FindSample(0, 29, mw::KeySearch::PreviousKey), lastKey);

        if (!mw::test::HaveTool("ffprobe"))
            continue;
        // The flags of the index are the frame types of the bitstream.
        std::string decodedTypes;
        for (const char c : mw::test::CommandOutput("ffprobe -v error -show_entries frame=pict_type -of csv=p=0 '" +
                                                    avi.Filename + "'"))
            if (c == 'I' || c == 'P' || c == 'B')
                decodedTypes += c;
        std::string indexTypes;
        for (const mw::AviChunk& chunk : video.Chunks)
            indexTypes += chunk.KeyFrame ? 'I' : 'P';
        EXPECT_EQ(decodedTypes, indexTypes);
        const auto probe = mw::test::ProbeStream(avi.Filename, "v:0");
        EXPECT_EQ(probe.at("codec_name"), "mpeg4");
        EXPECT_EQ(probe.at("codec_tag_string"), handler);
        EXPECT_EQ(probe.at("width"), "96");
        EXPECT_EQ(probe.at("r_frame_rate"), "30000/1001");
        EXPECT_EQ(probe.at("nb_read_packets"), "30");
    }
}

TEST_F(AviCreator, BigFilesTurnIntoOpenDmlThatReadersFollowToTheEnd)
{
    constexpr int kFrames = 60;
    for (const std::uint32_t handler : {0u, mw::FourCCFromString("DX50")}) {
        SCOPED_TRACE(handler);
        cAVICreator avi(settings_, prompt_, 64 * 1024); // about seven raw frames per RIFF
        avi.bitsPerPixel = 24;
        avi.FrameDuration = 1;
        avi.dwRate = 25000;
        avi.VideoHandlerFourCC = handler;
        avi.Filename = File("odml.avi").string();
        ASSERT_TRUE(avi.StreamCreate(Frame(0)));
        for (int i = 1; i < kFrames; ++i)
            ASSERT_TRUE(avi.StreamAdd(mw::test::SolidPicture(64, 48, Rgb(static_cast<std::uint8_t>(i * 4), 0, 90))));
        ASSERT_TRUE(avi.StreamClose());

        const std::string bytes = mw::test::ReadAll(avi.Filename);
        const bool openDml = bytes.find("AVIX") != std::string::npos;
        EXPECT_EQ(openDml, handler == 0); // the encoded stills stay small
        const auto read = mw::AviFile::Open(avi.Filename);
        ASSERT_TRUE(read);
        ASSERT_EQ(read->Stream(0).Chunks.size(), std::size_t(kFrames));
        EXPECT_EQ(read->Stream(0).Info.dwLength, std::uint32_t(kFrames));
        if (handler == 0) {
            EXPECT_NE(bytes.find("indx"), std::string::npos);
            EXPECT_NE(bytes.find("dmlh"), std::string::npos);
            EXPECT_EQ(ChunkBytes(avi.Filename, read->Stream(0).Chunks[kFrames - 1]),
                      Bits(mw::test::SolidPicture(64, 48, Rgb((kFrames - 1) * 4, 0, 90))));
        }
        if (mw::test::HaveTool("ffprobe")) {
            EXPECT_EQ(mw::test::ProbeStream(avi.Filename, "v:0").at("nb_read_packets"), std::to_string(kFrames));
        }
    }
}

} // namespace
