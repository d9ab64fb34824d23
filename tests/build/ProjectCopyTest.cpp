#include "build/BuildTestFiles.h"
#include "build/MuxScripts.h"
#include "build/ProjectCopy.h"
#include "core/Paths.h"
#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "document/TreeTestKit.h"

#include <gtest/gtest.h>

#include <QImage>

namespace mw {
namespace {

namespace fs = std::filesystem;
using test::Element;
using test::Everything;
using test::ReadAll;
using test::ScratchFolder;

class ProjectCopyTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        fs::create_directories(work.Path() / "proj");
        QImage picture(64, 48, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        ASSERT_TRUE(picture.save(QString::fromStdString((work.Path() / "proj" / "back.jpg").string()), "JPG"));
        doc.ProjectFile = (work.Path() / "proj" / "demo.xml").string();
        DocTree& t = doc.Tree;
        DocNode& root = Element(t, nullptr, 1, "DivXMediaManager");
        DocNode& media = Element(t, &root, 2, "Media");
        DocNode& title = Element(t, &media, 6, "Title");
        Element(t, &title, 7, "MediaSource", {"location = movie.avi"});
        DocNode& tracks = Element(t, &media, 20, "MenuTracks");
        Element(t, &tracks, 21, "MediaSource", {"location = menu.avi"}).Tag = "<Menuwright Buttons='2' menuID='12'/>";
        Element(t, &tracks, 24, "MediaSource", {"location = back.jpg"});
        Element(t, &tracks, 26, "MediaSource", {"location = "});
        Element(t, &tracks, 27, "MediaSource", {"location = C:\\menus\\x.avi"});
        settings.MethodForPicToMenu = kPicToMenuBuiltIn;
    }

    ScratchFolder home;
    ScratchFolder work;
    Document doc;
    Settings settings;
    LangDoc lang;
    ScriptedPrompt prompt;
};

TEST_F(ProjectCopyTest, TheCopyPointsAtTheBuildFilesAsTheToolsSeeThemAndTheProjectStaysAsItWas)
{
    const std::string before = Everything(doc.Tree);
    home.Write("tmp", "a file where the folder should be");
    EXPECT_FALSE(ReplaceAviNamesForOverlaysSaveAndReverse(doc, home.Path(), 25, settings, lang, prompt));
    EXPECT_EQ(Everything(doc.Tree), before);
    ASSERT_FALSE(prompt.Texts().empty());
    EXPECT_NE(prompt.Texts().back().find("demo.xml"), std::string::npos);

    prompt.Log.clear();
    fs::remove(home.Path() / "tmp");
    fs::create_directories(BuildFolder(home.Path()));
    ASSERT_TRUE(ReplaceAviNamesForOverlaysSaveAndReverse(doc, home.Path(), 25, settings, lang, prompt));
    EXPECT_EQ(Everything(doc.Tree), before);
    EXPECT_TRUE(prompt.Texts().empty()) << prompt.Texts().front();

    const std::string tmp = ToToolPath(BuildFolder(home.Path()).string());
    const std::string copy = ReadAll(BuildFolder(home.Path()) / "demo.xml");
    for (const std::string& location :
         {ToToolPath((work.Path() / "proj" / "movie.avi").string()), tmp + "\\21_menu.avi.divx",
          tmp + "\\24_back.jpg.divx", tmp + "\\27_x.avi.divx", std::string()})
        EXPECT_NE(copy.find("location=\"" + location + "\""), std::string::npos) << location << "\n" << copy;
    // The picture's menu video, made by the method of the settings.
    EXPECT_GT(fs::file_size(BuildFolder(home.Path()) / "24_back.jpg.avi"), 0u);
}

} // namespace
} // namespace mw
