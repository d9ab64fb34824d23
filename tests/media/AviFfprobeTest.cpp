// Our reading of files from several muxers against ffprobe's, our grabs against ffmpeg's, and the
// track rows of movies made by the ffmpeg command.
#include "media/AviFile.h"

#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "i18n/LangDoc.h"
#include "media/AviCache.h"
#include "media/FrameGrabber.h"
#include "media/MovieFixtures.h"
#include "media/mAVIDecs.h"
#include "render/cDIB.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <numeric>

using namespace mw;
using namespace mw::test;

namespace {

std::string Ratio(std::uint32_t a, std::uint32_t b)
{
    const std::uint32_t d = std::gcd(a, b);
    return d == 0 ? "0/0" : std::to_string(a / d) + "/" + std::to_string(b / d);
}

pugi::xml_document Probe(const std::filesystem::path& file)
{
    pugi::xml_document doc;
    const std::string command = "ffprobe -v error -show_streams -show_packets -of xml '" + file.string() + "'";
    doc.load_string(CommandOutput(command).c_str());
    return doc;
}

// What ffprobe says of the streams and packets must be what our index says. FFmpeg leaves out
// empty chunks, which we keep as frames.
void ExpectSameAsFfprobe(const AviFile& avi, const pugi::xml_document& probe, const std::string& context)
{
    const auto streams = probe.select_nodes("/ffprobe/streams/stream");
    ASSERT_EQ(avi.StreamCount(), streams.size()) << context;
    for (const auto& node : streams) {
        const pugi::xml_node stream = node.node();
        const auto index = stream.attribute("index").as_uint();
        const AviStreamInfo& info = avi.Stream(index).Info;
        const std::string type = stream.attribute("codec_type").value();
        EXPECT_EQ(info.fccType, FourCC(type == "audio" ? "auds" : "vids")) << context; // subtitles too
        EXPECT_EQ(info.dwLength, stream.attribute("nb_frames").as_uint()) << context;
        if (type == "subtitle") { // FFmpeg makes up a rate for a stream that has none
            EXPECT_EQ(FourCCToString(info.fccHandler), stream.attribute("codec_tag_string").value()) << context;
            continue;
        }
        EXPECT_EQ(Ratio(info.dwScale, info.dwRate), stream.attribute("time_base").value()) << context;
        if (type == "video") {
            EXPECT_EQ(FourCCToString(info.fccHandler), stream.attribute("codec_tag_string").value()) << context;
            EXPECT_EQ(Ratio(info.dwRate, info.dwScale), stream.attribute("r_frame_rate").value()) << context;
            EXPECT_EQ(info.rcFrame.right, stream.attribute("width").as_int()) << context;
            EXPECT_EQ(info.rcFrame.bottom, stream.attribute("height").as_int()) << context;
        }
    }
    // The n-th packet of a stream is its n-th chunk with data.
    std::vector<std::vector<std::size_t>> withData(avi.StreamCount());
    for (std::size_t s = 0; s < avi.StreamCount(); ++s) {
        for (std::size_t i = 0; i < avi.Stream(s).Chunks.size(); ++i) {
            if (avi.Stream(s).Chunks[i].Size > 0)
                withData[s].push_back(i);
        }
    }
    std::vector<std::size_t> packets(avi.StreamCount());
    for (const auto& node : probe.select_nodes("/ffprobe/packets/packet")) {
        const pugi::xml_node packet = node.node();
        const auto stream = packet.attribute("stream_index").as_uint();
        ASSERT_LT(packets[stream], withData[stream].size()) << context << " stream " << stream;
        const std::size_t frame = withData[stream][packets[stream]++];
        const AviChunk& chunk = avi.Stream(stream).Chunks[frame];
        const std::string at = context + ", stream " + std::to_string(stream) + " chunk " + std::to_string(frame);
        EXPECT_EQ(chunk.Offset, packet.attribute("pos").as_ullong()) << at;
        EXPECT_EQ(chunk.Size, packet.attribute("size").as_uint()) << at;
        // Frame numbers count the empty chunks too. FFmpeg takes every sound packet for a key
        // frame, whatever the index says.
        if (avi.Stream(stream).Info.fccType == FourCC("vids")) {
            EXPECT_EQ(frame, packet.attribute("dts").as_ullong()) << at;
            EXPECT_EQ(chunk.KeyFrame, packet.attribute("flags").value()[0] == 'K') << at;
        }
    }
    for (std::size_t s = 0; s < avi.StreamCount(); ++s)
        EXPECT_EQ(packets[s], withData[s].size()) << context << " stream " << s;
}

// The track rows name each stream as ffprobe sees it and give a video its size and length (the
// movies here are all PAL, at 25 fps).
void ExpectRowsAsFfprobe(const std::filesystem::path& file, const pugi::xml_document& probe,
                         const std::string& context)
{
    ScriptedPrompt prompt;
    TrackRows rows;
    double fps = 0;
    ASSERT_TRUE(LoadStreamsToListView(file.string(), rows, true, fps, prompt)) << context;
    const auto streams = probe.select_nodes("/ffprobe/streams/stream");
    ASSERT_EQ(rows.size(), streams.size()) << context;
    for (const auto& node : streams) {
        const pugi::xml_node stream = node.node();
        const TrackRow& row = rows[stream.attribute("index").as_uint()];
        const bool video = std::string(stream.attribute("codec_type").value()) == "video";
        char id[8];
        std::snprintf(id, sizeof id, "%02u%s", stream.attribute("index").as_uint(), video ? "dc" : "wb");
        EXPECT_EQ(row.Kind, video ? "Video" : "Audio") << context;
        EXPECT_EQ(row.TrackID, id) << context;
        EXPECT_EQ(row.NameLanguage, stream.select_node("tag[@key='title']/@value").attribute().value()) << context;
        EXPECT_EQ(row.StartFrame, "0") << context;
        EXPECT_EQ(row.EndFrame, std::to_string(stream.attribute("nb_frames").as_int() - 1)) << context;
        if (!video)
            continue;
        const double seconds = stream.attribute("duration").as_double();
        char info[96];
        std::snprintf(info, sizeof info, "%d x %d - PAL - 25 fps, Length: 00:00:%02d.%03d",
                      stream.attribute("width").as_int(), stream.attribute("height").as_int(),
                      static_cast<int>(seconds), static_cast<int>(std::lround(seconds * 1000)) % 1000);
        EXPECT_EQ(row.Info, info) << context;
    }
}

// Every frame of the first video stream, grabbed, against ffmpeg's decoding of the whole file
// into bottom-up BGR rows: the same bytes, as both convert with the same routine of libswscale.
// A dropped frame (an empty chunk) shows the picture before it, which ffmpeg gives once.
void ExpectGrabsAsFfmpeg(const std::filesystem::path& file, const AviStream& video, const std::string& context)
{
    const std::string pictures = CommandOutput("ffmpeg -nostdin -v error -i '" + file.string() +
                                               "' -map 0:v:0 -fps_mode passthrough -vf vflip -pix_fmt bgr24 "
                                               "-f rawvideo -");
    const std::size_t size = static_cast<std::size_t>(video.Info.rcFrame.right) * video.Info.rcFrame.bottom * 3;
    const auto coded = std::count_if(video.Chunks.begin(), video.Chunks.end(), [](const AviChunk& c) { return c.Size > 0; });
    ASSERT_EQ(pictures.size(), static_cast<std::size_t>(coded) * size) << context;
    const LangDoc lang;
    std::size_t shown = 0;
    for (long frame = 0; frame < static_cast<long>(video.Chunks.size()); ++frame) {
        if (frame > 0 && video.Chunks[static_cast<std::size_t>(frame)].Size > 0)
            ++shown;
        cDIB picture;
        ScriptedPrompt prompt;
        long asked = frame;
        ASSERT_TRUE(GrabFrameToPicture(file.string(), picture, asked, true, prompt, lang))
            << context << " frame " << frame << ": " << testing::PrintToString(prompt.Texts());
        ASSERT_EQ(picture.Size(), size) << context; // rows of these widths have no padding
        EXPECT_EQ(std::memcmp(picture.lpBits(), pictures.data() + shown * size, size), 0)
            << context << " frame " << frame;
    }
}

} // namespace

