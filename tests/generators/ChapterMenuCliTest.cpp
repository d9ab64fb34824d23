#include "build/DemoProject.h"
#include "cli/CliFixture.h"
#include "core/ScriptedPrompt.h"
#include "render/OverlayFont.h"

#include <gtest/gtest.h>

#include <regex>

namespace mw::test {
namespace {

class ChapterMenuCli : public CliFixture {
protected:
    void SetUp() override
    {
        NeedFontApplication();
        ScriptedPrompt prompt;
        ASSERT_TRUE(MakeDemoProject(folder.Path(), {{176, 144, 25, 90}, 9}, prompt));
        const std::string xml = ReadAll(Project());
        std::smatch found;
        // The demo's one menu, and its one title.
        ASSERT_TRUE(std::regex_search(xml, found, std::regex(R"re(<DivXMediaMenu[^>]*objectID="(\d+)")re")));
        mainMenu = found[1];
        ASSERT_TRUE(std::regex_search(xml, found, std::regex(R"re(<Title[^>]*objectID="(\d+)")re")));
        title = found[1];
    }
    std::filesystem::path Project() const { return folder.Path() / "Demo" / "Demo.xml"; }

    std::string mainMenu;
    std::string title;
};

TEST_F(ChapterMenuCli, MakesAMenuPerPagePrintsThemAndTheProjectChecksClean)
{
    const CommandResult made =
        Run("chapter-menu " + Quoted(Project()) + " " + title + " -o menu --per-page 8 --main " + mainMenu);
    ASSERT_EQ(made.Exit, 0) << made.Out;
    EXPECT_TRUE(std::regex_search(made.Out, std::regex(R"((^|\n)\d+\n\d+\n$)"))) << made.Out;
    EXPECT_TRUE(std::filesystem::is_regular_file(folder.Path() / "menu.avi"));
    EXPECT_TRUE(std::filesystem::is_regular_file(folder.Path() / "menu_2.avi"));
    // Without the border's shape in the overlay library, each chapter's overlay is its caption.
    EXPECT_NE(ReadAll(Project()).find("Shape='*Text'"), std::string::npos);
    EXPECT_NE(ReadAll(Project()).find("Text='Chapter 9'"), std::string::npos);
    const CommandResult checked = Run("check " + Quoted(Project()));
    EXPECT_EQ(checked.Exit, 0) << checked.Out;
}

TEST_F(ChapterMenuCli, RefusesWhatItCannotMakeAndLeavesTheProject)
{
    const std::string before = ReadAll(Project());
    EXPECT_EQ(Run("chapter-menu " + Quoted(Project()) + " " + title + " -o m.avi --per-page 7").Exit, 2);
    EXPECT_EQ(Run("chapter-menu " + Quoted(Project()) + " " + title + " -o m.avi --main " + title).Exit, 2);
    EXPECT_EQ(Run("chapter-menu " + Quoted(Project()) + " " + title + " -o m.avi --lang xx").Exit, 1);
    EXPECT_EQ(ReadAll(Project()), before);
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "m.avi"));
}

} // namespace
} // namespace mw::test
