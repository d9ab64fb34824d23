#include "dvd/DvdTranscode.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace mw {
namespace {

// The value that follows an option, or empty.
std::string After(const std::vector<std::string>& arguments, const std::string& option)
{
    const auto at = std::find(arguments.begin(), arguments.end(), option);
    return at == arguments.end() || at + 1 == arguments.end() ? std::string() : *(at + 1);
}

std::vector<std::string> Maps(const std::vector<std::string>& arguments)
{
    std::vector<std::string> maps;
    for (std::size_t i = 0; i + 1 < arguments.size(); ++i)
        if (arguments[i] == "-map")
            maps.push_back(arguments[i + 1]);
    return maps;
}

bool Has(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

TEST(DvdStandard, RateChoosesTheStandardAndItsFrame)
{
    EXPECT_EQ(StandardForRate(25), TvStandard::Pal);
    EXPECT_EQ(StandardForRate(50), TvStandard::Pal);
    EXPECT_EQ(StandardForRate(23.976), TvStandard::Ntsc);
    EXPECT_EQ(StandardForRate(29.97), TvStandard::Ntsc);
    EXPECT_EQ(StandardForRate(24), TvStandard::Ntsc);
    EXPECT_EQ(StandardForRate(0), TvStandard::Pal);
    EXPECT_EQ(DvdFrameHeight(TvStandard::Ntsc), 480);
    EXPECT_EQ(DvdFrameRate(TvStandard::Ntsc), (FrameRate{30000, 1001}));
    EXPECT_EQ(ParseStandard("ntsc"), TvStandard::Ntsc);
    EXPECT_EQ(ParseStandard("secam"), std::nullopt);
}

TEST(DvdTranscodeArguments, PalFrameRangeCutsPictureAndOwnAudioAtTheSameFrames)
{
    DvdTranscodeJob job{"/m/in put.avi", 50, 149, {}, {0, 2}, TvStandard::Pal, "/out/menu.mpg"};
    const DvdSourceVideo source{{25, 1}, 1000};
    const auto arguments = DvdTranscodeArguments(job, source, "/out/menu.mpg.part");
    EXPECT_EQ(After(arguments, "-i"), "/m/in put.avi");
    EXPECT_EQ(std::count(arguments.begin(), arguments.end(), "-i"), 1);
    EXPECT_EQ(After(arguments, "-target"), "pal-dvd");
    EXPECT_EQ(arguments.back(), "/out/menu.mpg.part");
    const std::string graph = After(arguments, "-filter_complex");
    EXPECT_TRUE(Has(graph, "trim=start_frame=50:end_frame=150,")) << graph;
    EXPECT_TRUE(Has(graph, "pad=720:576:")) << graph;
    EXPECT_TRUE(Has(graph, "setsar=16/15")) << graph;
    EXPECT_FALSE(Has(graph, "fps=")) << "25 frames a second need no change";
    EXPECT_FALSE(Has(graph, "telecine")) << graph;
    // Frames 50 to 149 are 2 to 6 seconds.
    EXPECT_TRUE(Has(graph, "[0:a:0]atrim=start=2.000000:duration=4.000000,")) << graph;
    EXPECT_TRUE(Has(graph, "[0:a:2]atrim=start=2.000000:duration=4.000000,")) << graph;
    EXPECT_EQ(Maps(arguments), (std::vector<std::string>{"[v]", "[a0]", "[a1]"}));
    EXPECT_EQ(DvdOutputFrames(job, source), 100);

    // A range past the end stops at the last frame; "to the end" is the rest of the movie.
    job.LastFrame = 5000;
    EXPECT_EQ(DvdOutputFrames(job, source), 950);
    job.LastFrame = -1;
    EXPECT_TRUE(Has(After(DvdTranscodeArguments(job, source, "o"), "-filter_complex"), "end_frame=1000,"));
}

TEST(DvdTranscodeArguments, NtscTelecinesFilmAndConvertsOtherRates)
{
    DvdTranscodeJob job{"in.avi", 0, 23, {}, {0}, TvStandard::Ntsc, "out.mpg"};
    const DvdSourceVideo film{{24000, 1001}, 240};
    auto arguments = DvdTranscodeArguments(job, film, "out.part");
    std::string graph = After(arguments, "-filter_complex");
    EXPECT_EQ(After(arguments, "-target"), "ntsc-dvd");
    EXPECT_TRUE(Has(graph, "pad=720:480:")) << graph;
    EXPECT_TRUE(Has(graph, "setsar=8/9")) << graph;
    EXPECT_TRUE(Has(graph, "telecine=")) << graph;
    EXPECT_FALSE(Has(graph, "fps=")) << graph;
    EXPECT_EQ(After(arguments, "-flags"), "+ilme+ildct");
    // 24 film frames fill 30 video frames.
    EXPECT_EQ(DvdOutputFrames(job, film), 30);

    const DvdSourceVideo pal{{25, 1}, 250};
    arguments = DvdTranscodeArguments(job, pal, "out.part");
    graph = After(arguments, "-filter_complex");
    EXPECT_TRUE(Has(graph, "fps=30000/1001")) << graph;
    EXPECT_FALSE(Has(graph, "telecine")) << graph;
    EXPECT_EQ(After(arguments, "-flags"), "");
    EXPECT_EQ(DvdOutputFrames(job, pal), 29); // 0.96 s

    // Film to PAL is a rate conversion too.
    job.Standard = TvStandard::Pal;
    graph = After(DvdTranscodeArguments(job, film, "out.part"), "-filter_complex");
    EXPECT_TRUE(Has(graph, "fps=25/1")) << graph;
    EXPECT_FALSE(Has(graph, "telecine")) << graph;
}

TEST(DvdTranscodeArguments, SeparateAudioPlaysFromItsStartAndNoAudioGivesSilence)
{
    DvdTranscodeJob job{"menu.avi", 25, 74, "music.wav", {0}, TvStandard::Pal, "m.mpg"};
    const DvdSourceVideo source{{25, 1}, 100};
    auto arguments = DvdTranscodeArguments(job, source, "m.part");
    EXPECT_EQ(std::count(arguments.begin(), arguments.end(), "-i"), 2);
    EXPECT_EQ(arguments[std::find(arguments.begin(), arguments.end(), "music.wav") - arguments.begin() - 1], "-i");
    std::string graph = After(arguments, "-filter_complex");
    EXPECT_TRUE(Has(graph, "[1:a:0]atrim=duration=2.000000,asetpts=PTS-STARTPTS,apad=whole_dur=2.000000[a0]"))
        << graph;
    EXPECT_FALSE(Has(graph, "[0:a")) << "the movie's own sound is left out";

    job.AudioStreams.clear();
    arguments = DvdTranscodeArguments(job, source, "m.part");
    graph = After(arguments, "-filter_complex");
    EXPECT_EQ(std::count(arguments.begin(), arguments.end(), "-i"), 1) << "no audio file is read for silence";
    EXPECT_TRUE(Has(graph, "anullsrc=r=48000:cl=stereo,atrim=duration=2.000000[a0]")) << graph;
    EXPECT_EQ(Maps(arguments), (std::vector<std::string>{"[v]", "[a0]"}));
}

} // namespace
} // namespace mw
