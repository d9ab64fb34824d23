#include "media/AviFile.h"
#include "media/AviInfoDump.h"

#include "core/ScratchFolder.h"
#include "media/AviBytes.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace mw;
using namespace mw::test;

namespace {

std::optional<AviFile> OpenBytes(const ScratchFolder& dir, const std::string& bytes, std::string* error = nullptr)
{
    return AviFile::Open(dir.Write("t.avi", bytes).string(), error);
}

AviStreamSpec AudioStream(std::size_t chunks)
{
    AviStreamSpec s;
    s.Type = "auds";
    s.Handler = std::string(4, '\0');
    s.Suffix = "wb";
    s.Scale = 1152;
    s.Rate = 44100;
    s.Format = std::vector<std::uint8_t>(30, 1);
    for (std::size_t i = 0; i < chunks; ++i)
        s.Chunks.push_back({100, true});
    return s;
}

std::vector<long> KeysOf(const AviStream& stream)
{
    std::vector<long> keys;
    for (std::size_t i = 0; i < stream.Chunks.size(); ++i) {
        if (stream.Chunks[i].KeyFrame)
            keys.push_back(static_cast<long>(i));
    }
    return keys;
}

} // namespace

TEST(AviFourCC, PacksFirstCharacterLowestAndPadsWithBlanks)
{
    EXPECT_EQ(FourCCFromString("divx"), 0x78766964u);
    EXPECT_EQ(FourCCFromString("divx"), FourCC("divx"));
    EXPECT_EQ(FourCCFromString("MP3"), FourCC("MP3 "));
    EXPECT_EQ(FourCCFromString(""), FourCC("    "));
    EXPECT_EQ(FourCCFromString("XVIDEO"), FourCC("XVID"));
    EXPECT_EQ(FourCCToString(0x78766964u), "divx");
    EXPECT_EQ(FourCCToString(FourCC("MP3 ")), "MP3 ");
    EXPECT_EQ(FourCCToString(0), "");
}

TEST(AviFile, StreamRecordComesFromTheStreamHeader)
{
    ScratchFolder dir;
    AviSpec spec;
    spec.Width = 720;
    spec.Height = 576;
    spec.Streams.push_back(VideoStream(10, 5));
    spec.Streams[0].Scale = 1001;
    spec.Streams[0].Rate = 24000;
    spec.Streams[0].Start = 3;
    spec.Streams[0].Frame = {-2, 4, 720, 576};
    spec.Streams[0].Name = std::string("Main\0junk", 9);
    spec.Streams.push_back(AudioStream(7));
    spec.Streams[1].Length = 700;
    spec.Streams[1].SampleSize = 4;
    std::string error;
    const auto avi = OpenBytes(dir, BuildAvi(spec).Bytes, &error);
    ASSERT_TRUE(avi) << error;
    ASSERT_EQ(avi->StreamCount(), 2u);

    const AviStreamInfo& video = avi->Stream(0).Info;
    EXPECT_EQ(video.fccType, FourCC("vids"));
    EXPECT_EQ(video.fccHandler, FourCC("DX50"));
    EXPECT_EQ(video.dwScale, 1001u);
    EXPECT_EQ(video.dwRate, 24000u);
    EXPECT_EQ(video.dwStart, 3u);
    EXPECT_EQ(video.dwLength, 10u);
    EXPECT_EQ(video.dwSuggestedBufferSize, 4096u);
    EXPECT_EQ(video.dwQuality, 0xFFFFFFFFu);
    EXPECT_EQ(video.rcFrame.left, -2);
    EXPECT_EQ(video.rcFrame.top, 4);
    EXPECT_EQ(video.rcFrame.right, 720);
    EXPECT_EQ(video.rcFrame.bottom, 576);
    EXPECT_EQ(video.szName, "Main");
    EXPECT_EQ(avi->Stream(0).Format, BitmapInfoHeader(64, 48));

    const AviStreamInfo& audio = avi->Stream(1).Info;
    EXPECT_EQ(audio.fccType, FourCC("auds"));
    EXPECT_EQ(audio.fccHandler, 0u);
    EXPECT_EQ(audio.dwLength, 700u);
    EXPECT_EQ(audio.dwSampleSize, 4u);
    EXPECT_EQ(audio.szName, "");
    EXPECT_EQ(avi->Stream(1).Format.size(), 30u);
}

