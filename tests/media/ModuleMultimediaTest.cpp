// The preview player: the command answers, and that the picture at a position is the grab of
// that frame, whether it was reached by seeking or by playing.
#include "media/ModuleMultimedia.h"
#include "media/MoviePreview.h"

#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "i18n/LangDoc.h"
#include "media/AviBytes.h"
#include "media/FrameGrabber.h"
#include "media/MovieFixtures.h"
#include "media/VideoDecoder.h"
#include "render/cDIB.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

using namespace mw;
using namespace mw::test;
using namespace std::chrono_literals;

namespace {

const std::string kNotOpen = "The specified device is not open or is not recognized.";
const std::string kOutOfRange = "The specified parameter is out of range for the specified command.";

class Preview : public ::testing::Test {
protected:
    void SetUp() override { REQUIRE_MEDIA(HaveTool("ffmpeg"), "ffmpeg is not installed"); }

    // Time stands still until the test moves it, by frames of 25 fps.
    void Advance(long frames) { now += frames * 40ms; }

    cDIB Grab(const std::filesystem::path& movie, long frame)
    {
        cDIB picture;
        ScriptedPrompt prompt;
        EXPECT_TRUE(GrabFrameToPicture(movie.string(), picture, frame, true, prompt, LangDoc()));
        return picture;
    }

    // The decoder works on its own thread: poll as the window's timer does.
    bool WaitForPosition(long frame) { return WaitForPosition(mm, frame); }
    static bool WaitForPosition(ModuleMultimedia& on, long frame)
    {
        for (int i = 0; i < 2000; ++i) {
            if (on.MMPositionFrames("video1") == frame)
                return true;
            std::this_thread::sleep_for(5ms);
        }
        return false;
    }

    std::chrono::steady_clock::time_point now{};
    ModuleMultimedia mm{[this] { return now; }};
};

// Stands in for the sound device: takes all it is given and has played as far as the test says.
struct FakeSound {
    bool Device = true;
    std::int64_t PlayedUs = 0;
    std::size_t Bytes = 0;
    bool Paused = false;
    bool Stopped = false;
};

class FakeSink : public AudioSink {
public:
    explicit FakeSink(FakeSound& sound) : sound_(sound) {}
    bool Open() override { return sound_.Device; }
    void Start() override { sound_ = {sound_.Device}; }
    std::size_t Write(const char*, std::size_t size) override
    {
        sound_.Bytes += size;
        return size;
    }
    std::int64_t PlayedUs() override { return sound_.PlayedUs; }
    void Pause() override { sound_.Paused = true; }
    void Resume() override { sound_.Paused = false; }
    void Stop() override { sound_.Stopped = true; }

private:
    FakeSound& sound_;
};

constexpr std::size_t kSoundSecond = kSoundRate * 4;

// Grey level 16 + 8 n tells frame n of the dropped-frames movie; frames 10 to 14 show 9.
int Grey(const cDIB& picture)
{
    return picture.Pixel(32, 24) & 0xFF;
}

} // namespace

