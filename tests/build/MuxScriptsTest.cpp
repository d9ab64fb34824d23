#include "build/FakeWine.h"
#include "build/MuxScripts.h"
#include "core/Paths.h"
#include "core/ScriptedPrompt.h"
#include "document/TreeTestKit.h"
#include "media/AviBytes.h"

#include "build/BuildTestFiles.h"
#include "build/CreateDivX.h"
#include "build/CreateOverlays.h"
#include "build/ProjectCopy.h"
#include "render/OverlayFont.h"
#include "render/OverlayPainters.h"

#include <gtest/gtest.h>

#include <QImage>

namespace mw {
namespace {

namespace fs = std::filesystem;
using test::CrLf;
using test::Element;
using test::ReadAll;
using test::ScratchFolder;

// Two menus in two languages: one on a movie with two audio streams and a subtitle stream, its
// buttons' pictures in the build folder but for the last, its background audio an MP3; one on a
// picture, its Buttons kept on the source as older files do. A third video track has no buttons.
// The movie's menu has a default, an oval and a bracket button; the picture's menu a text, a
// file overlay and a button whose track lacks its rectID.
class MuxScriptsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        fs::create_directories(BuildFolder(home.Path()));
        fs::create_directories(work.Path() / "pics");
        QImage back(96, 64, QImage::Format_RGB32);
        back.fill(Qt::darkBlue);
        ASSERT_TRUE(back.save(QString::fromStdString((work.Path() / "pics" / "back.jpg").string()), "JPG"));
        cDIB arrow;
        arrow.Create(8, 8, 4);
        for (int i = 0; i < 8; ++i)
            arrow.SetPixel(i, i, 1);
        fs::create_directories(home.Path() / "overlays");
        ASSERT_TRUE(arrow.Save((home.Path() / "overlays" / "arrow.bmp").string()));
        test::AviSpec spec;
        test::AviStreamSpec subtitle = test::VideoStream(2, 1);
        subtitle.Name = std::string("Subtitle English") + '\0';
        spec.Streams = {test::VideoStream(2, 1), test::AudioStream(2), subtitle, test::AudioStream(2)};
        work.Write("my proj/menu.avi", test::BuildAvi(spec).Bytes);
        work.Write("my proj/music.mp3", "ID3");
        doc.ProjectFile = (work.Path() / "my proj" / "demo.xml").string();
        picture = (work.Path() / "pics" / "back.jpg").string();

        DocTree& t = doc.Tree;
        DocNode& root = Element(t, nullptr, 1, "DivXMediaManager");
        DocNode& media = Element(t, &root, 2, "Media");
        DocNode& tracks = Element(t, &media, 20, "MenuTracks");
        Element(t, &tracks, 21, "MediaSource", {"mediaType = menuAvi", "location = menu.avi"});
        Element(t, &tracks, 22, "MediaTrack", {"mediaSourceID = 21", "type = video"}).Tag =
            "<Menuwright Buttons='3' menuID=' 12 '/>";
        Subtitle(23, "21", 0, "51");
        Subtitle(60, "21", 1, "54");
        Subtitle(61, "21", 2, "57");
        Subtitle(62, "24", 0, "66");
        Subtitle(63, "24", 1, "68");
        Subtitle(64, "24", 2, "");
        Element(t, &tracks, 24, "MediaSource", {"location = " + picture}).Tag = "<Menuwright Buttons='1' menuID='32'/>";
        Element(t, &tracks, 25, "MediaTrack", {"mediaSourceID = 24", "type = video"});
        Element(t, &tracks, 26, "MediaSource", {"location = music.mp3"});
        Element(t, &tracks, 27, "MediaTrack", {"mediaSourceID = 26", "type = audio"});
        Element(t, &tracks, 28, "MediaTrack", {"mediaSourceID = 21", "type = video"}).Tag =
            "<Menuwright Buttons='0' menuID='12'/>";
        DocNode& en = Element(t, &root, 9, "LanguageMenus", {"languageCode = en"});
        DocNode& movieMenu = Element(t, &en, 12, "DivXMediaMenu", {"backgroundVideoID = 22", "backgroundAudioID = 27"});
        movieMenu.Tag = "<Menuwright Color1='255' Color3='16777215'/>";
        Button(movieMenu, 50, "23", {10, 10, 20, 12}, "");
        Button(movieMenu, 53, "60", {34, 8, 24, 16}, "<Menuwright Shape='*Oval' Position='0 0 0 0' width='2'/>");
        Button(movieMenu, 56, "61", {4, 30, 40, 14}, "<Menuwright Shape='*Shape1' width='5'/>");
        DocNode& de = Element(t, &root, 30, "LanguageMenus", {"languageCode = de"});
        DocNode& pictureMenu = Element(t, &de, 32, "DivXMediaMenu", {"backgroundVideoID = 25", "backgroundAudioID = None"});
        Button(pictureMenu, 65, "62", {8, 8, 60, 30}, "<Menuwright Shape='*Text' Text='Go' Position='2 2 -4 -4'/>");
        Button(pictureMenu, 67, "63", {70, 20, 16, 16}, "<Menuwright Shape='arrow' Position='0 0 0 0'/>");
        Button(pictureMenu, 69, "64", {0, 0, 8, 8}, "");
        LoadMediaTracsFromMenuTracs(doc, doc.MenuTracks);

