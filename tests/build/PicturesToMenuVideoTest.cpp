// Pictures made into a menu video by our own route: frame counts and rates, the messages of
// the run, the output file and the audio beside the video. Then the outside routes, VirtualDubMod
// and cli.exe: the scripts they are given, the command lines, what is left behind, and the
// built-in encoder offered when a tool is missing.
#include "build/PicturesToMenuVideo.h"

#include "build/BuildTestFiles.h"
#include "build/FakeWine.h"
#include "build/OutsideMenuVideo.h"
#include "build/PicToMenuSteps.h"
#include "core/Paths.h"
#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "media/AviFile.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

namespace fs = std::filesystem;
using mw::Rgb;

constexpr const char* kTooBig = "Be sure that image size is not more than 720x576 pixels";

TEST(MenuVideoNumbers, RateAndFramesRoundHalvesToEven)
{
    const std::tuple<double, std::uint32_t, long> cases[] = {
        {25, 25000, 125}, {29.97, 29970, 150}, {23.976, 23976, 120}, {2.5, 2500, 10},
        {3.5, 3500, 20},  {0.0005, 0, 0},      {0, 0, 0},            {-25, 0, 0},
    };
    for (const auto& [fps, rate, frames] : cases) {
        EXPECT_EQ(mw::MenuVideoRate(fps), rate) << fps;
        EXPECT_EQ(mw::SinglePictureFrames(fps), frames) << fps;
    }
}

TEST(MenuVideoNames, OutputGetsAviEndingAndIsAskedForWhenEmpty)
{
    mw::ScriptedPrompt prompt;
    EXPECT_EQ(mw::AskAviOutputName("/m/menu", prompt), "/m/menu.avi");
    EXPECT_EQ(mw::AskAviOutputName("/m/menu.AVI", prompt), "/m/menu.AVI");
    EXPECT_TRUE(prompt.Log.empty());

    prompt.SavedFiles.push_back(std::string("/m/chosen"));
    EXPECT_EQ(mw::AskAviOutputName("", prompt), "/m/chosen.avi");
    ASSERT_EQ(prompt.Log.size(), 1u);
    EXPECT_EQ(prompt.Log[0].Kind, "save");
    EXPECT_EQ(prompt.Log[0].Title, "Select avi file name to create");
    EXPECT_EQ(prompt.Log[0].Text, "*.avi|*.avi"); // the filter
    EXPECT_EQ(mw::AskAviOutputName("", prompt), std::nullopt); // cancelled

    EXPECT_EQ(mw::AskPictureName("", prompt), std::nullopt);
    EXPECT_EQ(prompt.Log.back().Title, "Select a picture");
}

class MenuVideo : public ::testing::Test {
protected:
    void SetUp() override
    {
        REQUIRE_MEDIA(mw::test::HaveTool("ffprobe") && mw::test::HaveTool("ffmpeg"),
                      "ffmpeg and ffprobe are needed to check the videos");
    }

    fs::path Picture(const std::string& name, int width, int height, mw::Colour colour) const
    {
        return mw::test::SavePicture(scratch_.Path() / name, width, height, colour);
    }
    fs::path Output() const { return scratch_.Path() / "menu.avi"; }

    bool FromPicture(const fs::path& picture, double fps, const std::string& audio = {})
    {
        return mw::CreateAviFromaPic(picture.string(), Output().string(), fps, audio, mw::kPicToMenuBuiltIn,
                                     settings_, lang_, prompt_);
    }
    // One frame a picture, at 25 fps and without audio.
    bool FromPictures(const std::vector<std::string>& pictures)
    {
        return mw::CreateAviFromPics(pictures, Output().string(), 25, "", mw::kPicToMenuBuiltIn, settings_, lang_,
                                     prompt_);
    }

    mw::Settings settings_;
    mw::LangDoc lang_;
    mw::ScriptedPrompt prompt_;
    mw::test::ScratchFolder scratch_;
};

