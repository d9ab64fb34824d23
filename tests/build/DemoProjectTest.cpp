#include "build/DemoProject.h"
#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "document/ProgramStart.h"
#include "document/Project.h"
#include "document/TreeQueries.h"
#include "media/ChapterNodes.h"
#include "media/FrameGrabber.h"
#include "media/TitleNodes.h"
#include "media/TitleTestKit.h"
#include "render/OverlayFont.h"
#include "render/cDIB.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace mw::test {

namespace {

std::vector<std::string> Kinds(const DocNode& parent, const std::string& text)
{
    std::vector<std::string> kinds;
    for (const auto& child : parent) {
        if (child->Text == text)
            kinds.push_back(child->Image);
    }
    return kinds;
}

DocNode* VideoTrackOf(const DocNode& chapter)
{
    for (const auto& child : chapter) {
        if (child->Image == "movielink")
            return child.get();
    }
    return nullptr;
}

} // namespace

TEST(DemoProject, ReadsBackFromACopiedFolderWithItsTitleChaptersTracksAndDistinctPictures)
{
    NeedFontApplication();
    ScratchFolder made;
    ScriptedPrompt prompt;
    const DemoProjectSpec spec{{176, 144, 25, 40}, 4};
    ASSERT_TRUE(MakeDemoProject(made.Path(), spec, prompt)) << ::testing::PrintToString(prompt.Texts());
    EXPECT_TRUE(prompt.Log.empty()) << ::testing::PrintToString(prompt.Texts());

    // Only the movie and the project: no settings file, no work files.
    std::vector<std::string> files;
    for (const auto& entry : fs::directory_iterator(made.Path() / "Demo"))
        files.push_back(entry.path().filename().string());
    std::sort(files.begin(), files.end());
    EXPECT_EQ(files, (std::vector<std::string>{"Demo.avi", "Demo.xml"}));

    // The copy is opened after the original is gone, so the project cannot lean on its path.
    ScratchFolder elsewhere;
    const fs::path copy = elsewhere.Path() / "Copied";
    fs::copy(made.Path() / "Demo", copy, fs::copy_options::recursive);
    fs::remove_all(made.Path() / "Demo");

    ScratchFolder home;
    ProgramState program(home.Path());
    ScriptedForms forms;
    Project project(program, prompt, forms);
    ASSERT_TRUE(project.OpenFile((copy / "Demo.xml").string())) << ::testing::PrintToString(prompt.Texts());

    const std::vector<DocNode*> titles = TitleNodes(project.Doc);
    ASSERT_EQ(titles.size(), 1u);
    const DocNode& title = *titles.front();
    const std::string movie = TitleFile(project.Doc, title);
    EXPECT_EQ(fs::path(movie), copy / "Demo.avi");
    EXPECT_EQ(Kinds(title, "MediaTrack"), (std::vector<std::string>{"movielink", "audiolink"}));

    const std::vector<DocNode*> chapters = ChapterNodesOf(title);
    ASSERT_EQ(chapters.size(), 4u);
    std::vector<cDIB> pictures;
    long previousStart = -1;
    for (const DocNode* chapter : chapters) {
        EXPECT_EQ(Kinds(*chapter, "MediaTrack"), (std::vector<std::string>{"movielink", "audiolink"}));
        const DocNode* video = VideoTrackOf(*chapter);
        ASSERT_NE(video, nullptr);
        long start = std::stol(GetPropertyInNode(*video, "startFrame"));
        EXPECT_GT(start, previousStart);
        EXPECT_LT(start, spec.Movie.Frames);
        previousStart = start;
        cDIB picture;
        ASSERT_TRUE(GrabFrameToPicture(movie, picture, start, true, prompt, project.Lang()));
        EXPECT_EQ(picture.Width(), spec.Movie.Width);
        for (const cDIB& earlier : pictures)
            EXPECT_FALSE(picture == earlier) << "chapter at frame " << start << " looks like an earlier one";
        pictures.push_back(picture);
    }
}

TEST(DemoProject, FailsWithAMessageWhereNoFolderCanBeMade)
{
    NeedFontApplication();
    ScratchFolder scratch;
    const fs::path blocker = scratch.Write("Demo", "a file where the folder should go");
    ScriptedPrompt prompt;
    EXPECT_FALSE(MakeDemoProject(scratch.Path(), {{176, 144, 25, 10}, 2}, prompt));
    EXPECT_EQ(prompt.Log.size(), 1u);
    EXPECT_EQ(ReadAll(blocker), "a file where the folder should go");
}

} // namespace mw::test
