// The inspection functions on small files written byte by byte: what they read, what they
// say when a file cannot be read, and what they leave alone then.
#include "media/mAVIDecs.h"

#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "media/AviBytes.h"

#include <gtest/gtest.h>

using namespace mw;
using namespace mw::test;

namespace {

AviStreamSpec AudioStream(std::uint32_t rate, std::string name)
{
    AviStreamSpec s = VideoStream(2, 1);
    s.Type = "auds";
    s.Suffix = "wb";
    s.Rate = rate;
    s.Length = 16000;
    s.Name = std::move(name);
    return s;
}

// Video, audio, audio without a rate, a subtitle in a video stream, a text stream whose name
// fills the whole field.
AviSpec FiveStreams()
{
    AviSpec spec;
    spec.Streams = {VideoStream(10, 5), AudioStream(8000, "Audio - en-US;02"), AudioStream(0, "Audio - de-DE;03"),
                    VideoStream(3, 1), VideoStream(1, 1)};
    spec.Streams[3].Name = "Subtitle - en-US;02";
    spec.Streams[3].Frame = {0, 0, 720, 576};
    spec.Streams[4].Type = "txts";
    spec.Streams[4].Name = std::string(64, 'n');
    return spec;
}

class AviDecs : public ::testing::Test {
protected:
    std::string Write(const AviSpec& spec) { return folder.Write("movie.avi", BuildAvi(spec).Bytes).string(); }

    ScratchFolder folder;
    ScriptedPrompt prompt;
};

} // namespace

TEST_F(AviDecs, RowsOfEveryKindOfStream)
{
    TrackRows rows;
    double fps = 0;
    const std::string file = Write(FiveStreams());
    ASSERT_TRUE(LoadStreamsToListView(file, rows, true, fps, prompt));
    const std::vector<std::vector<std::string>> expected = {
        {"Video", "", "64 x 48 - PAL - 25 fps, Length: 00:00:00.400", "00dc", "0", "9"},
        {"Audio", "Audio - en-US;02", "SamplesPerSec: 8000, Length: 00:00:02.000", "01wb", "0", "15999"},
        {"Audio", "Audio - de-DE;03", "<error>", "02wb", "0", "15999"},
        {"Subtitle", "Subtitle - en-US;02", "720 x 576 - Lenght: 3", "03sb", "0", "2"},
        {"Unknown", std::string(64, 'n'), "", "04??", "0", "0"},
    };
    ASSERT_EQ(rows.size(), expected.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const TrackRow& r = rows[i];
        EXPECT_EQ((std::vector<std::string>{r.Kind, r.NameLanguage, r.Info, r.TrackID, r.StartFrame, r.EndFrame}),
                  expected[i]);
    }
    EXPECT_DOUBLE_EQ(fps, 25);
    EXPECT_EQ(CountNonSubtitleStreams(file, prompt), 3);
    EXPECT_TRUE(prompt.Log.empty());
}

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
    AviSpec spec = FiveStreams();
    std::swap(spec.Streams[0], spec.Streams[3]);
    spec.Streams[0].Scale = 1001;
    spec.Streams[0].Rate = 24000;
    const std::string file = Write(spec);
    long start = 0, length = 0, width = 0, height = 0;
    float fps = 0;
    EXPECT_EQ(GetStreamByType(file, "VIDEO", start, length, fps, width, height, prompt), 0);
    EXPECT_EQ(length, 3);
    EXPECT_EQ(width, 720);
    EXPECT_EQ(height, 576);
    EXPECT_EQ(fps, 24000.0f / 1001.0f);
    EXPECT_EQ(GetStreamByType(file, "audio", start, length, fps, width, height, prompt), 1);
    EXPECT_EQ(length, 16000);
    EXPECT_EQ(width, 720); // only video gives a size
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

    spec.Streams.insert(spec.Streams.begin(), AudioStream(8000, ""));
    const std::string audioFirst = Write(spec);
    bool found = true;
    EXPECT_EQ(FindNearestKeyFrame(audioFirst, 7, false, prompt, &found), 0);
    EXPECT_FALSE(found);
    EXPECT_TRUE(prompt.Log.empty());
    EXPECT_EQ(FindNextKeyFrame(audioFirst, 7, prompt), 0);
    EXPECT_EQ(prompt.Texts(), std::vector<std::string>{"Stream 0 is not a video stream"});
}

TEST_F(AviDecs, StreamNameIsWrittenWhereItFits)
{
    AviSpec spec = FiveStreams();
    spec.Streams[1].Name = std::string("Audio - en-US;02\0", 17);
    spec.Streams[1].JunkAfterName = 60;
    const std::string file = Write(spec);
    EXPECT_TRUE(SetStreamName(file, 1, std::string(70, 'n'), prompt)); // cut to the field's 64
    TrackRows rows;
    double fps = 0;
    ASSERT_TRUE(LoadStreamsToListView(file, rows, false, fps, prompt));
    EXPECT_EQ(rows[1].NameLanguage, std::string(64, 'n'));

    // No room after the subtitle's name, and no stream 9: the file stays as it was.
    const std::string before = ReadAll(file);
    EXPECT_FALSE(SetStreamName(file, 3, "Subtitle - en-US;02 and more", prompt));
    EXPECT_FALSE(SetStreamName(file, 9, "x", prompt));
    EXPECT_EQ(ReadAll(file), before);
    EXPECT_TRUE(prompt.Log.empty());
}
