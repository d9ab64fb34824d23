#include "menuplayer/ButtonOverlay.h"
#include "menuplayer/MenuSession.h"
#include "menuplayer/MenuWalk.h"

#include "build/DemoProject.h"
#include "cli/CliFixture.h"
#include "core/ScratchFolder.h"
#include "core/Text.h"
#include "core/ScriptedPrompt.h"
#include "document/ProgramStart.h"
#include "document/Project.h"
#include "document/TreeQueries.h"
#include "document/TreeViewToXml.h"
#include "document/XmlToTreeView.h"
#include "generators/ChapterMenu.h"
#include "generators/PageSettings.h"
#include "media/ChapterNodes.h"
#include "media/LoadTitlesInForm.h"
#include "media/TitleNodes.h"
#include "media/TitleTestKit.h"
#include "menus/Actions.h"
#include "menus/CanvasCommands.h"
#include "render/OverlayFont.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <sstream>

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsSupersetOf;

namespace mw::test {
namespace {

// A session whose events are kept as short lines: what a window or a log would follow.
struct Recorder {
    explicit Recorder(const Document& doc, const std::string& lang = {})
        : session(doc, lang, [this](const PlayerEvent& e) { lines.push_back(DescribeEvent(session.Graph(), e)); })
    {
    }
    // The lines since the last call.
    std::vector<std::string> Take() { return std::exchange(lines, {}); }