TEST(AviFile, FileRecordTakesStreamZerosRateAndTheLongestStream)
{
    ScratchFolder dir;
    AviSpec spec;
    spec.Width = 64;
    spec.Height = 48;
    spec.Streams.push_back(VideoStream(10, 5));
    spec.Streams.push_back(AudioStream(3));
    spec.Streams[1].Scale = 1;
    spec.Streams[1].Rate = 1000;
    spec.Streams[1].Length = 2000; // two seconds: 50 frames at 25 fps
    const auto avi = OpenBytes(dir, BuildAvi(spec).Bytes);
    ASSERT_TRUE(avi);
    const AviFileInfo& info = avi->FileInfo();
    EXPECT_EQ(info.dwStreams, 2u);
    EXPECT_EQ(info.dwScale, 1u);
    EXPECT_EQ(info.dwRate, 25u);
    EXPECT_EQ(info.dwLength, 50u);
    EXPECT_EQ(info.dwWidth, 64u);
    EXPECT_EQ(info.dwHeight, 48u);
    EXPECT_EQ(info.dwSuggestedBufferSize, 65536u);
    EXPECT_EQ(info.dwFlags, 0x10u);
    EXPECT_EQ(info.dwCaps, 3u);
    EXPECT_EQ(info.szFileType, "AVI");
}

TEST(AviFile, ZeroRatesAndUnknownTypesAreReadWithoutDividing)
{
    ScratchFolder dir;
    AviSpec spec;
    AviStreamSpec subtitle = VideoStream(2, 1);
    subtitle.Handler = "DXSB";
    subtitle.Scale = 0;
    subtitle.Rate = 0;
    subtitle.Suffix = "sb";
    spec.Streams.push_back(subtitle);
    AviStreamSpec text;
    text.Type = "txts";
    text.Suffix = "tx";
    text.Chunks = {{5, true}, {6, true}};
    spec.Streams.push_back(text);
    spec.Streams.push_back(AudioStream(4));
    const auto avi = OpenBytes(dir, BuildAvi(spec).Bytes);
    ASSERT_TRUE(avi);
    EXPECT_EQ(avi->FileInfo().dwScale, 0u);
    EXPECT_EQ(avi->FileInfo().dwRate, 0u);
    EXPECT_EQ(avi->FileInfo().dwLength, 2u); // stream 0's own length, nothing to convert with
    EXPECT_EQ(avi->Stream(1).Info.fccType, FourCC("txts"));
    EXPECT_EQ(avi->Stream(1).Chunks.size(), 2u);
    EXPECT_EQ(avi->Stream(2).Chunks.size(), 4u);
}

TEST(AviFile, AudioStreamFirstGivesTheFileItsRate)
{
    ScratchFolder dir;
    AviSpec spec;
    spec.Streams.push_back(AudioStream(4));
    spec.Streams.push_back(VideoStream(3, 1));
    const auto avi = OpenBytes(dir, BuildAvi(spec).Bytes);
    ASSERT_TRUE(avi);
    EXPECT_EQ(avi->FileInfo().dwRate, 44100u);
    EXPECT_EQ(avi->FileInfo().dwScale, 1152u);
    EXPECT_EQ(avi->Stream(0).Info.fccType, FourCC("auds"));
    EXPECT_EQ(avi->Stream(0).Chunks.size(), 4u);
    EXPECT_EQ(avi->Stream(1).Chunks.size(), 3u);
}

