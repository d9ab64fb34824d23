#include "core/settings/clsIniFile.h"

#include "core/ProgramFolder.h"
#include "core/ScratchFolder.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;
using mw::clsIniFile;
using mw::test::ReadAll;
using mw::test::ScratchFolder;
using namespace std::string_literals;

namespace {

struct IniFile : ::testing::Test {
    ScratchFolder scratch;
    fs::path file = scratch.Path() / "Menuwright.ini";

    clsIniFile Open(const std::string& content, const std::string& section = "General")
    {
        scratch.Write("Menuwright.ini", content);
        return clsIniFile(file.string(), section);
    }
};

TEST_F(IniFile, SectionsAndKeysMatchIgnoringCase)
{
    clsIniFile ini = Open("[general]\nLEFT=5\n[Other]\nleft=9\n", "GENERAL");
    EXPECT_EQ(ini.GetString("left", "x"), "5");
    ini.SetSectionName("other");
    EXPECT_EQ(ini.GetString("Left", "x"), "9");
    EXPECT_TRUE(ini.SectExist());
    ini.SetSectionName("Missing");
    EXPECT_FALSE(ini.SectExist());
    EXPECT_EQ(ini.GetString("Left", "x"), "x");
}

TEST_F(IniFile, ValuesAreReadAsWindowsReadsThem)
{
    const struct {
        const char* line;
        const char* expected;
    } cases[] = {
        {"k = v w  ", "v w"},       // blanks around "=" and at the end go
        {"\t k\t=\tv", "v"},        // tabs too
        {"k=\"a b\"", "a b"},       // quotes around the whole value go
        {"k='a b'", "a b"},         //
        {"k=\"a b", "\"a b"},       // an unmatched quote stays
        {"k=\"a\" b\"", "a\" b"},   // only the outer pair goes
        {"k=a=b", "a=b"},           // the first "=" splits
        {"k=", ""},                 // an empty value is found, not the default
        {"k", ""},                  // so is a key without "="
        {"; k=comment", "default"}, // comments are no keys
        {"kk=no", "default"},       // whole names only
    };
    for (const auto& c : cases) {
        clsIniFile ini = Open(std::string("[General]\r\n") + c.line + "\r\n");
        EXPECT_EQ(ini.GetString("k", "default"), c.expected) << c.line;
    }
}

TEST_F(IniFile, OnlyTheFirstProperSectionAndKeyCount)
{
    clsIniFile ini = Open("k=0\n[General\nj=1\n[General]\nk=1\nk=2\nn=a\0b\n[general]\nj=3\n"s);
    EXPECT_EQ(ini.GetString("k", ""), "1");
    EXPECT_EQ(ini.GetString("j", "none"), "none");
    EXPECT_EQ(ini.GetString("n", ""), "a"); // text stops at a NUL
    EXPECT_EQ(ini.GetSections(), (std::vector<std::string>{"General", "general"}));
}

TEST_F(IniFile, NumbersUseTheLeadingDigits)
{
    const struct {
        const char* value;
        long expected;
    } cases[] = {
        {"12abc", 12}, {"abc", 0}, {"-1", -1}, {" 42 ", 42}, {"\"8\"", 8}, {"", 0}, {"3.9", 3}, {"+7", 7},
    };
    for (const auto& c : cases) {
        clsIniFile ini = Open(std::string("[General]\nn=") + c.value + "\n");
        EXPECT_EQ(ini.GetInt("n", 555), c.expected) << c.value;
    }
    EXPECT_EQ(Open("[General]\n").GetInt("n", 555), 555);
}

TEST_F(IniFile, TrueAndFalseWords)
{
    const struct {
        const char* value;
        bool expected;
    } cases[] = {
        {"YES", true}, {"y", true},   {"True", true},  {"t", true},   {" on ", true}, {"1", true},
        {"-1", true},  {"NO", false}, {"false", false}, {"0", false}, {"2", false},   {"yes please", false},
        {"", false},
    };
    for (const auto& c : cases) {
        clsIniFile ini = Open(std::string("[General]\nb=") + c.value + "\n");
        EXPECT_EQ(ini.GetTF("b", !c.expected), c.expected) << c.value;
    }
    clsIniFile missing = Open("");
    EXPECT_TRUE(missing.GetTF("b", true));
    EXPECT_FALSE(missing.GetTF("b", false));
}

TEST_F(IniFile, PutKeepsEveryOtherLineAsItWas)
{
    clsIniFile ini = Open("; settings\n"
                          "[General]\n"
                          "Left = 100\n"
                          "; the size\n"
                          "Width=1\n"
                          "\n"
                          "; next\n"
                          "[RecentFiles]\n"
                          "File1=a.xml\n");
    EXPECT_TRUE(ini.PutString("LEFT", "250"));
    EXPECT_TRUE(ini.PutInt("Top", 7));
    EXPECT_TRUE(ini.PutTF("Flag", true));
    ini.SetSectionName("TitleMenu");
    EXPECT_TRUE(ini.PutTF("Pages", false));
    EXPECT_EQ(ReadAll(file), "; settings\r\n"
                             "[General]\r\n"
                             "Left = 250\r\n"
                             "; the size\r\n"
                             "Width=1\r\n"
                             "Top=7\r\n"
                             "Flag=True\r\n"
                             "\r\n"
                             "; next\r\n"
                             "[RecentFiles]\r\n"
                             "File1=a.xml\r\n"
                             "\r\n"
                             "[TitleMenu]\r\n"
                             "Pages=False\r\n");
}

TEST_F(IniFile, PutIntoAnEmptySectionAndAMissingFile)
{
    clsIniFile ini = Open("[General]\n\n[Other]\nx=1");
    EXPECT_TRUE(ini.PutString("k", "v"));
    EXPECT_EQ(ReadAll(file), "[General]\r\nk=v\r\n\r\n[Other]\r\nx=1\r\n");

    clsIniFile fresh((scratch.Path() / "new.ini").string(), "General");
    EXPECT_FALSE(fresh.Exists());
    EXPECT_TRUE(fresh.PutString("k", "a\r\nInjected=1"));
    EXPECT_TRUE(fresh.Exists());
    EXPECT_EQ(ReadAll(scratch.Path() / "new.ini"), "[General]\r\nk=a\r\n");
}

TEST_F(IniFile, DeletesOneKeyOrAWholeSection)
{
    clsIniFile ini = Open("[General]\nA=1\nB=2\n\n[TitleMenu]\n; about it\nC=3\n\n[ChaptersMenu]\nD=4\n");
    EXPECT_TRUE(ini.DeleteStrEntry("a"));
    EXPECT_TRUE(ini.DeleteNumEntry("missing"));
    ini.SetSectionName("titlemenu");
    EXPECT_TRUE(ini.DeleteSection());
    EXPECT_EQ(ReadAll(file), "[General]\r\nB=2\r\n\r\n[ChaptersMenu]\r\nD=4\r\n");
}

TEST_F(IniFile, ListsSectionsAndEntries)
{
    clsIniFile ini = Open("[General]\nA = \"1\"\n;c\nB=2\n[Empty]\n[Last]\nZ=9\n");
    EXPECT_EQ(ini.GetSections(), (std::vector<std::string>{"General", "Empty", "Last"}));
    EXPECT_EQ(ini.GetSectEntries(), (std::vector<std::string>{"A", "B"}));
    const auto entries = ini.GetSectEntriesEx();
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].Value, "1");
    const auto all = ini.GetSectionsEx();
    ASSERT_EQ(all.size(), 3u);
    EXPECT_TRUE(all[1].Entries.empty());
    EXPECT_EQ(all[2].Entries[0].Key, "Z");
}

