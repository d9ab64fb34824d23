#include "generators/SetupMenu.h"

#include "build/BuildTestFiles.h"
#include "build/DemoProject.h"
#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "core/Text.h"
#include "document/CheckForErrors.h"
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
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"Audio - en-US;02", "ENGLISH - Normal"},
        {"Subtitle - DE-de ;17", "GERMAN - Children's Captions"},
        {"Audio - fr-FR;18", "FRENCH"}, // a number outside the table leaves the language alone
        {"Audio;02", "Unknown audio 3"}, // not of the form "name - language-country;number"
        {"Audio - en;02", "Unknown audio 3"},
        {"Audio - en;02-x", "Unknown audio 3"},
        {"Audio - eng-GB;02", "Audio 3"}, // a language the list does not have
    };
    for (const auto& [strn, caption] : cases)
        EXPECT_EQ(StreamCaption(strn, true, 3), caption) << strn;
    EXPECT_EQ(StreamCaption("Subtitle - xx-XX;02", false, 6), "Subtitle 6");
    EXPECT_EQ(StreamCaption("Subtitle", false, 1), "Unknown subtitle 1");
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

// The demo project with the movie of several streams as a second title; the kit's folder is
// the program folder.
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
    TitleProject kit;
    const fs::path& home = kit.folder.Path();
    ScriptedPrompt& prompt = kit.prompt;
    Project& project = kit.project;
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

    const std::string name = (made.Path() / "setup").string();
    SetupMenuResult result;
    ASSERT_TRUE(CreateSetupMenu(project, setup, {.Menus = {.FileName = name, .MainMenuID = mainMenu}}, result))
        << ::testing::PrintToString(prompt.Texts());
    EXPECT_TRUE(fs::is_regular_file(name + ".avi"));
    EXPECT_TRUE(fs::is_empty(home / "tmp"));

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
    EXPECT_TRUE(fs::is_empty(home / "tmp"));
}

// The command line makes the same menu from the saved project, with the program folder's layout.
TEST_F(SetupMenuFixture, CommandLinePrintsTheMenuAndTheProjectChecksClean)
{
    const std::string file = (made.Path() / "Demo" / "Demo.xml").string();
    ASSERT_TRUE(project.SaveFile(false, false));
    const std::string cli = "MENUWRIGHT_HOME='" + home.string() + "' '" MENUWRIGHT_CLI_PATH "' ";
    const std::string setupMenu = cli + "setup-menu '" + file + "' ";
    const std::string out = " -o '" + (made.Path() / "setup").string() + "' 2>/dev/null";
    EXPECT_EQ(RunCommand(setupMenu + "99999" + out).Exit, 2);
    const CommandResult run = RunCommand(setupMenu + titleID + " --main " + mainMenu + out);
    ASSERT_EQ(run.Exit, 0) << run.Out;
    EXPECT_TRUE(std::regex_search(run.Out, std::regex(R"((^|\n)\d+\n$)"))) << run.Out;
    EXPECT_NE(ReadAll(file).find("Text='None'"), std::string::npos);
    const CommandResult checked = RunCommand(cli + "check '" + file + "'");
    EXPECT_EQ(checked.Exit, 0) << checked.Out;
}

} // namespace
} // namespace mw::test
