#include "ProjectFixture.h"

#include "core/AutoSaveFiles.h"
#include "document/AutoSave.h"
#include "document/XmlToTreeView.h"

#include <algorithm>

namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

class AutoSaveTest : public mw::test::ProjectFixture {
protected:
    // The auto-save files of the program folder, sorted.
    Texts Files()
    {
        Texts names;
        for (const auto& entry : fs::directory_iterator(home.Path())) {
            const std::string name = entry.path().filename().string();
            if (name.starts_with("_tmpFile_"))
                names.push_back(name);
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    // One timer tick, a minute after the last.
    void Tick()
    {
        now += std::chrono::minutes(1);
        project.AutoSaveTick();
    }
};

TEST_F(AutoSaveTest, SavesEveryAutoSaveMinTicksUntilClosed)
{
    for (const auto& [minutes, expected] : {std::pair{0, std::vector<int>{}},
                                            std::pair{1, std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
                                            std::pair{5, std::vector<int>{5, 10}}}) {
        SCOPED_TRACE(minutes);
        program.Values.AutoSaveMin = minutes;
        Open("p.xml");
        EXPECT_EQ(project.AutoSaveRunning, minutes > 0);
        std::vector<int> savedAt;
        for (int tick = 1; tick <= 10; ++tick) {
            const int slot = project.AutoSaveSlot;
            Tick();
            if (project.AutoSaveSlot != slot) {
                savedAt.push_back(tick);
                EXPECT_TRUE(fs::exists(home.Path() / mw::AutoSaveFileName(slot, now)));
            }
        }
        EXPECT_EQ(savedAt, expected);
        const Texts files = Files();
        ASSERT_TRUE(project.CloseOpenFile());
        Tick();
        EXPECT_EQ(Files(), files);
    }
}

TEST_F(AutoSaveTest, ThreeFilesTakeTurnsAFailureKeepsTheOlderFileAndTheProjectStaysAsItWas)
{
    program.Values.AutoSaveMin = 1;
    Open("p.xml");
    project.MarkDirty();
    const mw::test::ProjectState before = State();
    now = mw::test::LocalTime(2004, 3, 5, 18, 21, 1);

    for (int tick = 0; tick < 4; ++tick)
        Tick();

    // The fourth save went into slot 1 and took the place of the first.
    const Texts files = {"_tmpFile_1_05.03.2004_18.25.01.xml", "_tmpFile_2_05.03.2004_18.23.01.xml",
                         "_tmpFile_3_05.03.2004_18.24.01.xml"};
    EXPECT_EQ(Files(), files);
    EXPECT_EQ(project.AutoSaveSlot, 1);
    // The copy lies in the program folder: its movies are named by their full paths there, and
    // only there.
    mw::Document saved;
    ASSERT_TRUE(mw::LoadXmlFile((home.Path() / files[0]).string(), saved, prompt));
    std::string expected = Xml();
    for (const std::string movie : {"movie.avi", "menu.avi"}) {
        const std::string relative = "location=\"" + movie + "\"";
        ASSERT_NE(expected.find(relative), std::string::npos);
        expected.replace(expected.find(relative), relative.size(),
                         "location=\"" + (work.Path() / movie).string() + "\"");
    }
    EXPECT_EQ(mw::NodeToXmlString(*saved.Tree.Root()), expected);
    EXPECT_EQ(State(), before);
    EXPECT_TRUE(prompt.Log.empty());

    // A folder in the place of each next file makes the write fail, also for root; it is said
    // once, without a box, and tried again at the next tick.
    for (int tick = 0; tick < 2; ++tick) {
        fs::create_directory(home.Path() / mw::AutoSaveFileName(1, now + std::chrono::minutes(1)));
        Tick();
        EXPECT_EQ(project.AutoSaveSlot, 1);
    }
    ASSERT_EQ(prompt.ProgressLog.size(), 1u);
    EXPECT_NE(prompt.ProgressLog[0].second.find("Auto-save failed"), std::string::npos);
    EXPECT_TRUE(prompt.Log.empty());
    EXPECT_TRUE(fs::is_regular_file(home.Path() / files[1])); // the slot's older file is kept

    Tick();
    EXPECT_EQ(project.AutoSaveSlot, 2);
    EXPECT_FALSE(fs::exists(home.Path() / files[1]));
    EXPECT_TRUE(fs::is_regular_file(home.Path() / mw::AutoSaveFileName(1, now)));
    EXPECT_EQ(prompt.ProgressLog.size(), 1u);
}

TEST(AutoSaveFiles, DeletesOnlyAutoSaveFilesAndFindsTheNickFile)
{
    const mw::test::ScratchFolder scratch;
    EXPECT_TRUE(mw::NickFile(scratch.Path()).empty());
    const char* autoSaves[] = {"_tmpFile_1_05.03.2004_18.22.01.xml", "_tmpFile_2_01.01.1999_00.00.00.xml",
                               "_tmpFile_.xml"};
    const char* others[] = {"nick.xml", "_tmpFile_1.xml.bak", "tmpFile_1.xml", "_TMPFILE_1.xml", "_tmpFile_1.XML",
                            "sub/_tmpFile_3.xml"};
    for (const char* name : autoSaves)
        scratch.Write(name, "<x/>");
    for (const char* name : others)
        scratch.Write(name, "<x/>");
    fs::create_directories(scratch.Path() / "_tmpFile_dir.xml");

    EXPECT_EQ(mw::DeleteAutoSaveFiles(scratch.Path()), 3);

    for (const char* name : autoSaves)
        EXPECT_FALSE(fs::exists(scratch.Path() / name)) << name;
    for (const char* name : others)
        EXPECT_TRUE(fs::exists(scratch.Path() / name)) << name;
    EXPECT_TRUE(fs::is_directory(scratch.Path() / "_tmpFile_dir.xml"));
    EXPECT_EQ(mw::NickFile(scratch.Path()), scratch.Path() / "nick.xml");
}

} // namespace
