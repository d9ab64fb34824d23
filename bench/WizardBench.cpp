// The project wizard over three one-minute movies of 720x576 with two audio streams each: eight
// chapters a title, then a still title menu, a chapter menu and a setup menu per title, every
// video by the built-in encoder. The counters say where the time goes, in seconds per run.
#include "BenchFixtures.h"

#include "build/DemoProject.h"
#include "core/ScriptedPrompt.h"
#include "document/ProgramStart.h"
#include "document/Project.h"
#include "generators/Wizard.h"
#include "render/OverlayFont.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

// A busy minute with two MP3 streams named as projects name them.
fs::path BusyMinute(const std::string& name, const std::string& source)
{
    return mw::bench::FfmpegOnce(
        mw::bench::BenchFolder("menuwright-bench-media") / name,
        "-f lavfi -i " + source +
            "=size=720x576:rate=25:duration=60,noise=alls=12:allf=t -f lavfi -i sine=f=440:r=48000:d=60 "
            " -f lavfi -i sine=f=220:r=48000:d=60 -map 0 -map 1 -map 2 -c:v mpeg4 -vtag DX50 -g 250 "
            "-sc_threshold 1000000000 -b:v 1200k -c:a libmp3lame -b:a 128k "
            "-metadata:s:a:0 'title=Audio - en-US;02' -metadata:s:a:1 'title=Audio - de-DE;03'");
}

const std::vector<std::string>& Movies()
{
    static const std::vector<std::string> movies = {BusyMinute("wizard-a.avi", "testsrc2").string(),
                                                    BusyMinute("wizard-b.avi", "testsrc").string(),
                                                    BusyMinute("wizard-c.avi", "smptebars").string()};
    return movies;
}

// Splits the time of the last step at the wizard's messages: each one starts the step it names.
class StepClock : public mw::ScriptedPrompt {
public:
    void Start(const std::string& step)
    {
        const Clock::time_point now = Clock::now();
        if (!step_.empty())
            Seconds[step_] += std::chrono::duration<double>(now - since_).count();
        step_ = step;
        since_ = now;
    }

    void Progress(const mw::ProgressChannel& channel, const std::string& text) override
    {
        ScriptedPrompt::Progress(channel, text);
        if (channel.Name != mw::kWizardMessage.Name)
            return;
        for (const char* step : {"Creating menu for titles", "Creating menu for chapters", "Creating menu for setup"}) {
            if (text.starts_with(step))
                Start(step);
        }
    }

    std::map<std::string, double> Seconds;

private:
    std::string step_;
    Clock::time_point since_;
};

void BM_Wizard_ThreeMinuteMovies(benchmark::State& state)
{
    mw::NeedFontApplication();
    const std::vector<std::string>& movies = Movies();
    std::map<std::string, double> seconds;
    for (auto _ : state) {
        state.PauseTiming();
        mw::ProgramState program{mw::bench::BenchFolder("menuwright-bench-home")};
        StepClock prompt;
        mw::DemoForms forms{program, 8, prompt};
        mw::Project project{program, prompt, forms};
        mw::Wizard wizard;
        state.ResumeTiming();

        prompt.Start("add titles");
        bool made = mw::WizardAddTitles(project, wizard, movies);
        prompt.Start("chapters");
        for (int i = 0; made && i < static_cast<int>(movies.size()); ++i) {
            wizard.ListIndex = i;
            made = mw::WizardCreateChapters(project, wizard);
        }
        prompt.Start("load pages");
        mw::WizardShowMenus(wizard);
        mw::SetSetupMenuBox(wizard, true);
        made = made && mw::WizardShowPreview(project, wizard) && mw::WizardCreate(project, wizard);
        prompt.Start("");
        if (!made || wizard.List3.size() != 7) {
            state.SkipWithError(prompt.Log.empty() ? "the wizard failed" : prompt.Log.front().Text.c_str());
            break;
        }
        for (const auto& [step, time] : prompt.Seconds)
            seconds[step] += time;
    }
    for (const auto& [step, time] : seconds)
        state.counters[step] = benchmark::Counter(time, benchmark::Counter::kAvgIterations);
}

} // namespace

BENCHMARK(BM_Wizard_ThreeMinuteMovies)->Unit(benchmark::kMillisecond)->UseRealTime();