TEST_F(Preview, OpensMeasuresAndClosesUnderAnAlias)
{
    const auto movie = TestPictureMovie();
    ASSERT_FALSE(movie.empty());
    // No short path is needed for blanks.
    ScratchFolder folder;
    const auto blanks = folder.Path() / "my movies" / "test picture.avi";
    std::filesystem::create_directories(blanks.parent_path());
    std::filesystem::copy_file(movie, blanks);

    EXPECT_EQ(mm.MMOpen(blanks.string(), "MPEGVideo", "video1"), "Success");
    EXPECT_EQ(mm.MMStatusMode("video1"), "stopped");
    EXPECT_EQ(mm.MMLengthFrames("VIDEO1"), 100);
    EXPECT_EQ(mm.MMLengthMs("video1"), 4000);
    EXPECT_EQ(mm.MMPositionFrames("video1"), 0);
    EXPECT_EQ(mm.MMPositionMs("video1"), 0);
    ASSERT_NE(mm.Picture("video1"), nullptr);
    EXPECT_TRUE(*mm.Picture("video1") == Grab(movie, 0));
    EXPECT_EQ(mm.MMPut("video1", 4, 8, 320, 240), "Success");
    const PreviewWindow window = mm.Window("video1");
    EXPECT_EQ((std::array{window.Left, window.Top, window.Width, window.Height}), (std::array{4, 8, 320, 240}));

    EXPECT_EQ(mm.MMOpen(movie.string(), "mpegvideo", "Video1"),
              "The specified alias is already being used in this application. Use a unique alias.");
    EXPECT_EQ(mm.MMOpen(movie.string(), "mpegvideo", "video2"), "Success");
    EXPECT_EQ(mm.MMClose("video1"), "Success");
    EXPECT_EQ(mm.MMLengthFrames("video2"), 100);

    // A closed alias answers every command with its failure.
    EXPECT_EQ(mm.MMClose("video1"), kNotOpen);
    EXPECT_EQ(mm.MMStatusMode("video1"), "ERROR");
    EXPECT_EQ(mm.MMLengthFrames("video1"), -1);
    EXPECT_EQ(mm.MMLengthMs("video1"), -1);
    EXPECT_EQ(mm.MMPositionFrames("video1"), -1);
    EXPECT_EQ(mm.MMPositionMs("video1"), -1);
    EXPECT_EQ(mm.Picture("video1"), nullptr);
    for (const std::string& said : {mm.MMPlay("video1"), mm.MMPause("video1"), mm.MMResume("video1"),
                                    mm.MMStop("video1"), mm.MMSeek("video1", "3"), mm.MMPut("video1", 0, 0, 1, 1)})
        EXPECT_EQ(said, kNotOpen);
}

TEST_F(Preview, FilesThatCannotPlaySayWhy)
{
    const auto movie = TestPictureMovie();
    ASSERT_FALSE(movie.empty());
    ScratchFolder folder;
    AviSpec unknownCodec;
    unknownCodec.Streams.push_back(VideoStream(2, 1));
    unknownCodec.Streams[0].Handler = "ZZZZ";
    std::copy_n("ZZZZ", 4, unknownCodec.Streams[0].Format.begin() + 16);
    AviSpec audioOnly;
    audioOnly.Streams = {AudioStream(2)};
    const std::string cannotPlay = "The specified file cannot be played on the specified device. The file may be "
                                   "corrupt, or not in the correct format.";
    const struct {
        std::string File;
        std::string Type;
        std::string Says;
    } cases[] = {
        {(folder.Path() / "missing.avi").string(), "MPEGVideo",
         "Cannot find the specified file. Make sure the path and filename are correct."},
        {folder.Path().string(), "MPEGVideo", "Cannot find the specified file. Make sure the path and filename are correct."},
        {folder.Write("text.avi", "not a movie at all").string(), "MPEGVideo", cannotPlay},
        {folder.Write("half.avi", ReadAll(movie).substr(0, 600)).string(), "MPEGVideo", cannotPlay},
        {folder.Write("unknown.avi", BuildAvi(unknownCodec).Bytes).string(), "MPEGVideo", cannotPlay},
        {folder.Write("audio.avi", BuildAvi(audioOnly).Bytes).string(), "MPEGVideo", cannotPlay},
        {movie.string(), "WaveAudio", kNotOpen},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(mm.MMOpen(c.File, c.Type, "video1"), c.Says) << c.File;
        EXPECT_EQ(mm.MMStatusMode("video1"), "ERROR") << c.File;
    }
}

