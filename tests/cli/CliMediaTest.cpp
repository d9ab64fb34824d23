// The movie commands of the command line: what they print and how they exit.
#include "cli/CliFixture.h"
#include "media/AviBytes.h"
#include "media/MovieFixtures.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

class CliMedia : public mw::test::CliFixture {
protected:
    void SetUp() override { Require("ffmpeg"); }
};

} // namespace

TEST_F(CliMedia, TracksPrintsTheRowsThenTheFpsOrExitsOne)
{
    const auto movie = mw::test::PalMovieWithTwoMp3();
    ASSERT_FALSE(movie.empty());
    const CommandResult r = Run("tracks " + Quoted(movie));
    EXPECT_EQ(r.Exit, 0);
    EXPECT_EQ(r.Out, "Video\t\t320 x 240 - PAL - 25 fps, Length: 00:00:02.040\t00dc\t0\t50\n"
                     "Audio\tAudio - en-US;02\tSamplesPerSec: 41.6666666666667, Length: 00:00:02.064\t01wb\t0\t85\n"
                     "Audio\tAudio - de-DE;03\tSamplesPerSec: 38.28125, Length: 00:00:02.038\t02wb\t0\t77\n"
                     "fps\t25\n");

    const fs::path garbage = folder.Write("garbage.avi", "not a movie");
    const CommandResult bad = Run("tracks " + Quoted(garbage));
    EXPECT_EQ(bad.Exit, 1);
    EXPECT_EQ(bad.Out, "Error geting info for file\n");
    const CommandResult key = Run("keyframe " + Quoted(garbage) + " 3");
    EXPECT_EQ(key.Exit, 1);
    EXPECT_EQ(key.Out, "Error geting info for file '" + garbage.string() + "'\n");

    EXPECT_EQ(Run("tracks").Exit, 2);
    EXPECT_EQ(Run("keyframe " + Quoted(movie) + " three").Exit, 2);
    EXPECT_EQ(Run("grab " + Quoted(movie) + " 3").Exit, 2); // no -o
}

TEST_F(CliMedia, KeyframeAndGrab)
{
    const auto movie = mw::test::DroppedFramesMovie(); // key frames 0, 8, 21; 10 to 14 dropped
    ASSERT_FALSE(movie.empty());
    EXPECT_EQ(Run("keyframe " + Quoted(movie) + " 12").Out, "8\n");
    EXPECT_EQ(Run("keyframe " + Quoted(movie) + " 12 --next").Out, "21\n");

    const fs::path out = folder.Path() / "frame.bmp";
    const CommandResult r = Run("grab " + Quoted(movie) + " 12 -o " + Quoted(out));
    EXPECT_EQ(r.Exit, 0);
    EXPECT_EQ(r.Out, "");
    const std::string bmp = mw::test::ReadAll(out);
    ASSERT_EQ(bmp.size(), 14u + 40 + 64 * 3 * 48); // 24 bits a pixel
    EXPECT_NEAR(static_cast<unsigned char>(bmp[54]), 88, 2); // frame 9's grey: 16 + 8 x 9
    EXPECT_EQ(Run("grab " + Quoted(movie) + " -1 -o " + Quoted(out)).Exit, 0);

    const fs::path none = folder.Path() / "none.bmp";
    const CommandResult beyond = Run("grab " + Quoted(movie) + " 26 -o " + Quoted(none));
    EXPECT_EQ(beyond.Exit, 1);
    EXPECT_EQ(beyond.Out, "Frame not found\n");
    EXPECT_FALSE(fs::exists(none));
}

TEST_F(CliMedia, StreamnameExitsZeroOnlyWhenTheNameWasWritten)
{
    mw::test::AviSpec spec;
    spec.Streams = {mw::test::VideoStream(2, 1), mw::test::VideoStream(2, 1)};
    spec.Streams[0].Name = std::string("Old\0", 4);
    spec.Streams[0].JunkAfterName = 32;
    spec.Streams[1].Name = std::string("Sub\0", 4);
    const fs::path movie = folder.Write("named.avi", mw::test::BuildAvi(spec).Bytes);

    EXPECT_EQ(Run("streamname " + Quoted(movie) + " 0 'Video - en-US;02'").Exit, 0);
    EXPECT_EQ(Run("streamname " + Quoted(movie) + " 1 'Subtitle - en-US;02'").Exit, 1); // no room
    EXPECT_EQ(Run("streamname " + Quoted(movie) + " 2 'Audio'").Exit, 1);                // no such stream
    EXPECT_EQ(Run("streamname " + Quoted(movie) + " x 'Audio'").Exit, 2);
    const std::string out = Run("tracks " + Quoted(movie)).Out;
    EXPECT_EQ(out.substr(0, out.find('\n')), "Video\tVideo - en-US;02\t64 x 48 - PAL - 25 fps, Length: "
                                             "00:00:00.080\t00dc\t0\t1");
    EXPECT_NE(out.find("\nVideo\tSub\t"), std::string::npos);
}
