// The AVI reader on small files written byte by byte, and the inspection functions over it: what
// they find, what they say when a file cannot be read, what they leave alone then, and how often
// they read a file.
#include "media/AviFile.h"
#include "media/AviInfoDump.h"
#include "media/mAVIDecs.h"

#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "media/AviBytes.h"
#include "media/AviCache.h"

#include <gtest/gtest.h>

using namespace mw;
using namespace mw::test;

TEST(AviFourCC, PacksFirstCharacterLowestAndPadsWithBlanks)
{
    EXPECT_EQ(FourCCFromString("divx"), 0x78766964u);
    EXPECT_EQ(FourCCFromString("MP3"), FourCC("MP3 "));
    EXPECT_EQ(FourCCFromString("XVIDEO"), FourCC("XVID"));
    EXPECT_EQ(FourCCToString(0x78766964u), "divx");
    EXPECT_EQ(FourCCToString(0), "");
}

TEST(AviFile, RecordsComeFromTheHeaders)
{
    const std::string sixtyFour(64, 'n');
    AviSpec spec;
    spec.Width = 720;
    spec.Height = 576;
    spec.Streams = {VideoStream(10, 5), AudioStream(7), VideoStream(1, 1)};
    AviStreamSpec& video = spec.Streams[0];
    video.Scale = 1001;
    video.Rate = 24000;
    video.Start = 3;
    video.Frame = {-2, 4, 720, 576};
    video.Name = std::string("Main\0junk", 9);
    spec.Streams[1].Length = 700;
    spec.Streams[1].SampleSize = 4;
    spec.Streams[1].Name = sixtyFour + "tail";
    spec.Streams[2].Format = BitmapInfoHeader(352, -288); // no rectangle, a top-down bitmap
    spec.Streams[2].Name = sixtyFour; // no NUL: the name must not run past the chunk
    std::string error;
    const auto avi = OpenAviBytes(BuildAvi(spec).Bytes, &error);
    ASSERT_TRUE(avi) << error;
    ASSERT_EQ(avi->StreamCount(), 3u);
    EXPECT_EQ(avi->Stream(0).Format, BitmapInfoHeader(64, 48));
    EXPECT_EQ(avi->Stream(1).Info.szName, sixtyFour);
    EXPECT_EQ(avi->Stream(2).Info.szName, sixtyFour);
    EXPECT_EQ(avi->Stream(2).Info.rcFrame.right, 352);
    EXPECT_EQ(avi->Stream(2).Info.rcFrame.bottom, 288);

    // FFmpeg's files agree with us on types, rates and sizes; these fields are ones it leaves
    // alone. The audio's 700 x 1152 / 44100 s is the longest stream: 438.4 frames of stream 0.
    const std::string dump = DumpAviInfo(*avi);
    for (const char* part : {"dwWidth = 720\ndwHeight = 576\ndwScale = 1001\ndwRate = 24000\ndwLength = 438\n",
                             "dwStart = 3\ndwLength = 10\ndwInitialFrames = 0\ndwSuggestedBufferSize = 4096\n"
                             "dwQuality = 4294967295\ndwSampleSize = 0\nrcFrame.left = -2\nrcFrame.top = 4\n",
                             "szName = Main\n**** AVI_STREAM_INFO (END) ****\n**** AVI_STREAM_INFO (START) ****\n"
                             "fccType = auds\n",
                             "dwLength = 700\ndwInitialFrames = 0\ndwSuggestedBufferSize = 4096\n"
                             "dwQuality = 4294967295\ndwSampleSize = 4\nrcFrame.left = 0\nrcFrame.top = 0\n"
                             "rcFrame.right = 0\n"}) {
        EXPECT_NE(dump.find(part), std::string::npos) << part;
    }
}

TEST(AviFile, ZeroRatesAndUnknownTypesAreReadWithoutDividing)
{
    AviSpec spec;
    spec.Streams = {VideoStream(2, 1), AviStreamSpec{}, AudioStream(4)};
    spec.Streams[0].Scale = 0;
    spec.Streams[0].Rate = 0;
    spec.Streams[1].Type = "txts";
    spec.Streams[1].Suffix = "tx";
    spec.Streams[1].Chunks = {{5, true}, {6, true}};
    const auto avi = OpenAviBytes(BuildAvi(spec).Bytes);
    ASSERT_TRUE(avi);
    EXPECT_EQ(avi->FileInfo().dwRate, 0u);
    EXPECT_EQ(avi->FileInfo().dwLength, 2u); // stream 0's own length, nothing to convert with
    EXPECT_EQ(avi->Stream(1).Chunks.size(), 2u);
    EXPECT_EQ(avi->Stream(2).Chunks.size(), 4u);
}

