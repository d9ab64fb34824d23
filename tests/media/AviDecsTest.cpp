// The inspection functions on small files written byte by byte: what they find, what they
// say when a file cannot be read, and what they leave alone then.
#include "media/mAVIDecs.h"

#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "media/AviBytes.h"

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
