// A still chapter menu of 99 chapters, 13 pages of 8, over the one-hour movie, every page's video
// made by the built-in encoder.
#include "BenchFixtures.h"

#include "core/FormHost.h"
#include "core/ScriptedPrompt.h"
#include "core/settings/Settings.h"
#include "document/ProgramStart.h"
#include "document/Project.h"
#include "generators/ChapterMenu.h"
#include "media/ChapForm.h"
#include "media/Chapters.h"
#include "media/NewProject.h"
#include "media/TitleNodes.h"
#include "render/OverlayFont.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;

constexpr int kChapters = 99;

fs::path Folder()
{
    return mw::bench::BenchFolder("menuwright-bench-generators");
}

// The new title as proposed, the chapter dialog with 99 chapters of equal length.
class ChapterForms : public mw::FormHost {
public:
    ChapterForms(const mw::ProgramState& program, mw::Prompt& prompt) : program_(program), prompt_(prompt) {}

    bool ShowNewTitle(mw::NewTitleForm& form) override { return form.Accepted = true; }

    bool ShowChap(mw::ChapForm& form) override
    {
        form.Mode = mw::ChapMode::Count;
        form.txtChapters = std::to_string(kChapters);
        mw::CalcChapters(form, prompt_);
        const std::string settingsFile = mw::SettingsFilePath(program_.Lang.ProgramFolder()).string();
        return mw::AcceptChapForm(form, settingsFile, program_.Lang.LangDoc(), prompt_);
    }

private:
    const mw::ProgramState& program_;
    mw::Prompt& prompt_;
};

struct OpenProject {
    mw::ProgramState program{mw::bench::BenchFolder("menuwright-bench-home")};
    mw::ScriptedPrompt prompt;
    ChapterForms forms{program, prompt};
    mw::Project project{program, prompt, forms};
};

// A project over the hour movie with its chapters, made as a user would and saved once per run.
const fs::path& ChaptersProject()
{
    static const fs::path file = [] {
        const fs::path saved = Folder() / "chapters.xml";
        OpenProject open;
        if (!mw::CreateNewFile(open.project, mw::bench::BusyHourMovie().string()) || !mw::mnuCreateChapters(open.project) ||
            !open.project.SaveFile(false, false, saved.string()))
            throw std::runtime_error("the chapters project could not be made");
        return saved;
    }();
    return file;
}

void BM_Generators_StillChapterMenu99(benchmark::State& state)
{
    mw::NeedFontApplication();
    const fs::path output = Folder() / "chapters.avi";
    int pages = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto open = std::make_unique<OpenProject>();
        if (!open->project.OpenFile(ChaptersProject().string())) {
            state.SkipWithError("the chapters project does not open");
            break;
        }
        const std::vector<mw::DocNode*> titles = mw::TitleNodes(open->project.Doc);
        const std::string titleID = titles.empty() ? std::string() : mw::ObjectIdOf(*titles.front());
        state.ResumeTiming();

        mw::MenuPage page;
        if (!mw::OpenChapterPage(open->project, titleID, 8, page)) {
            state.SkipWithError("the movie has no title");
            break;
        }
        // No other menus to lead to: the main and setup buttons would be dead ends.
        page.Design.Main.Visible = false;
        page.Design.Setup.Visible = false;
        mw::PageMenuResult result;
        if (!mw::CreateChapterMenu(open->project, page, {.TitleID = titleID, .Menus = {.FileName = output.string()}},
                                   result)) {
            state.SkipWithError(open->prompt.Log.empty() ? "the menu failed" : open->prompt.Log.front().Text.c_str());
            break;
        }
        pages = static_cast<int>(result.MenuIDs.size());
        if (page.Items.size() != kChapters || pages != 13) {
            state.SkipWithError("not 99 chapters on 13 pages");
            break;
        }

        state.PauseTiming();
        open.reset();
        state.ResumeTiming();
    }
    state.counters["pages"] = pages;
}

} // namespace

BENCHMARK(BM_Generators_StillChapterMenu99)->Unit(benchmark::kMillisecond)->UseRealTime();
