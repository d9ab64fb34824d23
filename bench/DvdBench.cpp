// A DVD-Video export of one 60-second title and three still menus of three buttons, beside the
// bare ffmpeg commands that transcode the same title and menus: the transcodes are the floor, the
// rest (pictures of the buttons, spumux, dvdauthor) is what the export adds to them. Run them in
// turns: `bash bench/run_bench.sh Dvd --benchmark_repetitions=3
// --benchmark_enable_random_interleaving=true`.
#include "BenchFixtures.h"
#include "MenusFixture.h"

#include "dvd/DvdExport.h"
#include "dvd/DvdTranscode.h"
#include "document/XmlToTreeView.h"
#include "render/OverlayFont.h"

#include <benchmark/benchmark.h>

#include <fstream>

namespace {

namespace fs = std::filesystem;

const fs::path& Folder()
{
    static const fs::path folder = mw::bench::BenchFolder("menuwright-bench-dvd");
    return folder;
}

const fs::path& Title()
{
    static const fs::path file = mw::bench::FfmpegOnce(
        Folder() / "title-60s.avi", "-f lavfi -i testsrc2=size=640x480:rate=25:duration=60 -f lavfi -i "
                                    "sine=duration=60 -c:v mpeg4 -vtag DX50 -b:v 1200k -c:a mp3");
    return file;
}

const fs::path& MenuMovie()
{
    static const fs::path file = mw::bench::FfmpegOnce(
        Folder() / "menus.avi", "-f lavfi -i testsrc=size=640x480:rate=25:duration=1 -c:v mpeg4 -vtag DX50");
    return file;
}

// Three still menus, each on its own frame of one movie, their buttons playing the title.
std::string ProjectXml()
{
    std::string menus, tracks;
    int id = 100;
    for (int m = 0; m < 3; ++m) {
        const std::string track = std::to_string(id++);
        tracks += "<MediaTrack objectID=\"" + track + "\" mediaSourceID=\"21\" trackID=\"00dc\" startFrame=\"" +
                  std::to_string(m) + "\" endFrame=\"" + std::to_string(m) + "\" type=\"video\"/>";
        menus += "<DivXMediaMenu objectID=\"" + std::to_string(id++) + "\" backgroundVideoID=\"" + track + "\">";
        for (int b = 0; b < 3; ++b) {
            const std::string button = std::to_string(id++);
            menus += "<ButtonMenu objectID=\"" + button + "\" selectAction=\"" + std::to_string(id) +
                     "\"><Action objectID=\"" + std::to_string(id++) + "\"><PlayAction objectID=\"" +
                     std::to_string(id++) + "\" titleID=\"6\" mediaObjectID=\"6\"/></Action><MenuRectangle objectID=\"" +
                     std::to_string(id++) + "\" left=\"" + std::to_string(40 + 200 * b) +
                     "\" top=\"380\" width=\"160\" height=\"60\"/></ButtonMenu>";
        }
        menus += "</DivXMediaMenu>";
    }
    return "<DivXMediaManager menuVersion=\"1\" objectID=\"1\" defaultMenuLanguage=\"en\" version=\"1.0\">"
           "<Media objectID=\"2\"><Title objectID=\"6\" defaultAudioTrack=\"01wb\" defaultSubtitleTrack=\"none\">"
           "<MediaSource objectID=\"7\" mediaType=\"featureAvi\" location=\"" +
           Title().string() +
           "\"/><MediaTrack objectID=\"8\" mediaSourceID=\"7\" trackID=\"00dc\" startFrame=\"0\" endFrame=\"1499\" "
           "type=\"video\"/><MediaTrack objectID=\"9\" mediaSourceID=\"7\" trackID=\"01wb\" type=\"audio\"/></Title>"
           "<MenuTracks objectID=\"20\"><MediaSource objectID=\"21\" mediaType=\"menuAvi\" location=\"" +
           MenuMovie().string() + "\"/>" + tracks +
           "</MenuTracks></Media><LanguageMenus objectID=\"30\" languageCode=\"en\" startingMenuID=\"101\" "
           "rootMenuID=\"101\">" +
           menus + "</LanguageMenus></DivXMediaManager>";
}

struct DvdProject {
    mw::ProgramState program{mw::bench::BenchFolder("menuwright-bench-dvd-home")};
    mw::ScriptedPrompt prompt;
    mw::bench::NoForms forms;
    mw::Project project{program, prompt, forms};

    DvdProject()
    {
        const fs::path file = Folder() / "project.xml";
        std::ofstream(file) << ProjectXml();
        if (!project.OpenFile(file.string()))
            throw std::runtime_error("the DVD project does not open");
    }
};

void BM_Dvd_Export60sTitleThreeStillMenus(benchmark::State& state)
{
    mw::NeedFontApplication();
    DvdProject open;
    mw::DvdExportRequest request{Folder() / "disc", {}, mw::TvStandard::Pal, {}};
    for (auto _ : state) {
        mw::ToolRunner runner;
        mw::bench::QuietLog log;
        std::string error;
        if (!mw::ExportDvd(open.project, request, runner, log, error))
            state.SkipWithError(error.c_str());
    }
}
BENCHMARK(BM_Dvd_Export60sTitleThreeStillMenus)->Unit(benchmark::kMillisecond)->UseRealTime();

// The same four transcodes, with the arguments the export gives ffmpeg, as commands of their own.
void BM_Dvd_FfmpegTranscodesAlone(benchmark::State& state)
{
    DvdProject open;
    const mw::DvdPlan plan = mw::PlanDvdExport(open.project, {Folder() / "disc", {}, mw::TvStandard::Pal, {}});
    std::vector<std::string> commands;
    const auto add = [&](const mw::DvdTranscodeJob& job) {
        mw::DvdSourceVideo source;
        std::string error;
        if (!mw::ReadDvdSourceVideo(job.Source, source, error))
            throw std::runtime_error(error);
        std::string command = "ffmpeg";
        for (const std::string& argument : mw::DvdTranscodeArguments(job, source, job.Output)) {
            // The filters hold quotes of their own.
            std::string quoted = "'";
            for (const char c : argument)
                quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
            command += " " + quoted + "'";
        }
        commands.push_back(command + " >/dev/null 2>&1");
    };
    int n = 0;
    for (const mw::DvdMenu& menu : plan.Languages.at(0).Menus)
        add({menu.Video, menu.Frames.Start, menu.Frames.End, menu.AudioFile, menu.AudioStreams, plan.Standard,
             Folder() / ("alone-" + std::to_string(n++) + ".mpg"), {}});
    const mw::DvdTitle& title = plan.Titles.at(0);
    add({title.Movie, title.Frames.Start, title.Frames.End, {}, title.AudioStreams, plan.Standard,
         Folder() / "alone-title.mpg", mw::DvdChapterFrames(title, plan.Standard)});
    for (auto _ : state) {
        for (const std::string& command : commands) {
            if (std::system(command.c_str()) != 0)
                state.SkipWithError(("failed: " + command).c_str());
        }
    }
}
BENCHMARK(BM_Dvd_FfmpegTranscodesAlone)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