    std::vector<std::string> lines;
    MenuSession session;
};

// An intro without buttons whose exit goes to the root menu on its second button; the root
// menu turns subtitles off on entry, its first button picks tracks and resumes the title,
// its second plays the title (the menu transition after it is never reached) and points down
// at a button that does not exist.
constexpr const char* kRemoteProject = R"(<DivXMediaManager menuVersion="1" objectID="1" defaultMenuLanguage="en" version="1.0">
<TranslationTable objectID="3"/>
<Media objectID="2">
<Title objectID="6">
<MediaSource objectID="7" mediaType="featureAvi" location="movie.avi"/>
<MediaTrack objectID="8" mediaSourceID="7" trackID="00dc" startFrame="0" endFrame="999" type="video"/>
<MediaTrack objectID="9" mediaSourceID="7" trackID="01wb" type="audio"/>
<MediaTrack objectID="10" mediaSourceID="7" trackID="02sb" type="subtitle"/>
<Chapter objectID="11"><MediaTrack objectID="12" mediaSourceID="7" trackID="00dc" startFrame="500" endFrame="999" type="video"/></Chapter>
</Title>
<MenuTracks objectID="20">
<MediaSource objectID="21" mediaType="menuAvi" location="menu.avi"/>
<MediaTrack objectID="22" mediaSourceID="21" trackID="00dc" startFrame="0" endFrame="49" type="video"/>
</MenuTracks>
</Media>
<LanguageMenus objectID="30" languageCode="en" startingMenuID="40" rootMenuID="50">
<DivXMediaMenu objectID="40" backgroundVideoID="22" menuType="other" menuName="Intro" exitAction="41">
<Action objectID="41"><MenuTransitionAction objectID="42" menuID="50"/><ButtonTransitionAction objectID="43" buttonMenuID="53"/></Action>
</DivXMediaMenu>
<DivXMediaMenu objectID="50" backgroundVideoID="22" menuType="title" menuName="Setup" startingMenuItemID="51" enterAction="60">
<Action objectID="60"><SubtitleSelectAction objectID="61" titleID="6" trackID="&lt;none&gt;"/></Action>
<ButtonMenu objectID="51" rightAction="53" selectAction="70">
<Action objectID="70"><AudioSelectAction objectID="71" titleID="6" trackID="01wb"/><SubtitleSelectAction objectID="72" titleID="6" trackID="02sb"/><PlayFromCurrentOffsetAction objectID="73" titleID="6" mediaObjectID="11"/></Action>
</ButtonMenu>
<ButtonMenu objectID="53" leftAction="51" downAction="404" selectAction="80">
<Action objectID="80"><PlayAction objectID="81" titleID="6" mediaObjectID="6"/><MenuTransitionAction objectID="82" menuID="40"/></Action>
</ButtonMenu>
</DivXMediaMenu>
</LanguageMenus>
</DivXMediaManager>
)";

TEST(MenuSession, RemoteDrivesSelectionsResumeKeysAndLoops)
{
    ScriptedPrompt prompt;
    Document doc;
    ASSERT_TRUE(LoadXmlString(kRemoteProject, doc, nullptr, Relationship::Last, prompt));
    Recorder r(doc);
    ASSERT_TRUE(r.session.Start());
    EXPECT_THAT(r.Take(), ElementsAre("menu 40 \"Intro\" frames 0..49"));
    r.session.Press(RemoteKey::Ok);
    EXPECT_THAT(r.Take(), ElementsAre("no button is selected"));

    // The exit list's button transition overrides the root menu's starting button.
    r.session.Tick(49);
    EXPECT_THAT(r.Take(), ElementsAre());
    r.session.Tick();
    EXPECT_THAT(r.Take(), ElementsAre("menu 50 \"Setup\" frames 0..49", "title 6: subtitles off", "button 53"));

    r.session.Press(RemoteKey::Down);
    EXPECT_THAT(r.Take(), ElementsAre("dead end: button 53 of menu 50 \"Setup\": down leads to 404, which is not a "
                                      "button of this menu"));
    r.session.Press(RemoteKey::Up);
    EXPECT_THAT(r.Take(), ElementsAre("no button above"));

    r.session.Press(RemoteKey::Ok);
    EXPECT_THAT(r.Take(), ElementsAre("play title 6 frames 0..999 (title 6: subtitles off)"));
    EXPECT_TRUE(r.session.PlayingTitle());
    r.session.Press(RemoteKey::Left);
    EXPECT_THAT(r.Take(), ElementsAre("a title plays: the arrows wait for a menu"));
    r.session.Tick(100);

    // The menu key leaves the title at frame 100; the first button goes back to it with the
    // tracks it chose, from frame 100 to the title's end, although it names a chapter.
    r.session.Press(RemoteKey::Menu);
    EXPECT_THAT(r.Take(), ElementsAre("menu 50 \"Setup\" frames 0..49", "title 6: subtitles off", "button 51"));
    r.session.Press(RemoteKey::Ok);
    EXPECT_THAT(r.Take(), ElementsAre("title 6: audio 01wb, subtitles off", "title 6: audio 01wb, subtitle 02sb",
                                      "play title 6 chapter 11 frames 0..999 from 100 (title 6: audio 01wb, subtitle 02sb)"));
    EXPECT_EQ(r.session.AudioChoice().at("6"), "01wb");

    // A title played to its end goes back to the menu and button that started it; the root
    // menu has no exit, so it loops. The title key finds the menu of type "title".
    r.session.Tick(900);
    EXPECT_THAT(r.Take(), ElementsAre("title 6 ended", "menu 50 \"Setup\" frames 0..49", "title 6: audio 01wb, subtitles off",
                                      "button 51"));
    r.session.Tick(50);
    EXPECT_THAT(r.Take(), ElementsAre("menu 50 \"Setup\" again from frame 0"));
    r.session.Press(RemoteKey::Right);
    r.session.Press(RemoteKey::Title);
    EXPECT_THAT(r.Take(), ElementsAre("button 53", "menu 50 \"Setup\" frames 0..49", "title 6: audio 01wb, subtitles off",
                                      "button 51"));
    // Without a resume point a PlayFromCurrentOffsetAction plays its chapter.
    r.session.Press(RemoteKey::Ok);
    EXPECT_THAT(r.Take().back(), "play title 6 chapter 11 frames 500..999 (title 6: audio 01wb, subtitle 02sb)");
}

TEST(MenuSession, GoneTargetsAndMissingMenusAreDeadEnds)
{
    ScriptedPrompt prompt;
    Document doc;
    ASSERT_TRUE(LoadXmlString(kRemoteProject, doc, nullptr, Relationship::Last, prompt));
    DocTree& tree = doc.Tree;
    // The root menu's second button now plays a chapter that is gone, and the exit goes to a
    // menu that is gone: the intro loops instead.
    UpdatePropertyInNode(tree, *tree.ObjectNode("81"), "mediaObjectID", "99", false);
    UpdatePropertyInNode(tree, *tree.ObjectNode("42"), "menuID", "98", false);
    Recorder r(doc);
    ASSERT_TRUE(r.session.Start());
    r.session.Tick(50);
    EXPECT_THAT(r.Take(), ElementsAre("menu 40 \"Intro\" frames 0..49",
                                      "dead end: menu 40 \"Intro\", exitAction: MenuTransitionAction 42 goes to menu 98, which is gone",
                                      "dead end: menu 40 \"Intro\", exitAction: ButtonTransitionAction 43 selects button 53, "
                                      "which is not a button of the menu it shows",
                                      "menu 40 \"Intro\" again from frame 0"));
    r.session.Press(RemoteKey::Menu);
    r.session.Press(RemoteKey::Right);
    r.Take();
    r.session.Press(RemoteKey::Ok);
    EXPECT_THAT(r.Take(), ElementsAre("dead end: button 53 of menu 50 \"Setup\", selectAction: PlayAction 81 plays 99 of "
                                      "title 6, which is gone",
                                      "menu 40 \"Intro\" frames 0..49"));

    UpdatePropertyInNode(tree, *tree.ObjectNode("30"), "rootMenuID", "none", false);
    r.session.Press(RemoteKey::Menu);
    EXPECT_THAT(r.Take(), ElementsAre("dead end: the menu key leads nowhere: none names no menu"));
    UpdatePropertyInNode(tree, *tree.ObjectNode("40"), "backgroundVideoID", "99", false);
    Recorder again(doc);
    ASSERT_TRUE(again.session.Start());
    EXPECT_THAT(again.Take(), ElementsAre("menu 40 \"Intro\" frames 0..0",
                                          "dead end: menu 40 \"Intro\": its background video is gone"));
    Recorder german(doc, "de");
    EXPECT_FALSE(german.session.Start());
    EXPECT_THAT(german.Take(), ElementsAre("dead end: the project has no language set \"de\""));
}

// The demo project with nine chapters, its main menu's second button leading to the chapter
// menus made by the generator, and the main menu's exit going to the second chapter page. Made
// once: each test reads the saved file.
class GeneratedMenus : public ::testing::Test {
protected:
    struct Made {
        ScratchFolder Folder;
        ScratchFolder Home;
        std::string File;
        std::string Title;
        std::string Main;
        std::vector<std::string> MainButtons;
        std::vector<std::string> Pages;
        std::vector<std::string> Chapters;
    };