TEST_F(IniFile, ReadingWithoutSectionAndFileIsALogicError)
{
    clsIniFile ini;
    try {
        ini.GetString("k", "");
        FAIL() << "no error raised";
    } catch (const mw::IniLogicError& e) {
        EXPECT_STREQ(e.Source(), "IniFile Logic Error");
        EXPECT_STREQ(e.what(), "[Section] and FileName Not Registered in Private.Ini!");
    }
    EXPECT_THROW(ini.GetSections(), mw::IniLogicError);
    EXPECT_FALSE(ini.PutString("k", "v")); // writes only fail
    ini.SetSectionName("General"); // a section alone reads as a missing file
    EXPECT_EQ(ini.GetString("k", "d"), "d");
    EXPECT_EQ(ini.GetInt("k", 4), 4);
    EXPECT_FALSE(ini.SectExist());
    EXPECT_FALSE(ini.Exists());
}

TEST_F(IniFile, WinIniLiesBesideTheFile)
{
    clsIniFile ini = Open("[General]\nk=own\n");
    scratch.Write("win.ini", "[General]\nk=system\n");
    ini.SetUseWinINI(true);
    EXPECT_EQ(ini.GetString("k", ""), "system");
    EXPECT_TRUE(ini.PutString("j", "1"));
    EXPECT_EQ(ReadAll(scratch.Path() / "win.ini"), "[General]\r\nk=system\r\nj=1\r\n");
    EXPECT_EQ(ReadAll(file), "[General]\nk=own\n");
}

TEST_F(IniFile, AByteOrderMarkIsReadPastAndKept)
{
    clsIniFile ini = Open("\xEF\xBB\xBF[General]\nk=1\n");
    EXPECT_EQ(ini.GetString("k", ""), "1");
    EXPECT_TRUE(ini.PutString("k", "2"));
    EXPECT_EQ(ReadAll(file), "\xEF\xBB\xBF[General]\r\nk=2\r\n");
}

TEST_F(IniFile, AWriteThatCannotBeDoneChangesNothing)
{
    clsIniFile nowhere((scratch.Path() / "no" / "such" / "x.ini").string(), "General");
    EXPECT_FALSE(nowhere.PutString("k", "v"));
    EXPECT_FALSE(fs::exists(scratch.Path() / "no"));

    const std::string original = "[General]\nk=1\n";
    clsIniFile ini = Open(original);
    fs::permissions(file, fs::perms::owner_read | fs::perms::group_read);
    EXPECT_FALSE(ini.PutString("k", "2"));
    EXPECT_FALSE(ini.DeleteSection());
    EXPECT_EQ(ReadAll(file), original);
    EXPECT_EQ(std::distance(fs::directory_iterator(scratch.Path()), fs::directory_iterator()), 1);
}

TEST_F(IniFile, AReadOnlyFolderFailsWithoutHarm)
{
    const std::string original = "[General]\nk=1\n";
    clsIniFile ini = Open(original);
    fs::permissions(scratch.Path(), fs::perms::owner_read | fs::perms::owner_exec);
    if (mw::FolderIsWritable(scratch.Path()))
        GTEST_SKIP() << "permissions do not bind this user";
    EXPECT_FALSE(ini.PutString("k", "2"));
    EXPECT_EQ(ini.GetString("k", ""), "1");
    EXPECT_EQ(ReadAll(file), original);
}

} // namespace