TEST_F(MenuVideo, OnePictureMakesFiveSecondsAtTheGivenRate)
{
    ASSERT_TRUE(FromPicture(Picture("still.bmp", 720, 576, Rgb(0, 0, 255)), 29.97));
    EXPECT_TRUE(prompt_.Texts().empty());

    const auto probe = mw::test::ProbeStream(Output(), "v:0");
    EXPECT_EQ(probe.at("codec_name") + " " + probe.at("codec_tag_string"), "mpeg4 divx");
    EXPECT_EQ(probe.at("width") + "x" + probe.at("height"), "720x576");
    EXPECT_EQ(probe.at("nb_read_packets"), "150");
    const auto read = mw::AviFile::Open(Output().string());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->Stream(0).Info.dwRate, 29970u);
    EXPECT_EQ(read->Stream(0).Info.szName, "video from Menuwright");
}

TEST_F(MenuVideo, AListMakesOneFramePerPictureInOrder)
{
    const std::vector<std::string> pictures = {Picture("red.bmp", 64, 48, Rgb(255, 0, 0)).string(),
                                               Picture("green.bmp", 64, 48, Rgb(0, 255, 0)).string(),
                                               Picture("blue.bmp", 64, 48, Rgb(0, 0, 255)).string()};
    ASSERT_TRUE(FromPictures(pictures));
    EXPECT_EQ(mw::test::ProbeStream(Output(), "v:0").at("nb_read_packets"), "3");

    const std::string pixels = mw::test::DecodedFramePixels(Output());
    ASSERT_EQ(pixels.size(), 9u);
    for (int frame = 0; frame < 3; ++frame) {
        for (int channel = 0; channel < 3; ++channel) {
            const int value = static_cast<unsigned char>(pixels[static_cast<std::size_t>(3 * frame + channel)]);
            if (channel == frame)
                EXPECT_GT(value, 180) << frame;
            else
                EXPECT_LT(value, 90) << frame;
        }
    }
}

TEST_F(MenuVideo, AnOversizedPictureIsReportedAndTheRunGoesOn)
{
    const std::vector<std::string> pictures = {Picture("small.bmp", 320, 240, Rgb(1, 2, 3)).string(),
                                               Picture("wide.bmp", 800, 200, Rgb(4, 5, 6)).string(),
                                               Picture("tall.bmp", 100, 600, Rgb(7, 8, 9)).string()};
    ASSERT_TRUE(FromPictures(pictures));
    EXPECT_EQ(prompt_.Texts(), (std::vector<std::string>{kTooBig, kTooBig}));
    const auto probe = mw::test::ProbeStream(Output(), "v:0");
    EXPECT_EQ(probe.at("nb_read_packets"), "3");
    EXPECT_EQ(probe.at("width"), "320");
}

TEST_F(MenuVideo, FailuresAreToldAndLeaveNoOutput)
{
    const std::string black = Picture("black.bmp", 32, 32, Rgb(0, 0, 0)).string();
    ASSERT_TRUE(FromPicture(black, 25));
    EXPECT_FALSE(FromPicture(scratch_.Path() / "missing.png", 25));
    EXPECT_FALSE(fs::exists(Output())); // the old output was deleted first
    EXPECT_FALSE(FromPictures({black, (scratch_.Path() / "gone.bmp").string()}));
    EXPECT_FALSE(fs::exists(Output()));
    EXPECT_FALSE(FromPicture(black, 0));
    EXPECT_FALSE(fs::exists(Output()));
    // The encoder's reason is in the message.
    EXPECT_FALSE(FromPicture(Picture("huge.bmp", 9000, 16, Rgb(0, 0, 0)), 25));
    EXPECT_FALSE(fs::exists(Output()));
    fs::create_directories(Output() / "inside");
    EXPECT_FALSE(FromPicture(black, 25));
    EXPECT_EQ(prompt_.Texts(),
              (std::vector<std::string>{
                  "Image not found", "An error occurred whilst creating the AVI: File not found",
                  "An error occurred whilst creating the AVI: Failed to create a new AVI stream", kTooBig,
                  "An error occurred whilst creating the AVI: Failed to create compressed AVI stream: "
                  "the MPEG-4 encoder refuses frames of 9000x16 (Invalid argument)",
                  "Can not delete file " + Output().string()}));
}

TEST_F(MenuVideo, DebugCheckpointsComeInTheirOrder)
{
    settings_.ShowDebugMessage = true;
    ASSERT_TRUE(FromPicture(Picture("p.bmp", 32, 32, Rgb(0, 0, 0)), 29.97));
    EXPECT_EQ(prompt_.Texts(),
              (std::vector<std::string>{"Before create avi", "After create", "After load", "Before stream create",
                                        "Before AVI open", "Before AVI stream", "Before AVI compressed stream",
                                        "Before AVI add frame", "After AVI add frame", "FPS 29.97",
                                        "After stream close"}));
}

