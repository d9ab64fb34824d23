#include "build/FakeWine.h"
#include "build/MuxScripts.h"
#include "core/Paths.h"
#include "core/ScriptedPrompt.h"
#include "document/TreeTestKit.h"
#include "media/AviBytes.h"

#include <gtest/gtest.h>

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
class MuxScriptsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        fs::create_directories(BuildFolder(home.Path()));
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
        Element(t, &tracks, 23, "MediaTrack", {"mediaSourceID = 21", "type = subtitle"}).Tag =
            "<Menuwright rectID='50'/>";
        Element(t, &tracks, 24, "MediaSource", {"location = " + picture}).Tag = "<Menuwright Buttons='1' menuID='32'/>";
        Element(t, &tracks, 25, "MediaTrack", {"mediaSourceID = 24", "type = video"});
        Element(t, &tracks, 26, "MediaSource", {"location = music.mp3"});
        Element(t, &tracks, 27, "MediaTrack", {"mediaSourceID = 26", "type = audio"});
        Element(t, &tracks, 28, "MediaTrack", {"mediaSourceID = 21", "type = video"}).Tag =
            "<Menuwright Buttons='0' menuID='12'/>";
        DocNode& en = Element(t, &root, 9, "LanguageMenus", {"languageCode = en"});
        Element(t, &en, 12, "DivXMediaMenu", {"backgroundVideoID = 22", "backgroundAudioID = 27"}).Tag =
            "<Menuwright Color1='255' Color3='16777215'/>";
        DocNode& de = Element(t, &root, 30, "LanguageMenus", {"languageCode = de"});
        Element(t, &de, 32, "DivXMediaMenu", {"backgroundVideoID = 25", "backgroundAudioID = None"});

        for (const char* bmp : {"Menuwright_menu.avi12_21_0.bmp", "Menuwright_menu.avi12_21_1.bmp",
                                "Menuwright_back.jpg32_24_0.bmp"})
            work.Write(Tmp() / bmp, "BM");
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

TEST_F(MuxScriptsTest, WithoutWineTheBuildStopsWithOneMessageAndEveryFileStays)
{
    test::NoWine noWine;
    ToolRunner runner;
    EXPECT_EQ(CreateDivXwithOverlays(Job(), prompt, runner, log), BuildEnd::Failed);
    EXPECT_EQ(prompt.Texts(), std::vector<std::string>{NoWineMessage()});
    EXPECT_NE(NoWineMessage().find("apt install wine"), std::string::npos);
    EXPECT_EQ(log.Lines.back(), "cd \"" + Tmp().string() + "\" && wine cmd /c '" + H() + "\\tmp\\DoOverlays.bat'");
    EXPECT_TRUE(fs::exists(Tmp() / "DoOverlays.bat"));
    EXPECT_TRUE(fs::exists(Tmp() / "linkerfile21.txt"));
}

} // namespace
} // namespace mw
