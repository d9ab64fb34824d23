// Frame grabs through FFmpeg, with frame numbers from our own index.
#include "media/FrameGrabber.h"

#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "i18n/LangDoc.h"
#include "media/AviBytes.h"
#include "media/MovieFixtures.h"
#include "render/cDIB.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace mw;
using namespace mw::test;

namespace {

class FrameGrab : public ::testing::Test {
protected:
    void SetUp() override
    {
        REQUIRE_MEDIA(HaveTool("ffmpeg"), "ffmpeg is not installed");
    }
    bool Grab(const std::filesystem::path& file, long& frame, bool fit = true)
    {
        return GrabFrameToPicture(file.string(), picture, frame, fit, prompt, lang, &statistics);
    }

    cDIB picture;
    ScriptedPrompt prompt;
    LangDoc lang;
    GrabStatistics statistics;
};

} // namespace

TEST_F(FrameGrab, DroppedFramesShowThePictureBeforeThem)
{
    const auto movie = DroppedFramesMovie();
    ASSERT_FALSE(movie.empty());
    // The grey level of a picture tells its frame: 16 + 8 n. Frames 10 to 14 are empty chunks;
    // FFmpeg's packets skip them, so counting packets would land five frames late.
    const struct {
        long Frame;
        int Shows;
        long Key;
        int Decoded; // the chunks with data from the key frame to the picture
    } cases[] = {
        {-1, 0, 0, 1}, {9, 9, 8, 2}, {12, 9, 8, 2}, {14, 9, 8, 2}, {15, 15, 8, 3}, {20, 20, 8, 8}, {24, 24, 21, 4},
    };
    for (const auto& c : cases) {
        long frame = c.Frame;
        ASSERT_TRUE(Grab(movie, frame)) << c.Frame;
        EXPECT_EQ(frame, std::max(c.Frame, 0L)); // -1 is the start
        ASSERT_EQ(picture.Width(), 64);
        ASSERT_EQ(picture.Height(), 48);
        EXPECT_EQ(picture.BPP(), 24);
        EXPECT_NEAR(picture.Pixel(32, 24) & 0xFF, 16 + 8 * c.Shows, 2) << c.Frame;
        EXPECT_EQ(statistics.KeyFrame, c.Key) << c.Frame;
        EXPECT_EQ(statistics.DecodedFrames, c.Decoded) << c.Frame;
    }
    EXPECT_TRUE(prompt.Log.empty());
}

TEST_F(FrameGrab, FramesCountFromTheStreamStartAndTheDecodedPictureSetsTheSize)
{
    const auto movie = DroppedFramesMovie();
    ASSERT_FALSE(movie.empty());
    // The stream starts at frame 5 and its header claims a 9000 x 9000 picture.
    std::string bytes = ReadAll(movie);
    const std::size_t strh = bytes.find("strh") + 8;
    PatchLe(bytes, strh + 28, 5);
    PatchLe(bytes, strh + 52, 9000, 2);
    PatchLe(bytes, strh + 54, 9000, 2);
    ScratchFolder folder;
    const auto started = folder.Write("started.avi", bytes);
    const struct {
        long Frame;
        long Becomes;
        int Shows;
    } cases[] = {{-1, 5, 0}, {5, 5, 0}, {14, 14, 9}, {25, 25, 20}};
    for (const auto& c : cases) {
        long frame = c.Frame;
        ASSERT_TRUE(Grab(started, frame)) << c.Frame;
        EXPECT_EQ(frame, c.Becomes);
        EXPECT_EQ(picture.Width(), 64);
        EXPECT_EQ(picture.Height(), 48);
        EXPECT_NEAR(picture.Pixel(32, 24) & 0xFF, 16 + 8 * c.Shows, 2) << c.Frame;
    }
    // Before the start there is no frame; past the length (not the start plus the length) the
    // frame is not looked for, as the stream's length alone is compared.
    for (long outside : {4L, 26L})
        EXPECT_FALSE(Grab(started, outside)) << outside;
}

TEST_F(FrameGrab, FailuresSayWhatWentWrongAndPaintNothing)
{
    const auto movie = DroppedFramesMovie();
    ASSERT_FALSE(movie.empty());
    ScratchFolder folder;
    AviSpec audioOnly;
    audioOnly.Streams = {AudioStream(2)};
    AviSpec unknownCodec;
    unknownCodec.Streams.push_back(VideoStream(2, 1));
    unknownCodec.Streams[0].Handler = "ZZZZ";
    std::copy_n("ZZZZ", 4, unknownCodec.Streams[0].Format.begin() + 16);
    const std::string audioFile = folder.Write("audio.avi", BuildAvi(audioOnly).Bytes).string();
    const std::string unknownFile = folder.Write("unknown.avi", BuildAvi(unknownCodec).Bytes).string();
    // The index says frame 15 runs far past the end of the file, so there is no frame 15.
    std::string bytes = ReadAll(movie);
    PatchLe(bytes, bytes.find("idx1") + 8 + 15 * 16 + 12, 0x7FFF0000);
    const std::string pastEnd = folder.Write("past-end.avi", bytes).string();
    const std::string name = movie.string();
    const struct {
        std::string File;
        long Frame;
        std::string Message;
    } cases[] = {
        {name, 26, "Frame not found"}, // past the length of 25
        {name, 25, "Can not get frame of file '" + name + "' (25)"},
        {name, -2, "Can not get frame of file '" + name + "' (-2)"},
        {audioFile, 0, "There was an error working with the file:\r\n" + audioFile},
        {unknownFile, 0, "No suitable decompressor found for this video stream!"},
        {pastEnd, 15, "Can not get frame of file '" + pastEnd + "' (15)"},
    };
    for (const auto& c : cases) {
        ASSERT_TRUE(picture.Create(8, 8, 8));
        const cDIB before = picture;
        long frame = c.Frame;
        ScriptedPrompt said;
        EXPECT_FALSE(GrabFrameToPicture(c.File, picture, frame, true, said, lang)) << c.Message;
        EXPECT_EQ(said.Texts(), std::vector<std::string>{c.Message});
        EXPECT_TRUE(picture == before) << c.Message;
    }

    ASSERT_TRUE(lang.LoadString(R"(<Lang><mAVIDecs_Module s4="Bild nicht gefunden"/></Lang>)"));
    long beyond = 99;
    EXPECT_FALSE(Grab(movie, beyond));
    EXPECT_EQ(prompt.Texts(), std::vector<std::string>{"Bild nicht gefunden"});
}

// The pictures themselves are compared with ffmpeg's, frame by frame, with the files of
// several muxers in AviFfprobeTest.
TEST_F(FrameGrab, DecodingStartsAtTheKeyFrameBeforeAndAnUnfittedPictureKeepsItsSize)
{
    const auto movie = TestPictureMovie();
    ASSERT_FALSE(movie.empty());
    long frame = 87;
    ASSERT_TRUE(Grab(movie, frame));
    EXPECT_EQ(statistics.KeyFrame, 50);
    EXPECT_EQ(statistics.DecodedFrames, 38);
    EXPECT_EQ(picture.Width(), 64);

    // Without fitting, the picture keeps its size and depth and the frame is stretched into it.
    ASSERT_TRUE(picture.Create(16, 12, 8));
    ASSERT_TRUE(Grab(movie, frame, false));
    EXPECT_EQ(picture.Width(), 16);
    EXPECT_EQ(picture.Height(), 12);
    EXPECT_EQ(picture.BPP(), 8);
}
