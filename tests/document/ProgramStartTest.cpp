#include "core/ScratchFolder.h"
#include "document/ProgramStart.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

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

} // namespace mw::test
