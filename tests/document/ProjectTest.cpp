#include "ProjectFixture.h"

#include "core/Version.h"
#include "document/NodeSelection.h"
#include "document/RecentFiles.h"
#include "media/NewProject.h"

#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using mw::test::ReadAll;
using Texts = std::vector<std::string>;

const std::string kAppVersion = std::string("Menuwright ver. ") + mw::kVersionText + " by Ostrander";
const char* kSaveQuestion = "File is not saved. Save it now?";

class ProjectTest : public mw::test::ProjectFixture {
protected:
    // A change of the open project that leaves an undo step.
    void Change(const std::string& row)
    {
        project.Canvas.CurrentMenuID = "12";
        project.UndoAdd();
        project.Doc.Tree.AddChild(project.Doc.Tree.Item("k12"), "", row, "prop");
        project.MarkDirty();
    }
};

TEST_F(ProjectTest, OpeningSetsTheStateOfAnOpenProject)
{
    program.Values.AutoSaveMin = 5;
    project.MovieFps = 30;
    project.Canvas.CurrentMenuID = "99";
    const std::string path = WriteProject("menus.xml");
    ASSERT_TRUE(project.OpenFile(path));
    EXPECT_FALSE(project.FileIsNew || project.FileIsDirty);
    EXPECT_EQ(project.WindowTitle, "menus.xml - " + kAppVersion);
    EXPECT_EQ(project.RecentFiles(), Texts{path});
    EXPECT_TRUE(project.ItemsEnabled && project.AutoSaveRunning);
    mw::CommandStates expected;
    expected.mnuNormalize = expected.mnuCheck = true;
    EXPECT_EQ(project.Commands, expected); // the commands that need a selection wait for one
    EXPECT_TRUE(project.Doc.Tree.Item("k9").Expanded); // the default language's menus
    EXPECT_FALSE(project.Doc.Tree.Item("k30").Expanded);
    EXPECT_EQ(project.Canvas.CurrentMenuID, "");
    EXPECT_EQ(project.Doc.MenuTracks.Count(), 1u);
    EXPECT_DOUBLE_EQ(project.MovieFps, 23.976); // reset on opening; the title's movie is missing
    EXPECT_TRUE(prompt.Log.empty());
}

// The rate comes from the last source of the last title, found beside the project.
TEST_F(ProjectTest, OpeningReadsTheFrameRateOfTheLastTitlesMovie)
{
    std::vector<std::string> read;
    project.ReadMovieFps = [&read](const std::string& movie, double& fps, mw::Prompt&) {
        read.push_back(movie);
        fps = 25;
    };
    std::string xml = mw::test::kMenuProject;
    xml.replace(xml.find("</Media>"), 0,
                "<Title objectID=\"40\"><MediaSource objectID=\"41\" location=\"old.avi\"/>"
                "<MediaSource objectID=\"42\" location=\"sub/last.avi\"/></Title>");
    work.Write("sub/last.avi", "RIFF");
    Open("p.xml", xml);
    EXPECT_EQ(read, Texts{(work.Path() / "sub/last.avi").string()});
    EXPECT_EQ(project.MovieFps, 25);
}

TEST_F(ProjectTest, ARecentFileOpensAndMovesUpAVanishedOneIsToldAndStays)
{
    const std::string a = WriteProject("a.xml");
    const std::string b = WriteProject("b.xml");
    ASSERT_TRUE(project.OpenFile(a));
    ASSERT_TRUE(project.OpenFile(b));
    ASSERT_TRUE(project.OpenRecentFile(1));
    EXPECT_EQ(project.Doc.ProjectFile, a);
    EXPECT_EQ(program.Values.RecentFiles, (Texts{a, b})); // what SaveValues writes

    std::filesystem::remove(b);
    EXPECT_FALSE(project.OpenRecentFile(1));
    EXPECT_EQ(prompt.Texts(), Texts{"File not found"});
    EXPECT_EQ(project.RecentFiles(), (Texts{a, b}));
    EXPECT_EQ(project.Doc.ProjectFile, a);
}

