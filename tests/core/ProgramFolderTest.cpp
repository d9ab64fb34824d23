#include "core/ProgramFolder.h"

#include "core/ScratchFolder.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace fs = std::filesystem;
using mw::ProgramEnvironment;
using mw::ResolveProgramFolder;
using mw::test::ReadAll;
using mw::test::ScratchFolder;

namespace {

struct FolderRules : ::testing::Test {
    ScratchFolder scratch;
    fs::path exeFolder = scratch.Path() / "bin";
    fs::path exe = exeFolder / "menuwright";
    fs::path langFile = scratch.Write("bin/English.Menuwright.exe.xml", "<lang/>"); // a portable copy has it

    ProgramEnvironment Env(bool exeFolderWritable) const
    {
        ProgramEnvironment env;
        env.Home = (scratch.Path() / "home").string();
        env.IsWritable = [this, exeFolderWritable](const fs::path& folder) {
            return folder == exeFolder ? exeFolderWritable : true;
        };
        return env;
    }
};

TEST_F(FolderRules, HomeVariableThenWritableExecutableFolderThenUserDataFolder)
{
    const fs::path userData = scratch.Path() / "home" / ".local" / "share" / "Menuwright";
    struct Case {
        const char* name;
        std::optional<std::string> home;
        bool exeFolderWritable;
        std::optional<std::string> xdg;
        fs::path expected;
    };
    const Case cases[] = {
        {"MENUWRIGHT_HOME wins", (scratch.Path() / "portable").string(), true, {}, scratch.Path() / "portable"},
        {"empty MENUWRIGHT_HOME counts as unset", "", true, {}, exeFolder},
        {"XDG_DATA_HOME set", {}, false, (scratch.Path() / "xdg").string(), scratch.Path() / "xdg" / "Menuwright"},
        {"XDG_DATA_HOME unset", {}, false, {}, userData},
        {"XDG_DATA_HOME empty", {}, false, "", userData},
        {"XDG_DATA_HOME relative", {}, false, "data", userData},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ProgramEnvironment env = Env(c.exeFolderWritable);
        env.MenuwrightHome = c.home;
        env.XdgDataHome = c.xdg;
        EXPECT_EQ(ResolveProgramFolder(exe, env), c.expected);
        EXPECT_TRUE(c.exeFolderWritable || fs::is_directory(c.expected));
    }
}

TEST_F(FolderRules, UserDataFolderIsSeededWithoutOverwriting)
{
    const ScratchFolder shipped;
    shipped.Write("English.Menuwright.exe.xml", "<shipped/>");
    shipped.Write("overlays/round.bmp", "BM");
    shipped.Write("Templates/Simple/menu.xml", "<menu/>");
    ProgramEnvironment env = Env(false);
    env.XdgDataHome = (scratch.Path() / "xdg").string();
    const fs::path data = scratch.Path() / "xdg" / "Menuwright";
    scratch.Write("xdg/Menuwright/English.Menuwright.exe.xml", "<translated/>");

    EXPECT_EQ(ResolveProgramFolder(exe, env, shipped.Path()), data);

    EXPECT_EQ(ReadAll(data / "English.Menuwright.exe.xml"), "<translated/>");
    EXPECT_EQ(ReadAll(data / "overlays" / "round.bmp"), "BM");
    EXPECT_EQ(ReadAll(data / "Templates" / "Simple" / "menu.xml"), "<menu/>");
}

// A user-writable install prefix such as ~/.local/bin holds the program but not its files: the
// settings must not land there.
TEST_F(FolderRules, AWritableFolderIsPortableOnlyWithTheShippedLanguageFile)
{
    const ScratchFolder shipped;
    shipped.Write("English.Menuwright.exe.xml", "<lang/>");
    ProgramEnvironment env;
    env.XdgDataHome = (scratch.Path() / "xdg").string();
    const fs::path data = scratch.Path() / "xdg" / "Menuwright";
    fs::remove(langFile);

    EXPECT_EQ(ResolveProgramFolder(exe, env, shipped.Path()), data);
    EXPECT_TRUE(fs::is_regular_file(data / "English.Menuwright.exe.xml"));

    scratch.Write("bin/English.Menuwright.exe.xml", "<lang/>");
    EXPECT_EQ(ResolveProgramFolder(exe, env, shipped.Path()), exeFolder);
}

TEST(FolderIsWritable, ReadOnlyFolderIsNotWritable)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "root writes into any folder";
    const ScratchFolder scratch;
    fs::create_directories(scratch.Path() / "ro");
    fs::permissions(scratch.Path() / "ro", fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_TRUE(mw::FolderIsWritable(scratch.Path()));
    EXPECT_FALSE(mw::FolderIsWritable(scratch.Path() / "ro"));
    fs::permissions(scratch.Path() / "ro", fs::perms::owner_all);
}

TEST(ExecutablePath, NamesTheRunningTestProgram)
{
    EXPECT_EQ(mw::ExecutablePath().filename(), "menuwright_tests");
}

} // namespace
