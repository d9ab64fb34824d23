#include "build/DemoProject.h"
#include "cli/CliFixture.h"
#include "core/ScriptedPrompt.h"
#include "render/OverlayFont.h"

namespace mw {
namespace {

namespace fs = std::filesystem;

class CliDvd : public test::CliFixture {};

TEST_F(CliDvd, RefusesAnIncompleteLineAndExportsTheDemoLeavingTheProjectAsItWas)
{
    EXPECT_EQ(Run("dvd Demo/Demo.xml").Exit, 2) << "no -o FOLDER";
    EXPECT_EQ(Run("dvd Demo/Demo.xml -o Disc --standard secam").Exit, 2);
    EXPECT_EQ(Run("build Demo/Demo.xml --iso disc.iso").Exit, 2) << "--iso is the dvd command's";
    EXPECT_FALSE(fs::exists(folder.Path() / "Disc"));

    for (const char* tool : {"ffmpeg", "spumux", "dvdauthor", "genisoimage"})
        Require(tool);
    NeedFontApplication();
    ScriptedPrompt prompt;
    ASSERT_TRUE(MakeDemoProject(folder.Path(), {{176, 144, 25, 40}, 4}, prompt));
    // A text overlay needs fonts, which a program without a window must first be given.
    ASSERT_EQ(Run("set-overlay Demo/Demo.xml 42 '*Text' --text Play").Exit, 0);
    const std::string project = test::ReadAll(folder.Path() / "Demo" / "Demo.xml");
    const CommandResult made = Run("dvd Demo/Demo.xml -o Disc --iso disc.iso --standard ntsc");
    ASSERT_EQ(made.Exit, 0) << made.Out;
    EXPECT_TRUE(fs::exists(folder.Path() / "Disc" / "VIDEO_TS" / "VIDEO_TS.IFO"));
    EXPECT_GT(fs::file_size(folder.Path() / "disc.iso"), 0u);
    EXPECT_EQ(test::ReadAll(folder.Path() / "Demo" / "Demo.xml"), project);
    EXPECT_TRUE(!fs::exists(folder.Path() / "tmp") || fs::is_empty(folder.Path() / "tmp"));
}

} // namespace
} // namespace mw
