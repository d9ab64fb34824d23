#include "generators/SetupMenu.h"

#include "build/BuildTestFiles.h"
#include "build/DemoProject.h"
#include "cli/CliFixture.h"
#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "core/Text.h"
#include "document/CheckForErrors.h"
#include "document/ProgramStart.h"
#include "document/Project.h"
#include "document/TreeQueries.h"
#include "media/AddTitle.h"
#include "media/LoadTitlesInForm.h"
#include "media/TitleNodes.h"
#include "media/TitleTestKit.h"
#include "menus/Actions.h"
#include "render/OverlayFont.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

namespace fs = std::filesystem;

namespace mw::test {
namespace {

TEST(SetupMenu, CaptionsNameTheLanguageAndTheDescription)
{
    EXPECT_EQ(StreamCaption("Audio - en-US;02", true, 1), "ENGLISH - Normal");
    EXPECT_EQ(StreamCaption("Subtitle - DE-de ;17", false, 1), "GERMAN - Children's Captions");
    // A number outside the table leaves the language alone.
    EXPECT_EQ(StreamCaption("Audio - fr-FR;18", true, 2), "FRENCH");
    EXPECT_EQ(StreamCaption("Audio - fr-FR;x", true, 2), "FRENCH");
    // Not of the form "name - language-country;number".
    EXPECT_EQ(StreamCaption("Audio;02", true, 1), "Unknown audio 1");
    EXPECT_EQ(StreamCaption("Subtitle - en;02", false, 3), "Unknown subtitle 3");
    EXPECT_EQ(StreamCaption("Audio - en;02-x", true, 4), "Unknown audio 4");
    // A language the list does not have.
    EXPECT_EQ(StreamCaption("Audio - eng-GB;02", true, 5), "Audio 5");
    EXPECT_EQ(StreamCaption("Subtitle - xx-XX;02", false, 6), "Subtitle 6");
}

// 2 s of 352x288 DX50 with two MP3 streams and a subtitle stream (a video stream named as one).
fs::path MovieWithStreams()
{
    return FfmpegFixture("setup-streams.avi",
                         "-f lavfi -i color=c=blue:s=352x288:r=25:d=2 -f lavfi -i sine=f=440:r=44100:d=2 "
                         "-f lavfi -i sine=f=220:r=44100:d=2 -f lavfi -i color=c=black:s=352x288:r=25:d=2 "
                         "-map 0 -map 1 -map 2 -map 3 -c:v mpeg4 -vtag DX50 -c:a libmp3lame "
                         "-metadata:s:a:0 'title=Audio - en-US;02' -metadata:s:a:1 'title=Audio - de-DE;12' "
                         "-metadata:s:v:1 'title=Subtitle - fr-FR;02'");
}

// The demo project with the movie of several streams as a second title.
class SetupMenuFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        NeedFontApplication();
        REQUIRE_MOVIE(movie);
        ASSERT_TRUE(MakeDemoProject(made.Path(), {{176, 144, 25, 50}, 2}, prompt)) << ::testing::PrintToString(prompt.Texts());
        ASSERT_TRUE(project.OpenFile((made.Path() / "Demo" / "Demo.xml").string()));
        ASSERT_TRUE(AddTitle(project, movie.string())) << ::testing::PrintToString(prompt.Texts());
        prompt.Log.clear();
        titleID = ObjectIdOf(*TitleNodes(project.Doc).back());
        mainMenu = LoadTitlesInForm(project.Doc).lstMenus.front().Key.substr(1);
    }

    const fs::path movie = MovieWithStreams();
    ScratchFolder made;
    ScratchFolder home;
    ScriptedPrompt prompt;
    ProgramState program{home.Path()};
    ScriptedForms forms;
    Project project{program, prompt, forms};
    std::string titleID;
    std::string mainMenu;
};

