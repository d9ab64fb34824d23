#include "build/FakeWine.h"
#include "build/OutsideMenuVideo.h"
#include "cli/CliFixture.h"
#include "core/Text.h"
#include "document/TreeQueries.h"
#include "generators/Wizard.h"
#include "media/ChapterNodes.h"
#include "media/TitleNodes.h"
#include "media/TitleTestKit.h"
#include "menus/Actions.h"
#include "render/OverlayFont.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>

namespace fs = std::filesystem;

namespace mw::test {
namespace {

std::string ReadAll(const fs::path& file)
{
    std::ifstream in(file);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

bool Said(const ScriptedPrompt& prompt, const std::string& text)
{
    const std::vector<std::string> texts = prompt.Texts();
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

// What each button of a menu does first: "PlayAction <title>" or "MenuTransitionAction <menu>".
std::vector<std::string> ButtonActions(const Project& project, const std::string& menuID)
{
    std::vector<std::string> actions;
    const DocTree& tree = project.Doc.Tree;
    const DocNode* menu = tree.ObjectNode(menuID);
    if (!menu)
        return actions;
    for (const auto& button : *menu) {
        if (!EqualsNoCase(button->Text, "ButtonMenu"))
            continue;
        const std::vector<ActionRow> rows = LoadActionRows(tree, GetPropertyInNode(*button, "selectaction"));
        actions.push_back(rows.empty() ? "none" : rows.front().Type + " " + rows.front().Target1);
    }
    return actions;
}

// The menu that the remote's menu key opens in the language set of a menu.
std::string RootMenuOfSet(const Project& project, const std::string& menuID)
{
    const DocNode* menu = project.Doc.Tree.ObjectNode(menuID);
    return menu && menu->Parent() ? GetPropertyInNode(*menu->Parent(), "rootMenuID") : std::string();
}

long CountOf(const std::vector<std::string>& actions, const std::string& action)
{
    return std::count(actions.begin(), actions.end(), action);
}

// Three movies in a folder of their own: a minute with nine chapters (two chapter pages), two
// seconds with two chapters and one audio stream, and two seconds with two audio streams and
// two chapters, the only one that gets a setup menu.
class WizardFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        for (const fs::path& movie : {ChapterMovie(), ShortMovie(), PalMovieWithTwoMp3()})
            REQUIRE_MOVIE(movie);
        NeedFontApplication();
        fs::create_directories(movies);
        fs::copy_file(ChapterMovie(), a);
        fs::copy_file(ShortMovie(), b);
        fs::copy_file(PalMovieWithTwoMp3(), c);
    }

    // The titles added, refusing a movie on the way, and their chapters made.
    void AddThreeTitles()
    {
        // The first movie refused: the next one makes the project.
        t.forms.NewTitle = {Cancel};
        ASSERT_TRUE(WizardAddTitles(t.project, wizard, {b.string(), a.string(), b.string(), c.string()}));
        ASSERT_EQ(wizard.List1.size(), 3u);
        EXPECT_EQ(wizard.List1[0].Path, a.string());
        EXPECT_TRUE(wizard.btnNextEnabled);
        // One too many, removed with its title.
        ASSERT_TRUE(WizardAddTitles(t.project, wizard, {c.string()}));
        WizardSelectTitle(t.project, wizard, 3);
        t.prompt.Answers = {PromptAnswer::Yes};
        WizardRemoveTitle(t.project, wizard);
        ASSERT_EQ(wizard.List1.size(), 3u);
        EXPECT_EQ(wizard.List1[2].Path, c.string());
        EXPECT_EQ(TitleNodes(t.project.Doc).size(), 3u);
        for (int i = 0; i < 3; ++i) {
            t.forms.Chap.push_back(EqualChapters(t, i == 0 ? 9 : 2));
            WizardSelectTitle(t.project, wizard, i);
            ASSERT_TRUE(WizardCreateChapters(t.project, wizard));
            EXPECT_TRUE(wizard.List1[std::size_t(i)].HasChapters);
        }
        EXPECT_EQ(wizard.Info2.size(), 2u); // the last selected has two audio streams
        EXPECT_NE(wizard.Info1.find("Video "), std::string::npos);
    }

    TitleProject t;
    Wizard wizard;
    const fs::path movies = t.folder.Path() / "movies";
    const fs::path a = movies / "a.avi";
    const fs::path b = movies / "b.avi";
    const fs::path c = movies / "c.avi";
    const std::string titleFile = (movies / "a_Title.avi").string();
    const std::string aChapters = (movies / "a_Chapter.avi").string();
    const std::string aChapters2 = (movies / "a_Chapter_2.avi").string();
    const std::string bChapters = (movies / "b_Chapter.avi").string();
    const std::string cChapters = (movies / "c_Chapter.avi").string();
    const std::string cSetup = (movies / "c_Setup.avi").string();
};

TEST_F(WizardFixture, ListsThePagesThenCancelsWithoutATraceThenMakesAndLinksEveryMenu)
{
    AddThreeTitles();

    WizardShowMenus(wizard);
    EXPECT_TRUE(wizard.chkCreateTitleMenu);
    EXPECT_TRUE(wizard.chkCreateChapterMenu);
    EXPECT_FALSE(wizard.chkCreateSetupMenu);
    SetSetupMenuBox(wizard, true);
    SetChapterMenuBox(t.project, wizard, false);
    EXPECT_TRUE(wizard.chkCreateChapterMenu);
    EXPECT_TRUE(Said(t.prompt, "You can not have a setup menu without a chapter menu"));

    ASSERT_TRUE(WizardShowPreview(t.project, wizard));
    std::vector<std::string> rows;
    for (const WizardRow& row : wizard.TreeView1)
        rows.push_back(row.Key + " " + row.Text);
    EXPECT_EQ(rows, (std::vector<std::string>{"Titles Titles", "k_0 a_Title.avi 1/1", "Chapters Chapters",
                                              "k_1 a_Chapter.avi 1/2", "k_1 a_Chapter.avi 2/2", "k_2 b_Chapter.avi 1/1",
                                              "k_3 c_Chapter.avi 1/1", "Setup Setup", "k_3 c_Setup.avi 1/1"}));
    EXPECT_EQ(wizard.List2,
              (std::vector<std::string>{titleFile, aChapters, aChapters2, bChapters, cChapters, cSetup}));
    // Only the movie with two audio streams gets a setup menu, and a chapter menu's setup button.
    EXPECT_FALSE(wizard.List1[0].WantsSetupMenu);
    EXPECT_FALSE(wizard.List1[0].Chapters->Design.Setup.Visible);
    EXPECT_TRUE(wizard.List1[2].Chapters->Design.Setup.Visible);

    WizardSelectRow(wizard, 4);
    EXPECT_EQ(wizard.Text1, aChapters);
    EXPECT_EQ(wizard.List1[0].Chapters->Page, 2);
    const QImage second = WizardRowPicture(wizard, 4);
    WizardSelectRow(wizard, 3);
    EXPECT_EQ(wizard.List1[0].Chapters->Page, 1);
    EXPECT_NE(WizardRowPicture(wizard, 3), second);
    EXPECT_EQ(WizardRowPicture(wizard, 8).size(), QSize(wizard.List1[2].Setup->Page.Width, wizard.List1[2].Setup->Page.Height));
    EXPECT_TRUE(WizardRowPicture(wizard, 0).isNull());

    // A file of the user stands under the title menu's name, another under b's chapter menu.
    std::ofstream(titleFile) << "mine";
    std::ofstream(bChapters) << "b's";
    t.project.FileIsDirty = false;
    const std::string before = t.Xml();

    // Cancelled while the setup menu is made, the menus made so far are gone and the user's file is back.
    t.program.Values.MethodForPicToMenu = kPicToMenuBuiltIn;
    ToolRunner runner;
    RecordingLog log;
    MenuVideoTools tools{runner, log, t.folder.Path(), [](int) { return ToolAnswer{true, true, ""}; }};
    t.prompt.OnProgress = [&](const std::string& text) {
        if (text == "Creating menu for setup... c.avi")
            runner.Cancel();
    };
    t.prompt.Answers = {PromptAnswer::Yes, PromptAnswer::No};
    EXPECT_FALSE(WizardCreate(t.project, wizard, &tools));
    EXPECT_TRUE(t.prompt.Answers.empty());
    EXPECT_EQ(t.Xml(), before);
    EXPECT_FALSE(t.project.FileIsDirty);
    EXPECT_TRUE(t.project.Canvas.CurrentMenuID.empty());
    EXPECT_EQ(ReadAll(titleFile), "mine");
    for (const std::string& file : {aChapters, aChapters2, cChapters, cSetup})
        EXPECT_FALSE(fs::exists(file)) << file;
    EXPECT_TRUE(wizard.List3.empty());
    EXPECT_EQ(wizard.Panel, WizardPanel::Preview);
    EXPECT_EQ(TitleNodes(t.project.Doc).size(), 3u);

    // Yes replaces the title menu's file; No keeps b's file and b has no chapter menu.
    t.prompt.OnProgress = nullptr;
    t.prompt.Log.clear();
    t.prompt.Answers = {PromptAnswer::Yes, PromptAnswer::No};
    ASSERT_TRUE(WizardCreate(t.project, wizard)) << ::testing::PrintToString(t.prompt.Texts());
    EXPECT_EQ(t.prompt.Texts(), (std::vector<std::string>{
                                    "The file name for title menu " + titleFile + " exist. Replace it?",
                                    "The file name for chapter menu " + bChapters + " exist. Replace it?",
                                    "Menu creation finished"}));
    EXPECT_EQ(wizard.List3, (std::vector<std::string>{titleFile, aChapters, aChapters2, cChapters, cSetup}));
    for (const std::string& file : wizard.List3)
        EXPECT_GT(fs::file_size(file), 1000u) << file;
    EXPECT_EQ(ReadAll(bChapters), "b's");
    EXPECT_FALSE(fs::exists(titleFile + ".wizard-old"));
    EXPECT_EQ(wizard.Panel, WizardPanel::Finish);
    EXPECT_FALSE(wizard.btnBackEnabled);
    EXPECT_TRUE(t.project.FileIsDirty);

    // The links, read back from the project.
    const WizardTitle& ta = wizard.List1[0];
    const WizardTitle& tb = wizard.List1[1];
    const WizardTitle& tc = wizard.List1[2];
    ASSERT_EQ(wizard.TitleMenus.size(), 1u);
    ASSERT_EQ(ta.ChapterMenus.size(), 2u);
    EXPECT_TRUE(tb.ChapterMenus.empty());
    ASSERT_EQ(tc.ChapterMenus.size(), 1u);
    EXPECT_TRUE(ta.SetupMenu.empty());
    ASSERT_FALSE(tc.SetupMenu.empty());
    const auto to = [](const std::string& menu) { return "MenuTransitionAction " + menu; };

    // The title menu's buttons lead to the chapter menus; b's still plays b. No main button.
    EXPECT_EQ(ButtonActions(t.project, wizard.TitleMenus.front()),
              (std::vector<std::string>{to(ta.ChapterMenus.front()), "PlayAction " + tb.TitleID,
                                        to(tc.ChapterMenus.front())}));
    // Each chapter page's main button goes to the title menu; only c's pages have a setup button.
    for (const std::string& menu : ta.ChapterMenus) {
        const std::vector<std::string> actions = ButtonActions(t.project, menu);
        EXPECT_EQ(CountOf(actions, to(wizard.TitleMenus.front())), 1) << menu;
        EXPECT_EQ(CountOf(actions, "PlayAction " + ta.TitleID), menu == ta.ChapterMenus.front() ? 8 : 1) << menu;
    }
    const std::vector<std::string> cActions = ButtonActions(t.project, tc.ChapterMenus.front());
    EXPECT_EQ(CountOf(cActions, to(wizard.TitleMenus.front())), 1);
    EXPECT_EQ(CountOf(cActions, to(tc.SetupMenu)), 1);
    // The setup menu's main button goes back to c's chapter menu.
    EXPECT_EQ(CountOf(ButtonActions(t.project, tc.SetupMenu), to(tc.ChapterMenus.front())), 1);
    EXPECT_EQ(RootMenuOfSet(t.project, tc.SetupMenu), wizard.TitleMenus.front());

    EXPECT_TRUE(t.project.Check(false)) << ::testing::PrintToString(t.prompt.Texts());
}

TEST_F(WizardFixture, OneTitleGetsNoTitleMenuAndItsChapterMenuNoMainButton)
{
    t.forms.Chap.push_back(EqualChapters(t, 3));
    ASSERT_TRUE(WizardAddTitles(t.project, wizard, {b.string()}));
    WizardSelectTitle(t.project, wizard, 0);
    ASSERT_TRUE(WizardCreateChapters(t.project, wizard));
    WizardShowMenus(wizard);
    EXPECT_FALSE(wizard.chkCreateTitleMenu);
    SetSetupMenuBox(wizard, true); // one audio stream: no setup menu all the same
    ASSERT_TRUE(WizardShowPreview(t.project, wizard));
    EXPECT_EQ(wizard.List2, std::vector<std::string>{bChapters});

    // Back and forward keep the page as edited.
    wizard.List1[0].Chapters->Design.MenuName = "Scenes ";
    WizardBack(wizard);
    EXPECT_EQ(wizard.Panel, WizardPanel::SelectMenus);
    ASSERT_TRUE(WizardShowPreview(t.project, wizard));
    EXPECT_EQ(wizard.List1[0].Chapters->Design.MenuName, "Scenes ");

    ASSERT_TRUE(WizardCreate(t.project, wizard));
    ASSERT_EQ(wizard.List1[0].ChapterMenus.size(), 1u);
    EXPECT_TRUE(wizard.TitleMenus.empty());
    // The main button would lead nowhere: there are only the chapters.
    const std::vector<std::string> actions = ButtonActions(t.project, wizard.List1[0].ChapterMenus.front());
    EXPECT_EQ(actions, std::vector<std::string>(3, "PlayAction " + wizard.List1[0].TitleID));
    EXPECT_EQ(RootMenuOfSet(t.project, wizard.List1[0].ChapterMenus.front()), wizard.List1[0].ChapterMenus.front());
    EXPECT_TRUE(t.project.Check(false)) << ::testing::PrintToString(t.prompt.Texts());
}

class WizardCli : public CliFixture {};

TEST_F(WizardCli, MakesALinkedProjectThatChecksCleanAndWritesNothingWhenItFails)
{
    const fs::path a = CopyMovie(ShortMovie(), "a.avi");
    const fs::path b = CopyMovie(PalMovieWithTwoMp3(), "b.avi");
    REQUIRE_MOVIE(a);
    REQUIRE_MOVIE(b);
    NeedFontApplication();
    fs::copy_file(a, folder.Path() / "c.avi");
    const std::string project = Quoted(folder.Path() / "w.xml");

    EXPECT_NE(Run("wizard a.avi missing.avi -o " + project).Exit, 0);
    EXPECT_NE(Run("wizard a.avi b.avi -o " + project + " --chapters 2 --chapters-every 1").Exit, 0);
    EXPECT_NE(Run("wizard a.avi b.avi -o " + project + " --chapters 0 --chapter-menus").Exit, 0);
    EXPECT_NE(Run("wizard a.avi b.avi -o " + project + " --motion soon").Exit, 0);
    EXPECT_FALSE(fs::exists(folder.Path() / "w.xml"));
    EXPECT_FALSE(fs::exists(folder.Path() / "a_Title.avi"));

    const CommandResult made =
        Run("wizard a.avi b.avi c.avi -o " + project + " --title-menu --setup-menus --chapters 2");
    ASSERT_EQ(made.Exit, 0) << made.Out;
    for (const char* file : {"a_Title.avi", "a_Chapter.avi", "b_Chapter.avi", "c_Chapter.avi", "b_Setup.avi"}) {
        EXPECT_NE(made.Out.find((folder.Path() / file).string() + "\n"), std::string::npos) << file << made.Out;
        EXPECT_TRUE(fs::is_regular_file(folder.Path() / file)) << file;
    }
    EXPECT_FALSE(fs::exists(folder.Path() / "a_Setup.avi"));
    EXPECT_EQ(Run("check " + project).Exit, 0);
    const std::string menus = Run("menus " + project).Out;
    // Three title buttons lead to chapter menus, three chapter menus back to the title menu, one
    // setup button to the setup menu and its main button back: eight transitions.
    const std::regex transition(R"(select \d+: MenuTransitionAction)");
    EXPECT_EQ(std::distance(std::sregex_iterator(menus.begin(), menus.end(), transition), std::sregex_iterator()), 8)
        << menus;
}

} // namespace
} // namespace mw::test
