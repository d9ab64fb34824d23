// Language sets and menus made through the command line alone, down to a project that checks clean;
// and overlays rendered from the command line, as scripts make them without a window.
#include "build/BuildTestFiles.h"
#include "cli/CliFixture.h"
#include "media/TitleTestKit.h"
#include "render/OverlayFont.h"
#include "render/OverlayPainters.h"
#include "render/OverlayScheme.h"
#include "render/OverlayStretch.h"
#include "render/TestBitmaps.h"
#include "render/cDIB.h"

#include <QImage>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

class CliMenus : public mw::test::CliFixture {
protected:
    void SetUp() override
    {
        if (CopyMovie(mw::test::ShortMovie(), "movie.avi").empty())
            GTEST_SKIP() << "ffmpeg could not make the movie";
        ASSERT_EQ(Run("new movie.avi -o project.xml").Exit, 0); // objects 1 to 11
    }
    CommandResult On(const std::string& command, const std::string& rest = "")
    {
        return Run(command + " project.xml " + rest);
    }
    std::string Saved() const { return mw::test::ReadAll(folder.Path() / "project.xml"); }
};

TEST_F(CliMenus, TwoLanguagesWithMenusFromAMovieAndFromAMenuCheckClean)
{
    ASSERT_EQ(On("add-lang", "en").Exit, 0); // 12
    ASSERT_EQ(On("add-lang", "DE").Exit, 0); // 13, stored lower case
    // MenuTracks 14; menu 15 with source 16, tracks 17 and 18, exit action 19 and 20.
    EXPECT_EQ(On("add-menu", "--video movie.avi --type title --name Main --lang en").Out, "15\n");
    EXPECT_EQ(On("add-menu", "--from-menu 15 --start 10 --exit 15 --lang en").Out, "21\n");
    EXPECT_EQ(On("add-menu", "--video movie.avi --lang de --name Start").Out, "26\n");
    EXPECT_EQ(On("add-menu", "--from-menu 26 --lang de --exit 26 --type chapter --name 'Second one'").Out, "32\n");
    EXPECT_EQ(On("menus").Out, "language en 12 starting=15 root=none\n"
                               "  menu 15 type=title name=Main video=17 audio=18 start-button=none\n"
                               "    exit 19: MenuTransitionAction menuID=15;\n"
                               "  menu 21 type=other name= video=22 audio=23 start-button=none\n"
                               "    exit 24: MenuTransitionAction menuID=15;\n"
                               "language de 13 starting=26 root=none\n"
                               "  menu 26 type=other name=Start video=28 audio=29 start-button=none\n"
                               "    exit 30: MenuTransitionAction menuID=26;\n"
                               "  menu 32 type=chapter name=Second one video=33 audio=34 start-button=none\n"
                               "    exit 35: MenuTransitionAction menuID=26;\n");
    EXPECT_NE(Saved().find(R"(<MediaTrack objectID="22" mediaSourceID="16" sourceTrackID="none" trackID="00dc" )"
                           R"(startFrame="10" endFrame="50" type="video">)"),
              std::string::npos);

    // Three buttons wired in a ring, with actions of every type.
    for (const char* top : {"10", "50", "90"})
        ASSERT_EQ(On("add-button", std::string("15 10 ") + top + " 100 30").Exit, 0); // 37, 40, 43
    for (const char* nav : {"37 down 40", "40 down 43", "43 down 37", "37 up 43", "43 up 40", "40 up 37"})
        ASSERT_EQ(On("set-nav", nav).Exit, 0) << nav;
    EXPECT_EQ(On("set-action", "37 play:6").Exit, 0);
    EXPECT_EQ(On("set-action", "40 resume:6 audio:6:01wb subtitle:6:01wb --answer yes").Out,
              "Seems that the track you selected is not a subtitle track. Ok to continue, No to set to <none>, "
              "Cancel to exit.\n");
    EXPECT_EQ(On("set-action", "43 menu:15 button:37").Exit, 0);
    EXPECT_EQ(On("set-action", "15:enter audio:6:01wb").Exit, 0);
    const std::string listed = On("menus").Out;
    for (const char* line :
         {"    enter 55: AudioSelectAction titleID=6 trackID=01wb;\n",
          "    button 37 rect=10,10,100,30 upAction=43 downAction=40 leftAction=none rightAction=none\n"
          "      select 46: PlayAction titleID=6 mediaObjectID=6;\n",
          "      select 48: PlayFromCurrentOffsetAction titleID=6 mediaObjectID=6; AudioSelectAction "
          "titleID=6 trackID=01wb; SubtitleSelectAction titleID=6 trackID=01wb;\n",
          "      select 52: MenuTransitionAction menuID=15; ButtonTransitionAction buttonMenuID=37;\n"})
        EXPECT_NE(listed.find(line), std::string::npos) << line << listed;
    CommandResult check = Run("check project.xml");
    EXPECT_EQ(check.Exit, 0);
    EXPECT_EQ(check.Out, "Checking complete with no errors\n");

    // The menu as a template, inserted twice: each copy has its own ring and action lists, whose
    // actions still lead where the original's did.
    ASSERT_EQ(Run("export-template project.xml 15 -o main.xml").Exit, 0);
    EXPECT_EQ(On("insert-template", "main.xml --lang en").Out, "57\n");
    EXPECT_EQ(On("insert-template", "main.xml").Out, "83\n");
    const std::string copies = On("menus").Out;
    for (const char* line :
         {"  menu 57 type=title name=Main video=59 audio=60 start-button=61\n",
          "    button 61 rect=10,10,100,30 upAction=67 downAction=64 leftAction=none rightAction=none\n",
          "      select 76: MenuTransitionAction menuID=15; ButtonTransitionAction buttonMenuID=37;\n",
          "    exit 79: MenuTransitionAction menuID=15;\n"})
        EXPECT_NE(copies.find(line), std::string::npos) << line << copies;
    EXPECT_EQ(Run("check project.xml").Out, "Checking complete with no errors\n");

    // The shared source stays while menu 15 uses it.
    ASSERT_EQ(On("remove-menu", "21").Exit, 0);
    EXPECT_NE(Saved().find(R"(<MediaSource objectID="16")"), std::string::npos);
    EXPECT_EQ(Saved().find(R"(objectID="22")"), std::string::npos);
    EXPECT_EQ(On("remove-lang", "de --answer no").Out, "Are you sure you want to delete the Language Menu?\n");
    EXPECT_NE(Saved().find(R"(objectID="26")"), std::string::npos);
    ASSERT_EQ(On("remove-lang", "de").Exit, 0);
    for (const char* gone : {R"(objectID="13")", R"(objectID="27")", R"(objectID="32")"})
        EXPECT_EQ(Saved().find(gone), std::string::npos) << gone;
    check = Run("check project.xml");
    EXPECT_EQ(check.Out, "Checking complete with no errors\n");
}