TEST(AviFile, NameIsTheStrnTextUpToItsFirstNulAndAtMost64Characters)
{
    const std::string sixtyFour(64, 'n');
    const struct {
        std::string Strn;
        std::string Name;
    } cases[] = {
        {sixtyFour, sixtyFour}, // no NUL at all: the field must not run past the chunk
        {sixtyFour + "tail", sixtyFour},
        {std::string("Audio - en-US;02\0\0", 18), "Audio - en-US;02"},
        {std::string("\0hidden", 7), ""},
        {"", ""},
    };
    ScratchFolder dir;
    for (const auto& c : cases) {
        AviSpec spec;
        spec.Streams.push_back(VideoStream(1, 1));
        spec.Streams[0].Name = c.Strn;
        const auto avi = OpenBytes(dir, BuildAvi(spec).Bytes);
        ASSERT_TRUE(avi);
        EXPECT_EQ(avi->Stream(0).Info.szName, c.Name);
    }
}

TEST(AviFile, EmptyFrameRectangleOfAVideoStreamComesFromTheBitmapHeader)
{
    ScratchFolder dir;
    AviSpec spec;
    spec.Streams.push_back(VideoStream(1, 1));
    spec.Streams[0].Format = BitmapInfoHeader(352, -288); // a top-down bitmap
    spec.Streams.push_back(AudioStream(1));
    spec.Streams.push_back(VideoStream(1, 1));
    spec.Streams[2].Frame = {0, 0, 100, 50};
    const auto avi = OpenBytes(dir, BuildAvi(spec).Bytes);
    ASSERT_TRUE(avi);
    EXPECT_EQ(avi->Stream(0).Info.rcFrame.right, 352);
    EXPECT_EQ(avi->Stream(0).Info.rcFrame.bottom, 288);
    EXPECT_EQ(avi->Stream(1).Info.rcFrame.right, 0);
    EXPECT_EQ(avi->Stream(2).Info.rcFrame.right, 100);
    EXPECT_EQ(avi->Stream(2).Info.rcFrame.bottom, 50);
}

TEST(AviFile, EveryIndexKindGivesTheSameChunks)
{
    const struct {
        const char* Name;
        AviIndexKind Index;
        std::size_t RecDepth;
        bool KeysFromIndex;
    } cases[] = {
        {"idx1 relative to movi", AviIndexKind::Idx1, 0, true},
        {"idx1 absolute", AviIndexKind::Idx1Absolute, 0, true},
        {"OpenDML only", AviIndexKind::OpenDml, 0, true},
        {"OpenDML and idx1", AviIndexKind::OpenDmlAndIdx1, 0, true},
        {"no index", AviIndexKind::None, 0, false},
        {"no index, rec lists", AviIndexKind::None, 1, false},
        {"no index, rec in rec", AviIndexKind::None, 3, false},
    };
    ScratchFolder dir;
    for (const auto& c : cases) {
        AviSpec spec;
        spec.Index = c.Index;
        spec.RecDepth = c.RecDepth;
        spec.Streams.push_back(VideoStream(30, 12));
        spec.Streams[0].Chunks[5].Size = 0; // a dropped frame
        spec.Streams[0].Chunks[7].Size = 3; // odd sizes are padded
        spec.Streams.push_back(AudioStream(20));
        const AviFixture fixture = BuildAvi(spec);
        std::string error;
        const auto avi = OpenBytes(dir, fixture.Bytes, &error);
        ASSERT_TRUE(avi) << c.Name << ": " << error;
        for (std::size_t s = 0; s < 2; ++s) {
            const auto& chunks = avi->Stream(s).Chunks;
            ASSERT_EQ(chunks.size(), spec.Streams[s].Chunks.size()) << c.Name;
            for (std::size_t i = 0; i < chunks.size(); ++i) {
                EXPECT_EQ(chunks[i].Offset, fixture.DataOffsets[s][i]) << c.Name << " chunk " << i;
                EXPECT_EQ(chunks[i].Size, spec.Streams[s].Chunks[i].Size) << c.Name << " chunk " << i;
                EXPECT_EQ(chunks[i].KeyFrame, c.KeysFromIndex ? spec.Streams[s].Chunks[i].Key : true)
                    << c.Name << " chunk " << i;
            }
        }
    }
}

