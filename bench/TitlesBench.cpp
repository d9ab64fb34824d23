// Adding a one-hour movie as a title, cutting it into 99 chapters, and opening and saving the
// project that results. Reading a movie's headers and index alone is timed with the other media
// benchmarks. The 99 chapters are also timed as a whole command beside the command line
// program's bare start, in the same run.
#include "BenchFixtures.h"

#include "core/FormHost.h"
#include "core/ScriptedPrompt.h"
#include "document/ProgramStart.h"
#include "media/NewProject.h"
#include "document/Project.h"
#include "document/TreeViewToXml.h"
#include "document/XmlToTreeView.h"
#include "media/AddTitle.h"
#include "media/AviCache.h"
#include "media/ChapForm.h"
#include "media/Chapters.h"
#include "media/mAVIDecs.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

const fs::path& Folder()
{
    static const fs::path folder = mw::bench::BenchFolder("menuwright-bench-titles");
    return folder;
}

// 64x48 MPEG-4 (DX50) at 25 fps with an MP2 stream, a key frame every 250 frames: 90,000 frames
// with a full index. Kept for the next run.
const fs::path& HourMovie()
{
    static const fs::path file = mw::bench::FfmpegOnce(
        Folder() / "hour-64x48.avi",
        "-f lavfi -i testsrc=size=64x48:rate=25:d=3600 -f lavfi -i sine=sample_rate=22050:d=3600 "
        "-c:v mpeg4 -vtag DX50 -g 250 -sc_threshold 1000000000 -c:a mp2 -b:a 32k "
        "-metadata:s:a:0 'title=Audio - en-US;02'");
    return file;
}

class AcceptingForms : public mw::FormHost {
public:
    bool ShowNewTitle(mw::NewTitleForm&) override { return true; }
    bool ShowChap(mw::ChapForm&) override { return true; }
};

// An open project around the hour movie, in a program folder of its own.
struct HourProject {
    HourProject() : program(Folder()), project(program, prompt, forms)
    {
        mw::TrackRows rows;
        double fps = 0;
        mw::LoadStreamsToListView(HourMovie().string(), rows, true, fps, prompt);
        mw::BuildNewProjectTree(project.Doc, HourMovie().string(), rows, "en", 1, -1);
        project.Doc.ProjectFile = (Folder() / "project.xml").string();
    }

    // The chapter dialog on the first title, in count mode with 99 chapters.
    mw::ChapForm NinetyNine()
    {
        mw::ChapForm form;
        mw::LoadChapForm(form, project.Doc, mw::ChapSettingsFile(project), prompt);
        form.Combo1.ListIndex = 0;
        mw::Combo1_Click(form, project.Doc, prompt);
        form.Mode = mw::ChapMode::Count;
        form.txtChapters = "99";
        mw::CalcChapters(form, prompt);
        return form;
    }

    mw::ProgramState program;
    mw::ScriptedPrompt prompt;
    AcceptingForms forms;
    mw::Project project;
};

void BM_Titles_AddTitle(benchmark::State& state)
{
    HourProject hour;
    for (auto _ : state)
        mw::AddTitle(hour.project, HourMovie().string());
    state.counters["index reads"] = 0; // the tracks need the headers only
}

// Filling the dialog (its own reads of the movie's headers) is left out; within one command
// CreateChaps reads the index once for all the key frames it looks for.
void BM_Titles_99Chapters(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        HourProject hour;
        mw::ChapForm form = hour.NinetyNine();
        state.ResumeTiming();
        const mw::AviCacheScope command;
        mw::CreateChaps(hour.project, form, false);
        if (hour.project.Doc.Tree.Count() < 99 * 20)
            state.SkipWithError("the chapters were not made");
    }
    state.counters["index reads"] = 1;
}

void BM_Titles_OpenAndSave99Chapters(benchmark::State& state)
{
    const fs::path file = Folder() / "ninety-nine.xml";
    {
        HourProject hour;
        mw::ChapForm form = hour.NinetyNine();
        mw::CreateChaps(hour.project, form, false);
        std::string error;
        if (!mw::SaveTreeToFile(hour.project.Doc.Tree, file.string(), error))
            throw std::runtime_error(error);
    }
    for (auto _ : state) {
        mw::Document doc;
        mw::ScriptedPrompt prompt;
        std::string error;
        if (!mw::LoadXmlFile(file.string(), doc, prompt) || !mw::SaveTreeToFile(doc.Tree, file.string(), error))
            state.SkipWithError("the project does not read or save");
    }
    mw::Document doc;
    mw::ScriptedPrompt prompt;
    mw::LoadXmlFile(file.string(), doc, prompt);
    state.counters["nodes"] = static_cast<double>(doc.Tree.Count());
}

// A project made by `menuwright-cli new` around the hour movie; its one title is object 6.
const fs::path& HourProjectFile()
{
    static const fs::path file = [] {
        const fs::path project = Folder() / "cli-project.xml";
        const std::string command = std::string("'") + MENUWRIGHT_CLI_PATH + "' new " +
                                    mw::bench::Quoted(HourMovie()) + " -o " + mw::bench::Quoted(project) +
                                    " >/dev/null";
        if (std::system(command.c_str()) != 0)
            throw std::runtime_error("menuwright-cli new failed");
        return project;
    }();
    return file;
}

void BM_Titles_Process_CliVersion(benchmark::State& state)
{
    mw::bench::TimeCommand(state, std::string("'") + MENUWRIGHT_CLI_PATH + "' --version >/dev/null");
}

// Written to another file, so that every run starts from the project without chapters.
void BM_Titles_Process_Cli99Chapters(benchmark::State& state)
{
    mw::bench::TimeCommand(state, std::string("'") + MENUWRIGHT_CLI_PATH + "' chapters " +
                                      mw::bench::Quoted(HourProjectFile()) + " 6 --count 99 -o " +
                                      mw::bench::Quoted(Folder() / "cli-chapters.xml") + " >/dev/null");
}

} // namespace

BENCHMARK(BM_Titles_AddTitle)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Titles_99Chapters)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Titles_OpenAndSave99Chapters)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Titles_Process_CliVersion)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Titles_Process_Cli99Chapters)->Unit(benchmark::kMillisecond);