        for (const char* bmp : {"Menuwright_menu.avi12_21_0.bmp", "Menuwright_menu.avi12_21_1.bmp",
                                "Menuwright_back.jpg32_24_0.bmp"})
            work.Write(Tmp() / bmp, "BM");
    }

    void Subtitle(long id, const std::string& source, int startFrame, const std::string& rectID)
    {
        DocNode* tracks = doc.Tree.ObjectNode("20");
        Element(doc.Tree, tracks, id, "MediaTrack",
                {"mediaSourceID = " + source, "type = subtitle", "startFrame = " + std::to_string(startFrame)})
            .Tag = rectID.empty() ? "" : "<Menuwright rectID='" + rectID + "'/>";
    }
    // A button, its rectangle (id + 1) and its overlay track.
    void Button(DocNode& menu, long id, const std::string& overlay, const std::array<int, 4>& r, const std::string& tag)
    {
        DocNode& button = Element(doc.Tree, &menu, id, "ButtonMenu", {"overlayID = " + overlay});
        button.Tag = tag;
        Element(doc.Tree, &button, id + 1, "MenuRectangle",
                {"left = " + std::to_string(r[0]), "top = " + std::to_string(r[1]), "width = " + std::to_string(r[2]),
                 "height = " + std::to_string(r[3])});
    }

    fs::path Tmp() const { return BuildFolder(home.Path()); }
    std::string H() const { return ToToolPath(home.Path().string()); }
    std::string P() const { return ToToolPath((work.Path() / "my proj").string()); }
    MuxJob Job() { return {doc, options, lang, home.Path(), rects, colours, false, {}, false}; }

    std::string Block(const std::string& title, const std::string& command) const
    {
        return CrLf({"ECHO OFF", "ECHO *******************************", title, "ECHO *******************************",
                     "ECHO ON", "Z:", "cd \"" + H() + "\\tmp\"", command, "", ""});
    }

    ScratchFolder home;
    ScratchFolder work;
    Document doc;
    std::string picture;
    Settings options;
    LangDoc lang;
    OverlayRects rects{{"12_21_0", "(0 0 720 576)"}, {"12_21_1", "(0 0 720 576)"}, {"32_24_0", "(0 0 640 480)"}};
    std::array<Colour, 3> colours{Rgb(1, 2, 3), Rgb(10, 20, 30), Rgb(100, 110, 120)};
    ScriptedPrompt prompt;
    test::RecordingLog log;
};

// The smallest box around the pixels that are not transparent: left, top, right, bottom.
std::array<int, 4> PaintedBox(const cDIB& dib)
{
    std::array<int, 4> box{dib.Width(), dib.Height(), -1, -1};
    for (int y = 0; y < dib.Height(); ++y) {
        for (int x = 0; x < dib.Width(); ++x) {
            if (dib.Pixel(x, y) != 0)
                box = {std::min(box[0], x), std::min(box[1], y), std::max(box[2], x), std::max(box[3], y)};
        }
    }
    return box;
}

