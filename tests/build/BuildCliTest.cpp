// The build command: prepared files, no Wine, and a whole run through a stand-in for Wine; and
// pic2avi, the built-in route to a menu video, with its exit codes and messages.
#include "build/BuildLog.h"
#include "build/BuildTestFiles.h"
#include "build/DemoProject.h"
#include "build/FakeWine.h"
#include "cli/CliFixture.h"
#include "core/Paths.h"
#include "core/ScriptedPrompt.h"
#include "render/OverlayFont.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using mw::test::ReadAll;

class BuildCli : public mw::test::CliFixture {
protected:
    void SetUp() override
    {
        mw::NeedFontApplication();
        mw::ScriptedPrompt prompt;
        ASSERT_TRUE(mw::MakeDemoProject(folder.Path(), {{176, 144, 25, 10}, 2}, prompt));
        folder.Write("DivXMux.exe", "MZ");
        project = ReadAll(Project());
    }
    fs::path Project() const { return folder.Path() / "Demo" / "Demo.xml"; }
    fs::path Tmp() const { return folder.Path() / "tmp"; }
    fs::path Output() const { return folder.Path() / "out.divx"; }
    CommandResult Build(const std::string& options) const { return Run("build " + Quoted(Project()) + options); }

    std::string project;
};

TEST_F(BuildCli, PrepareOnlyWritesEveryFileAndTheExitSaysWhetherWineAndTheMuxerDidTheirPart)
{
    auto run = Build(" --prepare-only -o " + Quoted(Output()));
    EXPECT_EQ(run.Exit, 0) << run.Out;
    for (const char* file : {"DivXMux.exe", "DoOverlays.bat", "FinalDivX.bat", "Demo.xml"})
        EXPECT_TRUE(fs::exists(Tmp() / file)) << file;
    EXPECT_NE(ReadAll(Tmp() / "FinalDivX.bat").find(" -o \"" + mw::ToToolPath(Output().string()) + "\""),
              std::string::npos);
    EXPECT_EQ(Run("check " + Quoted(Project()) + " --prepare-only").Exit, 2);

    fs::remove_all(Tmp());
    {
        mw::test::NoWine noWine;
        run = Build("");
    }
    EXPECT_EQ(run.Exit, 1);
    EXPECT_NE(run.Out.find(mw::NoWineMessage()), std::string::npos) << run.Out;
    EXPECT_TRUE(fs::exists(Tmp() / "FinalDivX.bat"));

    // The stand-in muxer leaves the log that log.txt holds.
    const fs::path muxLog = folder.Path() / "out.log";
    mw::test::FakeWine wine("case \"$3\" in *FinalDivX.bat) cat '" + (folder.Path() / "log.txt").string() + "' > '" +
                            muxLog.string() + "'; echo x > '" + Output().string() + "';; esac");
    folder.Write("log.txt", "");
    run = Build(" -o " + Quoted(Output()));
    EXPECT_EQ(run.Exit, 0) << run.Out;
    EXPECT_EQ(wine.Runs().size(), 2u);
    EXPECT_TRUE(fs::exists(Output()));
    EXPECT_FALSE(fs::exists(muxLog));
    folder.Write("log.txt", "stream 2: bad header");
    EXPECT_EQ(Build(" -o " + Quoted(Output())).Exit, 1);
    EXPECT_EQ(ReadAll(muxLog), "stream 2: bad header");
    EXPECT_EQ(ReadAll(Project()), project) << "the build saved the project";
}

class Pic2AviCli : public mw::test::CliFixture {
protected:
    void SetUp() override { Require("ffprobe"); }
    CommandResult Pic2Avi(const std::string& arguments) const { return Run("pic2avi " + arguments); }
    std::string Picture(const std::string& name, int width, int height) const
    {
        return Quoted(mw::test::SavePicture(folder.Path() / name, width, height, mw::Rgb(10, 20, 30)));
    }
    fs::path Output() const { return folder.Path() / "menu.avi"; }
};

TEST_F(Pic2AviCli, PicturesMakeTheVideo)
{
    const auto run = Pic2Avi(Picture("a.bmp", 64, 48) + " " + Picture("b.bmp", 64, 48) + " -o " +
                             Quoted(folder.Path() / "menu") + " --fps 25"); // ".avi" is added
    EXPECT_EQ(run.Exit, 0);
    EXPECT_EQ(run.Out, "");
    EXPECT_EQ(mw::test::ProbeStream(Output(), "v:0").at("nb_read_packets"), "2");
}

TEST_F(Pic2AviCli, FailuresPrintTheMessageAndExit1)
{
    auto run = Pic2Avi(Quoted(folder.Path() / "none.png") + " -o " + Quoted(Output()) + " --fps 25");
    EXPECT_EQ(run.Exit, 1);
    EXPECT_EQ(run.Out, "Image not found\n");

    run = Pic2Avi(Picture("big.bmp", 721, 576) + " -o " + Quoted(Output()) + " --fps 1");
    EXPECT_EQ(run.Exit, 0);
    EXPECT_EQ(run.Out, "Be sure that image size is not more than 720x576 pixels\n"); // once, not once per frame
}

TEST_F(Pic2AviCli, ABadCommandLineExits2)
{
    const std::string picture = Picture("a.bmp", 16, 16);
    const std::string out = " -o " + Quoted(Output());
    for (const std::string& arguments : {picture + " --fps 25", picture + out, out + " --fps 25",
                                         picture + out + " --fps fast", picture + out + " --fps 0",
                                         picture + out + " --fps 25 --audio"}) {
        EXPECT_EQ(Pic2Avi(arguments).Exit, 2) << arguments;
    }
    EXPECT_FALSE(fs::exists(Output()));
}

} // namespace