TEST(AviFile, EveryIndexKindGivesTheSameChunks)
{
    const struct {
        const char* Name;
        AviIndexKind Index;
        std::size_t RecDepth;
        std::size_t FramesPerRiff;
    } cases[] = {
        {"idx1 relative to movi", AviIndexKind::Idx1, 0, 100},
        {"idx1 absolute", AviIndexKind::Idx1Absolute, 0, 100},
        {"OpenDML only", AviIndexKind::OpenDml, 0, 100},
        {"OpenDML over AVIX, idx1 of the first RIFF", AviIndexKind::OpenDmlAndIdx1, 0, 10},
        {"no index", AviIndexKind::None, 0, 100},
        {"no index over AVIX", AviIndexKind::None, 0, 10},
        {"no index, rec in rec", AviIndexKind::None, 3, 100},
    };
    for (const auto& c : cases) {
        AviSpec spec;
        spec.Index = c.Index;
        spec.RecDepth = c.RecDepth;
        spec.FramesPerRiff = c.FramesPerRiff;
        spec.Streams = {VideoStream(30, 12), AudioStream(20)};
        spec.Streams[0].Chunks[5].Size = 0; // a dropped frame
        spec.Streams[0].Chunks[7].Size = 3; // odd sizes are padded
        const AviFixture fixture = BuildAvi(spec);
        std::string error;
        const auto avi = OpenAviBytes(fixture.Bytes, &error);
        ASSERT_TRUE(avi) << c.Name << ": " << error;
        // The records need no index: read without it they are the same.
        const auto headers = OpenAviBytes(fixture.Bytes, nullptr, AviRead::Headers);
        ASSERT_TRUE(headers) << c.Name;
        EXPECT_EQ(DumpAviInfo(*headers), DumpAviInfo(*avi)) << c.Name;
        EXPECT_TRUE(headers->Stream(0).Chunks.empty()) << c.Name;
        for (std::size_t s = 0; s < 2; ++s) {
            const auto& chunks = avi->Stream(s).Chunks;
            ASSERT_EQ(chunks.size(), spec.Streams[s].Chunks.size()) << c.Name;
            for (std::size_t i = 0; i < chunks.size(); ++i) {
                const AviChunkSpec& written = spec.Streams[s].Chunks[i];
                EXPECT_EQ(chunks[i].Offset, fixture.DataOffsets[s][i]) << c.Name << " chunk " << i;
                EXPECT_EQ(chunks[i].Size, written.Size) << c.Name << " chunk " << i;
                // Without an index every chunk is a key frame.
                EXPECT_EQ(chunks[i].KeyFrame, written.Key || c.Index == AviIndexKind::None) << c.Name << " " << i;
            }
        }
    }
}

TEST(AviFile, LengthCountingOnlyTheFirstRiffIsTakenFromTheSuperIndex)
{
    const struct {
        AviIndexKind Index;
        std::uint32_t VideoLength;
        std::uint32_t Expected;
    } cases[] = {
        {AviIndexKind::OpenDml, 10, 25}, // the first RIFF's count
        {AviIndexKind::OpenDmlAndIdx1, 10, 25},
        {AviIndexKind::OpenDml, 12, 12}, // not the first RIFF's count: as written
        {AviIndexKind::OpenDml, 30, 30},
    };
    for (const auto& c : cases) {
        AviSpec spec;
        spec.Index = c.Index;
        spec.FramesPerRiff = 10;
        spec.Streams = {VideoStream(25, 5), AudioStream(25)};
        spec.Streams[0].Length = c.VideoLength;
        spec.Streams[1].Length = 10; // samples, not chunks: never corrected
        for (const AviRead what : {AviRead::HeadersAndIndex, AviRead::Headers}) {
            const auto avi = OpenAviBytes(BuildAvi(spec).Bytes, nullptr, what);
            ASSERT_TRUE(avi);
            EXPECT_EQ(avi->Stream(0).Info.dwLength, c.Expected) << c.VideoLength;
            EXPECT_EQ(avi->Stream(1).Info.dwLength, 10u);
        }
    }
}