TEST_F(Preview, SeekingLandsOnTheAskedFrameNotOnTheKeyFrameBefore)
{
    const auto movie = TestPictureMovie(); // key frames at 0 and 50
    ASSERT_FALSE(movie.empty());
    ASSERT_EQ(mm.MMOpen(movie.string(), "MPEGVideo", "video1"), "Success");
    // Backwards, forwards past a key frame and onto it, one frame on, and the end itself.
    for (long frame : {87L, 37L, 49L, 50L, 51L, 52L, 1L, 99L, 100L}) {
        ASSERT_EQ(mm.MMSeek("video1", std::to_string(frame)), "Success") << frame;
        EXPECT_EQ(mm.MMPositionFrames("video1"), frame);
        EXPECT_EQ(mm.MMPositionMs("video1"), frame * 40);
        EXPECT_TRUE(*mm.Picture("video1") == Grab(movie, std::min(frame, 99L))) << frame;
    }
    ASSERT_EQ(mm.MMSeek("video1", "60"), "Success");
    for (const std::string position : {"101", "-1"})
        EXPECT_EQ(mm.MMSeek("video1", position), kOutOfRange) << position;
    for (const std::string position : {"", "6x", "ten"})
        EXPECT_EQ(mm.MMSeek("video1", position), "The command requires an integer parameter. Please provide one.");
    EXPECT_EQ(mm.MMPositionFrames("video1"), 60);
}

// The decoder gives B-frames back in the order they are shown, not the order of the chunks, and
// B-frames shown before their key frame need the key frame before that.
TEST_F(Preview, BFramesAreShownInTheirOwnOrder)
{
    const auto movie = BFramesMovie();
    ASSERT_FALSE(movie.empty());
    ASSERT_EQ(mm.MMOpen(movie.string(), "MPEGVideo", "video1"), "Success");
    const auto grey = [this](long frame) { return (Grey(*mm.Picture("video1")) - 16 + 2) / 5 == frame; };
    EXPECT_TRUE(grey(0));
    for (long frame : {25L, 24L, 12L, 11L, 13L, 1L, 39L, 38L, 2L, 3L}) {
        ASSERT_EQ(mm.MMSeek("video1", std::to_string(frame)), "Success");
        EXPECT_TRUE(grey(frame)) << frame;
        EXPECT_TRUE(*mm.Picture("video1") == Grab(movie, frame)) << frame;
    }
    ASSERT_EQ(mm.MMPlay("video1", "5"), "Success");
    for (long frame = 6; frame < 40; ++frame) {
        Advance(1);
        ASSERT_TRUE(WaitForPosition(frame));
        EXPECT_TRUE(grey(frame)) << frame;
    }
}

TEST_F(Preview, PlayShowsEachFrameOnTimeAndStopsAtTo)
{
    const auto movie = DroppedFramesMovie(); // 25 frames, 10 to 14 dropped
    ASSERT_FALSE(movie.empty());
    ASSERT_EQ(mm.MMOpen(movie.string(), "MPEGVideo", "video1"), "Success");
    EXPECT_EQ(mm.MMPlay("video1", "8", "7"), kOutOfRange);
    EXPECT_EQ(mm.MMPlay("video1", "0", "26"), kOutOfRange);
    EXPECT_EQ(mm.MMPlay("video1", "-1"), kOutOfRange);
    EXPECT_EQ(mm.MMStatusMode("video1"), "stopped");

    // Play starts as a seek does, with the picture of `from` there when it returns.
    ASSERT_EQ(mm.MMPlay("video1", "6", "18"), "Success");
    EXPECT_EQ(mm.MMPositionFrames("video1"), 6);
    EXPECT_TRUE(*mm.Picture("video1") == Grab(movie, 6));
    EXPECT_EQ(mm.MMStatusMode("video1"), "playing");
    // Without the clock moving the position stays, however far the decoder has gone ahead.
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(mm.MMPositionFrames("video1"), 6);
    for (long frame = 7; frame <= 18; ++frame) {
        Advance(1);
        ASSERT_TRUE(WaitForPosition(frame));
        EXPECT_NEAR(Grey(*mm.Picture("video1")), 16 + 8 * (frame >= 10 && frame <= 14 ? 9 : frame), 2) << frame;
        EXPECT_EQ(mm.MMStatusMode("video1"), frame == 18 ? "stopped" : "playing") << frame;
    }
    Advance(10);
    EXPECT_EQ(mm.MMPositionFrames("video1"), 18);

    // Empty from and to play the whole movie; a late poll skips to the frame that is due.
    ASSERT_EQ(mm.MMPlay("video1"), "Success");
    EXPECT_EQ(mm.MMPositionFrames("video1"), 0);
    Advance(21);
    ASSERT_TRUE(WaitForPosition(21));
    EXPECT_TRUE(*mm.Picture("video1") == Grab(movie, 21));
    Advance(100);
    ASSERT_TRUE(WaitForPosition(25));
    EXPECT_EQ(mm.MMStatusMode("video1"), "stopped");
    EXPECT_EQ(mm.MMPositionMs("video1"), 1000);
}

