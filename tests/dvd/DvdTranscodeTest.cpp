#include "dvd/DvdTranscode.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace mw {
namespace {

struct Call {
    std::vector<std::string> Arguments;

    std::string After(const std::string& option) const
    {
        const auto at = std::find(Arguments.begin(), Arguments.end(), option);
        return at == Arguments.end() || at + 1 == Arguments.end() ? std::string() : *(at + 1);
    }
    long Count(const std::string& item) const { return std::count(Arguments.begin(), Arguments.end(), item); }
    bool InGraph(const std::string& part) const { return After("-filter_complex").find(part) != std::string::npos; }
};

Call Arguments(const DvdTranscodeJob& job, const DvdSourceVideo& source)
{
    return {DvdTranscodeArguments(job, source, "out.part")};
}

TEST(DvdTranscode, FrameRangeCutsPictureAndOwnAudioAtTheSameFramesAndRatesReachTheStandard)
{
    DvdTranscodeJob job{"/m/in put.avi", 50, 149, {}, {0, 2}, TvStandard::Pal, "/out/menu.mpg", {}};
    const DvdSourceVideo pal{{25, 1}, 1000};
    Call call = Arguments(job, pal);
    EXPECT_EQ(call.After("-i"), "/m/in put.avi");
    EXPECT_EQ(call.Count("-i"), 1);
    EXPECT_EQ(call.After("-target"), "pal-dvd");
    EXPECT_EQ(call.Arguments.back(), "out.part");
    EXPECT_TRUE(call.InGraph("trim=start_frame=50:end_frame=150,")) << call.After("-filter_complex");
    // Frames 50 to 149 are 2 to 6 seconds.
    EXPECT_TRUE(call.InGraph("[0:a:0]atrim=start=2.000000:duration=4.000000,"));
    EXPECT_TRUE(call.InGraph("[0:a:2]atrim=start=2.000000:duration=4.000000,"));
    EXPECT_EQ(call.Count("-map"), 3);
    EXPECT_FALSE(call.InGraph("fps=") || call.InGraph("telecine"));
    EXPECT_EQ(DvdOutputFrames(job, pal), 100);
    // A range past the end stops at the last frame; -1 runs to it.
    job.LastFrame = 5000;
    EXPECT_EQ(DvdOutputFrames(job, pal), 950);
    job.LastFrame = -1;
    EXPECT_TRUE(Arguments(job, pal).InGraph("end_frame=1000,"));

    // Film on NTSC is telecined, 24 frames to 30; any other rate is converted.
    job = {"in.avi", 0, 23, {}, {0}, TvStandard::Ntsc, "out.mpg", {}};
    const DvdSourceVideo film{{24000, 1001}, 240};
    call = Arguments(job, film);
    EXPECT_EQ(call.After("-target"), "ntsc-dvd");
    EXPECT_TRUE(call.InGraph("telecine=") && !call.InGraph("fps="));
    EXPECT_EQ(call.After("-flags"), "+ilme+ildct");
    EXPECT_EQ(DvdOutputFrames(job, film), 30);
    call = Arguments(job, pal);
    EXPECT_TRUE(call.InGraph("fps=30000/1001") && !call.InGraph("telecine"));
    EXPECT_EQ(DvdOutputFrames(job, pal), 29); // 0.96 s
    job.Standard = TvStandard::Pal;
    EXPECT_TRUE(Arguments(job, film).InGraph("fps=25/1"));
    EXPECT_EQ(Arguments(job, film).Count("-force_key_frames"), 0);
}

// dvdauthor starts a unit of the disc, where a chapter can begin, only at a group of pictures 0.4 s
// or more after the last; the encoder starts a group every 15 (PAL) or 18 (NTSC) frames.
TEST(DvdTranscode, ChapterStartsAreKeyFramesWithNoShortGroupBeforeThem)
{
    DvdTranscodeJob job{"in.avi", 0, -1, {}, {0}, TvStandard::Pal, "t.mpg", {0, 31, 40, 47, 300}};
    const DvdSourceVideo pal{{25, 1}, 1000};
    // The encoder's groups at 15 and 30 would leave 30 a unit of one frame before 31: the last
    // two groups share 16 frames, 15 to 20 and 21 to 30. 40 and 47 are too close to 31 and 40
    // for units of their own, and nothing helps that. 300 - 47 leaves 13 frames: enough.
    EXPECT_EQ(Arguments(job, pal).After("-force_key_frames"),
              "expr:eq(n,21)+eq(n,31)+eq(n,40)+eq(n,47)+eq(n,300)");
    EXPECT_EQ(Arguments(job, pal).After("-sc_threshold"), "1000000000");
    job.Standard = TvStandard::Ntsc;
    job.KeyFrames = {40, 0, 20, 40};
    // 18 + 2 at NTSC: the 12 frames of the shortest unit before each chapter.
    EXPECT_EQ(Arguments(job, pal).After("-force_key_frames"), "expr:eq(n,8)+eq(n,20)+eq(n,28)+eq(n,40)");
}

TEST(DvdTranscode, SeparateAudioPlaysFromItsStartAndNoAudioGivesSilence)
{
    DvdTranscodeJob job{"menu.avi", 25, 74, "music.wav", {0}, TvStandard::Pal, "m.mpg", {}};
    const DvdSourceVideo source{{25, 1}, 100};
    Call call = Arguments(job, source);
    EXPECT_EQ(call.Count("-i"), 2);
    EXPECT_EQ(*(std::find(call.Arguments.begin(), call.Arguments.end(), "music.wav") - 1), "-i");
    EXPECT_TRUE(call.InGraph("[1:a:0]atrim=duration=2.000000,asetpts=PTS-STARTPTS,apad=whole_dur=2.000000[a0]"))
        << call.After("-filter_complex");
    EXPECT_FALSE(call.InGraph("[0:a")) << "the movie's own sound is left out";

    job.AudioStreams.clear();
    call = Arguments(job, source);
    EXPECT_EQ(call.Count("-i"), 1) << "no audio file is read for silence";
    EXPECT_TRUE(call.InGraph("anullsrc=r=48000:cl=stereo,atrim=duration=2.000000[a0]"));
    EXPECT_EQ(call.Count("-map"), 2);
}

TEST(DvdStandard, RateChoosesTheStandard)
{
    EXPECT_EQ(StandardForRate(25), TvStandard::Pal);
    EXPECT_EQ(StandardForRate(50), TvStandard::Pal);
    EXPECT_EQ(StandardForRate(23.976), TvStandard::Ntsc);
    EXPECT_EQ(StandardForRate(29.97), TvStandard::Ntsc);
    EXPECT_EQ(StandardForRate(0), TvStandard::Pal);
    EXPECT_EQ(ParseStandard("secam"), std::nullopt);
}

} // namespace
} // namespace mw