TEST_F(CliMenus, RefusalsLeaveTheFileAsItWas)
{
    ASSERT_EQ(On("add-lang", "en").Exit, 0);
    ASSERT_EQ(On("add-menu", "--video movie.avi").Exit, 0);
    const std::string before = Saved();
    const CommandResult again = On("add-lang", "en");
    EXPECT_EQ(again.Exit, 1);
    EXPECT_EQ(again.Out, "This language exist\n");
    const CommandResult frames = On("add-menu", "--video movie.avi --start 30 --end 10");
    EXPECT_EQ(frames.Exit, 1);
    EXPECT_EQ(frames.Out, "Error in frame ranges\n");
    for (const char* bad :
         {"add-lang project.xml xx", "add-menu project.xml", "add-menu project.xml --video movie.avi --from-menu 13",
          "add-menu project.xml --video missing.avi", "add-menu project.xml --video movie.avi --exit 99",
          "add-menu project.xml --video movie.avi --type main", "add-menu project.xml --from-menu 99",
          "add-menu project.xml --video movie.avi --lang fr", "check project.xml --video movie.avi",
          "remove-menu project.xml 12", "remove-lang project.xml fr"}) {
        SCOPED_TRACE(bad);
        EXPECT_EQ(Run(bad).Exit, 2);
    }
    EXPECT_EQ(Saved(), before);

    // A menu from a picture by cli.exe, which is not there: our own encoder is offered instead.
    folder.Write("Menuwright.ini", "[General]\r\nMethodForPicToMenu=1\r\n");
    mw::test::SavePicture(folder.Path() / "back.bmp", 64, 48, mw::Rgb(10, 200, 30));
    const std::string offer = "cli.exe was not found. Make the menu video with the built-in encoder instead?\n";
    const CommandResult refused = On("add-menu", "--picture back.bmp --answer no");
    EXPECT_EQ(refused.Exit, 1);
    EXPECT_EQ(refused.Out, offer);
    EXPECT_EQ(Saved(), before);
    EXPECT_EQ(On("add-menu", "--picture back.bmp").Out, offer + "20\n");
    EXPECT_GT(fs::file_size(folder.Path() / "back.avi"), 0u);
}