// Something is painted, and only inside the box.
bool PaintedWithin(const cDIB& dib, int left, int top, int width, int height)
{
    const std::array<int, 4> box = PaintedBox(dib);
    return box[0] <= box[2] && box[0] >= left && box[1] >= top && box[2] < left + width && box[3] < top + height;
}

// The part of the picture at (left, top) of the overlay's size, pixel for pixel.
bool Holds(const cDIB& whole, const cDIB& overlay, int left, int top)
{
    for (int y = 0; y < overlay.Height(); ++y) {
        for (int x = 0; x < overlay.Width(); ++x) {
            if (whole.Pixel(left + x, top + y) != overlay.Pixel(x, y))
                return false;
        }
    }
    return true;
}

TEST_F(MuxScriptsTest, EachButtonGetsAFullFramePictureTransparentButForItsOverlay)
{
    NeedFontApplication();
    OverlayRects made{{"stale", "(0 0 1 1)"}};
    ToolRunner runner;
    ASSERT_TRUE(CreateOverlays(doc, home.Path(), colours, lang, prompt, log, runner, made));
    EXPECT_TRUE(prompt.Texts().empty()) << prompt.Texts().front();
    EXPECT_EQ(made, (OverlayRects{{"12_21_0", "(0 0 64 48)"}, {"12_21_1", "(0 0 64 48)"}, {"12_21_2", "(0 0 64 48)"},
                                  {"32_24_0", "(0 0 96 64)"}, {"32_24_1", "(0 0 96 64)"}}));
    EXPECT_EQ(log.Progressed, (std::vector<std::pair<int, int>>{{1, 2}, {2, 2}}));
    // The track without a rectID has no picture.
    EXPECT_FALSE(fs::exists(Tmp() / "Menuwright_back.jpg32_24_2.bmp"));

    const auto bitmap = [this](const std::string& name) {
        cDIB dib;
        EXPECT_TRUE(dib.CreateFromBitmapFile((Tmp() / name).string())) << name;
        EXPECT_EQ(dib.BPP(), 4) << name;
        return dib;
    };
    // The default overlay stands 6 pixels around the rectangle; Position "0 0 0 0" on it; none
    // at all gives the rectangle itself.
    const cDIB rect = bitmap("Menuwright_menu.avi12_21_0.bmp");
    EXPECT_EQ(rect.Width(), 64);
    EXPECT_TRUE(Holds(rect, CreateRect(3, 32, 24), 4, 4));
    EXPECT_EQ(PaintedBox(rect), (std::array<int, 4>{4, 4, 35, 27}));
    // The menu's own colours, the current one where it has none.
    const std::vector<Colour> table = rect.GetColorTable();
    EXPECT_EQ(std::vector<Colour>(table.begin() + 1, table.begin() + 4),
              (std::vector<Colour>{Rgb(255, 0, 0), Rgb(10, 20, 30), Rgb(255, 255, 255)}));
    const cDIB oval = bitmap("Menuwright_menu.avi12_21_1.bmp");
    EXPECT_TRUE(Holds(oval, CreateOval(2, 24, 16), 34, 8));
    EXPECT_TRUE(PaintedWithin(oval, 34, 8, 24, 16));
    const cDIB brackets = bitmap("Menuwright_menu.avi12_21_2.bmp");
    EXPECT_TRUE(Holds(brackets, CreateShape1(5, 40, 14), 4, 30));
    EXPECT_TRUE(PaintedWithin(brackets, 4, 30, 40, 14));

    // The picture's menu takes its size from the picture.
    const cDIB text = bitmap("Menuwright_back.jpg32_24_0.bmp");
    EXPECT_EQ(text.Width(), 96);
    EXPECT_EQ(text.Height(), 64);
    EXPECT_TRUE(PaintedWithin(text, 6, 6, 64, 34));
    const cDIB file = bitmap("Menuwright_back.jpg32_24_1.bmp");
    EXPECT_TRUE(PaintedWithin(file, 70, 20, 16, 16));
    EXPECT_EQ(file.Pixel(PaintedBox(file)[0], PaintedBox(file)[1]), 1u) << "the overlay file's diagonal";

    // The linker file lists every picture with the rectangle noted for it.
    std::string error;
    ASSERT_TRUE(WriteOverlayScripts({doc, options, lang, home.Path(), made, colours, false, {}, false}, error));
    const std::string linker = ReadAll(Tmp() / "linkerfile21.txt");
    EXPECT_NE(linker.find("00:00:02.000\t00:00:02.000\t\"Menuwright_menu.avi12_21_2.bmp\"\t(0 0 64 48)\r\n"),
              std::string::npos)
        << linker;
}

