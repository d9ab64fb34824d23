#include "generators/ChapterMenu.h"

#include "build/BuildTestFiles.h"
#include "build/DemoProject.h"
#include "build/FakeWine.h"
#include "build/OutsideMenuVideo.h"
#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "core/Text.h"
#include "document/CheckForErrors.h"
#include "document/ProgramStart.h"
#include "document/Project.h"
#include "document/TreeViewToXml.h"
#include "document/TreeQueries.h"
#include "generators/PageComposer.h"
#include "generators/PageSettings.h"
#include "media/AviCache.h"
#include "media/ChapterNodes.h"
#include "media/FrameGrabber.h"
#include "media/NewProject.h"
#include "media/LoadTitlesInForm.h"
#include "media/mAVIDecs.h"
#include "media/TitleNodes.h"
#include "media/TitleTestKit.h"
#include "menus/Actions.h"
#include "render/OverlayFont.h"
#include "render/cDIB.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <regex>

namespace fs = std::filesystem;

namespace mw::test {
namespace {

TEST(ChapterMenu, LaterPagesGetTheirNumberBeforeTheExtension)
{
    EXPECT_EQ(PageFileName("/m/menu.avi", 1), "/m/menu.avi");
    EXPECT_EQ(PageFileName("/m/menu.avi", 2), "/m/menu_2.avi");
    EXPECT_EQ(PageFileName("/m/Menu.AVI", 13), "/m/Menu_13.avi");
}

// The demo project with nine chapters: two pages at eight a page.
class ChapterMenuFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        NeedFontApplication();
        ASSERT_TRUE(MakeDemoProject(made.Path(), {{176, 144, 25, 100}, 9}, prompt)) << ::testing::PrintToString(prompt.Texts());
        ASSERT_TRUE(project.OpenFile((made.Path() / "Demo" / "Demo.xml").string()));
        prompt.Log.clear();
        titleID = ObjectIdOf(*TitleNodes(project.Doc).front());
        page.Width = 320;
        page.Height = 240;
        page.ItemWidth = 60;
        page.ItemHeight = 44;
        page.Design = StartDesign(GeneratorKind::ChaptersMenu, page.Width, page.Height);
        page.Design.MenuName = "Chapters ";
        page.Gradient = GradientColors{.TopLeft = 0x808080, .TopRight = 0x808080, .BottomLeft = 0x808080, .BottomRight = 0x808080};
        ASSERT_TRUE(LoadChapterItems(project, titleID, page));
    }

    ScratchFolder made;
    ScratchFolder home;
    ScriptedPrompt prompt;
    ProgramState program{home.Path()};
    ScriptedForms forms;
    Project project{program, prompt, forms};
    std::string titleID;
    MenuPage page;
};

