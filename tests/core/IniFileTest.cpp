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

TEST_F(IniFile, OnlyTheFirstProperSectionAndKeyCountAndAreListed)
{
    clsIniFile ini = Open("k=0\n[General\nj=1\n[General]\nk=1\nk=2\nn=a\0b\n[general]\nj=3\n"s);
    EXPECT_EQ(ini.GetString("k", ""), "1");
    EXPECT_EQ(ini.GetString("j", "none"), "none");
    EXPECT_EQ(ini.GetString("n", ""), "a"); // text stops at a NUL
    EXPECT_EQ(ini.GetSections(), (std::vector<std::string>{"General", "general"}));

    ini = Open("[General]\nA = \"1\"\n;c\nB=2\n[Empty]\n");
    EXPECT_EQ(ini.GetSectEntries(), (std::vector<std::string>{"A", "B"}));
    EXPECT_EQ(ini.GetSectEntriesEx()[0].Value, "1");
    EXPECT_TRUE(ini.GetSectionsEx().at(1).Entries.empty());
}

TEST_F(IniFile, NumbersUseTheLeadingDigitsAndTrueIsOneOfSevenWords)
{
    const struct {
        const char* value;
        long number;
        bool truth;
    } cases[] = {
        {"12abc", 12, false}, {"abc", 0, false}, {"-1", -1, true},     {" 42 ", 42, false}, {"\"8\"", 8, false},
        {"", 0, false},       {"3.9", 3, false}, {"+7", 7, false},     {"1", 1, true},      {"2", 2, false},
        {"YES", 0, true},     {"y", 0, true},    {"True", 0, true},    {"t", 0, true},      {" on ", 0, true},
        {"NO", 0, false},     {"false", 0, false}, {"yes please", 0, false},
    };
    for (const auto& c : cases) {
        clsIniFile ini = Open(std::string("[General]\nn=") + c.value + "\n");
        EXPECT_EQ(ini.GetInt("n", 555), c.number) << c.value;
        EXPECT_EQ(ini.GetTF("n", !c.truth), c.truth) << c.value;
    }
    clsIniFile missing = Open("[General]\n");
    EXPECT_EQ(missing.GetInt("n", 555), 555);
    EXPECT_TRUE(missing.GetTF("n", true));
    EXPECT_FALSE(missing.GetTF("n", false));
}

TEST_F(IniFile, PutKeepsEveryOtherLineAsItWas)
{
    clsIniFile ini = Open("; settings\n[General]\nLeft = 100\n; the size\nWidth=1\n\n; next\n[RecentFiles]\nFile1=a\n");
    EXPECT_TRUE(ini.PutString("LEFT", "250"));
    EXPECT_TRUE(ini.PutInt("Top", 7));
    EXPECT_TRUE(ini.PutTF("Flag", true));
    ini.SetSectionName("TitleMenu");
    EXPECT_TRUE(ini.PutTF("Pages", false));
    EXPECT_EQ(ReadAll(file), "; settings\r\n[General]\r\nLeft = 250\r\n; the size\r\nWidth=1\r\nTop=7\r\nFlag=True\r\n"
                             "\r\n; next\r\n[RecentFiles]\r\nFile1=a\r\n\r\n[TitleMenu]\r\nPages=False\r\n");

    clsIniFile empty = Open("[General]\n\n[Other]\nx=1");
    EXPECT_TRUE(empty.PutString("k", "v"));
    EXPECT_EQ(ReadAll(file), "[General]\r\nk=v\r\n\r\n[Other]\r\nx=1\r\n");

    clsIniFile fresh((scratch.Path() / "new.ini").string(), "General");
    EXPECT_FALSE(fresh.Exists());
    EXPECT_TRUE(fresh.PutString("k", "a\r\nInjected=1"));
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
    for (const fs::path& locked : {file, scratch.Path()}) {
        SCOPED_TRACE(locked);
        clsIniFile ini = Open(original);
        fs::permissions(locked, fs::perms::owner_read | fs::perms::owner_exec);
        if (locked == scratch.Path() && mw::FolderIsWritable(scratch.Path()))
            continue; // permissions do not bind this user
        EXPECT_FALSE(ini.PutString("k", "2"));
        EXPECT_FALSE(ini.DeleteSection());
        EXPECT_EQ(ini.GetString("k", ""), "1");
        EXPECT_EQ(ReadAll(file), original);
        EXPECT_EQ(std::distance(fs::directory_iterator(scratch.Path()), fs::directory_iterator()), 1);
        fs::permissions(locked, fs::perms::owner_all);
    }
}

} // namespace