TEST_F(MuxScriptsTest, OverlayScriptAndLinkerFilesAreWrittenByteForByte)
{
    std::string error;
    ASSERT_TRUE(WriteOverlayScripts(Job(), error)) << error;

    const std::string movie = "\"" + P() + "\\menu.avi\"";
    const std::string pictureVideo = "\"" + H() + "\\tmp\\24_back.jpg.avi\"";
    const std::string head = CrLf({"ECHO OFF", "ECHO ***********************", "ECHO ** Creating OVERLAYS **",
                                   "ECHO ***********************", "ECHO ON", ""});
    EXPECT_EQ(ReadAll(Tmp() / "DoOverlays.bat"),
              head +
                  Block("ECHO Creating menu avi for ID 22", "DivXMux.exe -v " + movie + " -a #1 " + movie + " -a #2 " +
                                                                movie + " -s #1 " + movie +
                                                                " -o \"21_menu.avi.divx\"") +
                  Block("ECHO Creating menu avi for ID 25",
                        "DivXMux.exe -v " + pictureVideo + " -o \"24_back.jpg.divx\"") +
                  Block("ECHO Creating overlays for ID 22", "DivXMux.exe -s linkerfile21.txt -m -v " + movie +
                                                                " -a \"" + P() + "\\music.mp3\"" +
                                                                " -o \"21_menu.avi.divx\"") +
                  Block("ECHO Creating overlays for ID 25", "DivXMux.exe -s linkerfile24.txt -m -v " + pictureVideo +
                                                                " -o \"24_back.jpg.divx\"") +
                  "pause\r\n");

    // The menu's own colours where it has them, the current ones elsewhere; the list ends at the
    // first missing picture although the menu has three buttons.
    EXPECT_EQ(ReadAll(Tmp() / "linkerfile21.txt"),
              CrLf({"0 = (0, 0, 0)", "1 = (255, 0, 0)", "2 = (10, 20, 30)", "3 = (255, 255, 255)", "",
                    "SUBPALETTE (0 1 2 3)",
                    "00:00:00.000\t00:00:00.000\t\"Menuwright_menu.avi12_21_0.bmp\"\t(0 0 720 576)",
                    "00:00:01.000\t00:00:01.000\t\"Menuwright_menu.avi12_21_1.bmp\"\t(0 0 720 576)"}));
    EXPECT_EQ(ReadAll(Tmp() / "linkerfile24.txt"),
              CrLf({"0 = (0, 0, 0)", "1 = (1, 2, 3)", "2 = (10, 20, 30)", "3 = (100, 110, 120)", "",
                    "SUBPALETTE (0 1 2 3)",
                    "00:00:00.000\t00:00:00.000\t\"Menuwright_back.jpg32_24_0.bmp\"\t(0 0 640 480)"}));
    EXPECT_EQ(doc.Tree.ObjectNode("25")->Tag, "") << "the build changed the document";

    const std::string final = CrLf({"ECHO OFF", "ECHO *************************", "ECHO ** Creating final DivX **",
                                    "ECHO *************************", "ECHO ON", "Z:", "cd \"" + P() + "\"",
                                    "\"" + H() + "\\tmp\\divxmux.exe\" -x \"" + H() + "\\tmp\\demo.xml\" -t \"" +
                                        H() + "\\tmp\" -o \"" + P() + "\\demo.divx\""});
    const fs::path output = work.Path() / "my proj" / "demo.divx";
    EXPECT_EQ(FinalDivXText(Job(), output), final + "pause\r\n");

    // Without menus with buttons and without the pauses: the heads alone.
    doc.Tree.ObjectNode("22")->Tag.clear();
    doc.Tree.ObjectNode("24")->Tag.clear();
    options.addPauseOverlays = false;
    options.addPauseDivX = false;
    ASSERT_TRUE(WriteOverlayScripts(Job(), error));
    EXPECT_EQ(ReadAll(Tmp() / "DoOverlays.bat"), head);
    EXPECT_EQ(FinalDivXText(Job(), output), final);
}

