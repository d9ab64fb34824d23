// Preparing a build of 20 menus with 12 buttons each: 240 full-frame 720x576 overlay pictures,
// the linker files, both scripts and the project copy, as `build --prepare-only` does. Beside
// it, in the same run, `cp` of the same bytes: the floor that writing them sets.
#include "BenchFixtures.h"

#include "build/CreateDivX.h"
#include "core/ScriptedPrompt.h"
#include "document/Document.h"
#include "document/MenuTrackList.h"
#include "render/OverlayFont.h"

#include <benchmark/benchmark.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

namespace fs = std::filesystem;

constexpr int kMenus = 20;
constexpr int kButtons = 12;
constexpr std::array<const char*, 4> kShapes = {
    "", "<Menuwright Shape='*Oval' Position='0 0 0 0' width='4'/>", "<Menuwright Shape='*Shape1' width='3'/>",
    "<Menuwright Shape='*Text' Text='Chapter' Position='0 0 0 0' Outline='1'/>"};

const fs::path& Folder()
{
    static const fs::path folder = mw::bench::BenchFolder("menuwright-bench-build");
    return folder;
}

fs::path Home() { return Folder() / "home"; }

class Builder {
public:
    explicit Builder(mw::DocTree& tree) : tree_(tree) {}
    mw::DocNode& Element(mw::DocNode* parent, const std::string& text, const std::vector<std::string>& rows = {})
    {
        const std::string id = std::to_string(next_++);
        mw::DocNode& node = parent ? tree_.AddChild(*parent, "k" + id, text, "node")
                                   : tree_.Add(nullptr, mw::Relationship::Last, "k" + id, text, "divx");
        tree_.AddChild(node, "", "objectID = " + id, "objectid");
        for (const std::string& row : rows)
            tree_.AddChild(node, "", row, "prop");
        return node;
    }
    long Next() const { return next_; }

private:
    mw::DocTree& tree_;
    long next_ = 1;
};

// Every menu on its own source of one 720x576 movie, its buttons in a grid of 4 by 3.
void MakeProject(mw::Document& doc, const fs::path& movie)
{
    doc.ProjectFile = (Folder() / "project.xml").string();
    Builder b(doc.Tree);
    mw::DocNode& root = b.Element(nullptr, "DivXMediaManager");
    mw::DocNode& tracks = b.Element(&b.Element(&root, "Media"), "MenuTracks");
    mw::DocNode& language = b.Element(&root, "LanguageMenus", {"languageCode = en"});
    for (int m = 0; m < kMenus; ++m) {
        const std::string source = std::to_string(b.Next());
        b.Element(&tracks, "MediaSource", {"mediaType = menuAvi", "location = " + movie.string()});
        const std::string menuID = std::to_string(b.Next() + 1);
        b.Element(&tracks, "MediaTrack", {"mediaSourceID = " + source, "type = video"}).Tag =
            "<Menuwright Buttons='" + std::to_string(kButtons) + "' menuID='" + menuID + "'/>";
        mw::DocNode& menu = b.Element(&language, "DivXMediaMenu");
        for (int n = 0; n < kButtons; ++n) {
            const std::string track = std::to_string(b.Next());
            const std::string rect = std::to_string(b.Next() + 2);
            b.Element(&tracks, "MediaTrack", {"mediaSourceID = " + source, "type = subtitle",
                                              "startFrame = " + std::to_string(n)})
                .Tag = "<Menuwright rectID='" + rect + "'/>";
            mw::DocNode& button = b.Element(&menu, "ButtonMenu", {"overlayID = " + track});
            button.Tag = kShapes[static_cast<std::size_t>(n) % kShapes.size()];
            b.Element(&button, "MenuRectangle",
                      {"left = " + std::to_string(40 + n % 4 * 170), "top = " + std::to_string(60 + n / 4 * 160),
                       "width = 150", "height = 60"});
        }
    }
    mw::LoadMediaTracsFromMenuTracs(doc, doc.MenuTracks);
}

void BM_Build_Prepare240Overlays(benchmark::State& state)
{
    mw::NeedFontApplication();
    fs::create_directories(Home());
    std::ofstream(Home() / "DivXMux.exe") << "MZ";
    const fs::path movie = mw::bench::FfmpegOnce(
        Folder() / "menu720x576.avi", "-f lavfi -i color=c=navy:s=720x576:r=25:d=1 -c:v mpeg4 -vtag DX50");
    mw::Document doc;
    MakeProject(doc, movie);
    mw::Settings options;
    options.checkFirst = false;
    const mw::LangDoc lang;
    mw::ScriptedPrompt prompt;
    mw::DivXBuild build{doc, options, lang, Home(), {mw::Rgb(255, 0, 0), mw::Rgb(255, 255, 0), mw::Rgb(255, 255, 255)},
                        false, 25, Folder() / "out.divx", true, {}};
    for (auto _ : state) {
        mw::ToolRunner runner;
        mw::bench::QuietLog log;
        if (mw::mnuCreateDivX_Click(build, prompt, runner, log) != mw::BuildEnd::Prepared || !prompt.Log.empty())
            state.SkipWithError("the build did not prepare its files");
    }
    std::uintmax_t bytes = 0;
    for (const auto& entry : fs::directory_iterator(mw::BuildFolder(Home())))
        bytes += entry.is_regular_file() ? entry.file_size() : 0;
    state.counters["MB"] = static_cast<double>(bytes) / 1e6;
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes * state.iterations()));
}

// The same bytes copied by cp, the folder the benchmark above leaves.
void BM_Build_CpSameBytes(benchmark::State& state)
{
    const fs::path copy = Folder() / "copy";
    const std::string command = "rm -rf " + mw::bench::Quoted(copy) + " && cp -r " +
                                mw::bench::Quoted(mw::BuildFolder(Home())) + " " + mw::bench::Quoted(copy);
    mw::bench::TimeCommand(state, command);
}

} // namespace

BENCHMARK(BM_Build_Prepare240Overlays)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Build_CpSameBytes)->Unit(benchmark::kMillisecond);
