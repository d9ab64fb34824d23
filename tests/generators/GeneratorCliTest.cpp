#include "build/DemoProject.h"
#include "cli/CliFixture.h"
#include "core/ScriptedPrompt.h"
#include "generators/Navigation.h"
#include "media/AviCache.h"
#include "media/FrameGrabber.h"
#include "render/OverlayFont.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <regex>
#include <sstream>

namespace mw::test {
namespace {

class GeneratorCli : public CliFixture {
protected:
    void SetUp() override
    {
        NeedFontApplication();
        ScriptedPrompt prompt;
        ASSERT_TRUE(MakeDemoProject(folder.Path(), {{176, 144, 25, 100}, 9}, prompt));
        const std::string xml = ReadAll(Project());
        std::smatch found;
        // The demo's one menu, and its one title.
        ASSERT_TRUE(std::regex_search(xml, found, std::regex(R"re(<DivXMediaMenu[^>]*objectID="(\d+)")re")));
        mainMenu = found[1];
        ASSERT_TRUE(std::regex_search(xml, found, std::regex(R"re(<Title[^>]*objectID="(\d+)")re")));
        title = found[1];
    }
    std::filesystem::path Project() const { return folder.Path() / "Demo" / "Demo.xml"; }
    long Frames(const std::string& video) const
    {
        const auto avi = OpenAvi((folder.Path() / video).string(), AviRead::Headers);
        return avi ? static_cast<long>(avi->Stream(*FirstVideoStream(*avi)).Info.dwLength) : -1;
    }