    static std::vector<std::string> ButtonsOf(const DocTree& tree, const std::string& menu)
    {
        std::vector<std::string> ids;
        for (const auto& child : *tree.ObjectNode(menu))
            if (EqualsNoCase(child->Text, "ButtonMenu"))
                ids.push_back(ObjectIdOf(*child));
        return ids;
    }

    static void SetUpTestSuite()
    {
        NeedFontApplication();
        made = std::make_unique<Made>();
        ScriptedPrompt prompt;
        ProgramState program{made->Home.Path()};
        ScriptedForms forms;
        Project project{program, prompt, forms};
        ASSERT_TRUE(MakeDemoProject(made->Folder.Path(), {{176, 144, 25, 100}, 9}, prompt));
        made->File = (made->Folder.Path() / "Demo" / "Demo.xml").string();
        ASSERT_TRUE(project.OpenFile(made->File));
        DocTree& tree = project.Doc.Tree;
        made->Title = ObjectIdOf(*TitleNodes(project.Doc).front());
        for (const DocNode* chapter : ChapterNodesOf(*tree.ObjectNode(made->Title)))
            made->Chapters.push_back(ObjectIdOf(*chapter));
        made->Main = LoadTitlesInForm(project.Doc).lstMenus.front().MenuID;

        MenuPage page;
        page.Width = 320;
        page.Height = 240;
        page.ItemWidth = 60;
        page.ItemHeight = 44;
        page.Design = StartDesign(GeneratorKind::ChaptersMenu, page.Width, page.Height);
        ASSERT_TRUE(LoadChapterItems(project, made->Title, page));
        PageMenuResult result;
        ASSERT_TRUE(CreateChapterMenu(
            project, page,
            {.TitleID = made->Title, .Menus = {.FileName = (made->Folder.Path() / "chapters").string(), .MainMenuID = made->Main}},
            result));
        made->Pages = result.MenuIDs;

        made->MainButtons = ButtonsOf(tree, made->Main);
        ASSERT_EQ(made->MainButtons.size(), 3u);
        ActionFromButtonToMenu(project, made->MainButtons[1], made->Pages[0]);
        DocNode& first = *tree.ObjectNode(made->MainButtons[0]);
        DocNode& second = *tree.ObjectNode(made->MainButtons[1]);
        UpdatePropertyInNode(tree, first, "downAction", made->MainButtons[1], true);
        UpdatePropertyInNode(tree, second, "upAction", made->MainButtons[0], true);
        UpdatePropertyInNode(tree, second, "downAction", made->MainButtons[2], true);
        DocNode& main = *tree.ObjectNode(made->Main);
        const std::vector<ActionRow> exit = LoadActionRows(tree, GetPropertyInNode(main, "exitAction"));
        ASSERT_EQ(exit.size(), 1u);
        UpdatePropertyInNode(tree, *tree.ObjectNode(exit.front().Tag), "menuID", made->Pages[1], false);
        UpdatePropertyInNode(tree, *main.Parent(), "rootMenuID", made->Main, true);
        ASSERT_TRUE(project.SaveFile(false, false, made->File));
    }
    static void TearDownTestSuite() { made.reset(); }