TEST(AviFile, ChunksInRiffExtensionsAreIndexedByOpenDml)
{
    ScratchFolder dir;
    AviSpec spec;
    spec.Index = AviIndexKind::OpenDmlAndIdx1; // idx1 holds the first RIFF only
    spec.FramesPerRiff = 10;
    spec.Streams.push_back(VideoStream(25, 6));
    spec.Streams.push_back(AudioStream(25));
    const AviFixture fixture = BuildAvi(spec);
    const auto avi = OpenBytes(dir, fixture.Bytes);
    ASSERT_TRUE(avi);
    ASSERT_EQ(avi->Stream(0).Chunks.size(), 25u);
    EXPECT_EQ(avi->Stream(0).Chunks[24].Offset, fixture.DataOffsets[0][24]);
    EXPECT_EQ(KeysOf(avi->Stream(0)), (std::vector<long>{0, 6, 12, 18, 24}));
    EXPECT_EQ(avi->Stream(1).Chunks.size(), 25u);

    spec.Index = AviIndexKind::None;
    const auto scanned = OpenBytes(dir, BuildAvi(spec).Bytes);
    ASSERT_TRUE(scanned);
    EXPECT_EQ(scanned->Stream(0).Chunks.size(), 25u);
}

TEST(AviFile, LengthCountingOnlyTheFirstRiffIsTakenFromTheIndex)
{
    const struct {
        AviIndexKind Index;
        std::uint32_t VideoLength;
        std::uint32_t Expected;
    } cases[] = {
        {AviIndexKind::OpenDml, 10, 25},        // the first RIFF's count
        {AviIndexKind::OpenDmlAndIdx1, 10, 25},
        {AviIndexKind::OpenDml, 25, 25},
        {AviIndexKind::OpenDml, 12, 12},        // not the first RIFF's count: as written
        {AviIndexKind::OpenDml, 30, 30},
    };
    ScratchFolder dir;
    for (const auto& c : cases) {
        AviSpec spec;
        spec.Index = c.Index;
        spec.FramesPerRiff = 10;
        spec.Streams.push_back(VideoStream(25, 5));
        spec.Streams[0].Length = c.VideoLength;
        spec.Streams.push_back(AudioStream(25));
        spec.Streams[1].Length = 10; // samples, not chunks: never corrected
        const auto avi = OpenBytes(dir, BuildAvi(spec).Bytes);
        ASSERT_TRUE(avi);
        EXPECT_EQ(avi->Stream(0).Info.dwLength, c.Expected) << c.VideoLength;
        EXPECT_EQ(avi->Stream(1).Info.dwLength, 10u);
    }
}