TEST_F(MenuVideo, AudioGoesInAsASecondStreamWithItsCodecUntouched)
{
    const std::tuple<const char*, const char*, std::string> cases[] = {
        {"tone.wav", "pcm_s16le", "pcm_s16le"}, {"tone.mp2", "mp2", "mp2"},
        {"tone.mp3", "libmp3lame", "mp3"},      {"tone.ac3", "ac3", "ac3"},
    };
    for (const auto& [file, encoder, codec] : cases) {
        SCOPED_TRACE(file);
        const fs::path audio = mw::test::FfmpegFixture(
            file, std::string("-f lavfi -i sine=frequency=440:duration=3 -ar 48000 -c:a ") + encoder);
        if (audio.empty()) {
            EXPECT_FALSE(mw::test::InCi()) << "this ffmpeg lacks the encoder " << encoder;
            continue;
        }
        const std::string sourcePackets = mw::test::ProbeStream(audio, "a:0").at("nb_read_packets");
        ASSERT_TRUE(FromPicture(Picture("p.bmp", 64, 48, Rgb(0, 0, 0)), 25, audio.string()));
        EXPECT_EQ(mw::test::ProbeStream(Output(), "v:0").at("nb_read_packets"), "125");
        const auto probe = mw::test::ProbeStream(Output(), "a:0");
        EXPECT_EQ(probe.at("codec_name"), codec);
        EXPECT_EQ(probe.at("sample_rate"), "48000");
        if (codec != "pcm_s16le") { // PCM packets are cut anew by the reader
            EXPECT_EQ(probe.at("nb_read_packets"), sourcePackets);
        }
    }
}

TEST_F(MenuVideo, OtherAudioIsEncodedToMpegAudioAndAMissingFileLeftOut)
{
    const fs::path audio = mw::test::FfmpegFixture("tone.flac", "-f lavfi -i sine=duration=2 -ac 2 -c:a flac");
    ASSERT_FALSE(audio.empty());
    ASSERT_TRUE(FromPicture(Picture("p.bmp", 64, 48, Rgb(0, 0, 0)), 25, audio.string()));
    const auto probe = mw::test::ProbeStream(Output(), "a:0");
    EXPECT_TRUE(probe.at("codec_name") == "mp3" || probe.at("codec_name") == "mp2") << probe.at("codec_name");
    EXPECT_EQ(probe.at("channels"), "2");
    const std::string duration = mw::test::CommandOutput(
        "ffprobe -v error -select_streams a:0 -show_entries stream=duration -of csv=p=0 '" + Output().string() + "'");
    EXPECT_NEAR(std::stod(duration), 2.0, 0.1);

    ASSERT_TRUE(FromPicture(Picture("p.bmp", 64, 48, Rgb(0, 0, 0)), 25, (scratch_.Path() / "none.wav").string()));
    EXPECT_TRUE(prompt_.Texts().empty());
    EXPECT_TRUE(mw::test::ProbeStream(Output(), "a:0").empty());
}

// As decoded: 8000 samples of 16 bits a second.
double AudioSeconds(const fs::path& file)
{
    return std::stod(mw::test::CommandOutput("ffmpeg -nostdin -v error -i '" + file.string() +
                                             "' -map 0:a:0 -f s16le -ac 1 -ar 8000 - | wc -c")) /
           16000;
}

// A menu loops its video, so audio that outlasts it would be cut off at every turn anyway.
TEST_F(MenuVideo, AudioLongerThanTheVideoEndsWithIt)
{
    for (const char* codec : {"pcm_s16le", "mp2"}) {
        SCOPED_TRACE(codec);
        const fs::path audio = mw::test::FfmpegFixture(
            std::string("long-") + codec + ".avi", std::string("-f lavfi -i sine=duration=8 -ar 44100 -c:a ") + codec);
        ASSERT_FALSE(audio.empty());
        ASSERT_TRUE(FromPicture(Picture("p.bmp", 64, 48, Rgb(0, 0, 0)), 2, audio.string())); // 10 frames, 5 s
        EXPECT_EQ(mw::test::ProbeStream(Output(), "v:0").at("nb_read_packets"), "10");
        EXPECT_NEAR(AudioSeconds(Output()), 5.0, 0.1);
    }
}

} // namespace

