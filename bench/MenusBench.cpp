// The canvas and the overlay menus on a project of 50 menus with 36 buttons each.
#include "BenchFixtures.h"
#include "ProjectGenerator.h"

#include "core/FormHost.h"
#include "core/ProgramStart.h"
#include "core/ScriptedPrompt.h"
#include "document/Project.h"
#include "menus/CanvasCommands.h"
#include "menus/OverlayMenu.h"

#include <benchmark/benchmark.h>

#include <fstream>

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

void BM_Menus_ParceMenu(benchmark::State& state)
{
    mw::ProgramState program(mw::bench::BenchFolder("menuwright-bench-home"));
    mw::ScriptedPrompt prompt;
    NoForms forms;
    mw::Project project(program, prompt, forms);
    if (!project.OpenFile(MenusProject().string())) {
        state.SkipWithError("the generated project does not open");
        return;
    }
    prompt.Log.clear(); // the title's movie is an empty file
    std::vector<mw::DocNode*> menus;
    project.Doc.Tree.ForEach([&](mw::DocNode& node) {
        if (node.Text == "DivXMediaMenu")
            menus.push_back(&node);
    });
    std::size_t i = 0;
    for (auto _ : state) {
        mw::ParceMenu(project, *menus[i++ % menus.size()]);
        benchmark::DoNotOptimize(project.Canvas.Buttons.data());
    }
    state.counters["buttons"] = static_cast<double>(project.Canvas.Buttons.size());
    if (!prompt.Log.empty())
        state.SkipWithError(prompt.Log.front().Text.c_str());
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
BENCHMARK(BM_Menus_LoadOverlaysToMenu)->Unit(benchmark::kMillisecond);

} // namespace