// Files as three muxers write them: ffmpeg, mencoder, and GStreamer, whose avimux does not
// interleave its streams.
TEST(AviFfprobe, FilesOfThreeMuxersReadAndGrabAsFfmpegDoes)
{
    REQUIRE_MEDIA(HaveTool("ffmpeg") && HaveTool("ffprobe"), "ffmpeg is not installed");
    const struct {
        const char* Tool;
        std::filesystem::path (*Make)();
    } muxers[] = {{"ffmpeg", PalMovieWithTwoMp3}, {"mencoder", MencoderMovie}, {"gst-launch-1.0", GstreamerMovie}};
    const AviCacheScope cache;
    for (const auto& muxer : muxers) {
        if (!HaveTool(muxer.Tool)) {
            EXPECT_FALSE(InCi()) << muxer.Tool << " is not installed";
            continue;
        }
        const auto file = muxer.Make();
        ASSERT_FALSE(file.empty()) << muxer.Tool << ": the movie could not be made";
        std::string error;
        const auto avi = OpenAvi(file.string(), AviRead::HeadersAndIndex, &error);
        ASSERT_TRUE(avi) << muxer.Tool << ": " << error;
        const auto probe = Probe(file);
        ExpectSameAsFfprobe(*avi, probe, muxer.Tool);
        ExpectRowsAsFfprobe(file, probe, muxer.Tool);
        ExpectGrabsAsFfmpeg(file, avi->Stream(0), muxer.Tool);
    }
}