TEST_F(Preview, PauseResumeAndStopKeepThePosition)
{
    const auto movie = DroppedFramesMovie();
    ASSERT_FALSE(movie.empty());
    ASSERT_EQ(mm.MMOpen(movie.string(), "MPEGVideo", "video1"), "Success");
    ASSERT_EQ(mm.MMPlay("video1", "", "24"), "Success");
    EXPECT_EQ(mm.MMPositionFrames("video1"), 0);
    Advance(5);
    ASSERT_TRUE(WaitForPosition(5));
    EXPECT_EQ(mm.MMPause("video1"), "Success");
    EXPECT_EQ(mm.MMStatusMode("video1"), "paused");
    Advance(50);
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(mm.MMPositionFrames("video1"), 5);

    // The clock goes on from the paused frame, to the `to` of the play.
    EXPECT_EQ(mm.MMResume("video1"), "Success");
    EXPECT_EQ(mm.MMStatusMode("video1"), "playing");
    Advance(3);
    ASSERT_TRUE(WaitForPosition(8));
    EXPECT_NEAR(Grey(*mm.Picture("video1")), 16 + 8 * 8, 2);
    EXPECT_EQ(mm.MMStop("video1"), "Success");
    EXPECT_EQ(mm.MMStatusMode("video1"), "stopped");
    Advance(50);
    EXPECT_EQ(mm.MMPositionFrames("video1"), 8);
    // Resume is for a pause only.
    EXPECT_EQ(mm.MMResume("video1"), "Success");
    EXPECT_EQ(mm.MMStatusMode("video1"), "stopped");

    // A seek during play stops it; the play goes on only when asked again from there.
    ASSERT_EQ(mm.MMPlay("video1", "2", "24"), "Success");
    EXPECT_EQ(mm.MMPositionFrames("video1"), 2);
    ASSERT_EQ(mm.MMSeek("video1", "20"), "Success");
    EXPECT_EQ(mm.MMStatusMode("video1"), "stopped");
    ASSERT_EQ(mm.MMPlay("video1", "20", "24"), "Success");
    EXPECT_EQ(mm.MMPositionFrames("video1"), 20);
    Advance(4);
    ASSERT_TRUE(WaitForPosition(24));
    EXPECT_EQ(mm.MMStatusMode("video1"), "stopped");
    // Closing while playing ends the decoding thread with the alias.
    ASSERT_EQ(mm.MMPlay("video1"), "Success");
    EXPECT_EQ(mm.MMClose("video1"), "Success");
}