TEST(AviFile, FindSampleSearchesKeyFramesInBothDirections)
{
    AviSpec spec;
    spec.Streams = {VideoStream(30, 12), AudioStream(5), VideoStream(10, 4)}; // keys 0, 12, 24
    spec.Streams[0].Chunks[13] = {0, false};                                  // a dropped frame still counts
    for (auto& chunk : spec.Streams[1].Chunks)
        chunk.Key = false;
    spec.Streams[2].Start = 5; // frames count from the start: keys 5, 9, 13
    const auto avi = OpenAviBytes(BuildAvi(spec).Bytes);
    ASSERT_TRUE(avi);

    const auto next = KeySearch::NextKey;
    const auto previous = KeySearch::PreviousKey;
    const struct {
        std::size_t Stream;
        long Frame;
        KeySearch How;
        long Expected;
    } cases[] = {
        {0, 11, previous, 0}, {0, 12, next, 12},      {0, 12, previous, 12}, {0, 13, previous, 12},
        {0, 25, next, -1},    {0, 1000, previous, 24}, {0, -1, previous, -1}, {0, -1, next, 0},
        {1, 2, next, -1}, // a stream without key frames
        {2, 4, previous, -1}, {2, 4, next, 5}, {2, 9, previous, 9}, {2, 12, previous, 9}, {2, 14, next, -1},
        {3, 0, previous, -1}, // no such stream
    };
    for (const auto& c : cases) {
        EXPECT_EQ(avi->FindSample(c.Stream, c.Frame, c.How), c.Expected)
            << "stream " << c.Stream << " frame " << c.Frame << (c.How == next ? " next" : " previous");
    }
}

TEST(AviFile, RefusesWhatIsNotAFileOrNotAnAvi)
{
    ScratchFolder dir;
    for (const std::string& path : {dir.Write("empty.avi", "").string(), dir.Write("short.avi", "RIFF").string(),
                                    (dir.Path() / "missing.avi").string(), dir.Path().string()}) {
        std::string error;
        EXPECT_FALSE(AviFile::Open(path, &error)) << path;
        EXPECT_FALSE(error.empty()) << path;
    }
}

namespace {

AviSpec NamedSpec(const std::optional<std::string>& strn, std::optional<std::uint32_t> junk)
{
    AviSpec spec;
    spec.Streams = {VideoStream(3, 1), VideoStream(2, 1)};
    spec.Streams[0].Name = strn;
    spec.Streams[0].JunkAfterName = junk;
    return spec;
}

// The chunk names of the first stream list, walked by their sizes; the walk must land exactly
// on the list's end.
std::vector<std::string> FirstStreamListChunks(const std::string& bytes)
{
    const auto size = [&](std::size_t at) {
        return static_cast<std::size_t>(static_cast<unsigned char>(bytes[at]) |
                                        static_cast<unsigned char>(bytes[at + 1]) << 8);
    };
    const std::size_t strl = bytes.find("strl");
    const std::size_t end = strl + size(strl - 4);
    std::vector<std::string> found;
    std::size_t at = strl + 4;
    for (; at < end; at += 8 + size(at + 4) + (size(at + 4) & 1))
        found.push_back(bytes.substr(at, 4));
    if (at != end)
        found.push_back("overrun");
    return found;
}

} // namespace

TEST(AviStreamName, NameGoesIntoTheStrnChunkAndTheJunkAfterIt)
{
    const std::string old("Old\0", 4);
    const struct {
        const char* Case;
        std::optional<std::string> Strn;
        std::optional<std::uint32_t> Junk;
        std::string Name;
        bool Written;
        std::vector<std::string> ChunksAfter;
    } cases[] = {
        {"fits the strn", old, std::nullopt, "Abc", true, {"strh", "strf", "strn"}},
        {"grows into the JUNK", old, 40, std::string(20, 'g'), true, {"strh", "strf", "strn", "JUNK"}},
        {"takes the whole JUNK", old, 40, std::string(51, 'w'), true, {"strh", "strf", "strn"}},
        {"leaves less than a JUNK header", old, 40, std::string(45, 'l'), true, {"strh", "strf", "strn"}},
        {"odd strn size", std::string("Odd"), 16, std::string(10, 'o'), true, {"strh", "strf", "strn", "JUNK"}},
        {"cut to 64 characters", old, 60, std::string(70, 'c'), true, {"strh", "strf", "strn"}},
        {"one character too long", old, 40, std::string(52, 't'), false, {}},
        {"no JUNK after the strn", old, std::nullopt, "Abcd", false, {}},
        {"no strn", std::nullopt, 40, "A", false, {}},
    };
    ScratchFolder dir;
    for (const auto& c : cases) {
        const std::string before = BuildAvi(NamedSpec(c.Strn, c.Junk)).Bytes;
        const auto path = dir.Write("n.avi", before).string();
        EXPECT_EQ(AviFile::WriteStreamName(path, 0, c.Name), c.Written) << c.Case;
        const std::string after = ReadAll(path);
        ASSERT_EQ(after.size(), before.size()) << c.Case;
        if (!c.Written) {
            EXPECT_EQ(after, before) << c.Case;
            continue;
        }
        // Only the strn chunk and the JUNK header after it change; the walk over the list
        // proves the sizes still add up.
        const std::size_t strn = before.find("strn");
        const std::size_t next = before.find("LIST", strn);
        EXPECT_EQ(after.substr(0, strn), before.substr(0, strn)) << c.Case;
        EXPECT_EQ(after.substr(next), before.substr(next)) << c.Case;
        EXPECT_EQ(FirstStreamListChunks(after), c.ChunksAfter) << c.Case;
        const auto renamed = AviFile::Open(path);
        ASSERT_TRUE(renamed) << c.Case;
        EXPECT_EQ(renamed->Stream(0).Info.szName, c.Name.substr(0, 64)) << c.Case;
    }
}