// The rows of the PAL movie are checked word for word through the command line's "tracks".
TEST(AviFfprobe, StreamsChunksAndRowsOfFfmpegFiles)
{
    REQUIRE_MEDIA(HaveTool("ffmpeg") && HaveTool("ffprobe"), "ffmpeg is not installed");
    const struct {
        const char* Name;
        std::filesystem::path (*Make)();
        std::vector<std::string> Rows;
        double Fps;
    } movies[] = {
        {"NTSC", NtscMovie, {"Video||352 x 240 - NTSC - 23.976 fps, Length: 00:00:02.002|00dc|0|47"}, 23.976},
        {"XSUB",
         XsubMovie,
         {"Video||720 x 576 - PAL - 25 fps, Length: 00:00:03.000|00dc|0|74",
          "Subtitle|Subtitle - en-US;02|0 x 0 - Lenght: 1|01sb|0|0"},
         25},
    };
    for (const auto& movie : movies) {
        if (movie.Make == XsubMovie && !HaveTool("spumux")) {
            EXPECT_FALSE(InCi()) << "spumux (dvdauthor) is not installed";
            continue;
        }
        const auto file = movie.Make();
        ASSERT_FALSE(file.empty()) << movie.Name;
        std::string error;
        const auto avi = AviFile::Open(file.string(), &error);
        ASSERT_TRUE(avi) << movie.Name << ": " << error;
        ExpectSameAsFfprobe(*avi, Probe(file), movie.Name);

        ScriptedPrompt prompt;
        TrackRows rows;
        double fps = 0;
        ASSERT_TRUE(LoadStreamsToListView(file.string(), rows, true, fps, prompt)) << movie.Name;
        std::vector<std::string> lines;
        for (const TrackRow& r : rows)
            lines.push_back(r.Kind + "|" + r.NameLanguage + "|" + r.Info + "|" + r.TrackID + "|" + r.StartFrame + "|" +
                            r.EndFrame);
        EXPECT_EQ(lines, movie.Rows) << movie.Name;
        EXPECT_DOUBLE_EQ(fps, movie.Fps) << movie.Name;
        EXPECT_TRUE(prompt.Log.empty()) << movie.Name;
    }
}

TEST(AviFfprobe, RenamedStreamReadsBackInFfprobe)
{
    REQUIRE_MEDIA(HaveTool("ffmpeg") && HaveTool("ffprobe"), "ffmpeg is not installed");
    const auto file = PalMovieWithTwoMp3();
    ASSERT_FALSE(file.empty());
    ScratchFolder dir;
    const auto copy = dir.Path() / "renamed.avi";
    std::filesystem::copy_file(file, copy);
    const std::string name = "Audio - fr-FR;03 with a name longer than the one before";
    ASSERT_TRUE(AviFile::WriteStreamName(copy.string(), 1, name));
    EXPECT_EQ(std::filesystem::file_size(copy), std::filesystem::file_size(file));
    const auto probe = Probe(copy);
    const auto title = probe.select_node("//stream[@index='1']/tag[@key='title']").node();
    EXPECT_EQ(std::string(title.attribute("value").value()), name);
    const auto avi = AviFile::Open(copy.string());
    ASSERT_TRUE(avi);
    ExpectSameAsFfprobe(*avi, probe, "renamed");
}
