#include "build/FakeWine.h"
#include "core/ScratchFolder.h"
#include "dvd/DvdTools.h"
#include "dvd/DvdTranscode.h"
#include "dvd/Subpicture.h"
#include "media/MediaFixtures.h"

extern "C" {
#include <libavformat/avformat.h>
}

#include <gtest/gtest.h>

#include <thread>

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
    EXPECT_EQ(MissingToolMessage(DvdTool::Genisoimage), "genisoimage was not found; install the package genisoimage");
    ToolRunner runner;
    EXPECT_FALSE(RunDvdTool(runner, DvdTool::Lsdvd, {}, work.Path(), [](const std::string&) {}, error));
    EXPECT_EQ(error, "lsdvd was not found; install the package lsdvd");
    const DvdTranscodeJob job{work.Path() / "in.avi", 0, -1, {}, {}, TvStandard::Pal, work.Path() / "out.mpg"};
    EXPECT_FALSE(TranscodeForDvd(runner, job, {}, [](const std::string&) {}, error));
    EXPECT_EQ(error, "ffmpeg was not found; install the package ffmpeg");
}

struct MpegStreams {
    AVCodecID Video = AV_CODEC_ID_NONE;
    int Width = 0;
    int Height = 0;
    AVRational Rate{};
    long Frames = 0;
    int AudioStreams = 0;
    int SubpictureStreams = 0;
};

// What FFmpeg reads in a program stream; the frames are the video packets, which its parser cuts
// one picture each.
MpegStreams ReadMpeg(const fs::path& file)
{
    MpegStreams found;
    AVFormatContext* format = nullptr;
    if (avformat_open_input(&format, file.c_str(), nullptr, nullptr) < 0)
        return found;
    avformat_find_stream_info(format, nullptr);
    int video = -1;
    for (unsigned i = 0; i < format->nb_streams; ++i) {
        const AVCodecParameters* codec = format->streams[i]->codecpar;
        if (codec->codec_type == AVMEDIA_TYPE_VIDEO && video < 0) {
            video = int(i);
            found.Video = codec->codec_id;
            found.Width = codec->width;
            found.Height = codec->height;
            found.Rate = format->streams[i]->r_frame_rate;
        }
        found.AudioStreams += codec->codec_type == AVMEDIA_TYPE_AUDIO;
        found.SubpictureStreams += codec->codec_id == AV_CODEC_ID_DVD_SUBTITLE;
    }
    AVPacket* packet = av_packet_alloc();
    while (av_read_frame(format, packet) >= 0) {
        found.Frames += packet->stream_index == video;
        av_packet_unref(packet);
    }
    av_packet_free(&packet);
    avformat_close_input(&format);
    return found;
}

void ExpectDvdVideo(const fs::path& file, TvStandard standard, long frames)
{
    const MpegStreams found = ReadMpeg(file);
    EXPECT_EQ(found.Video, AV_CODEC_ID_MPEG2VIDEO) << file;
    EXPECT_EQ(found.Width, 720);
    EXPECT_EQ(found.Height, DvdFrameHeight(standard));
    const FrameRate rate = DvdFrameRate(standard);
    EXPECT_EQ(av_cmp_q(found.Rate, AVRational{rate.Num, rate.Den}), 0) << found.Rate.num << "/" << found.Rate.den;
    EXPECT_EQ(found.Frames, frames);
    EXPECT_EQ(found.AudioStreams, 1);
}

// The real programs: two transcodes checked with FFmpeg, spumux on our subpictures, and a cancel.
TEST(DvdTools, RealTranscodesSubpicturesAndCancel)
{
    REQUIRE_MEDIA(test::HaveTool("ffmpeg") && test::HaveTool("spumux"), "ffmpeg and spumux are needed");
    const fs::path pal = test::FfmpegFixture(
        "dvd-pal-2s.avi", "-f lavfi -i testsrc=size=320x240:rate=25:duration=2 -f lavfi -i sine=d=2 "
                          "-c:v mpeg4 -c:a pcm_s16le ");
    const fs::path film = test::FfmpegFixture(
        "dvd-film-2s.avi", "-f lavfi -i testsrc=size=320x180:rate=24000/1001:duration=2 -c:v mpeg4 ");
    REQUIRE_MEDIA(!pal.empty() && !film.empty(), "ffmpeg could not make the test movies");
    ScratchFolder work;
    std::string error;
    std::vector<std::string> lines;
    const auto onLine = [&](const std::string& line) { lines.push_back(line); };

    // The whole movie with its own sound.
    ToolRunner runner;
    std::vector<std::pair<int, int>> progress;
    const DvdTranscodeJob whole{pal, 0, -1, {}, {0}, TvStandard::Pal, work.Path() / "whole.mpg"};
    ASSERT_TRUE(TranscodeForDvd(runner, whole, [&](int done, int total) { progress.emplace_back(done, total); },
                                onLine, error))
        << error << ::testing::PrintToString(lines);
    ExpectDvdVideo(whole.Output, TvStandard::Pal, 50);
    ASSERT_FALSE(progress.empty());
    EXPECT_EQ(progress.back(), std::make_pair(50, 50));
    EXPECT_FALSE(fs::exists(work.Path() / "whole.mpg.part"));
    for (const std::string& line : lines)
        EXPECT_FALSE(line.starts_with("frame=") || line.starts_with("progress=")) << line;

    // Frames 12 to 35 of film, silent, telecined to NTSC: 24 frames become 30.
    const DvdTranscodeJob range{film, 12, 35, {}, {}, TvStandard::Ntsc, work.Path() / "range.mpg"};
    ASSERT_TRUE(TranscodeForDvd(runner, range, {}, onLine, error)) << error << ::testing::PrintToString(lines);
    ExpectDvdVideo(range.Output, TvStandard::Ntsc, 30);

    // Two buttons over the whole movie's picture, as spumux takes them.
    cDIB overlay;
    overlay.Create(100, 50, 4);
    overlay.Cls(0);
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
    EXPECT_EQ(ReadMpeg(work.Path() / "menu.mpg").SubpictureStreams, 1) << ::testing::PrintToString(lines);

    // A cancel during the run stops ffmpeg and leaves nothing. The movie is long enough to be
    // still running at its first progress report.
    const fs::path longer =
        test::FfmpegFixture("dvd-long-60s.avi", "-f lavfi -i testsrc=size=160x120:rate=25:duration=60 -c:v mpeg4 ");
    ASSERT_FALSE(longer.empty());
    ToolRunner cancelled;
    const DvdTranscodeJob stopped{longer, 0, -1, {}, {}, TvStandard::Ntsc, work.Path() / "stopped.mpg"};
    EXPECT_FALSE(TranscodeForDvd(cancelled, stopped, [&](int, int) { cancelled.Cancel(); }, onLine, error));
    EXPECT_EQ(error, "Cancelled");
    EXPECT_FALSE(fs::exists(stopped.Output));
    EXPECT_FALSE(fs::exists(work.Path() / "stopped.mpg.part"));
}

} // namespace
} // namespace mw
