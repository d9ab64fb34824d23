#include "build/FakeWine.h"
#include "core/ScratchFolder.h"
#include "dvd/DvdTools.h"
#include "dvd/DvdTranscode.h"
#include "dvd/Subpicture.h"
#include "media/MediaFixtures.h"

#include <gtest/gtest.h>

namespace mw {
namespace {

namespace fs = std::filesystem;
using test::ScratchFolder;

TEST(DvdTools, AMissingToolNamesItsDebianPackage)
{
    ScratchFolder work;
    const test::NoWine emptyPath; // PATH holds nothing at all
    std::string error;
    EXPECT_FALSE(HaveDvdTools({DvdTool::Spumux, DvdTool::Ffmpeg}, error));
    EXPECT_EQ(error, "spumux was not found; install the package dvdauthor");
    ToolRunner runner;
    EXPECT_FALSE(RunDvdTool(runner, DvdTool::Lsdvd, {}, work.Path(), [](const std::string&) {}, error));
    EXPECT_EQ(error, "lsdvd was not found; install the package lsdvd");
    const DvdTranscodeJob job{work.Path() / "in.avi", 0, -1, {}, {}, TvStandard::Pal, work.Path() / "out.mpg", {}};
    EXPECT_FALSE(TranscodeForDvd(runner, job, {}, [](const std::string&) {}, error));
    EXPECT_EQ(error, "ffmpeg was not found; install the package ffmpeg");
}

// What ffprobe finds in a file: "codec,width,height,rate,frames" of its video, then the codecs of
// its audio and subpictures.
std::string Probe(const fs::path& file)
{
    const std::string quoted = "'" + file.string() + "'";
    return test::CommandOutput("ffprobe -v error -count_frames -select_streams v -show_entries "
                               "stream=codec_name,width,height,r_frame_rate,nb_read_frames -of csv=p=0 " +
                               quoted + " | head -n1 | cut -d, -f1-5; ffprobe -v error -show_entries "
                               "stream=codec_name -of csv=p=0 " + quoted + " | grep -E '^(ac3|dvd_subtitle)' | sort");
}

// The real programs: two transcodes checked with FFmpeg, spumux on our subpictures, and a cancel.
TEST(DvdTools, RealTranscodesSubpicturesAndCancel)
{
    REQUIRE_MEDIA(test::HaveTool("ffprobe") && test::HaveTool("spumux"), "ffmpeg and spumux are needed");
    const fs::path pal = test::FfmpegFixture("dvd-pal-2s.avi", "-f lavfi -i testsrc=size=320x240:rate=25:duration=2 "
                                                               "-f lavfi -i sine=d=2 -c:v mpeg4 -c:a pcm_s16le ");
    const fs::path film = test::FfmpegFixture(
        "dvd-film-2s.avi", "-f lavfi -i testsrc=size=320x180:rate=24000/1001:duration=2 -c:v mpeg4 ");
    const fs::path longer =
        test::FfmpegFixture("dvd-long-60s.avi", "-f lavfi -i testsrc=size=160x120:rate=25:duration=60 -c:v mpeg4 ");
    REQUIRE_MEDIA(!pal.empty() && !film.empty() && !longer.empty(), "ffmpeg could not make the test movies");
    ScratchFolder work;
    std::string error;
    std::vector<std::string> lines;
    const auto onLine = [&](const std::string& line) { lines.push_back(line); };

    ToolRunner runner;
    std::vector<std::pair<int, int>> progress;
    const DvdTranscodeJob whole{pal, 0, -1, {}, {0}, TvStandard::Pal, work.Path() / "whole.mpg", {}};
    ASSERT_TRUE(TranscodeForDvd(runner, whole, [&](int done, int total) { progress.emplace_back(done, total); },
                                onLine, error))
        << error << ::testing::PrintToString(lines);
    EXPECT_EQ(Probe(whole.Output), "mpeg2video,720,576,25/1,50\nac3\n");
    EXPECT_EQ(progress.back(), std::make_pair(50, 50));
    EXPECT_FALSE(fs::exists(work.Path() / "whole.mpg.part"));
    for (const std::string& line : lines)
        EXPECT_FALSE(line.starts_with("frame=") || line.starts_with("progress=")) << line;

    // Frames 12 to 35 of film, silent, telecined to NTSC: 24 frames become 30.
    const DvdTranscodeJob range{film, 12, 35, {}, {}, TvStandard::Ntsc, work.Path() / "range.mpg", {}};
    ASSERT_TRUE(TranscodeForDvd(runner, range, {}, onLine, error)) << error << ::testing::PrintToString(lines);
    EXPECT_EQ(Probe(range.Output), "mpeg2video,720,480,30000/1001,30\nac3\n");

    // Two buttons over the whole movie's picture, as spumux takes them.
    cDIB overlay;
    overlay.Create(100, 50, 4);
    for (int x = 0; x < 100; ++x)
        overlay.SetPixel(x, 49, 2);
    const std::vector<SubpictureButton> buttons = {{100, 100, 100, 50, overlay}, {100, 300, 100, 50, overlay}};
    ASSERT_TRUE(WriteSubpictures(buttons, 720, 576, {Rgb(255, 255, 255), Rgb(255, 0, 0), Rgb(0, 0, 0)},
                                 {Rgb(0, 255, 0), Rgb(0, 0, 255), Rgb(0, 0, 0)}, work.Path() / "h.png",
                                 work.Path() / "s.png", error))
        << error;
    work.Write("menu.xml", "<subpictures format=\"PAL\"><stream><spu start=\"00:00:00.00\" force=\"yes\" "
                           "highlight=\"h.png\" select=\"s.png\">"
                           "<button name=\"1\" x0=\"100\" y0=\"100\" x1=\"200\" y1=\"150\" down=\"2\"/>"
                           "<button name=\"2\" x0=\"100\" y0=\"300\" x1=\"200\" y1=\"350\" up=\"1\"/>"
                           "</spu></stream></subpictures>");
    lines.clear();
    ASSERT_TRUE(RunDvdTool(runner, DvdTool::Spumux, {"menu.xml"}, work.Path(), onLine, error,
                           {whole.Output, work.Path() / "menu.mpg"}))
        << error << ::testing::PrintToString(lines);
    EXPECT_EQ(Probe(work.Path() / "menu.mpg"), "mpeg2video,720,576,25/1,50\nac3\ndvd_subtitle\n");

    // A cancel at the first progress report, long before the end, stops ffmpeg and leaves nothing.
    ToolRunner cancelled;
    const DvdTranscodeJob stopped{longer, 0, -1, {}, {}, TvStandard::Ntsc, work.Path() / "stopped.mpg", {}};
    EXPECT_FALSE(TranscodeForDvd(cancelled, stopped, [&](int, int) { cancelled.Cancel(); }, onLine, error));
    EXPECT_EQ(error, "Cancelled");
    EXPECT_FALSE(fs::exists(stopped.Output));
    EXPECT_FALSE(fs::exists(work.Path() / "stopped.mpg.part"));
}

} // namespace
} // namespace mw
