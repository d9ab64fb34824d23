// Buttons from a picture of highlight areas, pasted into a menu from the command line.
#include "cli/CliFixture.h"
#include "media/MovieFixtures.h"
#include "generators/SubEditPicture.h"

#include "render/cDIB.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

class CliSubEdit : public mw::test::CliFixture {
protected:
    void SetUp() override
    {
        if (CopyMovie(mw::test::ShortMovie(), "movie.avi").empty())
            GTEST_SKIP() << "ffmpeg could not make the movie";
        ASSERT_EQ(Run("new movie.avi -o project.xml").Exit, 0);
        ASSERT_EQ(Run("add-lang project.xml en").Exit, 0);
        ASSERT_EQ(Run("add-menu project.xml --video movie.avi --lang en").Out, "14\n");
        ASSERT_TRUE(mw::test::HighlightPicture().save(QString::fromStdString((folder.Path() / "menu.png").string())));
    }
    std::string Saved() const { return mw::test::ReadAll(folder.Path() / "project.xml"); }
};

TEST_F(CliSubEdit, MakesTheButtonsAndOverlaysOfAPictureAndTheProjectChecksClean)
{
    const CommandResult made = Run("buttons-from-picture project.xml 14 menu.png");
    ASSERT_EQ(made.Exit, 0);
    EXPECT_EQ(made.Out, "20\n23\n26\n29\n");
    const std::string menus = Run("menus project.xml").Out;
    for (const char* line : {"    button 20 rect=10,10,40,20 ", "    button 23 rect=80,10,30,30 ",
                             "    button 26 rect=10,60,25,25 ", "    button 29 rect=170,90,30,30 "})
        EXPECT_NE(menus.find(line), std::string::npos) << line << menus;
    EXPECT_NE(Saved().find("Shape='DVDSubEdit\\14_4' Position='3 4 0 0'"), std::string::npos) << Saved();
    for (int n = 1; n <= 4; ++n) {
        mw::cDIB overlay;
        const fs::path file = folder.Path() / "overlays" / "DVDSubEdit" / ("14_" + std::to_string(n) + ".bmp");
        ASSERT_TRUE(overlay.CreateFromBitmapFile(file.string())) << file;
        EXPECT_EQ(overlay.BPP(), 4);
    }
    // Once they do something, the project is whole.
    for (const char* button : {"20", "23", "26", "29"})
        ASSERT_EQ(Run(std::string("set-action project.xml ") + button + " play:6").Exit, 0) << button;
    const CommandResult check = Run("check project.xml");
    EXPECT_EQ(check.Exit, 0);
    EXPECT_EQ(check.Out, "Checking complete with no errors\n");

    // Forced to squares, without overlays.
    ASSERT_EQ(Run("buttons-from-picture project.xml 14 menu.png --force 12 --no-overlays").Exit, 0);
    EXPECT_NE(Run("menus project.xml").Out.find("rect=170,90,12,12 "), std::string::npos);
    const std::string saved = Saved();
    std::size_t shapes = 0;
    for (auto at = saved.find("Shape='DVDSubEdit"); at != std::string::npos; at = saved.find("Shape='DVDSubEdit", at + 1))
        ++shapes;
    EXPECT_EQ(shapes, 4u); // the second four keep the default overlay

    // A picture of 23 areas: the window takes the first twenty, --set 2 the three after them.
    ASSERT_TRUE(mw::test::GridPicture(23).save(QString::fromStdString((folder.Path() / "grid.png").string())));
    const CommandResult later = Run("buttons-from-picture project.xml 14 grid.png --set 2 --no-overlays");
    ASSERT_EQ(later.Exit, 0);
    EXPECT_EQ(later.Out, "52\n55\n58\n");
    EXPECT_NE(Run("menus project.xml").Out.find("rect=210,10,6,6 "), std::string::npos);
}

TEST_F(CliSubEdit, APictureWithoutAreasOrABadLineLeavesTheProjectAsItWas)
{
    const std::string before = Saved();
    QImage plain(40, 40, QImage::Format_RGB32);
    plain.fill(Qt::black);
    ASSERT_TRUE(plain.save(QString::fromStdString((folder.Path() / "plain.png").string())));
    const CommandResult none = Run("buttons-from-picture project.xml 14 plain.png");
    EXPECT_EQ(none.Exit, 1);
    EXPECT_EQ(none.Out, "No buttons found\n");
    EXPECT_EQ(Run("buttons-from-picture project.xml 6 menu.png").Exit, 2);
    EXPECT_EQ(Run("buttons-from-picture project.xml 14 missing.png").Exit, 2);
    EXPECT_EQ(Run("buttons-from-picture project.xml 14 menu.png --force 0").Exit, 2);
    EXPECT_EQ(Run("buttons-from-picture project.xml 14 menu.png --set 0").Exit, 2);
    EXPECT_EQ(Run("add-button project.xml 14 1 1 9 9 --no-overlays").Exit, 2);
    EXPECT_EQ(Saved(), before);
    EXPECT_FALSE(fs::exists(folder.Path() / "overlays" / "DVDSubEdit"));
}

} // namespace