    std::string mainMenu;
    std::string title;
};

TEST_F(GeneratorCli, MakesAMenuPerPagePrintsThemAndTheProjectChecksClean)
{
    const CommandResult made =
        Run("chapter-menu " + Quoted(Project()) + " " + title + " -o menu --per-page 8 --motion -1 --main " + mainMenu);
    ASSERT_EQ(made.Exit, 0) << made.Out;
    // A length below 0 is a still menu: five seconds of one picture at the new-menu form's 29.97.
    EXPECT_EQ(Frames("menu.avi"), 150);
    EXPECT_TRUE(std::regex_search(made.Out, std::regex(R"((^|\n)\d+\n\d+\n$)"))) << made.Out;
    EXPECT_TRUE(std::filesystem::is_regular_file(folder.Path() / "menu.avi"));
    EXPECT_TRUE(std::filesystem::is_regular_file(folder.Path() / "menu_2.avi"));
    // Without the border's shape in the overlay library, each chapter's overlay is its caption.
    EXPECT_NE(ReadAll(Project()).find("Shape='*Text'"), std::string::npos);
    EXPECT_NE(ReadAll(Project()).find("Text='Chapter 9'"), std::string::npos);
    const CommandResult checked = Run("check " + Quoted(Project()));
    EXPECT_EQ(checked.Exit, 0) << checked.Out;
}

// Seven titles at six a page: page 1 has six and a next button, page 2 one and a previous button.
TEST_F(GeneratorCli, TitleMenuPagesPlayTheirTitlesWithTheNavigationWiredAndCheckClean)
{
    std::smatch found;
    const std::string demo = ReadAll(Project());
    ASSERT_TRUE(std::regex_search(demo, found, std::regex(R"re(location="([^"]+)")re")));
    const std::filesystem::path movie = (Project().parent_path() / found[1].str()).lexically_normal();
    std::string more;
    for (int i = 0; i < 6; ++i)
        more += " " + Quoted(movie);
    ASSERT_EQ(Run("add-title " + Quoted(Project()) + more).Exit, 0);

    const CommandResult made = Run("title-menu " + Quoted(Project()) + " -o titles --per-page 6 --motion 1");
    ASSERT_EQ(made.Exit, 0) << made.Out;
    EXPECT_EQ(Frames("titles_2.avi"), 25);
    std::istringstream printed(made.Out);
    std::vector<std::string> pages;
    for (std::string line; std::getline(printed, line);)
        pages.push_back(line);
    ASSERT_EQ(pages.size(), 2u) << made.Out;
    EXPECT_TRUE(std::filesystem::is_regular_file(folder.Path() / "titles.avi"));
    EXPECT_TRUE(std::filesystem::is_regular_file(folder.Path() / "titles_2.avi"));

    const std::string xml = ReadAll(Project());
    std::vector<std::string> titles;
    const std::regex titleNode(R"re(<Title[^>]*objectID="(\d+)")re");
    for (auto it = std::sregex_iterator(xml.begin(), xml.end(), titleNode); it != std::sregex_iterator(); ++it)
        titles.push_back((*it)[1]);
    ASSERT_EQ(titles.size(), 7u);

    // Each menu's buttons in order with their keys, and what each one's select action names.
    struct Button {
        std::string ID, Keys, Select;
    };
    std::map<std::string, std::vector<Button>> menus;
    std::istringstream listing(Run("menus " + Quoted(Project())).Out);
    std::string menu;
    const std::regex menuLine(R"(^  menu (\d+) )"), buttonLine(R"(^    button (\d+) rect=\S+ (.*)$)");
    for (std::string line; std::getline(listing, line);) {
        if (std::regex_search(line, found, menuLine))
            menu = found[1];
        else if (std::regex_search(line, found, buttonLine))
            menus[menu].push_back(Button{found[1], found[2], ""});
        else if (line.starts_with("      select") && !menus[menu].empty())
            menus[menu].back().Select = line;
    }
    const std::vector<Button>& first = menus[pages[0]];
    const std::vector<Button>& second = menus[pages[1]];
    ASSERT_EQ(first.size(), 7u) << made.Out;
    ASSERT_EQ(second.size(), 2u);
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_NE(first[i].Select.find("PlayAction"), std::string::npos) << first[i].Select;
        EXPECT_NE(first[i].Select.find(titles[i]), std::string::npos) << first[i].Select;
    }
    EXPECT_NE(second[0].Select.find(titles[6]), std::string::npos) << second[0].Select;
    // Every key of every button follows the navigation rule, with no main button, and the page
    // buttons lead to the other page.
    const auto wired = [](const std::vector<Button>& buttons, int page, const std::map<NavButton, std::size_t>& at) {
        for (const auto& [button, links] : NavigationRule(7, 6, NavPage{.Page = page, .HasMain = false})) {
            const Button& b = buttons[at.at(button)];
            const auto key = [&](const char* name, const std::optional<NavButton>& to) {
                const std::string want = std::string(name) + "=" + (to ? buttons[at.at(*to)].ID : "none");
                EXPECT_NE(b.Keys.find(want), std::string::npos) << "page " << page << ": " << b.Keys << ", want " << want;
            };
            key("leftAction", links.Left);
            key("rightAction", links.Right);
            key("downAction", links.Down);
        }
    };
    using Kind = NavButton::Kind;
    std::map<NavButton, std::size_t> onFirst{{NavButton{Kind::Next}, 6}};
    for (int i = 1; i <= 6; ++i)
        onFirst[NavButton{Kind::Item, i}] = static_cast<std::size_t>(i - 1);
    wired(first, 1, onFirst);
    wired(second, 2, {{NavButton{Kind::Item, 7}, 0}, {NavButton{Kind::Previous}, 1}});
    EXPECT_NE(first[6].Select.find(pages[1]), std::string::npos) << first[6].Select;
    EXPECT_NE(second[1].Select.find(pages[0]), std::string::npos) << second[1].Select;

    const CommandResult checked = Run("check " + Quoted(Project()));
    EXPECT_EQ(checked.Exit, 0) << checked.Out;
}

TEST_F(GeneratorCli, RefusesWhatItCannotMakeAndLeavesTheProject)
{
    const std::string before = ReadAll(Project());
    EXPECT_EQ(Run("chapter-menu " + Quoted(Project()) + " " + title + " -o m.avi --per-page 7").Exit, 2);
    EXPECT_EQ(Run("chapter-menu " + Quoted(Project()) + " " + title + " -o m.avi --main " + title).Exit, 2);
    EXPECT_EQ(Run("chapter-menu " + Quoted(Project()) + " " + title + " -o m.avi --lang xx").Exit, 1);
    EXPECT_EQ(Run("title-menu " + Quoted(Project()) + " -o m.avi --per-page 7").Exit, 2);
    EXPECT_EQ(Run("title-menu " + Quoted(Project()) + " -o m.avi --main " + mainMenu).Exit, 2);
    EXPECT_EQ(Run("title-menu " + Quoted(Project()) + " -o m.avi --lang xx").Exit, 1);
    EXPECT_EQ(Run("title-menu " + Quoted(Project()) + " -o m.avi --motion 2s").Exit, 2);
    EXPECT_EQ(ReadAll(Project()), before);
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "m.avi"));
}

} // namespace
} // namespace mw::test
