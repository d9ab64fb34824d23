#include "core/ProgramFolder.h"

#include "core/ScratchFolder.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using mw::test::ScratchFolder;

// A user-writable install prefix such as ~/.local/bin holds the program but not its files: the
// settings must not land there.
TEST(ProgramFolder, AWritableFolderIsPortableOnlyWithTheShippedLanguageFile)
{
    const ScratchFolder scratch;
    const fs::path exe = scratch.Write("prefix/bin/menuwright", "");
    const ScratchFolder shipped;
    shipped.Write("English.Menuwright.exe.xml", "<lang/>");
    mw::ProgramEnvironment env;
    env.XdgDataHome = (scratch.Path() / "xdg").string();
    const fs::path data = scratch.Path() / "xdg" / "Menuwright";

    EXPECT_EQ(mw::ResolveProgramFolder(exe, env, shipped.Path()), data);
    EXPECT_TRUE(fs::is_regular_file(data / "English.Menuwright.exe.xml"));

    scratch.Write("prefix/bin/English.Menuwright.exe.xml", "<lang/>");
    EXPECT_EQ(mw::ResolveProgramFolder(exe, env, shipped.Path()), exe.parent_path());
}

} // namespace
