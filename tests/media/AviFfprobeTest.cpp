#include "media/AviFile.h"

#include "core/ScratchFolder.h"
#include "media/MediaFixtures.h"

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
    doc.load_string(CommandOutput("ffprobe -v error -show_streams -show_packets -of xml '" + file.string() + "'").c_str());
    return doc;
}

// What ffprobe says of the streams and packets must be what our index says: FFmpeg numbers a
// stream's packets by chunk (dts) but leaves out empty chunks, which we keep as frames.
void ExpectSameAsFfprobe(const AviFile& avi, const pugi::xml_document& probe, const std::string& context)
{
    const auto streams = probe.select_nodes("/ffprobe/streams/stream");
    ASSERT_EQ(avi.StreamCount(), streams.size()) << context;
    for (const auto& node : streams) {
        const pugi::xml_node stream = node.node();
        const auto index = stream.attribute("index").as_uint();
        const AviStreamInfo& info = avi.Stream(index).Info;
        const std::string type = stream.attribute("codec_type").value();
        EXPECT_EQ(info.fccType, FourCC(type == "video" ? "vids" : "auds")) << context;
        EXPECT_EQ(info.dwLength, stream.attribute("nb_frames").as_uint()) << context;
        EXPECT_EQ(Ratio(info.dwScale, info.dwRate), stream.attribute("time_base").value()) << context;
        if (type == "video") {
            EXPECT_EQ(FourCCToString(info.fccHandler), stream.attribute("codec_tag_string").value()) << context;
            EXPECT_EQ(Ratio(info.dwRate, info.dwScale), stream.attribute("r_frame_rate").value()) << context;
            EXPECT_EQ(info.rcFrame.right, stream.attribute("width").as_int()) << context;
            EXPECT_EQ(info.rcFrame.bottom, stream.attribute("height").as_int()) << context;
        }
    }
    std::vector<std::size_t> packets(avi.StreamCount());
    for (const auto& node : probe.select_nodes("/ffprobe/packets/packet")) {
        const pugi::xml_node packet = node.node();
        const auto stream = packet.attribute("stream_index").as_uint();
        const auto frame = packet.attribute("dts").as_ullong();
        ++packets[stream];
        ASSERT_LT(frame, avi.Stream(stream).Chunks.size()) << context;
        const AviChunk& chunk = avi.Stream(stream).Chunks[frame];
        EXPECT_EQ(chunk.Offset, packet.attribute("pos").as_ullong()) << context << " frame " << frame;
        EXPECT_EQ(chunk.Size, packet.attribute("size").as_uint()) << context << " frame " << frame;
        EXPECT_EQ(chunk.KeyFrame, packet.attribute("flags").value()[0] == 'K') << context << " frame " << frame;
    }
    for (std::size_t s = 0; s < avi.StreamCount(); ++s) {
        const auto& chunks = avi.Stream(s).Chunks;
        EXPECT_EQ(packets[s], std::count_if(chunks.begin(), chunks.end(), [](const AviChunk& c) { return c.Size > 0; }))
            << context << " stream " << s;
    }
}

const char* const kDx50Mp3 =
    "-f lavfi -i testsrc=size=64x48:rate=25 -f lavfi -i sine=frequency=440:sample_rate=44100 -t 2 "
    "-c:v mpeg4 -vtag DX50 -g 12 -c:a libmp3lame -metadata:s:a:0 title='Audio - en-US;02'";

} // namespace

TEST(AviFfprobe, StreamsAndKeyFramesOfFfmpegFilesAgree)
{
    if (!HaveTool("ffmpeg") || !HaveTool("ffprobe"))
        GTEST_SKIP() << "ffmpeg is not installed";
    const struct {
        const char* Name;
        const char* Arguments;
        long KeyBefore20; // FFmpeg's first frame is repeated by an empty chunk at 25 fps
    } cases[] = {
        {"AviFileTest-25.avi", kDx50Mp3, 13},
        {"AviFileTest-23976.avi", "-f lavfi -i testsrc=size=96x64:rate=24000/1001 -t 1.5 -c:v mpeg4 -vtag DX50 -g 7",
         14},
    };
    for (const auto& c : cases) {
        const auto file = FfmpegFixture(c.Name, c.Arguments);
        ASSERT_FALSE(file.empty()) << c.Name;
        std::string error;
        const auto avi = AviFile::Open(file.string(), &error);
        ASSERT_TRUE(avi) << c.Name << ": " << error;
        ExpectSameAsFfprobe(*avi, Probe(file), c.Name);
        EXPECT_EQ(avi->FindSample(0, 20, KeySearch::PreviousKey), c.KeyBefore20) << c.Name;
    }
}

TEST(AviFfprobe, RenamedStreamReadsBackInFfprobe)
{
    if (!HaveTool("ffmpeg") || !HaveTool("ffprobe"))
        GTEST_SKIP() << "ffmpeg is not installed";
    const auto file = FfmpegFixture("AviFileTest-25.avi", kDx50Mp3);
    ASSERT_FALSE(file.empty());
    ScratchFolder dir;
    const auto copy = dir.Path() / "renamed.avi";
    std::filesystem::copy_file(file, copy);
    const std::string name = "Audio - fr-FR;03 with a name longer than the one before";
    ASSERT_TRUE(AviFile::WriteStreamName(copy.string(), 1, name));
    EXPECT_EQ(std::filesystem::file_size(copy), std::filesystem::file_size(file));
    const auto probe = Probe(copy);
    EXPECT_EQ(std::string(probe.select_node("//stream[@index='1']/tag[@key='title']").node().attribute("value").value()),
              name);
    const auto avi = AviFile::Open(copy.string());
    ASSERT_TRUE(avi);
    ExpectSameAsFfprobe(*avi, probe, "renamed");
}