TEST_F(SetupMenuFixture, ButtonsSelectTheirStreamsEveryButtonIsReachableAndTheProjectChecksClean)
{
    SetupPage setup;
    ASSERT_TRUE(OpenSetupPage(project, titleID, setup));
    EXPECT_EQ(setup.Page.Width, 352);
    ASSERT_EQ(setup.Audio.size(), 2u);
    ASSERT_EQ(setup.Subtitles.size(), 2u);
    EXPECT_EQ(setup.Audio[1].Label.Caption, "GERMAN - Director Commentary");
    EXPECT_EQ(setup.Subtitles[0].Label.Caption, "FRENCH - Normal");
    EXPECT_EQ(setup.Subtitles[1].Label.Caption, "None");
    // A column stacks down from its first place.
    EXPECT_EQ(setup.Audio[1].Label.Top, setup.Audio[0].Label.Top + setup.Page.Design.Audio.Height);

    const std::string before = Everything(project.Doc.Tree);
    const std::string name = (made.Path() / "setup").string();
    SetupMenuResult result;
    ASSERT_TRUE(CreateSetupMenu(project, setup, {.Menus = {.FileName = name, .MainMenuID = mainMenu}}, result))
        << ::testing::PrintToString(prompt.Texts());
    EXPECT_TRUE(fs::is_regular_file(name + ".avi"));
    EXPECT_TRUE(fs::is_empty(home.Path() / "tmp"));

    DocTree& tree = project.Doc.Tree;
    std::vector<DocNode*> buttons;
    for (const auto& child : *tree.ObjectNode(result.MenuID))
        if (EqualsNoCase(child->Text, "ButtonMenu"))
            buttons.push_back(child.get());
    ASSERT_EQ(buttons.size(), 5u); // two audio, subtitle, None, main
    EXPECT_EQ(GetPropertyInNode(*buttons[4], "objectid"), result.MainButtonID);

    // The streams as the file numbers them: video, two audio, the subtitle.
    const std::vector<std::pair<std::string, std::string>> selects = {{"AudioSelectAction", "01wb"},
                                                                      {"AudioSelectAction", "02wb"},
                                                                      {"SubtitleSelectAction", "03sb"},
                                                                      {"SubtitleSelectAction", "<none>"},
                                                                      {"MenuTransitionAction", mainMenu}};
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        const std::vector<ActionRow> rows = LoadActionRows(tree, GetPropertyInNode(*buttons[i], "selectAction"));
        ASSERT_EQ(rows.size(), 1u) << i;
        EXPECT_EQ(rows[0].Type, selects[i].first) << i;
        EXPECT_EQ(i == 4 ? rows[0].Target1 : rows[0].Target2, selects[i].second) << i;
        if (i < 4) {
            EXPECT_EQ(rows[0].Target1, titleID) << i;
        }
    }

    // From every button the remote reaches every other one.
    std::map<std::string, DocNode*> byID;
    for (DocNode* button : buttons)
        byID[GetPropertyInNode(*button, "objectid")] = button;
    for (const auto& [start, unused] : byID) {
        std::set<std::string> seen{start};
        std::vector<std::string> todo{start};
        while (!todo.empty()) {
            const DocNode* at = byID.at(todo.back());
            todo.pop_back();
            for (const char* key : {"upAction", "downAction", "leftAction", "rightAction"}) {
                const std::string to = GetPropertyInNode(*at, key);
                ASSERT_TRUE(to.empty() || byID.contains(to)) << key << " leads out of the menu: " << to;
                if (!to.empty() && seen.insert(to).second)
                    todo.push_back(to);
            }
        }
        EXPECT_EQ(seen.size(), byID.size()) << "from " << start;
    }
    // The columns end at the main button both ways; left and right cross to the same row, or
    // to the other column's last row when it is shorter.
    const auto id = [&](std::size_t i) { return GetPropertyInNode(*buttons[i], "objectid"); };
    EXPECT_EQ(GetPropertyInNode(*buttons[0], "upAction"), result.MainButtonID);
    EXPECT_EQ(GetPropertyInNode(*buttons[3], "downAction"), result.MainButtonID);
    EXPECT_EQ(GetPropertyInNode(*buttons[1], "rightAction"), id(3));
    EXPECT_EQ(GetPropertyInNode(*buttons[3], "leftAction"), id(1));
    EXPECT_EQ(GetPropertyInNode(*buttons[2], "leftAction"), id(0));

    prompt.Answers = {PromptAnswer::No};
    EXPECT_TRUE(CheckForErrors(project.Doc, project.Lang(), prompt, false)) << ::testing::PrintToString(prompt.Texts());
    // The whole run is one undo step.
    project.UndoDo();
    const auto withoutComments = [](const std::string& all) {
        return std::regex_replace(all, std::regex("(^|\n)c\\d+\\|[^\n]*"), "");
    };
    EXPECT_EQ(withoutComments(Everything(project.Doc.Tree)), withoutComments(before));
}