TEST_F(ProjectTest, CommandsAndMenuPanelFollowTheSelectedKind)
{
    std::string xml = mw::test::kMenuProject;
    const std::string menuEnd = R"(menuName="Main"/>)";
    xml.replace(xml.find(menuEnd), menuEnd.size(),
                R"(menuName="Main"><ButtonMenu objectID="13" selectActionID="none"/></DivXMediaMenu>)");
    Open("menus.xml", xml);
    const auto node = [this](const char* id) { return project.Doc.Tree.ObjectNode(id); };
    const auto row = [&](const char* id, const char* name) -> mw::DocNode* {
        for (const auto& child : *node(id)) {
            if (mw::RowMatches(*child, name))
                return child.get();
        }
        return nullptr;
    };
    struct Case {
        const char* What;
        mw::DocNode* Clicked;
        bool Title, Lang, Menu, Button;
        std::optional<std::string> Panel;
    };
    const Case cases[] = {
        {"title", node("6"), true, false, false, false, std::nullopt},
        {"a row of the title's source", row("7", "location"), false, false, false, false, std::nullopt},
        {"language set", node("9"), false, true, false, false, std::nullopt},
        {"menu", node("12"), false, false, true, false, "Menu Main (title)"},
        {"row of the menu", row("12", "menuName"), false, false, true, false, "Menu Main (title)"},
        {"button", node("13"), false, false, true, true, "Menu Main (title)"},
        {"row of the button", row("13", "objectID"), false, false, true, true, "Menu Main (title)"},
        {"nothing", nullptr, false, false, false, false, std::nullopt},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.What);
        project.Commands = mw::CommandStates{.mnuRefreshTitle = true, .mnuRemoveTitle = true,
                                             .mnuRemoveButton = true, .mnuRemoveLang = true, .mnuRemoveMenu = true};
        EXPECT_EQ(mw::TreeView1_NodeClick(project, c.Clicked), c.Panel);
        EXPECT_EQ(project.Doc.Tree.Selected(), c.Clicked);
        EXPECT_EQ(project.Commands.mnuRemoveTitle, c.Title);
        EXPECT_EQ(project.Commands.mnuRefreshTitle, c.Title);
        EXPECT_EQ(project.Commands.mnuRemoveLang, c.Lang);
        EXPECT_EQ(project.Commands.mnuRemoveMenu, c.Menu);
        EXPECT_EQ(project.Commands.mnuRemoveButton, c.Button);
    }
}

TEST_F(ProjectTest, AFailedOpenKeepsTheOldProject)
{
    Open("good.xml");
    project.Doc.NextObjectID = 57;
    project.MarkDirty();
    const mw::test::ProjectState before = State();
    prompt.Answers.push_back(mw::PromptAnswer::No);
    EXPECT_FALSE(project.OpenFile(work.Write("broken.xml", "<DivXMediaManager><Media></DivXMediaManager>").string()));
    EXPECT_EQ(State(), before);
    EXPECT_EQ(project.Doc.NextObjectID, 57);
    ASSERT_EQ(prompt.Texts().size(), 2u); // the question, then the reader's message
    EXPECT_EQ(prompt.Texts()[0], kSaveQuestion);
}

