// Menu videos by VirtualDubMod and cli.exe: the scripts they are given, the command lines, what
// is left behind, and the built-in encoder offered when a tool is missing.
#include "build/BuildTestFiles.h"
#include "build/FakeWine.h"
#include "build/OutsideMenuVideo.h"
#include "build/PicturesToMenuVideo.h"
#include "core/Paths.h"
#include "core/ScriptedPrompt.h"
#include "media/AviFile.h"

#include <gtest/gtest.h>

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