TEST(AviStreamName, RefusesStreamsAndFilesThatAreNotThere)
{
    ScratchFolder dir;
    const auto path = dir.Write("r.avi", BuildAvi(NamedSpec(std::string("Old\0", 4), 40)).Bytes).string();
    EXPECT_FALSE(AviFile::WriteStreamName(path, 2, "A"));
    EXPECT_FALSE(AviFile::WriteStreamName((dir.Path() / "missing.avi").string(), 0, "A"));
    EXPECT_FALSE(AviFile::WriteStreamName(dir.Path().string(), 0, "A"));
    const std::string wave("RIFF\4\0\0\0WAVE", 12);
    const auto notAvi = dir.Write("x.avi", wave).string();
    EXPECT_FALSE(AviFile::WriteStreamName(notAvi, 0, "A"));
    EXPECT_EQ(ReadAll(notAvi), wave);
}

namespace {

class AviDecs : public ::testing::Test {
protected:
    std::string Write(const AviSpec& spec) { return folder.Write("movie.avi", BuildAvi(spec).Bytes).string(); }

    ScratchFolder folder;
    ScriptedPrompt prompt;
};

std::string NamedMovie(std::size_t frames)
{
    AviSpec spec;
    spec.Streams = {VideoStream(frames, 4)};
    spec.Streams[0].Name = "Video";
    spec.Streams[0].JunkAfterName = 20;
    return BuildAvi(spec).Bytes;
}

} // namespace

TEST_F(AviDecs, UnreadableFilesLeaveEveryResultAsItWas)
{
    const std::string file = folder.Write("garbage.avi", "RIFF\x04\0\0\0AVI junk").string();
    TrackRows rows(1);
    double fps = 12.5;
    EXPECT_FALSE(LoadStreamsToListView(file, rows, true, fps, prompt));
    EXPECT_EQ(rows.size(), 1u);
    EXPECT_EQ(fps, 12.5);
    long start = -5, length = -5, width = -5, height = -5;
    float rate = -5;
    EXPECT_EQ(GetStreamByType(file, "video", start, length, rate, width, height, prompt), -1);
    EXPECT_EQ(start + length + width + height + rate, -25);
    EXPECT_EQ(CountNonSubtitleStreams(file, prompt), 0);
    EXPECT_FALSE(SetStreamName(file, 0, "x", prompt));
    EXPECT_FALSE(GetInfo(file, prompt));
    EXPECT_EQ(FindNearestKeyFrame(file, 7, false, prompt), 0);
    EXPECT_EQ(FindNextKeyFrame(file, 7, prompt), 0);
    EXPECT_EQ(prompt.Texts(), (std::vector<std::string>{
                                  "Error geting info for file",
                                  "Error geting info for file\r\n" + file,
                                  "Error geting info for file '" + file + "'",
                                  "Error geting info for file",
                                  "Error geting info for file",
                                  "Error geting info for file '" + file + "'",
                              }));
}

