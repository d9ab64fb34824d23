// The build command: prepared files, no Wine, and a whole run through a stand-in for Wine.
#include "build/BuildLog.h"
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

} // namespace
