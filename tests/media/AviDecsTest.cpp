// The inspection functions on small files written byte by byte: what they find, what they
// say when a file cannot be read, what they leave alone then, and how often they read a file.
#include "media/mAVIDecs.h"

#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "media/AviBytes.h"
#include "media/AviCache.h"

#include <gtest/gtest.h>

using namespace mw;
using namespace mw::test;

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