TEST_F(CliMenus, ButtonsWiredInARingThenLinedUpMovedAndRemoved)
{
    ASSERT_EQ(On("add-lang", "en").Exit, 0);
    ASSERT_EQ(On("add-menu", "--video movie.avi").Out, "14\n");
    for (const char* id : {"20", "23", "26"}) // each with its rectangle and overlay track
        EXPECT_EQ(On("add-button", "14 10 " + std::to_string(std::stoi(id) * 2) + " 100 30").Out,
                  std::string(id) + "\n");
    EXPECT_EQ(On("add-button", "14 0 0 5 5 --overlay '*Oval'").Exit, 0);  // 29
    EXPECT_EQ(On("add-button", "14 0 0 5 5 --overlay '*Text'").Exit, 2);
    ASSERT_EQ(On("remove-button", "29").Exit, 0);
    for (const char* nav : {"20 down 23", "23 down 26", "26 down 20", "20 up 26", "26 up 23", "23 up 20"})
        ASSERT_EQ(On("set-nav", nav).Exit, 0) << nav;
    ASSERT_EQ(On("same-size", "both 26 20 23").Exit, 0);
    ASSERT_EQ(On("align", "right 26 20").Exit, 0);
    ASSERT_EQ(On("move-button", "23 12 48 100 31").Exit, 0);
    EXPECT_EQ(On("menus").Out,
              "language en 12 starting=14 root=none\n"
              "  menu 14 type=other name= video=16 audio=17 start-button=20\n"
              "    exit 18: MenuTransitionAction menuID=14;\n"
              "    button 20 rect=10,40,100,30 upAction=26 downAction=23 leftAction=none rightAction=none\n"
              "    button 23 rect=12,48,100,31 upAction=20 downAction=26 leftAction=none rightAction=none\n"
              "    button 26 rect=10,52,100,30 upAction=23 downAction=20 leftAction=none rightAction=none\n");
    EXPECT_NE(Saved().find(R"(<MediaTrack objectID="28" mediaSourceID="15" sourceTrackID="none" trackID="02sb" )"
                           R"(startFrame="2" endFrame="2" type="subtitle">)"),
              std::string::npos);

    // Overlays and colours.
    ASSERT_EQ(On("set-overlay", "20 23 '*Text' --text Hi --font 'Arial,I' --font-size 12,5 --shadow 2LT").Exit, 0);
    ASSERT_EQ(On("set-overlay", "26 '*Shape1' --width 5").Exit, 0);
    ASSERT_EQ(On("set-colors", "14 1 2 3").Exit, 0);
    EXPECT_EQ(On("set-overlay", "26 '*Oval' --width 8").Exit, 2);
    EXPECT_EQ(On("set-overlay", "26 '*Oval' --text x").Exit, 2);
    const std::string saved = Saved();
    EXPECT_NE(saved.find("Shape='*Text' width='3' Position='0 0 0 0' Text='Hi' Outline='0' Shadow='2LT' "
                         "Font='Arial,I' FontSize='12.5' FontCharset='0'"),
              std::string::npos);
    EXPECT_NE(saved.find("<Menuwright Shape='*Shape1' width='5' Position='0 0 0 0'/>"), std::string::npos);
    EXPECT_NE(saved.find("<Menuwright Color1='1' Color2='2' Color3='3' frame='0'/>"), std::string::npos);

    // A picture becomes an overlay of the library on a button; a refusal or No changes nothing.
    mw::cDIB picture;
    ASSERT_TRUE(picture.Create(8, 8, 24));
    picture.Cls(mw::Rgb(0, 128, 0));
    picture.SetPixel(3, 3, mw::Rgb(255, 255, 255));
    ASSERT_TRUE(picture.Save((folder.Path() / "logo.bmp").string()));
    fs::create_directories(folder.Path() / "overlays");
    ASSERT_EQ(On("set-overlay", "26 --from-picture logo.bmp --transparent 3,3").Exit, 0);
    EXPECT_NE(Saved().find("<Menuwright Shape='logo' width='5' Position='0 0 0 0'/>"), std::string::npos);
    mw::cDIB overlay;
    ASSERT_TRUE(overlay.CreateFromBitmapFile((folder.Path() / "overlays" / "logo.bmp").string()));
    EXPECT_EQ(overlay.Pixel(3, 3), 0u);
    EXPECT_NE(overlay.Pixel(0, 0), 0u);
    const std::string withLogo = Saved();
    EXPECT_EQ(On("set-overlay", "20 --from-picture logo.bmp --answer no").Exit, 1);
    EXPECT_EQ(On("set-overlay", "20 --from-picture logo.bmp --transparent 8,0").Exit, 1);
    EXPECT_EQ(On("set-overlay", "20 --from-picture logo.bmp --width 2").Exit, 2);
    EXPECT_EQ(Saved(), withLogo);

    // One deletion routes the ring past the button; a button of another menu is refused.
    ASSERT_EQ(On("remove-button", "23").Exit, 0);
    EXPECT_NE(On("menus").Out.find("button 20 rect=10,40,100,30 upAction=26 downAction=26"), std::string::npos);
    EXPECT_EQ(On("remove-button", "20 14").Exit, 2);
    EXPECT_EQ(On("set-nav", "20 up 99").Exit, 2);
}

} // namespace