TEST_F(ProjectTest, AStopAtTheUnsavedQuestionLeavesEverything)
{
    const std::string movie = mw::test::ShortMovie().string();
    const std::string other = WriteProject("other.xml");
    const std::vector<std::pair<const char*, std::function<bool()>>> commands = {
        {"open", [&] { return project.OpenFile(other); }},
        {"new", [&] { return CreateNewFile(project, movie); }},
        {"new with dialog", [&] { return CreateNewFile(project); }},
        {"close", [&] { return project.CloseOpenFile(); }},
        {"exit", [&] { return project.Unload(); }},
    };
    // Cancel at the question; Yes, then the save dialog cancelled; Yes, then a write that fails
    // (its folder is a file, which stops root too).
    const std::string unwritable = (work.Write("plain.txt", "x") / "p.xml").string();
    const std::vector<std::pair<const char*, std::vector<std::optional<std::string>>>> stops = {
        {"cancel", {}}, {"dialog cancelled", {std::nullopt}}, {"write failed", {unwritable}}};
    Open("mine.xml");
    Change("menuName = changed");
    project.FileIsNew = true; // Save asks for a name
    const fs::path leftOver = home.Write("_tmpFile_1_01.01.2004_00.00.00.xml", "auto-saved");
    const mw::test::ProjectState before = State();
    const mw::CommandStates commandStates = project.Commands;

    for (const auto& [command, run] : commands) {
        for (const auto& [stop, saved] : stops) {
            SCOPED_TRACE(std::string(command) + ", " + stop);
            prompt.Log.clear();
            prompt.Answers.push_back(saved.empty() ? mw::PromptAnswer::Cancel : mw::PromptAnswer::Yes);
            prompt.SavedFiles.assign(saved.begin(), saved.end());
            EXPECT_FALSE(run());
            ASSERT_FALSE(prompt.Log.empty());
            EXPECT_EQ(prompt.Log[0].Text, kSaveQuestion);
            for (const auto& shown : prompt.Log)
                EXPECT_NE(shown.Kind, "open"); // no movie or project was asked for
            EXPECT_TRUE(forms.ShownNewTitles.empty());
            EXPECT_EQ(State(), before);
            EXPECT_EQ(project.Canvas.CurrentMenuID, "12");
            EXPECT_EQ(project.Commands, commandStates);
            EXPECT_TRUE(fs::exists(leftOver)); // the auto-save files stay while the work is unsaved
            EXPECT_FALSE(fs::exists(home.Path() / "Menuwright.ini"));
        }
    }
}

TEST_F(ProjectTest, YesAtTheUnsavedQuestionSavesFirstNoDropsTheChangeAndCloses)
{
    Open("mine.xml");
    Change("menuName2 = kept");
    prompt.Answers.push_back(mw::PromptAnswer::Yes);
    ASSERT_TRUE(project.OpenFile(WriteProject("second.xml")));
    EXPECT_NE(ReadAll(work.Path() / "mine.xml").find("menuName2=\"kept\""), std::string::npos);
    EXPECT_TRUE(project.Undo.Empty()); // the history starts anew

    Change("menuName3 = dropped");
    project.Commands.mnuRemoveMenu = true;
    prompt.Answers.push_back(mw::PromptAnswer::No);
    ASSERT_TRUE(project.CloseOpenFile());
    EXPECT_EQ(ReadAll(work.Path() / "second.xml"), mw::test::kMenuProject);
    EXPECT_TRUE(project.Doc.Tree.Empty() && project.Doc.MenuTracks.Empty() && project.Undo.Empty());
    EXPECT_FALSE(project.ItemsEnabled);
    EXPECT_EQ(project.Commands, mw::CommandStates{}); // closing turns the document commands off
    EXPECT_EQ(project.WindowTitle, kAppVersion);
}

TEST_F(ProjectTest, SavingAsAddsTheExtensionAndClearsTheFlags)
{
    for (const auto& [chosenName, savedName] : {std::pair{"plain", "plain.xml"}, std::pair{"upper.XML", "upper.XML"},
                                                std::pair{"twice.xml.bak", "twice.xml.bak.xml"}}) {
        SCOPED_TRACE(chosenName);
        Open("source.xml");
        project.FileIsNew = true; // as after CreateNewFile: Save must ask for a name
        project.MarkDirty();
        program.Values.AutoSaveMin = 2;
        project.AutoSaveTicks = 1;
        const std::string saved = (work.Path() / savedName).string();
        prompt.SavedFiles.push_back((work.Path() / chosenName).string());
        ASSERT_TRUE(project.SaveFile(false, false));
        ASSERT_EQ(prompt.Log.size(), 1u);
        EXPECT_EQ(prompt.Log[0].Text, "*.xml|*.xml");
        EXPECT_TRUE(fs::exists(saved));
        EXPECT_EQ(project.WindowTitle, std::string(savedName) + " - " + kAppVersion);
        EXPECT_EQ(project.RecentFiles().front(), saved);
        EXPECT_FALSE(project.FileIsNew || project.FileIsDirty);
        EXPECT_EQ(project.AutoSaveTicks, 0);
    }
    // A cancelled dialog saves nothing and changes nothing.
    project.MarkDirty();
    EXPECT_FALSE(project.SaveFile(true, false));
    EXPECT_TRUE(project.FileIsDirty);
    EXPECT_EQ(project.Doc.ProjectFile, (work.Path() / "twice.xml.bak.xml").string());
}

