// A still chapter menu of 99 chapters, 13 pages of 8, over the one-hour movie, every page's video
// made by the built-in encoder; and a motion page of 8 of those chapters playing 10 seconds each,
// beside an ffmpeg command that composes and encodes the same page.
#include "BenchFixtures.h"

#include "build/DemoProject.h"
#include "core/ScriptedPrompt.h"
#include "document/ProgramStart.h"
#include "document/Project.h"
#include "generators/ChapterMenu.h"
#include "media/Chapters.h"
#include "media/NewProject.h"
#include "media/TitleNodes.h"
#include "generators/PageComposer.h"
#include "render/OverlayFont.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;

constexpr int kChapters = 99;

fs::path Folder()
{
    return mw::bench::BenchFolder("menuwright-bench-generators");
}

struct OpenProject {
    mw::ProgramState program{mw::bench::BenchFolder("menuwright-bench-home")};
    mw::ScriptedPrompt prompt;
    mw::DemoForms forms{program, kChapters, prompt};
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

// The project opened afresh, with its title's page at 8 a page and no main or setup button,
// which would lead nowhere.
struct ChapterPage {
    std::unique_ptr<OpenProject> Open = std::make_unique<OpenProject>();
    std::string TitleID;
    mw::MenuPage Page;

    // Each step gives an empty text when it worked, else what went wrong.
    std::string OpenFile()
    {
        if (!Open->project.OpenFile(ChaptersProject().string()))
            return "the chapters project does not open";
        const std::vector<mw::DocNode*> titles = mw::TitleNodes(Open->project.Doc);
        TitleID = titles.empty() ? std::string() : mw::ObjectIdOf(*titles.front());
        return "";
    }

    // The page as the window opens it, with its first `items` chapters.
    std::string Load(std::size_t items)
    {
        if (!mw::OpenChapterPage(Open->project, TitleID, 8, Page))
            return "the movie has no title";
        if (Page.Items.size() != kChapters)
            return "not 99 chapters";
        Page.Items.resize(items);
        mw::PlacePictures(Page, false);
        Page.Design.Main.Visible = false;
        Page.Design.Setup.Visible = false;
        return "";
    }

    std::string OpenWith(std::size_t items)
    {
        const std::string opened = OpenFile();
        return opened.empty() ? Load(items) : opened;
    }

    std::string Make(const fs::path& output, double motionSeconds, int pages)
    {
        mw::PageMenuResult result;
        if (!mw::CreateChapterMenu(Open->project, Page,
                                   {.TitleID = TitleID, .Menus = {.FileName = output.string(), .MotionSeconds = motionSeconds}},
                                   result))
            return Open->prompt.Log.empty() ? "the menu failed" : Open->prompt.Log.front().Text;
        return static_cast<int>(result.MenuIDs.size()) == pages ? "" : "not the expected pages";
    }
};

void BM_Generators_StillChapterMenu99(benchmark::State& state)
{
    mw::NeedFontApplication();
    const fs::path output = Folder() / "chapters.avi";
    for (auto _ : state) {
        state.PauseTiming();
        auto chapters = std::make_unique<ChapterPage>();
        const std::string opened = chapters->OpenFile();
        if (!opened.empty()) {
            state.SkipWithError(opened.c_str());
            break;
        }
        state.ResumeTiming();

        // Opening the page grabs its 99 frames, as the window does.
        std::string error = chapters->Load(kChapters);
        if (error.empty())
            error = chapters->Make(output, 0, 13);
        if (!error.empty()) {
            state.SkipWithError(error.c_str());
            break;
        }

        state.PauseTiming();
        chapters.reset();
        state.ResumeTiming();
    }
    state.counters["pages"] = 13;
}

constexpr int kMotionItems = 8;
constexpr int kMotionSeconds = 10;

// The first eight chapters playing ten seconds each, the frames going straight to our encoder.
void BM_Generators_MotionChapterMenu8x10s(benchmark::State& state)
{
    mw::NeedFontApplication();
    const fs::path output = Folder() / "motion.avi";
    for (auto _ : state) {
        state.PauseTiming();
        ChapterPage chapters;
        const std::string loaded = chapters.OpenWith(kMotionItems);
        if (!loaded.empty()) {
            state.SkipWithError(loaded.c_str());
            break;
        }
        state.ResumeTiming();
        const std::string error = chapters.Make(output, kMotionSeconds, 1);
        if (!error.empty()) {
            state.SkipWithError(error.c_str());
            break;
        }
    }
    state.counters["frames"] = kMotionSeconds * 25;
}

// The same page by ffmpeg: the page without its thumbnails' pictures as the background, each
// chapter's ten seconds scaled to its thumbnail and laid over it, encoded as MPEG-4.
std::string FfmpegMotionCommand()
{
    ChapterPage chapters;
    const std::string loaded = chapters.OpenWith(kMotionItems);
    if (!loaded.empty())
        throw std::runtime_error(loaded);
    mw::MenuPage background = chapters.Page;
    for (mw::PageItem& item : background.Items)
        item.Picture = {};
    const fs::path picture = Folder() / "motion-background.png";
    mw::ComposePage(background, mw::LoadPageArt(background)).save(QString::fromStdString(picture.string()));

    std::ostringstream command;
    command << "ffmpeg -nostdin -v error -y -loop 1 -framerate 25 -i " << mw::bench::Quoted(picture);
    std::ostringstream graph;
    std::string last = "0:v";
    for (std::size_t i = 0; i < chapters.Page.Items.size(); ++i) {
        const mw::PageItem& item = chapters.Page.Items[i];
        const QRect rect = mw::ItemRect(chapters.Page, item);
        command << " -ss " << double(item.Frame) / 25 << " -t " << kMotionSeconds << " -i "
                << mw::bench::Quoted(mw::bench::BusyHourMovie());
        graph << "[" << i + 1 << ":v]scale=" << rect.width() << ":" << rect.height() << "[t" << i << "];[" << last
              << "][t" << i << "]overlay=" << rect.left() << ":" << rect.top() << "[o" << i << "];";
        last = std::string("o").append(std::to_string(i)); // GCC 12 warns falsely about "o" + string at -O2
    }
    std::string filter = graph.str();
    filter.pop_back();
    command << " -filter_complex '" << filter << "' -map '[" << last << "]' -frames:v " << kMotionSeconds * 25
            << " -c:v mpeg4 -vtag DX50 " << mw::bench::Quoted(Folder() / "motion-ffmpeg.avi");
    return command.str();
}

void BM_Generators_MotionChapterMenu8x10sFfmpeg(benchmark::State& state)
{
    mw::NeedFontApplication();
    mw::bench::TimeCommand(state, FfmpegMotionCommand());
    state.counters["frames"] = kMotionSeconds * 25;
}

} // namespace

BENCHMARK(BM_Generators_StillChapterMenu99)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_Generators_MotionChapterMenu8x10s)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_Generators_MotionChapterMenu8x10sFfmpeg)->Unit(benchmark::kMillisecond)->UseRealTime();
