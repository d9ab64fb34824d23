// A five-second still menu of 720x576 at 25 fps: our own route (the pic2avi process, and the
// call itself) side by side with ffmpeg's MPEG-4 encoder looping the same picture, in one run.
#include "BenchFixtures.h"

#include "build/PicturesToMenuVideo.h"
#include "core/ScriptedPrompt.h"
#include "i18n/LangDoc.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;
using mw::bench::Quoted;
using mw::bench::TimeCommand;

const fs::path& Folder()
{
    static const fs::path folder = mw::bench::BenchFolder("menuwright-bench-pic2avi");
    return folder;
}

// A busy picture, so that the encoders have real work in their key frames.
fs::path Picture()
{
    return mw::bench::FfmpegOnce(Folder() / "menu.png", "-f lavfi -i testsrc2=s=720x576 -frames:v 1");
}

// The command's time, and the size of the menu video it wrote.
void TimeWritingOut(benchmark::State& state, const std::string& command)
{
    TimeCommand(state, command);
    std::error_code missing;
    state.counters["bytes"] = static_cast<double>(fs::file_size(Folder() / "out.avi", missing));
}

void BM_PicToAvi_Process_Ffmpeg(benchmark::State& state)
{
    TimeWritingOut(state, "ffmpeg -nostdin -y -loglevel error -loop 1 -t 5 -i " + Quoted(Picture()) +
                              " -c:v mpeg4 -vtag DX50 " + Quoted(Folder() / "out.avi"));
}

void BM_PicToAvi_Process_CliPic2Avi(benchmark::State& state)
{
    TimeWritingOut(state, std::string("'") + MENUWRIGHT_CLI_PATH + "' pic2avi " + Quoted(Picture()) + " -o " +
                              Quoted(Folder() / "out.avi") + " --fps 25 >/dev/null 2>&1");
}

void BM_PicToAvi_CreateAviFromaPic(benchmark::State& state)
{
    const mw::Settings settings;
    const mw::LangDoc lang;
    const std::string picture = Picture().string();
    for (auto _ : state) {
        mw::ScriptedPrompt prompt;
        if (!mw::CreateAviFromaPic(picture, (Folder() / "out.avi").string(), 25, "", mw::kPicToMenuBuiltIn, settings,
                                   lang, prompt))
            state.SkipWithError("the menu video was not made");
    }
}

} // namespace

BENCHMARK(BM_PicToAvi_Process_Ffmpeg)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PicToAvi_Process_CliPic2Avi)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PicToAvi_CreateAviFromaPic)->Unit(benchmark::kMillisecond);
