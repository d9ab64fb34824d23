// The canvas and the overlay menus on a project of 50 menus with 36 buttons each.
#include "BenchFixtures.h"
#include "MenusFixture.h"

#include "core/ScriptedPrompt.h"
#include "menus/Buttons.h"
#include "menus/CanvasCommands.h"
#include "menus/OverlayMenu.h"

#include <benchmark/benchmark.h>

#include <fstream>

namespace {

namespace fs = std::filesystem;

void BM_Menus_ParceMenu(benchmark::State& state)
{
    mw::bench::OpenMenus open;
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
    mw::bench::OpenMenus open;
    mw::ParceMenu(open.project, *open.menus.front());
    for (auto _ : state) {
        mw::AddButtonToMenu(open.project, {"", 10, 10, 100, 30}, "|Rectangle");
        mw::DeleteButton(open.project, static_cast<int>(open.project.Canvas.Buttons.size()) - 1);
    }
}

// A button added and taken back by undo: the menu and its tracks read back in place.
void BM_Menus_AddButtonAndUndo(benchmark::State& state)
{
    mw::bench::OpenMenus open;
    mw::ParceMenu(open.project, *open.menus.front());
    for (auto _ : state) {
        mw::AddButtonToMenu(open.project, {"", 10, 10, 100, 30}, "|Rectangle");
        open.project.UndoDo();
    }
    if (!open.prompt.Log.empty())
        state.SkipWithError(open.prompt.Log.front().Text.c_str());
}

// The undo step that every button command records first: the menu and the tracks it refers to.
void BM_Menus_UndoAdd(benchmark::State& state)
{
    mw::bench::OpenMenus open;
    mw::ParceMenu(open.project, *open.menus.front());
    for (auto _ : state)
        open.project.UndoAdd();
}

void BM_Menus_Align36Buttons(benchmark::State& state)
{
    mw::bench::OpenMenus open;
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
BENCHMARK(BM_Menus_AddButtonAndUndo)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Menus_UndoAdd)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Menus_Align36Buttons)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Menus_LoadOverlaysToMenu)->Unit(benchmark::kMillisecond);

} // namespace