TEST_F(SetupMenuFixture, RefusedRunChangesNothing)
{
    SetupPage setup;
    EXPECT_FALSE(OpenSetupPage(project, "99999", setup));
    ASSERT_TRUE(OpenSetupPage(project, titleID, setup));
    const std::string name = (made.Path() / "setup.avi").string();
    std::ofstream(name) << "mine";
    const std::string before = Everything(project.Doc.Tree);
    SetupMenuResult result;
    EXPECT_FALSE(CreateSetupMenu(project, setup, {.Menus = {.FileName = name, .Language = "xx"}}, result));
    // A folder in the way of the video.
    const std::string folder = (made.Path() / "taken.avi").string();
    fs::create_directories(fs::path(folder) / "inside");
    EXPECT_FALSE(CreateSetupMenu(project, setup, {.Menus = {.FileName = folder}}, result));
    EXPECT_EQ(Everything(project.Doc.Tree), before);
    EXPECT_EQ(ReadAll(name), "mine");
    EXPECT_TRUE(result.MenuID.empty());
    EXPECT_TRUE(fs::is_empty(home.Path() / "tmp"));
}

class SetupMenuCli : public CliFixture {};

TEST_F(SetupMenuCli, PrintsTheMenuAndTheProjectChecksClean)
{
    NeedFontApplication();
    const fs::path movie = CopyMovie(MovieWithStreams(), "streams.avi");
    REQUIRE_MOVIE(movie);
    ScriptedPrompt prompt;
    ASSERT_TRUE(MakeDemoProject(folder.Path(), {{176, 144, 25, 50}, 2}, prompt));
    const fs::path project = folder.Path() / "Demo" / "Demo.xml";
    ASSERT_EQ(Run("add-title " + Quoted(project) + " " + Quoted(movie)).Exit, 0);
    std::smatch found;
    const std::string xml = ReadAll(project);
    const std::regex titleNode(R"re(<Title[^>]*objectID="(\d+)")re");
    std::string title;
    for (auto it = std::sregex_iterator(xml.begin(), xml.end(), titleNode); it != std::sregex_iterator(); ++it)
        title = (*it)[1];
    ASSERT_TRUE(std::regex_search(xml, found, std::regex(R"re(<DivXMediaMenu[^>]*objectID="(\d+)")re")));
    const std::string mainMenu = found[1];

    EXPECT_EQ(Run("setup-menu " + Quoted(project) + " 99999 -o setup").Exit, 2);
    const CommandResult made = Run("setup-menu " + Quoted(project) + " " + title + " -o setup --main " + mainMenu);
    ASSERT_EQ(made.Exit, 0) << made.Out;
    EXPECT_TRUE(std::regex_search(made.Out, std::regex(R"((^|\n)\d+\n$)"))) << made.Out;
    EXPECT_TRUE(fs::is_regular_file(folder.Path() / "setup.avi"));
    EXPECT_NE(ReadAll(project).find("Text='None'"), std::string::npos);
    const CommandResult checked = Run("check " + Quoted(project));
    EXPECT_EQ(checked.Exit, 0) << checked.Out;
}

} // namespace
} // namespace mw::test