namespace mw::test {

namespace {

class CliOverlay : public CliFixture {
protected:
    cDIB Read(const std::string& name) const
    {
        cDIB dib;
        EXPECT_TRUE(dib.CreateFromBitmapFile((folder.Path() / name).string())) << name;
        return dib;
    }
};

} // namespace

TEST_F(CliOverlay, PaintsSpecialOverlaysWithTheColoursInEntriesOneToThree)
{
    NeedFontApplication();
    ASSERT_EQ(Run("overlay '*Rect' 40x20 -o rect.bmp --width 4 --colors 255,#00FF00,16711680").Exit, 0);
    cDIB expected = CreateRect(4, 40, 20);
    expected.SetColorTable({kOverlayBlue, Rgb(255, 0, 0), Rgb(0, 255, 0), Rgb(0, 0, 255)});
    EXPECT_EQ(Read("rect.bmp"), expected);

    ASSERT_EQ(Run("overlay '*Text' 160x60 -o text.bmp --text 'Go\nOn' --font 'Arial,B' --font-size 14.5 "
                  "--outline 1 --shadow 2LT")
                  .Exit,
              0);
    EXPECT_EQ(Read("text.bmp"), CreateText(160, 60, "Go\nOn", 1, "2LT", {"Arial", 14.5, true}));

    for (const char* bad : {"overlay '*Rect' 40 -o x.bmp", "overlay '*Rect' 0x20 -o x.bmp", "overlay '*Rect' 40x20",
                            "overlay '*Star' 40x20 -o x.bmp", "overlay '*Rect' 40x20 -o x.bmp --width 0",
                            "overlay '*Rect' 40x20 -o x.bmp --colors 1,2", "overlay '*Rect' 40x20 -o x.bmp --outline"}) {
        EXPECT_EQ(Run(bad).Exit, 2) << bad;
        EXPECT_FALSE(std::filesystem::exists(folder.Path() / "x.bmp")) << bad;
    }
}

TEST_F(CliOverlay, FitsALibraryFileByItsStretchModeOrSaysWhatIsWrong)
{
    cDIB source = Patterned(40, 40, 4);
    source.SetColorTable(OverlayColorTable());
    std::filesystem::create_directories(folder.Path() / "overlays" / "frames");
    ASSERT_TRUE(source.Save((folder.Path() / "overlays" / "frames" / "box_.bmp").string()));
    ASSERT_EQ(Run("overlay 'frames\\box_' 90x50 -o fitted.bmp").Exit, 0);
    cDIB expected = NewOverlayDib(90, 50);
    StretchOverlay(source, expected, OverlayStretchMode::NineSlice);
    EXPECT_EQ(Read("fitted.bmp"), expected);

    const CommandResult missing = Run("overlay nothing 90x50 -o none.bmp");
    EXPECT_EQ(missing.Exit, 1);
    EXPECT_EQ(missing.Out, "File '" + (folder.Path() / "overlays" / "nothing.bmp").string() + "' not found\n");
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "none.bmp"));
}

TEST_F(CliOverlay, TurnsAPictureIntoAnOverlayWithTheChosenPixelTransparent)
{
    QImage image(20, 10, QImage::Format_RGB32);
    image.fill(QColor(0, 128, 0));
    image.setPixelColor(15, 5, Qt::white);
    ASSERT_TRUE(image.save(QString::fromStdString((folder.Path() / "pic.png").string())));
    ASSERT_EQ(Run("overlay-from-picture pic.png -o pic.bmp --transparent 15,5").Exit, 0);
    const cDIB overlay = Read("pic.bmp");
    ASSERT_EQ(overlay.BPP(), 4);
    EXPECT_EQ(overlay.Pixel(15, 5), 0u);
    EXPECT_NE(overlay.Pixel(0, 0), 0u);
    const std::vector<Colour> table = overlay.GetColorTable();
    EXPECT_EQ(std::vector<Colour>(table.begin(), table.begin() + 4),
              std::vector<Colour>(kOverlayPaintColours.begin(), kOverlayPaintColours.end()));
    EXPECT_EQ(Run("overlay-from-picture pic.png -o out.bmp --transparent 20,0").Exit, 2);
    EXPECT_EQ(Run("overlay-from-picture gone.png -o out.bmp").Exit, 1);
}

} // namespace mw::test