TEST_F(Preview, ThePictureFollowsTheSoundWhileItPlays)
{
    const auto movie = PalMovieWithTwoMp3(); // 2 s of sound
    ASSERT_FALSE(movie.empty());
    FakeSound sound;
    ModuleMultimedia heard([this] { return now; }, [&sound] { return std::make_unique<FakeSink>(sound); });
    ASSERT_EQ(heard.MMOpen(movie.string(), "MPEGVideo", "video1"), "Success");
    EXPECT_FALSE(heard.Silent("video1"));

    // The sound from 1 s on goes to the device, and the clock alone moves nothing.
    ASSERT_EQ(heard.MMPlay("video1", "25"), "Success");
    EXPECT_NEAR(static_cast<double>(sound.Bytes), kSoundSecond, kSoundSecond / 20);
    Advance(10);
    std::this_thread::sleep_for(20ms);
    EXPECT_EQ(heard.MMPositionFrames("video1"), 25);
    sound.PlayedUs = 400'000;
    ASSERT_TRUE(WaitForPosition(heard, 35));
    EXPECT_EQ(heard.MMPause("video1"), "Success");
    EXPECT_TRUE(sound.Paused);
    EXPECT_EQ(heard.MMResume("video1"), "Success");
    EXPECT_FALSE(sound.Paused);
    sound.PlayedUs = 600'000;
    ASSERT_TRUE(WaitForPosition(heard, 40));
    ASSERT_EQ(heard.MMSeek("video1", "5"), "Success");
    EXPECT_TRUE(sound.Stopped);

    // Once the sound has run out, the clock plays the rest.
    ASSERT_EQ(heard.MMPlay("video1"), "Success");
    EXPECT_NEAR(static_cast<double>(sound.Bytes), 2 * kSoundSecond, kSoundSecond / 20);
    sound.PlayedUs = 1'000'000;
    ASSERT_TRUE(WaitForPosition(heard, 25));
    sound.PlayedUs = 2'000'000;
    EXPECT_EQ(heard.MMPositionFrames("video1"), 25);
    Advance(heard.MMLengthFrames("video1") - 25);
    ASSERT_TRUE(WaitForPosition(heard, heard.MMLengthFrames("video1")));
    EXPECT_EQ(heard.MMStatusMode("video1"), "stopped");

    // Without a device the movie plays silently by the clock, and the dialog says so once.
    sound.Device = false;
    ASSERT_EQ(heard.MMClose("video1"), "Success");
    MoviePreview preview(heard);
    std::vector<std::string> said;
    preview.ShowMovieInfo = [&said](const std::string& text) { said.push_back(text); };
    for (int open = 0; open < 2; ++open) {
        ASSERT_TRUE(OpenPreview(preview, movie.string(), 320, 240));
        EXPECT_TRUE(heard.Silent("video1"));
    }
    EXPECT_EQ(std::count(said.begin(), said.end(), "No sound device: the movie plays without sound"), 1);
    ASSERT_EQ(heard.MMPlay("video1"), "Success");
    Advance(5);
    EXPECT_TRUE(WaitForPosition(heard, 5));
}

TEST_F(Preview, TheSystemClockPlaysInRealTime)
{
    const auto movie = DroppedFramesMovie();
    ASSERT_FALSE(movie.empty());
    ModuleMultimedia timed;
    ASSERT_EQ(timed.MMOpen(movie.string(), "MPEGVideo", "video1"), "Success");
    const auto started = std::chrono::steady_clock::now();
    ASSERT_EQ(timed.MMPlay("video1"), "Success");
    while (timed.MMStatusMode("video1") == "playing" && std::chrono::steady_clock::now() - started < 20s)
        std::this_thread::sleep_for(10ms);
    EXPECT_EQ(timed.MMPositionFrames("video1"), 25);
    EXPECT_GE(std::chrono::steady_clock::now() - started, 950ms); // 25 frames at 25 fps
}

// Playing asks for the frames in order: each costs one frame of decoding, not the run from the
// key frame, while a step back or a jump past a key frame starts from the key frame again.
TEST_F(Preview, TheDecoderGoesOnFromTheLastPictureWhenThatIsNearer)
{
    const auto movie = TestPictureMovie(); // key frames at 0 and 50
    ASSERT_FALSE(movie.empty());
    const auto avi = AviFile::Open(movie.string());
    ASSERT_TRUE(avi);
    const AviStream& stream = avi->Stream(0);
    VideoDecoder decoder;
    ASSERT_TRUE(decoder.Open(movie.string(), 0));
    const struct {
        long Frame;
        int Decoded;
    } asks[] = {{60, 11}, {61, 1}, {62, 1}, {62, 0}, {63, 1}, {55, 6}, {45, 46}, {87, 38}, {88, 1}};
    for (const auto& ask : asks) {
        cDIB picture;
        int decoded = 0;
        ASSERT_TRUE(decoder.Decode(stream, ask.Frame, avi->FindSample(0, ask.Frame, KeySearch::PreviousKey), picture,
                                   decoded))
            << ask.Frame;
        EXPECT_EQ(decoded, ask.Decoded) << ask.Frame;
        EXPECT_TRUE(picture == Grab(movie, ask.Frame)) << ask.Frame;
    }
}

