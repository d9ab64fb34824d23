// Inspecting, finding key frames in and grabbing from a one-hour 25 fps AVI with a full index,
// side by side with ffprobe and ffmpeg on the same file, in one run.
#include "BenchFixtures.h"

#include "core/ScriptedPrompt.h"
#include "i18n/LangDoc.h"
#include "media/FrameGrabber.h"
#include "media/mAVIDecs.h"
#include "render/cDIB.h"

#include <benchmark/benchmark.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;
using mw::bench::HourMovie;
using mw::bench::Quoted;
using mw::bench::TimeCommand;

constexpr long kMiddleFrame = 45125;                 // half a key interval after the key frame 45000
constexpr const char* kMiddleSeconds = "1805";       // the same frame at 25 fps

void BM_Media_Process_FfprobeShowStreams(benchmark::State& state)
{
    TimeCommand(state, "ffprobe -v error -show_streams " + Quoted(HourMovie()) + " >/dev/null");
}

void BM_Media_Process_CliTracks(benchmark::State& state)
{
    TimeCommand(state, std::string("'") + MENUWRIGHT_CLI_PATH + "' tracks " + Quoted(HourMovie()) + " >/dev/null");
}

void BM_Media_LoadStreamsToListView(benchmark::State& state)
{
    for (auto _ : state) {
        mw::ScriptedPrompt prompt;
        mw::TrackRows rows;
        double fps = 0;
        if (!mw::LoadStreamsToListView(HourMovie().string(), rows, true, fps, prompt))
            state.SkipWithError("the movie does not read");
        benchmark::DoNotOptimize(rows.data());
    }
}

void BM_Media_FindNearestKeyFrame(benchmark::State& state)
{
    for (auto _ : state) {
        mw::ScriptedPrompt prompt;
        bool found = false;
        benchmark::DoNotOptimize(mw::FindNearestKeyFrame(HourMovie().string(), kMiddleFrame, true, prompt, &found));
        if (!found)
            state.SkipWithError("no key frame");
    }
}

void BM_Media_GrabFrameToPicture(benchmark::State& state)
{
    const mw::LangDoc lang;
    for (auto _ : state) {
        mw::ScriptedPrompt prompt;
        mw::cDIB picture;
        long frame = kMiddleFrame;
        if (!mw::GrabFrameToPicture(HourMovie().string(), picture, frame, true, prompt, lang))
            state.SkipWithError("the grab failed");
    }
}

void BM_Media_Process_FfmpegGrabMiddle(benchmark::State& state)
{
    const fs::path out = HourMovie().parent_path() / "ffmpeg-grab.bmp";
    TimeCommand(state, std::string("ffmpeg -nostdin -v error -y -ss ") + kMiddleSeconds + " -i " +
                           Quoted(HourMovie()) + " -frames:v 1 " + Quoted(out));
}

void BM_Media_Process_CliGrabMiddle(benchmark::State& state)
{
    const fs::path out = HourMovie().parent_path() / "cli-grab.bmp";
    TimeCommand(state, std::string("'") + MENUWRIGHT_CLI_PATH + "' grab " + Quoted(HourMovie()) + " " +
                           std::to_string(kMiddleFrame) + " -o " + Quoted(out) + " >/dev/null");
}

} // namespace

BENCHMARK(BM_Media_Process_FfprobeShowStreams)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Media_Process_CliTracks)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Media_LoadStreamsToListView)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Media_FindNearestKeyFrame)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Media_GrabFrameToPicture)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Media_Process_FfmpegGrabMiddle)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Media_Process_CliGrabMiddle)->Unit(benchmark::kMillisecond);
