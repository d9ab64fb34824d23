#include "ProjectFixture.h"

#include "core/Version.h"
#include "document/NewProjectTree.h"

#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using mw::test::ReadAll;
using Texts = std::vector<std::string>;

const std::string kAppVersion = std::string("Menuwright ver. ") + mw::kVersionText + " by Ostrander";
const char* kSaveQuestion = "File is not saved. Save it now?";

class ProjectTest : public mw::test::ProjectFixture {};

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
    EXPECT_DOUBLE_EQ(project.MovieFps, 23.976); // the movie is not there
    EXPECT_TRUE(prompt.Log.empty());
}

TEST_F(ProjectTest, AFailedOpenKeepsTheOldProject)
{
    Open("good.xml");
    project.Doc.NextObjectID = 57;
    project.MarkDirty();
    const std::string before = Xml();
    const std::string broken = work.Write("broken.xml", "<DivXMediaManager><Media></DivXMediaManager>").string();
    prompt.Answers.push_back(mw::PromptAnswer::No);
    EXPECT_FALSE(project.OpenFile(broken));
    EXPECT_EQ(Xml(), before);
    EXPECT_EQ(project.Doc.NextObjectID, 57);
    EXPECT_EQ(project.WindowTitle, "good.xml - " + kAppVersion);
    EXPECT_TRUE(project.FileIsDirty);
    ASSERT_EQ(prompt.Texts().size(), 2u); // the question, then the reader's message
    EXPECT_EQ(prompt.Texts()[0], kSaveQuestion);
}

TEST_F(ProjectTest, CancelAtTheUnsavedQuestionLeavesEverything)
{
    const std::string movie = mw::test::ShortMovie().string();
    const std::string other = WriteProject("other.xml");
    const std::vector<std::pair<const char*, std::function<bool()>>> cases = {
        {"open", [&] { return project.OpenFile(other); }},
        {"new", [&] { return project.CreateNewFile(movie); }},
        {"new with dialog", [&] { return project.CreateNewFile(); }},
        {"close", [&] { return project.CloseOpenFile(); }},
    };
    Open("mine.xml");
    project.Doc.Tree.AddChild(project.Doc.Tree.Item("k12"), "", "menuName = changed", "prop");
    project.MarkDirty();
    project.Canvas.CurrentMenuID = "12";
    project.UndoAdd();
    const std::string before = Xml();
    const std::string savedFile = ReadAll(work.Path() / "mine.xml");
    const mw::CommandStates commands = project.Commands;

    for (const auto& [name, run] : cases) {
        SCOPED_TRACE(name);
        prompt.Log.clear();
        prompt.Answers.push_back(mw::PromptAnswer::Cancel);
        EXPECT_FALSE(run());
        ASSERT_EQ(prompt.Log.size(), 1u); // no file dialog either
        EXPECT_EQ(prompt.Log[0].Text, kSaveQuestion);
        EXPECT_TRUE(forms.ShownNewTitles.empty());
        EXPECT_EQ(Xml(), before);
        EXPECT_TRUE(project.FileIsDirty);
        EXPECT_EQ(project.Canvas.CurrentMenuID, "12");
        EXPECT_EQ(project.Undo.Count(), 1u);
        EXPECT_EQ(project.Commands, commands);
        EXPECT_EQ(ReadAll(work.Path() / "mine.xml"), savedFile);
    }
}

TEST_F(ProjectTest, YesAtTheUnsavedQuestionSavesFirstNoDropsTheChangeAndCloses)
{
    Open("mine.xml");
    project.Doc.Tree.AddChild(project.Doc.Tree.Item("k12"), "", "menuName2 = kept", "prop");
    project.MarkDirty();
    prompt.Answers.push_back(mw::PromptAnswer::Yes);
    ASSERT_TRUE(project.OpenFile(WriteProject("second.xml")));
    EXPECT_NE(ReadAll(work.Path() / "mine.xml").find("menuName2=\"kept\""), std::string::npos);

    project.Doc.Tree.AddChild(project.Doc.Tree.Item("k12"), "", "menuName3 = dropped", "prop");
    project.MarkDirty();
    project.Commands.mnuShowButtonProp = true;
    prompt.Answers.push_back(mw::PromptAnswer::No);
    ASSERT_TRUE(project.CloseOpenFile());
    EXPECT_EQ(ReadAll(work.Path() / "second.xml"), mw::test::kMenuProject);
    EXPECT_TRUE(project.Doc.Tree.Empty());
    EXPECT_TRUE(project.Doc.MenuTracks.Empty());
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

TEST_F(ProjectTest, AFailedSaveKeepsTheOldFileAndTheProjectDirty)
{
    Open("locked.xml");
    const fs::path file = work.Path() / "locked.xml";
    project.Doc.Tree.AddChild(project.Doc.Tree.Item("k12"), "", "menuName2 = new", "prop");
    project.MarkDirty();
    ::chmod(file.c_str(), 0444);
    EXPECT_FALSE(project.SaveFile(false, false));
    ::chmod(file.c_str(), 0644);
    EXPECT_EQ(ReadAll(file), mw::test::kMenuProject);
    EXPECT_TRUE(project.FileIsDirty);
    ASSERT_EQ(prompt.Texts().size(), 1u);
    EXPECT_NE(prompt.Texts()[0].find("read-only"), std::string::npos) << prompt.Texts()[0];
}

TEST_F(ProjectTest, NewProjectIsTheSkeletonAroundTheChosenMovie)
{
    const fs::path movie = mw::test::ShortMovie();
    if (movie.empty())
        GTEST_SKIP() << "ffmpeg is not available";
    // A cancelled file dialog or form keeps the open project.
    Open("kept.xml");
    const std::string kept = Xml();
    EXPECT_FALSE(project.CreateNewFile());
    forms.NewTitle.push_back(mw::test::Cancel);
    EXPECT_FALSE(project.CreateNewFile(movie.string()));
    EXPECT_EQ(Xml(), kept);
    EXPECT_EQ(project.Doc.ProjectFile, (work.Path() / "kept.xml").string());

    prompt.Log.clear();
    forms.ShownNewTitles.clear();
    program.Values.AutoSaveMin = 3;
    prompt.OpenedFiles.push_back({movie.string()});
    forms.NewTitle.push_back([](mw::NewTitleForm& form) {
        form.Combo1.ListIndex = 0; // no default audio
        return true;
    });

    ASSERT_TRUE(project.CreateNewFile());
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
    const std::string junk = work.Write("junk.avi", "not a movie").string();
    ASSERT_TRUE(project.CreateNewFile(junk));
    EXPECT_EQ(prompt.Texts(), Texts{"Error geting info for file"});
    EXPECT_EQ(project.Doc.Tree.Find("k8"), nullptr); // a source without tracks
    EXPECT_NE(project.Doc.Tree.Find("k7"), nullptr);
    EXPECT_DOUBLE_EQ(project.MovieFps, 23.976);
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