namespace mw {
namespace {

namespace fs = std::filesystem;
using test::ReadAll;
using test::ScratchFolder;

class OutsideRoute : public ::testing::Test {
protected:
    void SetUp() override
    {
        fs::create_directories(work.Path() / "my pics");
        picture = test::SavePicture(work.Path() / "my pics" / "back.bmp", 64, 48, Rgb(10, 200, 30)).string();
        output = (work.Path() / "out" / "menu.avi").string();
        fs::create_directories(work.Path() / "out");
        work.Write("bin/VirtualDubMod.exe", "MZ");
        work.Write("bin/cli.exe", "MZ");
        settings.virtualDubPath = (work.Path() / "bin" / "VirtualDubMod.exe").string();
        settings.cliPath = (work.Path() / "bin" / "cli.exe").string();
    }
    // The fake tool keeps what the run left in the program folder and makes the output.
    std::string KeepScripts() const
    {
        return "cp '" + home.Path().string() + "'/*.vcf '" + home.Path().string() + "'/*.bat '" +
               kept.Path().string() + "' 2>/dev/null; ls '" + home.Path().string() + "/tmp' 2>/dev/null | wc -l > '" +
               kept.Path().string() + "/copies'; echo made > '" + output + "'";
    }
    std::string Tool(const fs::path& file) const { return ToToolPath(file.string()); }
    std::string Doubled(const fs::path& file) const
    {
        std::string text;
        for (char c : Tool(file))
            text += c == '\\' ? std::string("\\\\") : std::string(1, c);
        return "\"" + text + "\"";
    }
    bool Make(int method) { return CreateAviFromaPic(picture, output, 25, audio, method, settings, lang, prompt, &tools); }

