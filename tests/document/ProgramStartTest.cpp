#include "core/ScratchFolder.h"
#include "document/ProgramStart.h"
#include "document/RecentFiles.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

namespace mw::test {

TEST(ProgramStart, StartProjectIsNickThenTheDemoOnlyAtTheFirstStart)
{
    struct Case {
        bool Nick;
        bool Demo;
        bool FirstStart;
        const char* Expected; // below the program folder, "" for none
    };
    const Case cases[] = {
        {true, true, true, "nick.xml"},  {true, false, false, "nick.xml"}, {false, true, true, "Demo/Demo.xml"},
        {false, true, false, ""},        {false, false, true, ""},
    };
    for (const Case& c : cases) {
        ScratchFolder folder;
        if (c.Nick)
            folder.Write("nick.xml", "<DivXMediaManager/>");
        if (c.Demo)
            folder.Write("Demo/Demo.xml", "<DivXMediaManager/>");
        const fs::path expected = *c.Expected ? folder.Path() / c.Expected : fs::path();
        EXPECT_EQ(StartProjectFile(folder.Path(), c.FirstStart), expected)
            << "nick " << c.Nick << ", demo " << c.Demo << ", first start " << c.FirstStart;
    }
}

TEST(ProgramStart, FirstStartIsTheSettingsFileMissing)
{
    ScratchFolder fresh;
    ProgramState first(fresh.Path());
    StartProgram(first);
    EXPECT_TRUE(first.FirstStart);

    ScratchFolder used;
    used.Write("Menuwright.ini", "[General]\r\nAutoSaveMin=5\r\n");
    ProgramState later(used.Path());
    StartProgram(later);
    EXPECT_FALSE(later.FirstStart);
    EXPECT_EQ(later.Values.AutoSaveMin, 5);
}

TEST(RecentFilesTest, NewestFirstCaseIgnoredAtMostTen)
{
    struct Case {
        const char* Name;
        Texts Before;
        const char* Added;
        Texts After;
    };
    const Texts ten = {"f0", "f1", "f2", "f3", "f4", "f5", "f6", "f7", "f8", "f9"};
    const std::vector<Case> cases = {
        {"first", {}, "/p/a.xml", {"/p/a.xml"}},
        {"new on top", {"/p/a.xml"}, "/p/b.xml", {"/p/b.xml", "/p/a.xml"}},
        {"again moves up", {"/p/a.xml", "/p/b.xml", "/p/c.xml"}, "/p/c.xml", {"/p/c.xml", "/p/a.xml", "/p/b.xml"}},
        {"other case counts as the same", {"/p/a.xml", "/P/B.XML"}, "/p/b.xml", {"/p/b.xml", "/p/a.xml"}},
        {"eleventh pushes the oldest out", ten, "new",
         {"new", "f0", "f1", "f2", "f3", "f4", "f5", "f6", "f7", "f8"}},
        {"a known one of ten drops none", ten, "F9", {"F9", "f0", "f1", "f2", "f3", "f4", "f5", "f6", "f7", "f8"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Name);
        Texts files = c.Before;
        AddFileToRecent(files, c.Added);
        EXPECT_EQ(files, c.After);
    }
}

} // namespace mw::test