TEST_F(ChapterMenuFixture, StillMenuOfTwoPagesShowsItsChaptersIsWiredAndChecksClean)
{
    ASSERT_EQ(page.Items.size(), 9u);
    EXPECT_EQ(page.Items[0].Caption, "Chapter 1");
    EXPECT_EQ(page.Items[8].Caption, "Chapter 9");
    EXPECT_GT(page.Items[1].Frame, page.Items[0].Frame);
    // The demo's frames differ, so each thumbnail must be its own chapter's frame.
    EXPECT_NE(page.Items[0].Picture, page.Items[1].Picture);

    const QImage composed = ComposePage(page, LoadPageArt(page));
    for (const std::size_t i : {std::size_t(0), std::size_t(5)}) {
        const QRect rect = ItemRect(page, page.Items[i]);
        EXPECT_EQ(rect.topLeft(), QPoint(int(page.Items[i].Left), int(page.Items[i].Top)));
        const QImage expected = page.Items[i].Picture.scaled(rect.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                                    .convertToFormat(QImage::Format_RGB888);
        for (const QPoint corner : {QPoint(0, 0), QPoint(59, 0), QPoint(0, 43), QPoint(59, 43)})
            EXPECT_EQ(composed.pixel(rect.topLeft() + corner), expected.pixel(corner)) << i << " at " << corner.x() << "," << corner.y();
    }

    const std::string name = (made.Path() / "chapters").string();
    // The library has an overlay of the border's shape: the chapter buttons take it.
    cDIB shape;
    ASSERT_TRUE(shape.Create(8, 8, 4));
    fs::create_directories(home.Path() / "overlays" / "frames");
    ASSERT_TRUE(shape.Save((home.Path() / "overlays" / "frames" / "DVD_Button_2.bmp").string()));
    page.Design.ButtonPicture = (home.Path() / "frames" / "DVD_Button_2.gif").string();
    const std::string before = Everything(project.Doc.Tree);
    PageMenuResult result;
    const std::string mainMenu = LoadTitlesInForm(project.Doc).lstMenus.front().Key.substr(1);
    // Without a name the run asks for one, and ".avi" is added to it.
    prompt.SavedFiles = {name};
    ASSERT_TRUE(CreateChapterMenu(project, page, {.TitleID = titleID, .Menus = {.MainMenuID = mainMenu}}, result))
        << ::testing::PrintToString(prompt.Texts());
    ASSERT_EQ(result.MenuIDs.size(), 2u);
    EXPECT_TRUE(fs::is_regular_file(name + ".avi"));
    EXPECT_TRUE(fs::is_regular_file(name + "_2.avi"));
    EXPECT_FALSE(result.SetupButtonID.empty());
    EXPECT_EQ(page.Page, 1);

    DocTree& tree = project.Doc.Tree;
    const auto buttons = [&tree](const std::string& menuID) {
        std::vector<DocNode*> found;
        for (const auto& child : *tree.ObjectNode(menuID))
            if (EqualsNoCase(child->Text, "ButtonMenu"))
                found.push_back(child.get());
        return found;
    };
    const std::vector<DocNode*> first = buttons(result.MenuIDs[0]);
    const std::vector<DocNode*> second = buttons(result.MenuIDs[1]);
    ASSERT_EQ(first.size(), 8u + 3u);  // chapters, next, main, setup
    ASSERT_EQ(second.size(), 1u + 2u); // chapter 9, previous, main
    EXPECT_EQ(GetPropertyInNode(*tree.ObjectNode(result.MenuIDs[1]), "menuName"), "Chapters 2");

    EXPECT_NE(first[0]->Tag.find("frames\\DVD_Button_2.bmp"), std::string::npos) << first[0]->Tag;
    EXPECT_NE(first[10]->Tag.find("*Oval"), std::string::npos) << first[10]->Tag;

    // Chapter 9 steps left and right to the previous button, down to main.
    const std::string id9 = GetPropertyInNode(*second[0], "objectid");
    const std::string prev = GetPropertyInNode(*second[1], "objectid");
    const std::string main = GetPropertyInNode(*second[2], "objectid");
    EXPECT_EQ(GetPropertyInNode(*second[0], "leftAction"), prev);
    EXPECT_EQ(GetPropertyInNode(*second[0], "rightAction"), prev);
    EXPECT_EQ(GetPropertyInNode(*second[0], "downAction"), main);
    EXPECT_EQ(GetPropertyInNode(*second[1], "leftAction"), id9);

    // Chapter 9 plays the ninth chapter; the page buttons lead to the other page.
    const auto actions = [&tree](const DocNode* button) { return LoadActionRows(tree, GetPropertyInNode(*button, "selectAction")); };
    ASSERT_EQ(actions(second[0]).size(), 1u);
    EXPECT_EQ(actions(second[0])[0].Type, "PlayAction");
    const std::vector<DocNode*> chapters = ChapterNodesOf(*tree.ObjectNode(titleID));
    EXPECT_EQ(actions(second[0])[0].Target2, GetPropertyInNode(*chapters[8], "objectid"));
    ASSERT_EQ(actions(first[8]).size(), 1u);
    EXPECT_EQ(actions(first[8])[0].Type, "MenuTransitionAction");
    EXPECT_EQ(actions(first[8])[0].Target1, result.MenuIDs[1]);
    EXPECT_EQ(actions(second[1])[0].Target1, result.MenuIDs[0]);

    EXPECT_EQ(actions(second[2])[0].Target1, mainMenu);

    // The setup button's action is the caller's to give.
    ActionFromButtonToMenu(project, result.SetupButtonID, mainMenu);
    prompt.Answers = {PromptAnswer::No};
    EXPECT_TRUE(CheckForErrors(project.Doc, project.Lang(), prompt, false)) << ::testing::PrintToString(prompt.Texts());

    // The run is one step back, before the setup button got its action. Undo does not bring
    // back the comment nodes before the menus, so they are left out of the comparison.
    project.UndoDo();
    project.UndoDo();
    const auto withoutComments = [](const std::string& all) {
        return std::regex_replace(all, std::regex("(^|\n)c\\d+\\|[^\n]*"), "");
    };
    EXPECT_EQ(withoutComments(Everything(project.Doc.Tree)), withoutComments(before));
}

TEST_F(ChapterMenuFixture, FailedRunLeavesProjectAndFilesAlone)
{
    const std::string name = (made.Path() / "chapters.avi").string();
    std::ofstream(name) << "mine";
    const std::string before = Everything(project.Doc.Tree);
    PageMenuResult result;
    EXPECT_FALSE(CreateChapterMenu(project, page, {.TitleID = titleID, .Menus = {.FileName = name, .Language = "xx"}}, result));
    EXPECT_EQ(Everything(project.Doc.Tree), before);
    EXPECT_EQ(ReadAll(name), "mine");
    EXPECT_FALSE(fs::exists(made.Path() / "chapters_2.avi"));
    EXPECT_TRUE(result.MenuIDs.empty());

    // A cancelled name dialog ends the run before anything is made.
    prompt.SavedFiles = {std::nullopt};
    EXPECT_FALSE(CreateChapterMenu(project, page, {.TitleID = titleID, .Menus = {}}, result));
    EXPECT_EQ(Everything(project.Doc.Tree), before);
    EXPECT_TRUE(prompt.SavedFiles.empty());

    // A page whose name is taken by a folder: no page is put in place, not even the first.
    fs::create_directories(made.Path() / "chapters_2.avi" / "inside");
    EXPECT_FALSE(CreateChapterMenu(project, page, {.TitleID = titleID, .Menus = {.FileName = name}}, result));
    EXPECT_EQ(Everything(project.Doc.Tree), before);
    EXPECT_EQ(ReadAll(name), "mine");
    EXPECT_TRUE(fs::is_empty(home.Path() / "tmp"));
}

// Stops the run's tools once the progress reaches the given text.
struct CancellingPrompt : ScriptedPrompt {
    void Progress(const ProgressChannel& channel, const std::string& text) override
    {
        ScriptedPrompt::Progress(channel, text);
        if (text == CancelAt)
            Reached ? Reached() : Runner.Cancel();
    }
    std::string CancelAt;
    std::function<void()> Reached; // done there in place of stopping the tools
    ToolRunner Runner;
};

TEST_F(ChapterMenuFixture, MotionMenuPlaysEachChapterFromItsStartAndACancelledRunChangesNothing)
{
    const std::string name = (made.Path() / "motion.avi").string();
    std::ofstream(name) << "mine";
    const std::vector<QImage> stills = [&] {
        std::vector<QImage> pictures;
        for (const PageItem& item : page.Items)
            pictures.push_back(item.Picture);
        return pictures;
    }();

    // Cancelled on page 2, after page 1 has its video: nothing of the run is left.
    CancellingPrompt cancelling;
    cancelling.CancelAt = "Getting frames for motion chapter menu 2... 10/49";
    test::RecordingLog log;
    MenuVideoTools tools{cancelling.Runner, log, home.Path(), [](int) { return ToolAnswer{true, true, ""}; }};
    Project cancelled{program, cancelling, forms};
    cancelled.ReadMovieFps = project.ReadMovieFps = ReadMovieFps;
    ASSERT_TRUE(cancelled.OpenFile((made.Path() / "Demo" / "Demo.xml").string()));
    const std::string untouched = Everything(cancelled.Doc.Tree);
    PageMenuResult result;
    EXPECT_FALSE(CreateChapterMenu(cancelled, page,
                                   {.TitleID = titleID, .Menus = {.FileName = name, .MotionSeconds = 2, .Tools = &tools}},
                                   result));
    EXPECT_EQ(cancelling.ProgressLog.back().second, cancelling.CancelAt);
    EXPECT_TRUE(cancelling.Texts().empty()) << ::testing::PrintToString(cancelling.Texts());
    EXPECT_EQ(Everything(cancelled.Doc.Tree), untouched);
    EXPECT_EQ(ReadAll(name), "mine");
    EXPECT_FALSE(fs::exists(made.Path() / "motion_2.avi"));
    EXPECT_TRUE(fs::is_empty(home.Path() / "tmp"));
    for (std::size_t i = 0; i < stills.size(); ++i)
        EXPECT_EQ(page.Items[i].Picture, stills[i]) << i;

    // A new project with a title and no menus: the run makes the first language set. Stopped
    // once the menu is in, it takes the set away with all it made.
    Project fresh{program, cancelling, forms};
    const fs::path movie = made.Path() / "Demo" / "Demo.avi";
    TrackRows rows;
    double fps = 0;
    ASSERT_TRUE(LoadStreamsToListView(movie.string(), rows, true, fps, cancelling));
    BuildNewProjectTree(fresh.Doc, movie.string(), rows, program.Values.defLang, rows.size() > 1 ? 1 : -1, -1);
    fresh.Doc.ProjectFile = (made.Path() / "fresh.xml").string();
    const std::string freshTitle = ObjectIdOf(*TitleNodes(fresh.Doc).front());
    MenuPage freshPage = page;
    ASSERT_TRUE(LoadChapterItems(fresh, freshTitle, freshPage));
    const auto saved = [&fresh] {
        std::string error;
        EXPECT_TRUE(SaveTreeToFile(fresh.Doc.Tree, fresh.Doc.ProjectFile, error)) << error;
        return ReadAll(fresh.Doc.ProjectFile);
    };
    const std::string freshXml = saved();
    const long freshNextID = fresh.Doc.NextObjectID;
    const bool freshDirty = fresh.FileIsDirty;
    cancelling.CancelAt = "Setting menu properties...";
    cancelling.Reached = [] { throw std::runtime_error("stopped"); };
    EXPECT_THROW(CreateChapterMenu(fresh, freshPage, {.TitleID = freshTitle, .Menus = {.FileName = (made.Path() / "fresh.avi").string()}}, result),
                 std::runtime_error);
    EXPECT_EQ(saved(), freshXml);
    EXPECT_EQ(fresh.Doc.NextObjectID, freshNextID);
    EXPECT_EQ(fresh.FileIsDirty, freshDirty);
    EXPECT_TRUE(fresh.Canvas.CurrentMenuID.empty());
    EXPECT_TRUE(fresh.Canvas.Buttons.empty());
    EXPECT_FALSE(fresh.Commands.mnuUndo);

    // 2.4 seconds are 2 whole seconds: 50 frames at the movie's 25 a second, on both pages.
    ASSERT_TRUE(project.OpenFile((made.Path() / "Demo" / "Demo.xml").string()));
    ASSERT_TRUE(CreateChapterMenu(project, page, {.TitleID = titleID, .Menus = {.FileName = name, .MotionSeconds = 2.4}}, result))
        << ::testing::PrintToString(prompt.Texts());
    ASSERT_EQ(result.MenuIDs.size(), 2u);
    for (const std::string& file : {name, (made.Path() / "motion_2.avi").string()}) {
        const auto avi = OpenAvi(file, AviRead::Headers);
        ASSERT_TRUE(avi) << file;
        EXPECT_EQ(avi->Stream(*FirstVideoStream(*avi)).Info.dwLength, 50u) << file;
    }
    const auto said = [&](const std::string& text) {
        return std::ranges::count(prompt.ProgressLog, text, &std::pair<std::string, std::string>::second);
    };
    EXPECT_EQ(said("Getting frames for motion chapter menu 1... 0/49"), 1);
    EXPECT_EQ(said("Getting frames for motion chapter menu 2... 49/49"), 1);
    EXPECT_TRUE(fs::is_empty(home.Path() / "tmp"));

    // The thumbnails play while the page around them stands still.
    const auto frame = [&](long number) {
        cDIB picture;
        EXPECT_TRUE(GrabFrameToPicture(name, picture, number, true, prompt, project.Lang()));
        return picture.ToImage().convertToFormat(QImage::Format_RGB888);
    };
    // The mean difference of grey between two pictures of one size.
    const auto difference = [](const QImage& a, const QImage& b) {
        long sum = 0;
        for (int y = 0; y < a.height(); ++y)
            for (int x = 0; x < a.width(); ++x)
                sum += std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y)));
        return double(sum) / (a.width() * a.height());
    };
    const auto thumbnail = [&](const QImage& picture, std::size_t i) { return picture.copy(ItemRect(page, page.Items[i])); };
    const QImage first = frame(0);
    const QImage later = frame(30);
    // Frame 0 shows each chapter's start: of the still page's thumbnails, its own is the nearest.
    const QImage still = ComposePage(page, LoadPageArt(page));
    for (const std::size_t i : {std::size_t(0), std::size_t(4), std::size_t(7)}) {
        const double own = difference(thumbnail(first, i), thumbnail(still, i));
        for (std::size_t j = 0; j < 8; ++j)
            EXPECT_TRUE(j == i || own < difference(thumbnail(first, i), thumbnail(still, j))) << i << " looks like " << j;
    }
    for (const std::size_t i : {std::size_t(0), std::size_t(4)})
        EXPECT_GT(difference(thumbnail(first, i), thumbnail(later, i)), 4.0) << i;
    EXPECT_LT(difference(first.copy(0, 0, 16, 16), later.copy(0, 0, 16, 16)), 2.0);

    // cli.exe reads the frames from bitmaps of the page, which are gone after the run.
    program.Values.MethodForPicToMenu = kPicToMenuCli;
    program.Values.cliPath = (made.Path() / "cli.exe").string();
    std::ofstream(program.Values.cliPath) << "MZ";
    const fs::path seen = made.Path() / "seen";
    test::FakeWine wine("ls '" + (home.Path() / "tmp").string() + "' | grep -c '^picformenu[0-9]*_2.bmp$' > '" +
                        seen.string() + R"sh('; cp "$(printf %s "$3" | sed 's/^Z://' | tr '\\' /)" "$(printf %s "$5" | sed 's/^Z://' | tr '\\' /)")sh");
    ToolRunner runner;
    test::RecordingLog cliLog;
    MenuVideoTools cli{runner, cliLog, home.Path(), {}};
    ASSERT_TRUE(CreateChapterMenu(project, page, {.TitleID = titleID, .Menus = {.FileName = name, .MotionSeconds = 1, .Tools = &cli}}, result))
        << ::testing::PrintToString(prompt.Texts());
    EXPECT_EQ(ReadAll(seen), "25\n");
    EXPECT_EQ(wine.Runs().size(), 2u);
    EXPECT_TRUE(fs::is_empty(home.Path() / "tmp"));
}

} // namespace
} // namespace mw::test