TEST(AviFile, FindSampleSearchesKeyFramesInBothDirections)
{
    ScratchFolder dir;
    AviSpec spec;
    spec.Streams.push_back(VideoStream(30, 12)); // keys 0, 12, 24
    spec.Streams[0].Chunks[13] = {0, false};    // a dropped frame still counts
    spec.Streams.push_back(AudioStream(5));
    for (auto& chunk : spec.Streams[1].Chunks)
        chunk.Key = false;
    const auto avi = OpenBytes(dir, BuildAvi(spec).Bytes);
    ASSERT_TRUE(avi);
    ASSERT_EQ(avi->Stream(0).Chunks.size(), 30u);

    const struct {
        std::size_t Stream;
        long Frame;
        KeySearch How;
        long Expected;
    } cases[] = {
        {0, 0, KeySearch::NextKey, 0},
        {0, 0, KeySearch::PreviousKey, 0},
        {0, 1, KeySearch::NextKey, 12},
        {0, 11, KeySearch::PreviousKey, 0},
        {0, 12, KeySearch::NextKey, 12},
        {0, 12, KeySearch::PreviousKey, 12},
        {0, 13, KeySearch::PreviousKey, 12},
        {0, 24, KeySearch::NextKey, 24},
        {0, 25, KeySearch::NextKey, -1},
        {0, 29, KeySearch::PreviousKey, 24},
        {0, 1000, KeySearch::NextKey, -1},
        {0, 1000, KeySearch::PreviousKey, 24},
        {0, -1, KeySearch::PreviousKey, -1},
        {0, -1, KeySearch::NextKey, 0},
        {1, 2, KeySearch::NextKey, -1}, // a stream without key frames
        {1, 2, KeySearch::PreviousKey, -1},
        {2, 0, KeySearch::NextKey, -1}, // no such stream
        {2, 0, KeySearch::PreviousKey, -1},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(avi->FindSample(c.Stream, c.Frame, c.How), c.Expected)
            << "stream " << c.Stream << " frame " << c.Frame << (c.How == KeySearch::NextKey ? " next" : " previous");
    }
}

TEST(AviFile, RefusesWhatIsNotAnAvi)
{
    ScratchFolder dir;
    AviSpec spec;
    spec.Streams.push_back(VideoStream(2, 1));
    std::string wave = BuildAvi(spec).Bytes;
    wave.replace(8, 4, "WAVE");
    std::string noHeaders = BuildAvi(spec).Bytes;
    noHeaders.replace(noHeaders.find("hdrl"), 4, "xxxx");
    std::string noStreamHeader = BuildAvi(spec).Bytes;
    noStreamHeader.replace(noStreamHeader.find("strh"), 4, "xxxx");
    const struct {
        const char* Name;
        std::string Bytes;
    } cases[] = {
        {"empty", ""}, {"short", "RIFF"}, {"wave", wave}, {"no hdrl", noHeaders}, {"no strh", noStreamHeader},
    };
    for (const auto& c : cases) {
        std::string error;
        EXPECT_FALSE(OpenBytes(dir, c.Bytes, &error)) << c.Name;
        EXPECT_FALSE(error.empty()) << c.Name;
    }
    std::string error;
    EXPECT_FALSE(AviFile::Open((dir.Path() / "missing.avi").string(), &error));
    EXPECT_FALSE(error.empty());
    EXPECT_FALSE(AviFile::Open(dir.Path().string()));
}

TEST(AviFile, DumpFramesEveryFieldOfBothRecords)
{
    ScratchFolder dir;
    AviSpec spec;
    spec.Streams.push_back(VideoStream(3, 1));
    spec.Streams.push_back(AudioStream(2));
    spec.Streams[1].Name = "Audio - en";
    const auto avi = OpenBytes(dir, BuildAvi(spec).Bytes);
    ASSERT_TRUE(avi);
    const std::string dump = DumpAviInfo(*avi);
    EXPECT_EQ(dump.rfind("**** AVI_FILE_INFO (START) ****\ndwMaxBytesPerSecond = 0\n", 0), 0u);
    EXPECT_NE(dump.find("szFileType = AVI\n**** AVI_FILE_INFO (END) ****\n**** AVI_STREAM_INFO (START) ****\n"
                        "fccType = vids\nfccHandler = DX50\n"),
              std::string::npos);
    EXPECT_NE(dump.find("dwRate = 44100\n"), std::string::npos);
    EXPECT_NE(dump.find("rcFrame.right = 64\nrcFrame.bottom = 48\n"), std::string::npos);
    EXPECT_TRUE(dump.ends_with("szName = Audio - en\n**** AVI_STREAM_INFO (END) ****\n"));
    EXPECT_EQ(std::count(dump.begin(), dump.end(), '\n'), 14 + 2 * 23);
}