TEST_F(Preview, TheDialogControlsFollowThePlayer)
{
    EXPECT_EQ(PreviewTimeText(0, 25), "0:00:00");
    EXPECT_EQ(PreviewTimeText(3725 * 25 + 24, 25), "1:02:05");
    EXPECT_EQ(PreviewTimeText(36 * 3600 * 25, 25), "36:00:00");
    const auto movie = TestPictureMovie();
    ASSERT_FALSE(movie.empty());
    MoviePreview preview(mm);
    std::vector<std::string> said;
    preview.ShowMovieInfo = [&said](const std::string& text) { said.push_back(text); };
    const auto tickUntil = [&](const std::string& frame) {
        for (int i = 0; i < 2000 && preview.lblFrame != frame; ++i) {
            std::this_thread::sleep_for(5ms);
            PreviewTimerTick(preview);
        }
        return preview.lblFrame == frame;
    };

    EXPECT_FALSE(OpenPreview(preview, movie.string() + ".gone", 320, 240));
    EXPECT_EQ(said, (std::vector<std::string>{"Opening movie...", "Error loading file for playing"}));
    said.clear();
    ASSERT_TRUE(OpenPreview(preview, movie.string(), 320, 240));
    EXPECT_EQ(said, (std::vector<std::string>{"Opening movie...", ""}));
    EXPECT_EQ(preview.SliderMax, 100);
    EXPECT_EQ(mm.Window("video1").Width, 320);

    PreviewPlayClick(preview);
    EXPECT_EQ((std::array{preview.PlayCaption, preview.PlayToolTip}), (std::array<std::string, 2>{";", "Pause"}));
    EXPECT_TRUE(preview.TimerEnabled);
    Advance(30);
    ASSERT_TRUE(tickUntil("30"));
    EXPECT_EQ(preview.lblTime, "0:00:01");
    EXPECT_EQ(preview.SliderValue, 30);
    // A step while playing plays on from the new frame.
    PreviewStep(preview, 30);
    EXPECT_EQ(preview.lblFrame, "60");
    EXPECT_EQ(mm.MMStatusMode("video1"), "playing");
    Advance(5);
    ASSERT_TRUE(tickUntil("65"));
    PreviewPlayClick(preview);
    EXPECT_EQ(preview.PlayToolTip, "Resume play");
    EXPECT_FALSE(preview.TimerEnabled);
    PreviewPlayClick(preview);
    EXPECT_EQ(mm.MMStatusMode("video1"), "playing");
    // Moving the slider pauses and shows the frame; play goes on from there.
    PreviewSliderChange(preview, 10);
    EXPECT_EQ(mm.MMPositionFrames("video1"), 10);
    EXPECT_EQ((std::array{preview.PlayCaption, preview.PlayToolTip}), (std::array<std::string, 2>{"4", "Resume play"}));
    PreviewStep(preview, -30);
    EXPECT_EQ(preview.lblFrame, "0");
    EXPECT_EQ(mm.MMStatusMode("video1"), "stopped");
    EXPECT_TRUE(PreviewSeek(preview, "95"));
    EXPECT_FALSE(PreviewSeek(preview, "abc"));
    EXPECT_EQ(preview.lblFrame, "95");
    PreviewPlayClick(preview);
    Advance(5);
    // At the end the controls go back as Stop leaves them.
    ASSERT_TRUE(tickUntil("0"));
    EXPECT_EQ((std::array{preview.PlayCaption, preview.PlayToolTip}), (std::array<std::string, 2>{"4", "Play"}));
    EXPECT_FALSE(preview.TimerEnabled);
    EXPECT_EQ(mm.MMPositionFrames("video1"), 0);

    said.clear();
    ClosePreview(preview);
    EXPECT_EQ(said, (std::vector<std::string>{"Closing movie...", "Closing movie... Done", ""}));
    EXPECT_EQ(mm.MMStatusMode("video1"), "ERROR");
}
