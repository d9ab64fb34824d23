#include "build/DemoProject.h"
#include "build/StarterLibrary.h"
#include "core/ProgramFolder.h"
#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "document/ProgramStart.h"
#include "document/Project.h"
#include "document/TreeQueries.h"
#include "media/AviFile.h"
#include "media/ChapterNodes.h"
#include "media/FrameGrabber.h"
#include "media/TitleNodes.h"
#include "media/TitleTestKit.h"
#include "render/OverlayFont.h"
#include "render/OverlayScheme.h"
#include "render/OverlayStretch.h"
#include "render/TestBitmaps.h"
#include "render/cDIB.h"

#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>

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

TEST(StarterLibrary, ShipsFourColourOverlaysAndTheHelperFilesAndSeedsAFreshProgramFolder)
{
    NeedFontApplication();
    ScratchFolder shipped;
    ScriptedPrompt prompt;
    ASSERT_TRUE(MakeStarterLibrary(shipped.Path(), prompt)) << ::testing::PrintToString(prompt.Texts());

    std::set<OverlayStretchMode> modes;
    int overlays = 0;
    for (const auto& entry : fs::recursive_directory_iterator(shipped.Path() / "overlays")) {
        if (entry.path().extension() != ".bmp")
            continue;
        ++overlays;
        modes.insert(StretchModeOfFile(entry.path().filename().string()));
        cDIB dib;
        ASSERT_TRUE(dib.CreateFromBitmapFile(entry.path().string())) << entry.path();
        ASSERT_EQ(dib.BPP(), 4) << entry.path();
        EXPECT_EQ(dib.GetColorTable(), OverlayColorTable()) << entry.path();
        const std::set<std::uint32_t> used = ValuesIn(dib);
        EXPECT_LE(*used.rbegin(), 3u) << entry.path();
        EXPECT_GE(used.size(), 2u) << entry.path() << " draws nothing";
    }
    EXPECT_GE(overlays, 6);
    EXPECT_EQ(modes.size(), 3u); // plain, nine-slice and lower-corner files
    EXPECT_TRUE(fs::exists(shipped.Path() / "overlays" / "frames" / "DVD_Button_2.bmp"));

    // The border shows the thumbnail through pure green and hides the outside with pure red.
    const QImage border(QString::fromStdString((shipped.Path() / "frames" / "DVD_Button_2.gif").string()));
    ASSERT_FALSE(border.isNull());
    EXPECT_EQ(border.pixelColor(0, 0), QColor(255, 0, 0));
    EXPECT_EQ(border.pixelColor(border.width() / 2, border.height() / 2), QColor(0, 255, 0));
    EXPECT_FALSE(QImage(QString::fromStdString((shipped.Path() / "Templates" / "Pictures" / "sky.jpg").string())).isNull());
    EXPECT_EQ(QImage(QString::fromStdString((shipped.Path() / "DVDSubEditSettings.jpg").string())).size(), QSize(720, 420));
    const auto black = AviFile::Open((shipped.Path() / "black.avi").string());
    ASSERT_TRUE(black);
    EXPECT_GT(black->Stream(0).Info.dwLength, 0u);

    ScratchFolder home;
    ProgramEnvironment env;
    env.XdgDataHome = home.Path().string();
    env.IsWritable = [](const fs::path&) { return false; };
    const fs::path folder = ResolveProgramFolder("/opt/menuwright/bin/menuwright", env, shipped.Path());
    for (const char* file : {"overlays/Rectangle_.bmp", "overlays/Corners}.bmp", "overlays/frames/DVD_Button_2.bmp",
                             "frames/DVD_Button_2.gif", "Templates/Pictures/sky.jpg", "black.avi",
                             "DVDSubEditSettings.jpg"})
        EXPECT_TRUE(fs::exists(folder / file)) << file;
}

} // namespace mw::test
