#include "core/settings/Settings.h"

#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"

#include <gtest/gtest.h>

#include <sstream>

namespace fs = std::filesystem;
using mw::clsIniFile;
using mw::Settings;
using mw::test::ReadAll;
using mw::test::ScratchFolder;

namespace {

struct SettingsFile : ::testing::Test {
    ScratchFolder scratch;
    fs::path file = mw::SettingsFilePath(scratch.Path());
    clsIniFile ini{file.string()};

    Settings Load(const std::string& content)
    {
        scratch.Write(file.filename(), content);
        Settings s;
        mw::LoadValues(s, ini, scratch.Path());
        return s;
    }
};

TEST_F(SettingsFile, AnEmptyOrMissingFileGivesTheDefaults)
{
    Settings missing;
    mw::LoadValues(missing, ini, scratch.Path());
    const Settings s = Load("");
    EXPECT_EQ(s, missing);
    EXPECT_EQ(file.filename(), "Menuwright.ini");
    EXPECT_EQ(s.LastFolderUsed, (scratch.Path() / "Menuwright.exe").string());
    EXPECT_EQ((std::vector<long>{s.Left, s.Top, s.Width, s.Height}), (std::vector<long>{100, 100, 13125, 8000}));
    EXPECT_EQ(s.defLang, "en");
    EXPECT_EQ(mw::RulerSize(s), 27);
    EXPECT_EQ(fs::file_size(file), 0u); // reading writes nothing
}

TEST_F(SettingsFile, ValuesAreCorrectedOnReading)
{
    // A boolean is a number that is not 0: "True" reads as 0.
    const Settings s = Load("[General]\nDoubleClickInButtonsAction=5\nMethodForPicToMenu=7\ndefLang=EN\nShowRulers=0\n"
                            "RunDivX=True\ndeleteBmp=5\nHelpOnTop=0abc\nGuideLineColor=16711680\n");
    EXPECT_EQ(s.DoubleClickInButtonsAction, 1);
    EXPECT_EQ(s.MethodForPicToMenu, mw::kPicToMenuVirtualDub);
    EXPECT_EQ(s.defLang, "en");
    EXPECT_EQ(mw::RulerSize(s), 0);
    EXPECT_FALSE(s.RunDivX);
    EXPECT_TRUE(s.deleteBmp);
    EXPECT_FALSE(s.HelpOnTop);
    EXPECT_EQ(s.GuideLineColor, 16711680u);
    EXPECT_EQ(Load("[General]\nDoubleClickInButtonsAction=2\nMethodForPicToMenu=2\n").MethodForPicToMenu,
              mw::kPicToMenuBuiltIn);
}

TEST_F(SettingsFile, RecentFilesAreCappedAtTenAndSkipEmptyEntries)
{
    std::string content = "[RecentFiles]\nFilesCount=25\n";
    for (int n = 1; n <= 12; ++n)
        content += "File" + std::to_string(n) + "=" + (n == 3 ? "" : "/p/" + std::to_string(n) + ".xml") + "\n";
    const Settings s = Load(content);
    ASSERT_EQ(s.RecentFiles.size(), 9u);
    EXPECT_EQ(s.RecentFiles[2], "/p/4.xml");
    EXPECT_EQ(s.RecentFiles.back(), "/p/10.xml");

    EXPECT_EQ(Load("[RecentFiles]\nFilesCount=2\nFile1=/a.xml\nFile2=/b.xml\nFile3=/c.xml\n").RecentFiles,
              (std::vector<std::string>{"/a.xml", "/b.xml"}));
}

TEST_F(SettingsFile, SavedValuesReadBackAndOtherKeysKeepTheFilesValue)
{
    Load("; kept\n[General]\nAutoSaveMin=5\nLang=English\n[TitleMenu]\nPages=3\n"
         "[RecentFiles]\nFilesCount=4\nFile1=/a\nFile2=/b\nFile3=/c\nFile4=/d\n");
    Settings s{.LastFolderUsed = "/x", .ShowRulers = false, .SimpleMode = true, .Left = -200, .Top = 300, .Width = 9000,
               .Height = 7000, .PropTextX = 11, .PropTextY = 12, .PropX = 13, .PropY = 14, .PropWidth = 15,
               .PropHeight = 16, .PropPined = true, .PropMenuX = 17, .PropMenuY = 18, .PropMenuWidth = 19,
               .PropMenuHeight = 20, .PropMenuPined = false, .PropMenuMiddle = 21, .PropMiddle = 22, .Diax = 1,
               .Diax2 = 2, .RecentFiles = {"/1.xml", "/2 b.xml"}};
    ini.SetSectionName("TitleMenu");
    ASSERT_TRUE(mw::SaveValues(s, "Francais", ini));
    EXPECT_EQ(ini.SectionName(), "TitleMenu");
    EXPECT_EQ(ini.GetString("Pages", ""), "3");

    Settings back;
    mw::LoadValues(back, ini, scratch.Path());
    Settings expected = s;
    expected.Lang = "Francais";
    expected.AutoSaveMin = 5;
    EXPECT_EQ(back, expected);
    const std::string text = ReadAll(file);
    EXPECT_TRUE(text.starts_with("; kept\r\n[General]\r\nAutoSaveMin=5\r\nLang=Francais\r\n")) << text;
    for (const char* line : {"\r\nPropPined=-1\r\n", "\r\nShowRulers=0\r\n", "\r\nSimpleMode=-1\r\n", "\r\nFile4=/d\r\n"})
        EXPECT_NE(text.find(line), std::string::npos) << line;
}

TEST_F(SettingsFile, OptionsAreWrittenInTheDialogsOrderAndReadBack)
{
    Settings s{.GuideLineColor = 65280, .AutoSaveMin = 10, .DefOverlayPos = 0,
               .MethodForPicToMenu = mw::kPicToMenuBuiltIn, .UseOnlyVD = true, .NewDivXSaveToFolder = "/out",
               .DefOverlay = "|Oval", .defLang = "de", .RunDivX = false, .deleteBmp = true,
               .DoubleClickInButtonsAction = 2, .defOverlayColor3 = 0};
    ASSERT_TRUE(mw::SaveOptions(s, ini));
    std::string keys;
    std::istringstream lines(ReadAll(file));
    for (std::string line; std::getline(lines, line);)
        keys += line.substr(0, line.find('=')) + ' ';
    EXPECT_EQ(keys, "[General]\r GuideLineColor AutoSaveMin DefOverlayPos MethodForPicToMenu UseOnlyVD "
                    "DonNotInvolveCliExe ShowDOScli NewDivXSaveToFolder DefOverlay defLang RunDivX checkFirst "
                    "deleteTemp deleteBmp deleteDivX addPauseDivX addPauseOverlays replaceExistDivX "
                    "DoubleClickInButtonsAction defOverlayColor1 defOverlayColor2 defOverlayColor3 defButtonColor ");
    for (const char* line : {"\nMethodForPicToMenu=2\r", "\nUseOnlyVD=-1\r", "\nRunDivX=0\r", "\nDefOverlay=|Oval\r"})
        EXPECT_NE(ReadAll(file).find(line), std::string::npos) << line;
    Settings back;
    mw::LoadValues(back, ini, scratch.Path());
    s.LastFolderUsed = back.LastFolderUsed;
    EXPECT_EQ(back, s);
}

TEST_F(SettingsFile, ToolPathsAndTheDebugToggleAreKeptAndWrittenAtOnce)
{
    Settings s;
    mw::ScriptedPrompt prompt;
    ASSERT_TRUE(mw::SaveCliPath(s, "/tools/cli.exe", ini));
    ASSERT_TRUE(mw::SaveVirtualDubPath(s, "/tools/VirtualDubMod.exe", ini));
    mw::ToggleShowDebugMessage(s, ini, prompt);
    EXPECT_EQ(s.cliPath, "/tools/cli.exe");
    EXPECT_EQ(s.virtualDubPath, "/tools/VirtualDubMod.exe");
    EXPECT_TRUE(s.ShowDebugMessage);
    EXPECT_EQ(ReadAll(file), "[General]\r\ncliPath=/tools/cli.exe\r\nvirtualDubPath=/tools/VirtualDubMod.exe\r\n"
                             "ShowDebugMessage=-1\r\n");
    mw::ToggleShowDebugMessage(s, ini, prompt);
    EXPECT_EQ(ini.GetString("ShowDebugMessage", ""), "0");
    EXPECT_EQ(prompt.Texts(),
              (std::vector<std::string>{"'Show Debug Messages' is ON", "'Show Debug Messages' is OFF"}));
}

TEST_F(SettingsFile, ASaveIntoAReadOnlyPlaceLeavesTheOldFile)
{
    const std::string original = "[General]\nLeft=5\n";
    scratch.Write(file.filename(), original);
    fs::permissions(file, fs::perms::owner_read);
    Settings s;
    EXPECT_FALSE(mw::SaveValues(s, "English", ini));
    EXPECT_FALSE(mw::SaveOptions(s, ini));
    EXPECT_EQ(ReadAll(file), original);
}

} // namespace
