#include "build/FakeWine.h"
#include "build/ToolCommands.h"
#include "build/ToolRunner.h"
#include "core/Paths.h"
#include "core/ScriptedPrompt.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <thread>

namespace mw {
namespace {

namespace fs = std::filesystem;
using test::FakeWine;
using test::ReadAll;
using test::ScratchFolder;

TEST(ToolRunner, BatchFileRunsThroughCmdInItsFolderStreamsItsLinesAndIsWaitedFor)
{
    ScratchFolder work;
    const auto done = work.Path() / "done";
    // The tool closes its output long before it ends.
    FakeWine wine("printf 'first\\r\\nsecond\\r\\nlast without end'; exec >&- 2>&-; sleep 0.4; touch '" +
                  done.string() + "'; exit 3");
    const auto batch = work.Write("tmp/Do It.bat", "");
    ToolRunner runner;
    std::vector<std::string> lines;
    const std::clock_t cpu = std::clock();
    const ToolRun run = runner.Run(batch, {}, batch.parent_path(), [&](const std::string& l) { lines.push_back(l); });
    EXPECT_TRUE(std::filesystem::exists(done));
    EXPECT_LT(double(std::clock() - cpu) / CLOCKS_PER_SEC, 0.2) << "the wait spun";
    EXPECT_TRUE(run.Finished());
    EXPECT_EQ(run.ExitCode, 3);
    EXPECT_EQ(lines, (std::vector<std::string>{"first", "second", "last without end"}));
    EXPECT_EQ(wine.Runs(), std::vector<std::string>{batch.parent_path().string() + "|cmd /c " +
                                                    ToToolPath(batch.string())});

    runner.Run(work.Path() / "Tool.EXE", {"-i", "a b"}, work.Path(), [](const std::string&) {});
    EXPECT_EQ(wine.Runs().back(), work.Path().string() + "|" + ToToolPath((work.Path() / "Tool.EXE").string()) +
                                      " -i a b");
}

TEST(ToolRunner, CancelStopsTheToolAndWhatItStartedAndEveryLaterRun)
{
    ScratchFolder work;
    const auto late = work.Path() / "late";
    FakeWine wine("echo started; (sleep 1; touch '" + late.string() + "') & sleep 30");
    ToolRunner runner;
    const auto begin = std::chrono::steady_clock::now();
    const ToolRun run = runner.Run(work.Path() / "x.bat", {}, work.Path(), [&](const std::string& line) {
        if (line == "started")
            std::thread([&runner] { runner.Cancel(); }).detach();
    });
    EXPECT_EQ(run.Result, ToolRun::Outcome::Cancelled);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));

    EXPECT_EQ(runner.Run(work.Path() / "y.bat", {}, work.Path(), [](const std::string&) {}).Result,
              ToolRun::Outcome::Cancelled);
    EXPECT_EQ(wine.Runs().size(), 1u);
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    EXPECT_FALSE(std::filesystem::exists(late)) << "a tool started by the cancelled one went on";
}

TEST(ToolRunner, LinuxProgramTakesFilesForItsStreamsAndStopsWithWhatItStartedOnCancel)
{
    ScratchFolder work;
    const auto input = work.Write("in.txt", "b\na\n");
    const auto output = work.Path() / "out.txt";
    ToolRunner runner("no-such-wine");
    std::vector<std::string> lines;
    const ToolRun run = runner.RunNative("sh", {"-c", "sort; echo said >&2; pwd >&2; exit 4"}, work.Path(),
                                         [&](const std::string& l) { lines.push_back(l); }, {input, output});
    EXPECT_TRUE(run.Finished());
    EXPECT_EQ(run.ExitCode, 4);
    EXPECT_EQ(ReadAll(output), "a\nb\n");
    EXPECT_EQ(lines, (std::vector<std::string>{"said", work.Path().string()}));
    EXPECT_EQ(runner.RunNative("no-such-program", {}, work.Path(), [](const std::string&) {}).Result,
              ToolRun::Outcome::NotStarted);

    const auto late = work.Path() / "late";
    const ToolRun stopped = runner.RunNative(
        "sh", {"-c", "echo started; (sleep 1; touch '" + late.string() + "') & sleep 30"}, work.Path(),
        [&](const std::string& line) {
            if (line == "started")
                std::thread([&runner] { runner.Cancel(); }).detach();
        });
    EXPECT_EQ(stopped.Result, ToolRun::Outcome::Cancelled);
    EXPECT_EQ(runner.RunNative("true", {}, work.Path(), [](const std::string&) {}).Result,
              ToolRun::Outcome::Cancelled);
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    EXPECT_FALSE(std::filesystem::exists(late)) << "a program started by the cancelled one went on";
}

// The real thing, when Wine is installed (see the README): our batch file's command lines and
// its Z: paths as Wine's cmd reads them; a "pause" goes on by itself.
TEST(ToolRunner, RealWineRunsOurBatchFile)
{
    ToolRunner runner;
    if (!runner.HaveWine())
        GTEST_SKIP() << "wine is not installed";
    ScratchFolder work;
    const std::string out = ToToolPath((work.Path() / "out dir" / "seen.txt").string());
    std::filesystem::create_directories(work.Path() / "out dir");
    const auto batch = work.Write("tmp/run.bat", "ECHO OFF\r\nZ:\r\ncd \"" + ToToolPath(work.Path().string()) +
                                                   "\\out dir\"\r\nECHO hello> \"" + out + "\"\r\npause\r\nECHO done\r\n");
    std::vector<std::string> lines;
    const ToolRun run = runner.Run(batch, {}, batch.parent_path(), [&](const std::string& l) { lines.push_back(l); });
    ASSERT_TRUE(run.Finished());
    EXPECT_EQ(ReadAll(work.Path() / "out dir" / "seen.txt"), "hello\r\n");
    // The pause's prompt has no line end, so the next output follows it on its line.
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [](const std::string& l) { return l.ends_with("done"); }))
        << ::testing::PrintToString(lines);
}

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