    void SetUp() override
    {
        ASSERT_TRUE(made && !made->Pages.empty());
        ASSERT_TRUE(LoadXmlFile(made->File, doc, prompt));
        doc.ProjectFile = made->File;
    }

    std::string Range(const std::string& chapter) const
    {
        FrameRange frames;
        EXPECT_TRUE(MenuGraph(doc).PlayRange(made->Title, chapter, frames));
        return "frames " + std::to_string(frames.Start) + ".." + std::to_string(frames.End);
    }

    static inline std::unique_ptr<Made> made;
    ScriptedPrompt prompt;
    Document doc;
};

TEST_F(GeneratedMenus, RemoteGoesIntoAChapterBackByTheMenuKeyAndOnByTheExit)
{
    const std::vector<std::string> page1 = ButtonsOf(doc.Tree, made->Pages[0]);
    const std::vector<std::string> page2 = ButtonsOf(doc.Tree, made->Pages[1]);
    std::vector<PlayerEvent> events;
    MenuSession session(doc, "", [&](const PlayerEvent& e) {
        if (e.What != PlayerEvent::Kind::Status)
            events.push_back(e);
    });
    const auto trace = [&] {
        std::vector<std::string> lines;
        for (const PlayerEvent& e : std::exchange(events, {}))
            lines.push_back(e.What == PlayerEvent::Kind::ButtonSelected ? "button " + e.ButtonID
                            : e.What == PlayerEvent::Kind::MenuShown    ? "menu " + e.MenuID
                            : e.What == PlayerEvent::Kind::Play
                                ? "play " + e.MediaObjectID + " frames " + std::to_string(e.Frames.Start) + ".." +
                                      std::to_string(e.Frames.End)
                                : DescribeEvent(session.Graph(), e));
        return lines;
    };
    ASSERT_TRUE(session.Start());
    session.Press(RemoteKey::Down);
    session.Press(RemoteKey::Ok);
    EXPECT_THAT(trace(), ElementsAre("menu " + made->Main, "button " + made->MainButtons[0], "button " + made->MainButtons[1],
                                     "menu " + made->Pages[0], "button " + page1[0]));
    session.Press(RemoteKey::Right);
    session.Press(RemoteKey::Ok);
    EXPECT_THAT(trace(), ElementsAre("button " + page1[1], "play " + made->Chapters[1] + " " + Range(made->Chapters[1])));
    const FrameRange chapter = session.Frames();
    session.Tick(chapter.End - chapter.Start + 1);
    session.Press(RemoteKey::Menu);
    EXPECT_THAT(trace(), ElementsAre("menu " + made->Pages[0], "button " + page1[1], "menu " + made->Main,
                                     "button " + made->MainButtons[0]));
    session.Tick(session.Frames().End - session.Frames().Start + 1);
    EXPECT_THAT(trace(), ElementsAre("menu " + made->Pages[1], "button " + page2[0]));
}

// The player paints a button's overlay from the menu's data while the window may be showing
// another menu on the canvas: the picture must be the canvas's own, and the canvas untouched.
TEST_F(GeneratedMenus, OverlaysPaintAsTheCanvasDoesWithoutTouchingIt)
{
    ScratchFolder home;
    ProgramState program{home.Path()};
    ScriptedForms forms;
    Project project{program, prompt, forms};
    ASSERT_TRUE(project.OpenFile(made->File));
    DocTree& tree = project.Doc.Tree;
    ParceMenu(project, *tree.ObjectNode(made->Pages[1]));
    project.Canvas.Selected = 0;
    const MenuCanvas shown = project.Canvas;

    int painted = 0;
    for (const std::string& menu : {made->Main, made->Pages[0]}) {
        std::vector<PlayerOverlay> overlays;
        for (const std::string& button : ButtonsOf(tree, menu)) {
            PlayerOverlay overlay;
            ASSERT_TRUE(PaintButtonOverlay(project, menu, button, overlay)) << button;
            overlays.push_back(overlay);
        }
        EXPECT_EQ(project.Canvas.CurrentMenuID, shown.CurrentMenuID);
        EXPECT_EQ(project.Canvas.Buttons.size(), shown.Buttons.size());
        EXPECT_EQ(project.Canvas.Selected, 0);

        MenuCanvas& canvas = project.Canvas;
        ParceMenu(project, *tree.ObjectNode(menu));
        ASSERT_EQ(canvas.Buttons.size(), overlays.size());
        for (std::size_t i = 0; i < overlays.size(); ++i) {
            const ButtonShape& at = canvas.Buttons[i].Overlay;
            EXPECT_EQ(overlays[i].Picture, ButtonOverlayPicture(project, int(i))) << menu << " button " << i;
            EXPECT_EQ(std::tie(overlays[i].Where.Left, overlays[i].Where.Top, overlays[i].Where.Width,
                               overlays[i].Where.Height),
                      std::tie(at.Left, at.Top, at.Width, at.Height));
            painted += overlays[i].Picture.Width() > 0;
        }
        project.Canvas = shown;
    }
    EXPECT_GT(painted, 3);

    PlayerOverlay none;
    EXPECT_FALSE(PaintButtonOverlay(project, made->Main, made->Pages[0], none));
    EXPECT_FALSE(PaintButtonOverlay(project, "999999", made->MainButtons[0], none));
}

TEST_F(GeneratedMenus, WalkFindsPlantedDeadEndsAndUnreachedMenusAndTheCommandLineSaysSo)
{
    WalkReport clean;
    std::string error;
    ASSERT_TRUE(WalkMenus(doc, "", clean, error));
    EXPECT_THAT(clean.Reached, ElementsAre(made->Main, made->Pages[1], made->Pages[0]));
    EXPECT_THAT(clean.UnreachedMenus, ElementsAre());
    EXPECT_THAT(clean.UnreachedButtons, ElementsAre());

    DocTree& tree = doc.Tree;
    const std::vector<std::string> page1 = ButtonsOf(tree, made->Pages[0]);
    UpdatePropertyInNode(tree, *tree.ObjectNode(made->MainButtons[2]), "selectAction", kNoneMarker, false);
    UpdatePropertyInNode(tree, *tree.ObjectNode(page1[0]), "leftAction", "9999", true);
    // The first page's main button now leads to a menu that is gone.
    std::string mainButton;
    std::string toMain;
    for (const std::string& button : page1) {
        for (const ActionRow& row : LoadActionRows(tree, GetPropertyInNode(*tree.ObjectNode(button), "selectAction")))
            if (row.Type == "MenuTransitionAction" && row.Target1 == made->Main)
                std::tie(mainButton, toMain) = std::pair(button, row.Tag);
    }
    ASSERT_FALSE(toMain.empty());
    UpdatePropertyInNode(tree, *tree.ObjectNode(toMain), "menuID", "9998", false);
    DocNode& set = *tree.ObjectNode(made->Main)->Parent();
    ASSERT_TRUE(LoadXmlString(R"(<DivXMediaMenu objectID="9990" menuName="Orphan" menuType="other"/>)", doc, &set,
                              Relationship::Child, prompt));

    WalkReport planted;
    ASSERT_TRUE(WalkMenus(doc, "en", planted, error));
    std::vector<std::string> added(planted.DeadEnds.begin(), planted.DeadEnds.end());
    std::erase_if(added, [&](const std::string& d) { return std::ranges::find(clean.DeadEnds, d) != clean.DeadEnds.end(); });
    const std::string main = MenuGraph(doc).MenuLabel(made->Main);
    const std::string first = MenuGraph(doc).MenuLabel(made->Pages[0]);
    EXPECT_THAT(added, ElementsAre("button " + made->MainButtons[2] + " of " + main + " has no action",
                                   "button " + page1[0] + " of " + first + ": left leads to 9999, which is not a button of this menu",
                                   "button " + mainButton + " of " + first + ", selectAction: MenuTransitionAction " + toMain +
                                       " goes to menu 9998, which is gone"));
    EXPECT_THAT(planted.UnreachedMenus, ElementsAre("menu 9990 \"Orphan\""));
    EXPECT_FALSE(WalkMenus(doc, "fr", planted, error));
    EXPECT_EQ(error, "the project has no language set \"fr\"");

    // The command line on the saved file: walk's list and status, and a map naming every menu.
    ScratchFolder out;
    const std::string file = (out.Path() / "planted.xml").string();
    ASSERT_TRUE(SaveTreeToFile(tree, file, error));
    const CommandResult walk = RunCommand("MENUWRIGHT_HOME='" + out.Path().string() + "' '" MENUWRIGHT_CLI_PATH "' walk '" + file + "' --lang en 2>&1");
    EXPECT_EQ(walk.Exit, 1);
    EXPECT_THAT(walk.Out, ::testing::HasSubstr("Menus no path reaches:\n  menu 9990 \"Orphan\"\n"));
    EXPECT_THAT(walk.Out, ::testing::HasSubstr("  button " + made->MainButtons[2] + " of " + main + " has no action\n"));

    REQUIRE_MEDIA(HaveTool("dot"), "Graphviz's dot is not installed");
    const std::string svg = (out.Path() / "map.svg").string();
    ASSERT_EQ(RunCommand("MENUWRIGHT_HOME='" + out.Path().string() + "' '" MENUWRIGHT_CLI_PATH "' map '" + file + "' -o '" + svg + "'").Exit, 0);
    std::stringstream drawn;
    drawn << std::ifstream(svg).rdbuf();
    for (const std::string& id : {made->Main, made->Pages[0], made->Pages[1], std::string("9990")})
        EXPECT_THAT(drawn.str(), ::testing::HasSubstr(">menu " + id)) << id;
    EXPECT_THAT(drawn.str(), ::testing::HasSubstr("<svg"));
    // Without dot the map says which package brings it and leaves the old file alone.
    EXPECT_FALSE(WriteMenuMap(doc, svg, error, (out.Path() / "no-dot").string()));
    EXPECT_EQ(error, "Graphviz's dot was not found; install the package graphviz");
    std::stringstream kept;
    kept << std::ifstream(svg).rdbuf();
    EXPECT_EQ(kept.str(), drawn.str());
}

} // namespace
} // namespace mw::test