    ScratchFolder home;
    ScratchFolder work;
    ScratchFolder kept;
    std::string picture;
    std::string output;
    std::string audio;
    Settings settings;
    LangDoc lang;
    ScriptedPrompt prompt;
    test::RecordingLog log;
    ToolRunner runner;
    std::vector<int> asked;
    ToolAnswer answer;
    MenuVideoTools tools{runner, log, home.Path(), [this](int method) {
                             asked.push_back(method);
                             return answer;
                         }};
};

TEST_F(OutsideRoute, VirtualDubRecompressesTheProgramsAviByItsScript)
{
    audio = work.Write("music.mp2", "x").string();
    test::FakeWine wine(KeepScripts());
    ASSERT_TRUE(Make(kPicToMenuVirtualDub));

    const std::string temp = output + ".avi.avi";
    EXPECT_EQ(ReadAll(kept.Path() / "vDub.vcf"),
              "VirtualDub.Open(" + Doubled(temp) + ",0,0);\r\nVirtualDub.RemoveInputStreams();\r\n"
              "VirtualDub.stream[0].SetSource(" + Doubled(audio) + ",0x00000202);\r\n"
              "VirtualDub.video.SetDepth(24,24);\r\nVirtualDub.video.SetMode(0);\r\n"
              "VirtualDub.video.SetFrameRate(0,1);\r\nVirtualDub.video.SetIVTC(0,0,-1,0);\r\n"
              "VirtualDub.video.SetCompression();\r\nVirtualDub.video.filters.Clear();\r\n"
              "VirtualDub.subset.Delete();\r\nVirtualDub.SaveAVI(" + Doubled(output) + ");\r\n");
    EXPECT_EQ(wine.Runs(), std::vector<std::string>{home.Path().string() + "|" + Tool(settings.virtualDubPath) + " -s" +
                                                    Tool(home.Path() / "vDub.vcf") + " /x"});
    EXPECT_FALSE(fs::exists(temp));
    EXPECT_FALSE(fs::exists(home.Path() / "vDub.vcf"));
    EXPECT_TRUE(asked.empty());
}

TEST_F(OutsideRoute, VirtualDubAloneReadsOneNumberedCopyPerFrame)
{
    settings.UseOnlyVD = true;
    test::FakeWine wine(KeepScripts());
    ASSERT_TRUE(CreateAviFromaPic(picture, output, 29.97, "", kPicToMenuVirtualDub, settings, lang, prompt, &tools));
    EXPECT_EQ(ReadAll(kept.Path() / "copies"), "150\n");
    EXPECT_EQ(ReadAll(kept.Path() / "vDubTEST.vcf"),
              "VirtualDub.Open(" + Doubled(home.Path() / "tmp" / "VD1.bmp") + ",0,0);\r\n"
              "VirtualDub.RemoveInputStreams();\r\nVirtualDub.video.SetDepth(24,24);\r\n"
              "VirtualDub.video.SetMode(3);\r\nVirtualDub.video.SetFrameRate(33367,1);\r\n"
              "VirtualDub.video.SetIVTC(0,0,-1,0);\r\nVirtualDub.video.SetCompression(0x78766964,0,10000,0);\r\n"
              "VirtualDub.video.filters.Clear();\r\nVirtualDub.subset.Delete();\r\nVirtualDub.SaveAVI(" +
                  Doubled(output) + ");\r\n");
    EXPECT_TRUE(fs::is_empty(home.Path() / "tmp"));
    EXPECT_FALSE(fs::exists(home.Path() / "vDubTEST.vcf"));
}

TEST_F(OutsideRoute, CliRunsHiddenOrThroughItsBatchFileOrNotAtAll)
{
    test::FakeWine wine(KeepScripts() + "; touch '" + work.Path().string() + "/out/statistics.xml'");
    ASSERT_TRUE(Make(kPicToMenuCli));
    const std::string temp = output + ".avi.avi";
    EXPECT_EQ(wine.Runs().back(), (work.Path() / "out").string() + "|" + Tool(settings.cliPath) + " -i " + Tool(temp) +
                                      " -o " + Tool(output) + " -q");
    EXPECT_FALSE(fs::exists(work.Path() / "out" / "statistics.xml"));
    EXPECT_FALSE(fs::exists(temp));

    settings.ShowDOScli = true;
    ASSERT_TRUE(Make(kPicToMenuCli));
    EXPECT_EQ(ReadAll(kept.Path() / "__runcli__.bat"), "\"" + Tool(settings.cliPath) + "\" -i \"" + Tool(temp) +
                                                          "\" -o \"" + Tool(output) + "\" -q\r\npause\r\n");
    EXPECT_EQ(wine.Runs().back(), (work.Path() / "out").string() + "|cmd /c " + Tool(home.Path() / "__runcli__.bat"));
    EXPECT_FALSE(fs::exists(home.Path() / "__runcli__.bat"));

    // Without cli.exe our encoder writes the output itself, and nothing is asked for.
    settings.DonNotInvolveCliExe = true;
    settings.cliPath.clear();
    ASSERT_TRUE(Make(kPicToMenuCli));
    const std::optional<AviFile> avi = AviFile::Open(output);
    ASSERT_TRUE(avi);
    EXPECT_EQ(FourCCToString(avi->Stream(0).Info.fccHandler), "divx");
    EXPECT_EQ(avi->Stream(0).Chunks.size(), 125u);
    EXPECT_EQ(wine.Runs().size(), 2u);
    EXPECT_TRUE(asked.empty());
}

TEST_F(OutsideRoute, AMissingToolIsAskedForAndTheBuiltInEncoderCanStandIn)
{
    settings.virtualDubPath = (work.Path() / "nowhere.exe").string();
    test::FakeWine wine(KeepScripts());
    EXPECT_FALSE(Make(kPicToMenuVirtualDub));
    EXPECT_EQ(asked, std::vector<int>{kPicToMenuVirtualDub});
    EXPECT_FALSE(fs::exists(output));

    answer = {true, true, ""};
    ASSERT_TRUE(Make(kPicToMenuVirtualDub));
    EXPECT_TRUE(AviFile::Open(output));
    EXPECT_TRUE(wine.Runs().empty());

    answer = {true, false, (work.Path() / "bin" / "VirtualDubMod.exe").string()};
    settings.cliPath.clear();
    ASSERT_TRUE(Make(kPicToMenuCli));
    EXPECT_EQ(asked.back(), kPicToMenuCli);
    EXPECT_EQ(wine.Runs().size(), 1u);
}

} // namespace
} // namespace mw