TEST_F(ProjectTest, AFailedSaveOrSaveAsKeepsTheOldFileTheNameAndTheRecentFiles)
{
    Open("locked.xml");
    const fs::path file = work.Path() / "locked.xml";
    Change("menuName2 = new");
    const mw::test::ProjectState before = State();
    fs::create_directory(work.Path() / "taken.xml");
    // Each target fails for root too: a read-only file is refused by the writer itself.
    const std::vector<std::tuple<const char*, bool, std::string, const char*>> cases = {
        {"own file read-only", false, "", "read-only"},
        {"save as, folder is a file", true, (work.Write("plain.txt", "x") / "p.xml").string(), "p.xml"},
        {"save as, onto a folder", true, (work.Path() / "taken").string(), "taken.xml"},
    };
    for (const auto& [name, saveAs, target, said] : cases) {
        SCOPED_TRACE(name);
        prompt.Log.clear();
        if (saveAs)
            prompt.SavedFiles.push_back(target);
        ::chmod(file.c_str(), saveAs ? 0644 : 0444);
        EXPECT_FALSE(project.SaveFile(saveAs, false));
        ::chmod(file.c_str(), 0644);
        EXPECT_EQ(State(), before);
        ASSERT_EQ(prompt.Texts().size(), 1u);
        EXPECT_NE(prompt.Texts()[0].find(said), std::string::npos) << prompt.Texts()[0];
    }
}

TEST_F(ProjectTest, NewProjectIsTheSkeletonAroundTheChosenMovie)
{
    const fs::path movie = mw::test::ShortMovie();
    REQUIRE_MEDIA(!movie.empty(), "ffmpeg is not available");
    // A cancelled file dialog or form keeps the open project.
    Open("kept.xml");
    const mw::test::ProjectState kept = State();
    EXPECT_FALSE(CreateNewFile(project));
    forms.NewTitle.push_back(mw::test::Cancel);
    EXPECT_FALSE(CreateNewFile(project, movie.string()));
    EXPECT_EQ(State(), kept);

    prompt.Log.clear();
    forms.ShownNewTitles.clear();
    program.Values.AutoSaveMin = 3;
    prompt.OpenedFiles.push_back({movie.string()});
    forms.NewTitle.push_back([](mw::NewTitleForm& form) {
        form.Combo1.ListIndex = 0; // no default audio
        return true;
    });

    ASSERT_TRUE(CreateNewFile(project));
    ASSERT_EQ(prompt.Log.size(), 1u);
    EXPECT_EQ(prompt.Log[0].Text, "*.avi;*.divx|*.avi;*.divx");
    EXPECT_EQ(prompt.Log[0].Title, "Select new titles/movies");
    EXPECT_EQ(program.Values.LastFolderUsed, movie.parent_path().string());
    ASSERT_EQ(forms.ShownNewTitles.size(), 1u);
    const mw::NewTitleForm& shown = forms.ShownNewTitles[0];
    EXPECT_EQ(shown.Combo1.ListIndex, 1); // the first audio stream is offered

    mw::Document expected;
    mw::BuildNewProjectTree(expected, movie.string(), shown.Tracks, "en", -1, -1);
    EXPECT_EQ(Xml(), mw::NodeToXmlString(*expected.Tree.Root()));
    EXPECT_EQ(project.Doc.NextObjectID, expected.NextObjectID);
    EXPECT_EQ(project.Doc.ProjectFile, (home.Path() / "Untitled.xml").string());
    EXPECT_EQ(project.WindowTitle, "Untitled.xml - " + kAppVersion);
    EXPECT_TRUE(project.FileIsNew && project.FileIsDirty && project.ItemsEnabled && project.AutoSaveRunning);
    EXPECT_TRUE(project.Commands.mnuRefreshTitle);
    EXPECT_DOUBLE_EQ(project.MovieFps, 25.0);
    EXPECT_TRUE(project.Check(false)) << ::testing::PrintToString(prompt.Texts());
}

