#include "build/FakeWine.h"
#include "build/ToolCommands.h"
#include "core/Paths.h"
#include "core/ScriptedPrompt.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace mw {
namespace {

namespace fs = std::filesystem;
using test::ScratchFolder;

// A started tool runs on its own; its call is recorded a moment later.
std::vector<std::string> RunsSoon(const test::FakeWine& wine, std::size_t count)
{
    for (int i = 0; i < 100 && wine.Runs().size() < count; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    return wine.Runs();
}

TEST(ToolCommands, Sub2DivXIsAskedForOnceAndTheMuxerFoundInTheBuildFolder)
{
    ScratchFolder home;
    ScratchFolder tools;
    const fs::path tool = tools.Write("Sub2DivX.exe", "MZ");
    clsIniFile ini((home.Path() / "Menuwright.ini").string());
    LangDoc lang;
    ScriptedPrompt prompt;
    test::RecordingLog log;
    test::FakeWine wine;
    ToolRunner runner;

    EXPECT_FALSE(mnuSrt2Divx(home.Path(), ini, prompt, runner, log)); // the dialog cancelled
    prompt.OpenedFiles = {{tool.string()}};
    EXPECT_TRUE(mnuSrt2Divx(home.Path(), ini, prompt, runner, log));
    EXPECT_TRUE(mnuSrt2Divx(home.Path(), ini, prompt, runner, log));
    EXPECT_EQ(prompt.Log.size(), 2u);
    EXPECT_EQ(ini.SectionName(), "General");
    ini.SetSectionName("Tools");
    EXPECT_EQ(ini.GetString("Sub2DivX", ""), tool.string());
    EXPECT_EQ(RunsSoon(wine, 2), std::vector<std::string>(2, tools.Path().string() + "|" + ToToolPath(tool.string())));

    EXPECT_FALSE(mnuMux(home.Path(), lang, prompt, runner, log));
    EXPECT_EQ(prompt.Texts().back(), "File DivXMux.exe not found at program's folder. Please, place a copy at folder\n" +
                                         home.Path().string());
    const fs::path copy = home.Write("tmp/DivXMux.exe", "MZ");
    EXPECT_TRUE(mnuMux(home.Path(), lang, prompt, runner, log));
    EXPECT_EQ(RunsSoon(wine, 3).back(), copy.parent_path().string() + "|" + ToToolPath(copy.string()));
}

} // namespace
} // namespace mw
