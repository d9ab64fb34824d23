#include "core/AutoSaveFiles.h"

#include "core/ScratchFolder.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;
using mw::test::ScratchFolder;

namespace {

TEST(AutoSaveFiles, DeletesOnlyAutoSaveFilesAndFindsTheNickFile)
{
    const ScratchFolder scratch;
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
