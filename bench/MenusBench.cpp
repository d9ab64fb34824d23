// The canvas and the overlay menus on a project of 50 menus with 36 buttons each.
#include "BenchFixtures.h"
#include "ProjectGenerator.h"

#include "core/FormHost.h"
#include "document/ProgramStart.h"
#include "core/ScriptedPrompt.h"
#include "document/Project.h"
#include "menus/Buttons.h"
#include "menus/CanvasCommands.h"
#include "menus/OverlayMenu.h"

#include <benchmark/benchmark.h>

#include <fstream>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

class NoForms : public mw::FormHost {
public:
    bool ShowNewTitle(mw::NewTitleForm&) override { return true; }
    bool ShowChap(mw::ChapForm&) override { return true; }
};

// The generated project with a real movie behind every menu, so that counting streams reads a file.
const fs::path& MenusProject()
{
    static const fs::path file = [] {
        const fs::path folder = mw::bench::BenchFolder("menuwright-bench-menus");
        const fs::path project = mw::bench::WriteGeneratedProject(folder, {1, 1, 50, 36});
        const fs::path movie = mw::bench::FfmpegOnce(
            mw::bench::BenchFolder("menuwright-bench-media") / "menu-5s.avi",
            "-f lavfi -i testsrc=size=720x576:rate=25 -f lavfi -i sine -t 5 -c:v mpeg4 -vtag DX50 -c:a mp2");
        for (int m = 0; m < 50; ++m)
            fs::copy_file(movie, folder / ("menu" + std::to_string(m) + ".avi"), fs::copy_options::overwrite_existing);
        return project;
    }();
    return file;
}

// The generated project opened, with its menus in tree order.
struct OpenMenus {
    mw::ProgramState program{mw::bench::BenchFolder("menuwright-bench-home")};
    mw::ScriptedPrompt prompt;
    NoForms forms;
    mw::Project project{program, prompt, forms};
    std::vector<mw::DocNode*> menus;

    OpenMenus()
    {
        if (!project.OpenFile(MenusProject().string()))
            throw std::runtime_error("the generated project does not open");
        prompt.Log.clear(); // the title's movie is an empty file
        project.Doc.Tree.ForEach([&](mw::DocNode& node) {
            if (node.Text == "DivXMediaMenu")
                menus.push_back(&node);
        });
    }
};

void BM_Menus_ParceMenu(benchmark::State& state)
{
    OpenMenus open;
    std::size_t i = 0;
    for (auto _ : state) {
        mw::ParceMenu(open.project, *open.menus[i++ % open.menus.size()]);
        benchmark::DoNotOptimize(open.project.Canvas.Buttons.data());
    }
    state.counters["buttons"] = static_cast<double>(open.project.Canvas.Buttons.size());
    if (!open.prompt.Log.empty())
        state.SkipWithError(open.prompt.Log.front().Text.c_str());
}

// One undo step each, as the commands record it.
void BM_Menus_AddAndDeleteButton(benchmark::State& state)
{
    OpenMenus open;
    mw::ParceMenu(open.project, *open.menus.front());
    for (auto _ : state) {
        mw::AddButtonToMenu(open.project, {"", 10, 10, 100, 30}, "|Rectangle");
        mw::DeleteButton(open.project, static_cast<int>(open.project.Canvas.Buttons.size()) - 1);
    }
}

// The undo step that every button command records first: a snapshot of the menu and MenuTracks.
void BM_Menus_UndoAdd(benchmark::State& state)
{
    OpenMenus open;
    mw::ParceMenu(open.project, *open.menus.front());
    for (auto _ : state)
        open.project.UndoAdd();
}

void BM_Menus_Align36Buttons(benchmark::State& state)
{
    OpenMenus open;
    mw::ParceMenu(open.project, *open.menus.front());
    mw::Label1_Click(open.project, 0);
    for (auto& button : open.project.Canvas.Buttons)
        button.Selected = true;
    for (auto _ : state)
        mw::DoAlign(open.project, 1);
}

void BM_Menus_LoadOverlaysToMenu(benchmark::State& state)
{
    const fs::path folder = mw::bench::BenchFolder("menuwright-bench-overlays");
    for (int f = 0; f <= 7; ++f) {
        const fs::path sub = f == 7 ? folder : folder / ("folder" + std::to_string(f));
        fs::create_directories(sub);
        for (int b = 0; b < 200; ++b)
            std::ofstream(sub / ("overlay" + std::to_string(b) + ".bmp"));
    }
    mw::ScriptedPrompt prompt;
    mw::OverlayMenus menus;
    for (auto _ : state) {
        mw::LoadOverlaysToMenu(folder, menus, prompt);
        benchmark::DoNotOptimize(menus.Top.data());
    }
    state.counters["items"] = static_cast<double>(menus.Top.size() + 7 * menus.Folders[0].Items.size());
}

BENCHMARK(BM_Menus_ParceMenu)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Menus_AddAndDeleteButton)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Menus_UndoAdd)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Menus_Align36Buttons)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Menus_LoadOverlaysToMenu)->Unit(benchmark::kMillisecond);

} // namespace