TEST_F(ProjectTest, AMovieThatCannotBeReadGivesAProjectWithoutTracks)
{
    Open("old.xml");
    Change("menuName2 = saved");
    project.FileIsDirty = false;
    ASSERT_TRUE(CreateNewFile(project, work.Write("junk.avi", "not a movie").string()));
    EXPECT_EQ(prompt.Texts(), Texts{"Error geting info for file"});
    EXPECT_EQ(project.Doc.Tree.Find("k8"), nullptr); // a source without tracks
    EXPECT_NE(project.Doc.Tree.Find("k7"), nullptr);
    EXPECT_DOUBLE_EQ(project.MovieFps, 23.976);
    EXPECT_TRUE(project.Undo.Empty() && !project.Commands.mnuUndo); // the history starts anew
}

TEST_F(ProjectTest, NormalizingRenumbersTheCanvasMenuAndForgetsTheUndoHistory)
{
    Open("menus.xml");
    project.Canvas.CurrentMenuID = "12";
    project.UndoAdd();
    project.Normalize();
    EXPECT_TRUE(project.FileIsDirty);
    EXPECT_TRUE(project.Undo.Empty());
    EXPECT_FALSE(project.Commands.mnuUndo);
    const mw::DocNode* menu = project.Doc.Tree.ObjectNode(project.Canvas.CurrentMenuID);
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->Text, "DivXMediaMenu");
}

} // namespace

namespace mw::test {

TEST(ProgramStart, StartProjectIsNickThenTheDemoOnlyAtTheFirstStart)
{
    struct Case {
        bool Nick;
        bool Demo;
        bool FirstStart;
        const char* Expected; // below the program folder, "" for none
    };
    const Case cases[] = {
        {true, true, true, "nick.xml"},  {true, false, false, "nick.xml"}, {false, true, true, "Demo/Demo.xml"},
        {false, true, false, ""},        {false, false, true, ""},
    };
    for (const Case& c : cases) {
        ScratchFolder folder;
        if (c.Nick)
            folder.Write("nick.xml", "<DivXMediaManager/>");
        if (c.Demo)
            folder.Write("Demo/Demo.xml", "<DivXMediaManager/>");
        const fs::path expected = *c.Expected ? folder.Path() / c.Expected : fs::path();
        EXPECT_EQ(StartProjectFile(folder.Path(), c.FirstStart), expected)
            << "nick " << c.Nick << ", demo " << c.Demo << ", first start " << c.FirstStart;
    }
}

TEST(ProgramStart, FirstStartIsTheSettingsFileMissing)
{
    ScratchFolder fresh;
    ProgramState first(fresh.Path());
    StartProgram(first);
    EXPECT_TRUE(first.FirstStart);

    ScratchFolder used;
    used.Write("Menuwright.ini", "[General]\r\nAutoSaveMin=5\r\n");
    ProgramState later(used.Path());
    StartProgram(later);
    EXPECT_FALSE(later.FirstStart);
    EXPECT_EQ(later.Values.AutoSaveMin, 5);
}

TEST(RecentFilesTest, NewestFirstCaseIgnoredAtMostTen)
{
    struct Case {
        const char* Name;
        Texts Before;
        const char* Added;
        Texts After;
    };
    const Texts ten = {"f0", "f1", "f2", "f3", "f4", "f5", "f6", "f7", "f8", "f9"};
    const std::vector<Case> cases = {
        {"first", {}, "/p/a.xml", {"/p/a.xml"}},
        {"new on top", {"/p/a.xml"}, "/p/b.xml", {"/p/b.xml", "/p/a.xml"}},
        {"again moves up", {"/p/a.xml", "/p/b.xml", "/p/c.xml"}, "/p/c.xml", {"/p/c.xml", "/p/a.xml", "/p/b.xml"}},
        {"other case counts as the same", {"/p/a.xml", "/P/B.XML"}, "/p/b.xml", {"/p/b.xml", "/p/a.xml"}},
        {"eleventh pushes the oldest out", ten, "new",
         {"new", "f0", "f1", "f2", "f3", "f4", "f5", "f6", "f7", "f8"}},
        {"a known one of ten drops none", ten, "F9", {"F9", "f0", "f1", "f2", "f3", "f4", "f5", "f6", "f7", "f8"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Name);
        Texts files = c.Before;
        AddFileToRecent(files, c.Added);
        EXPECT_EQ(files, c.After);
    }
}

} // namespace mw::test