TEST_F(AviDecs, StreamByTypeTakesTheFirstOfItsKindAndASubtitleIsVideo)
{
    AviSpec spec;
    spec.Streams = {VideoStream(3, 1), AudioStream(5), VideoStream(10, 5)};
    spec.Streams[0].Name = "Subtitle - en-US;02";
    spec.Streams[0].Frame = {0, 0, 720, 576};
    spec.Streams[0].Scale = 1001;
    spec.Streams[0].Rate = 24000;
    const std::string file = Write(spec);
    long start = 0, length = 0, width = 0, height = 0;
    float fps = 0;
    EXPECT_EQ(GetStreamByType(file, "VIDEO", start, length, fps, width, height, prompt), 0);
    EXPECT_EQ((std::vector<long>{length, width, height}), (std::vector<long>{3, 720, 576}));
    EXPECT_EQ(fps, 24000.0f / 1001.0f);
    EXPECT_EQ(GetStreamByType(file, "audio", start, length, fps, width, height, prompt), 1);
    EXPECT_EQ((std::vector<long>{length, width, height}), (std::vector<long>{5, 720, 576})); // only video has a size
    EXPECT_EQ(GetStreamByType(file, "subtitle", start, length, fps, width, height, prompt), -1);
}

TEST_F(AviDecs, NearestKeyFrameGoesToTheNextOneOnATie)
{
    AviSpec spec;
    spec.Streams.push_back(VideoStream(30, 10)); // keys at 0, 10, 20
    const std::string file = Write(spec);
    const long cases[][3] = {{4, 0, 10}, {5, 10, 10}, {10, 10, 10}, {15, 20, 20}, {21, -1, -1}};
    for (const auto& c : cases) {
        bool found = false;
        EXPECT_EQ(FindNearestKeyFrame(file, c[0], true, prompt, &found), c[1]) << c[0];
        EXPECT_TRUE(found);
        EXPECT_EQ(FindNextKeyFrame(file, c[0], prompt), c[2]) << c[0];
    }
    EXPECT_TRUE(prompt.Log.empty());

    spec.Streams.insert(spec.Streams.begin(), AudioStream(2));
    const std::string audioFirst = Write(spec);
    bool found = true;
    EXPECT_EQ(FindNearestKeyFrame(audioFirst, 7, false, prompt, &found), 0);
    EXPECT_FALSE(found);
    EXPECT_TRUE(prompt.Log.empty());
    EXPECT_EQ(FindNextKeyFrame(audioFirst, 7, prompt), 0);
    EXPECT_EQ(prompt.Texts(), std::vector<std::string>{"Stream 0 is not a video stream"});
}

TEST_F(AviDecs, ACommandReadsEachFileOnceAndTheIndexOnlyForKeyFrames)
{
    const std::string path = folder.Write("movie.avi", NamedMovie(8)).string();
    // Without a scope every question reads the file.
    EXPECT_NE(OpenAvi(path, AviRead::HeadersAndIndex), OpenAvi(path, AviRead::HeadersAndIndex));

    const AviCacheScope command;
    TrackRows rows;
    double fps = 0;
    ASSERT_TRUE(LoadStreamsToListView(path, rows, true, fps, prompt));
    long start = 0, length = 0, width = 0, height = 0;
    float rate = 0;
    EXPECT_EQ(GetStreamByType(path, "video", start, length, rate, width, height, prompt), 0);
    EXPECT_EQ(CountNonSubtitleStreams(path, prompt), 1);
    const auto headers = OpenAvi(path, AviRead::Headers);
    ASSERT_TRUE(headers);
    EXPECT_FALSE(headers->HasIndex()); // what the questions above kept

    EXPECT_EQ(FindNearestKeyFrame(path, 3, true, prompt), 4);
    const auto indexed = OpenAvi(path, AviRead::Headers);
    ASSERT_TRUE(indexed);
    EXPECT_TRUE(indexed->HasIndex());
    EXPECT_EQ(FindNextKeyFrame(path, 1, prompt), 4);
    {
        const AviCacheScope inner; // shares the command's files
        EXPECT_EQ(OpenAvi(path, AviRead::HeadersAndIndex), indexed);
    }

    EXPECT_EQ(FindNextKeyFrame(path, 5, prompt), -1);
    folder.Write("movie.avi", NamedMovie(12)); // another size: read again
    EXPECT_EQ(FindNextKeyFrame(path, 5, prompt), 8);
    // A name written by the program is read back at once, even within one tick of the file
    // system's clock.
    ASSERT_TRUE(SetStreamName(path, 0, "Renamed", prompt));
    rows.clear();
    ASSERT_TRUE(LoadStreamsToListView(path, rows, false, fps, prompt));
    EXPECT_EQ(rows.at(0).NameLanguage, "Renamed");
    EXPECT_TRUE(prompt.Log.empty());

    std::filesystem::remove(path);
    EXPECT_FALSE(OpenAvi(path, AviRead::Headers));
}