TEST_F(MuxScriptsTest, OutputNameFollowsTheOptions)
{
    const std::string folder = (work.Path() / "out").string();
    const std::string project = folder + "/a.b.c";
    EXPECT_EQ(DivXOutputPath(project, options, lang, prompt), fs::path(folder + "/a.b.divx"));
    work.Write("out/a.b.divx", "1");
    work.Write("out/a.b_1.divx", "1");
    EXPECT_EQ(DivXOutputPath(project, options, lang, prompt), fs::path(folder + "/a.b_2.divx"));
    EXPECT_EQ(DivXOutputPath(work.Path().string() + "/v1.0/plain", options, lang, prompt),
              fs::path(work.Path().string() + "/v1.0/plain.divx"));

    options.replaceExistDivX = true;
    EXPECT_EQ(DivXOutputPath(project, options, lang, prompt), fs::path(folder + "/a.b.divx"));
    EXPECT_FALSE(fs::exists(folder + "/a.b.divx"));

    options.NewDivXSaveToFolder = (work.Path() / "elsewhere").string();
    EXPECT_EQ(DivXOutputPath(project, options, lang, prompt), work.Path() / "elsewhere" / "a.b.divx");

    // The dialog's answer stands as it is, and its own prompt has dealt with an existing file.
    options.NewDivXSaveToFolder = "2";
    work.Write("out/chosen.x", "1");
    prompt.SavedFiles = {folder + "/chosen.x", std::nullopt};
    EXPECT_EQ(DivXOutputPath(project, options, lang, prompt), fs::path(folder + "/chosen.x"));
    EXPECT_TRUE(fs::exists(folder + "/chosen.x"));
    EXPECT_EQ(DivXOutputPath(project, options, lang, prompt), std::nullopt);
    EXPECT_TRUE(prompt.Texts().empty());
}

TEST_F(MuxScriptsTest, TheProjectCopyPointsAtTheBuildFilesAsTheToolsSeeThemAndTheProjectStaysAsItWas)
{
    DocNode& title = Element(doc.Tree, doc.Tree.ObjectNode("2"), 6, "Title");
    Element(doc.Tree, &title, 7, "MediaSource", {"location = movie.avi"});
    Element(doc.Tree, doc.Tree.ObjectNode("20"), 40, "MediaSource", {"location = "});
    Element(doc.Tree, doc.Tree.ObjectNode("20"), 41, "MediaSource", {"location = C:\\menus\\x.avi"});
    options.MethodForPicToMenu = kPicToMenuBuiltIn;
    const std::string before = test::Everything(doc.Tree);
    fs::remove_all(Tmp());
    home.Write("tmp", "a file where the folder should be");
    EXPECT_FALSE(ReplaceAviNamesForOverlaysSaveAndReverse(doc, home.Path(), 25, options, lang, prompt));
    EXPECT_EQ(test::Everything(doc.Tree), before);
    ASSERT_FALSE(prompt.Texts().empty());
    EXPECT_NE(prompt.Texts().back().find("demo.xml"), std::string::npos);

    prompt.Log.clear();
    fs::remove(Tmp());
    fs::create_directories(Tmp());
    ASSERT_TRUE(ReplaceAviNamesForOverlaysSaveAndReverse(doc, home.Path(), 25, options, lang, prompt));
    EXPECT_EQ(test::Everything(doc.Tree), before);
    EXPECT_TRUE(prompt.Texts().empty()) << prompt.Texts().front();
    const std::string copy = ReadAll(Tmp() / "demo.xml");
    for (const std::string& location : {P() + "\\movie.avi", H() + "\\tmp\\21_menu.avi.divx",
                                        H() + "\\tmp\\24_back.jpg.divx", H() + "\\tmp\\41_x.avi.divx", std::string()})
        EXPECT_NE(copy.find("location=\"" + location + "\""), std::string::npos) << location << "\n" << copy;
    // The picture's menu video, made by the method of the settings.
    EXPECT_GT(fs::file_size(Tmp() / "24_back.jpg.avi"), 0u);
}

