// Reading, checking, normalising and saving a generated project of about 20,000 nodes, side by
// side with xmllint parsing the same file, in one run.
#include "BenchFixtures.h"
#include "ProjectGenerator.h"

#include "core/ScriptedPrompt.h"
#include "document/CheckForErrors.h"
#include "document/Document.h"
#include "document/NormalizeFile.h"
#include "document/TreeViewToXml.h"
#include "document/XmlToTreeView.h"
#include "i18n/LangDoc.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;
using mw::bench::TimeCommand;

const fs::path& ProjectFile()
{
    static const fs::path file = mw::bench::WriteGeneratedProject(
        fs::temp_directory_path() / "menuwright-bench-project", mw::bench::ProjectShape{});
    return file;
}

mw::Document ReadProject()
{
    mw::Document doc;
    mw::ScriptedPrompt prompt;
    if (!mw::LoadXmlFile(ProjectFile().string(), doc, prompt))
        throw std::runtime_error("the generated project does not read");
    doc.ProjectFile = ProjectFile().string();
    return doc;
}

void BM_Read(benchmark::State& state)
{
    for (auto _ : state) {
        mw::Document doc = ReadProject();
        benchmark::DoNotOptimize(doc.NextObjectID);
    }
    state.counters["nodes"] = static_cast<double>(ReadProject().Tree.Count());
}

void BM_Save(benchmark::State& state)
{
    mw::Document doc = ReadProject();
    const fs::path out = ProjectFile().parent_path() / "saved.xml";
    for (auto _ : state) {
        std::string error;
        if (!mw::SaveTreeToFile(doc.Tree, out.string(), error))
            state.SkipWithError(error.c_str());
    }
}

void BM_ReadAndSave(benchmark::State& state)
{
    const fs::path out = ProjectFile().parent_path() / "saved.xml";
    for (auto _ : state) {
        mw::Document doc = ReadProject();
        std::string error;
        if (!mw::SaveTreeToFile(doc.Tree, out.string(), error))
            state.SkipWithError(error.c_str());
    }
}

void BM_Check(benchmark::State& state)
{
    mw::Document doc = ReadProject();
    mw::LangDoc lang;
    for (auto _ : state) {
        mw::ScriptedPrompt prompt;
        if (!mw::CheckForErrors(doc, lang, prompt, true))
            state.SkipWithError("the generated project has faults");
    }
}

void BM_Normalize(benchmark::State& state)
{
    mw::LangDoc lang;
    for (auto _ : state) {
        state.PauseTiming();
        mw::Document doc = ReadProject();
        state.ResumeTiming();
        mw::ScriptedPrompt prompt;
        mw::NormalizeFile(doc, lang, prompt);
    }
}

void BM_Process_XmllintNoout(benchmark::State& state)
{
    TimeCommand(state, "xmllint --noout '" + ProjectFile().string() + "'");
}

void BM_Process_CliResave(benchmark::State& state)
{
    const fs::path out = ProjectFile().parent_path() / "cli-saved.xml";
    TimeCommand(state, std::string("'") + MENUWRIGHT_CLI_PATH + "' resave '" + ProjectFile().string() + "' -o '" +
                           out.string() + "' >/dev/null");
}

} // namespace

BENCHMARK(BM_Read)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Save)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadAndSave)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Check)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Normalize)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Process_XmllintNoout)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Process_CliResave)->Unit(benchmark::kMillisecond);


