#include "media/AviFile.h"

#include "core/ScratchFolder.h"
#include "media/MovieFixtures.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

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
        EXPECT_EQ(chunk.KeyFrame, packet.attribute("flags").value()[0] == 'K') << at;
        if (avi.Stream(stream).Info.fccType == FourCC("vids")) { // frame numbers count the empty chunks too
            EXPECT_EQ(frame, packet.attribute("dts").as_ullong()) << at;
        }
    }
    for (std::size_t s = 0; s < avi.StreamCount(); ++s)
        EXPECT_EQ(packets[s], withData[s].size()) << context << " stream " << s;
}

} // namespace

TEST(AviFfprobe, StreamsAndChunksOfFfmpegFilesAgree)
{
    REQUIRE_MEDIA(HaveTool("ffmpeg") && HaveTool("ffprobe"), "ffmpeg is not installed");
    const struct {
        const char* Name;
        std::filesystem::path (*Make)();
    } movies[] = {{"PAL, two MP3", PalMovieWithTwoMp3}, {"NTSC", NtscMovie}, {"XSUB", XsubMovie}};
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