TEST_F(MuxScriptsTest, BuildRunsBothScriptsInOrderShowsAFailedMuxersLogAndCleans)
{
    work.Write(Tmp() / "DivXMux.exe", "MZ");
    work.Write(Tmp() / "divxmux.log", "kept");
    const fs::path muxLog = work.Path() / "my proj" / "demo.log";
    work.Write(muxLog, "old log");
    // The final script may only exist once the overlay script has ended.
    test::FakeWine wine("case \"$3\" in *DoOverlays.bat) test -e FinalDivX.bat && echo TOO EARLY; echo "
                        "'Creating menu avi for ID 22'; echo 'Creating overlays for ID 22';;\n*FinalDivX.bat) sleep 0.2; "
                        "echo 'bad stream' > '" + muxLog.string() + "';; esac");
    ToolRunner runner;
    EXPECT_EQ(CreateDivXwithOverlays(Job(), prompt, runner, log), BuildEnd::Failed);

    const std::vector<std::string> runs = wine.Runs();
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_EQ(runs[0], Tmp().string() + "|cmd /c " + H() + "\\tmp\\DoOverlays.bat");
    EXPECT_EQ(runs[1], Tmp().string() + "|cmd /c " + H() + "\\tmp\\FinalDivX.bat");
    EXPECT_EQ(std::count(log.Lines.begin(), log.Lines.end(), "TOO EARLY"), 0);
    EXPECT_EQ(log.Shown, std::vector<fs::path>{muxLog});
    EXPECT_TRUE(log.Opened.empty());
    EXPECT_EQ(log.Progressed.front(), std::make_pair(1, 5));
    EXPECT_EQ(log.Progressed.back(), std::make_pair(5, 5));
    // deleteTemp: everything goes but the muxer's own log, as a log was shown.
    std::vector<std::string> left;
    for (const auto& entry : fs::directory_iterator(Tmp()))
        left.push_back(entry.path().filename().string());
    EXPECT_EQ(left, std::vector<std::string>{"divxmux.log"});
}

TEST_F(MuxScriptsTest, AnEmptyMuxerLogIsDeletedAndTheResultOpened)
{
    options.deleteTemp = false;
    options.deleteBmp = true;
    options.deleteDivX = false;
    const fs::path output = work.Path() / "my proj" / "demo.divx";
    const fs::path muxLog = work.Path() / "my proj" / "demo.log";
    test::FakeWine wine("case \"$3\" in *FinalDivX.bat) : > '" + muxLog.string() + "'; echo x > '" +
                        output.string() + "';; esac");
    ToolRunner runner;
    MuxJob job = Job();
    job.NoCreateOverlays = true;
    EXPECT_EQ(CreateDivXwithOverlays(job, prompt, runner, log), BuildEnd::Done);
    EXPECT_EQ(wine.Runs().size(), 1u) << "the overlay script ran although the overlays were kept";
    EXPECT_FALSE(fs::exists(muxLog));
    EXPECT_EQ(log.Opened, std::vector<fs::path>{output});
    EXPECT_FALSE(fs::exists(Tmp() / "Menuwright_back.jpg32_24_0.bmp"));
    EXPECT_TRUE(fs::exists(Tmp() / "FinalDivX.bat"));
}

std::vector<std::string> FilesIn(const fs::path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST_F(MuxScriptsTest, AWholeBuildRunsItsStepsInOrderAndLeavesTheProjectAsItWas)
{
    NeedFontApplication();
    options.MethodForPicToMenu = kPicToMenuBuiltIn;
    options.ShowDebugMessage = true;
    home.Write("DivXMux.exe", "MZ");
    const fs::path output = work.Path() / "my proj" / "demo.divx";
    const fs::path listing = work.Path() / "listing.txt";
    // What the build folder holds when the muxer runs; the build cleans it afterwards.
    test::FakeWine wine("case \"$3\" in *FinalDivX.bat) ls > '" + listing.string() + "'; echo x > '" + output.string() +
                        "';; esac");
    const std::string before = test::Everything(doc.Tree);
    prompt.Answers = {PromptAnswer::Yes}; // go on despite the faults the check finds

    ToolRunner runner;
    const DivXBuild build{doc, options, lang, home.Path(), colours, false, 25, {}, false, {}};
    EXPECT_EQ(mnuCreateDivX_Click(build, prompt, runner, log), BuildEnd::Done);

    EXPECT_EQ(test::Everything(doc.Tree), before);
    const std::vector<std::string> runs = wine.Runs();
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_NE(runs[0].find("DoOverlays.bat"), std::string::npos);
    EXPECT_NE(runs[1].find("FinalDivX.bat"), std::string::npos);
    // The driver's checkpoints in order, among those of the menu video it makes.
    const std::vector<std::string> driver{"Befor check for errors",
                                          "There was errors while checking. Continue to create DivX?",
                                          "After check for errors", "Before DivXMux", "Before create overlays",
                                          "Before replace", "Before create"};
    std::vector<std::string> steps;
    for (const std::string& text : prompt.Texts()) {
        if (std::find(driver.begin(), driver.end(), text) != driver.end())
            steps.push_back(text);
    }
    EXPECT_EQ(steps, driver);
    const std::string files = ReadAll(listing);
    for (const char* file : {"DivXMux.exe", "DoOverlays.bat", "FinalDivX.bat", "linkerfile21.txt", "linkerfile24.txt",
                             "demo.xml", "24_back.jpg.avi", "Menuwright_menu.avi12_21_2.bmp",
                             "Menuwright_back.jpg32_24_1.bmp"})
        EXPECT_NE(files.find(std::string(file) + "\n"), std::string::npos) << file << " missing from\n" << files;
    EXPECT_EQ(FilesIn(Tmp()), std::vector<std::string>{}) << "deleteTemp clears the build folder";
    EXPECT_EQ(log.Opened, std::vector<fs::path>{output});
}

TEST_F(MuxScriptsTest, TheBuildStopsAtTheQuestionOrTheMissingMuxerAndWithoutWineWritesEveryFileAndSaysSo)
{
    NeedFontApplication();
    options.MethodForPicToMenu = kPicToMenuBuiltIn;
    test::NoWine noWine;
    const std::string before = test::Everything(doc.Tree);
    const DivXBuild build{doc, options, lang, home.Path(), colours, false, 25, {}, false, {}};
    const auto run = [&] {
        prompt.Log.clear();
        ToolRunner runner;
        return mnuCreateDivX_Click(build, prompt, runner, log);
    };

    // The check finds faults and the default answer is No.
    EXPECT_EQ(run(), BuildEnd::Cancelled);
    EXPECT_EQ(prompt.Texts().back(), "There was errors while checking. Continue to create DivX?");
    EXPECT_FALSE(fs::exists(Tmp() / "DoOverlays.bat"));

    options.checkFirst = false;
    EXPECT_EQ(run(), BuildEnd::Failed);
    EXPECT_EQ(prompt.Texts(), std::vector<std::string>{"File DivXMux.exe not found at program's folder. Please, place "
                                                       "a copy at folder\n" +
                                                       home.Path().string()});

    // A muxer in the build folder will do.
    work.Write(Tmp() / "DivXMux.exe", "MZ");
    EXPECT_EQ(run(), BuildEnd::Failed);
    EXPECT_EQ(prompt.Texts(), std::vector<std::string>{NoWineMessage()});
    EXPECT_NE(NoWineMessage().find("apt install wine"), std::string::npos);
    EXPECT_EQ(std::vector<std::string>(log.Lines.end() - 3, log.Lines.end()),
              (std::vector<std::string>{kByHandLine,
                                        "cd \"" + Tmp().string() + "\" && wine cmd /c '" + H() + "\\tmp\\DoOverlays.bat'",
                                        "cd \"" + Tmp().string() + "\" && wine cmd /c '" + H() + "\\tmp\\FinalDivX.bat'"}));
    for (const char* file : {"DoOverlays.bat", "FinalDivX.bat", "linkerfile21.txt", "demo.xml", "24_back.jpg.avi",
                             "Menuwright_back.jpg32_24_0.bmp"})
        EXPECT_TRUE(fs::exists(Tmp() / file)) << file;
    EXPECT_EQ(test::Everything(doc.Tree), before);
}

} // namespace
} // namespace mw
