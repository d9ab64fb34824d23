// The preview's player on the busy one-hour movie: opening it, seeking to 20 frames that are not
// key frames, and playing 250 frames as fast as the decoder hands them out; beside it ffmpeg
// seeking to the same frames, in the same run.
#include "BenchFixtures.h"

#include "media/MoviePlayer.h"

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

constexpr long kKeyInterval = 250;
constexpr long kMovieFrames = 90000;
constexpr double kFps = 25;

// The same 20 frames on both sides, none of them a key frame, spread over the whole hour.
const std::array<long, 20>& SeekFrames()
{
    static const std::array<long, 20> frames = [] {
        std::array<long, 20> picked{};
        std::mt19937 random(20);
        std::uniform_int_distribution<long> any(0, kMovieFrames - 1);
        for (long& frame : picked) {
            do
                frame = any(random);
            while (frame % kKeyInterval == 0);
        }
        return picked;
    }();
    return frames;
}

std::unique_ptr<mw::MoviePlayer> OpenBusyHour(benchmark::State& state, mw::PlayerClock clock)
{
    mw::PlayerOpen result = mw::PlayerOpen::NotFound;
    auto player = mw::MoviePlayer::Open(mw::bench::BusyHourMovie().string(), std::move(clock), result);
    if (result != mw::PlayerOpen::Opened || !player)
        state.SkipWithError("the hour movie does not open in the player");
    else if (player->LengthFrames() < kMovieFrames - 1)
        state.SkipWithError("the hour movie is shorter than an hour");
    return player;
}

void BM_Player_Open(benchmark::State& state)
{
    for (auto _ : state) {
        if (!OpenBusyHour(state, Clock::now))
            break;
    }
}

// One seek an iteration, once over each of the 20 frames: the time is the mean of a seek.
void BM_Player_SeekNonKeyFrame(benchmark::State& state)
{
    const auto player = OpenBusyHour(state, Clock::now);
    if (!player)
        return;
    std::size_t next = 0;
    for (auto _ : state) {
        const long frame = SeekFrames()[next++ % SeekFrames().size()];
        // A frame that fails to decode keeps the picture before it.
        const auto before = player->Picture();
        player->Seek(frame);
        if (player->Position() != frame || !player->Picture() || player->Picture() == before) {
            state.SkipWithError(("no picture at frame " + std::to_string(frame)).c_str());
            break;
        }
    }
    // How many frames a seek decodes past its key frame, on average.
    double afterKey = 0;
    for (const long frame : SeekFrames())
        afterKey += static_cast<double>(frame % kKeyInterval);
    state.counters["frames_after_key"] = afterKey / static_cast<double>(SeekFrames().size());
}

void BM_Player_Process_FfmpegSeekNonKeyFrame(benchmark::State& state)
{
    std::size_t next = 0;
    for (auto _ : state) {
        const long frame = SeekFrames()[next++ % SeekFrames().size()];
        char seconds[32];
        std::snprintf(seconds, sizeof seconds, "%.3f", static_cast<double>(frame) / kFps);
        const std::string command = std::string("ffmpeg -nostdin -v error -ss ") + seconds + " -i " +
                                    mw::bench::Quoted(mw::bench::BusyHourMovie()) + " -frames:v 1 -f null -";
        if (std::system(command.c_str()) != 0) {
            state.SkipWithError(("failed: " + command).c_str());
            break;
        }
    }
}

// 250 frames from the key frame in the middle of the hour. Once playing starts the clock jumps a
// day ahead, so every frame is due as soon as it is decoded and the decoder alone sets the pace.
void BM_Player_Play250Frames(benchmark::State& state)
{
    // Read by the player on this thread only.
    Clock::time_point now{};
    const auto player = OpenBusyHour(state, [&now] { return now; });
    if (!player)
        return;
    constexpr long kFrom = 45000;
    constexpr long kTo = kFrom + 249;
    for (auto _ : state) {
        now = Clock::time_point{};
        player->Play(kFrom, kTo);
        now += std::chrono::hours(24);
        while (player->Mode() == mw::PlayerMode::Playing)
            std::this_thread::yield();
        if (player->Position() != kTo) {
            state.SkipWithError("the player stopped before the last frame");
            break;
        }
    }
    state.SetItemsProcessed(state.iterations() * (kTo - kFrom + 1));
    // Seconds of movie a second: how many times faster than real time.
    state.counters["movie_seconds"] = benchmark::Counter(
        static_cast<double>(state.iterations() * (kTo - kFrom + 1)) / kFps, benchmark::Counter::kIsRate);
}

bool HaveFfmpeg()
{
    return std::system("command -v ffmpeg >/dev/null 2>&1") == 0;
}

// Registered only when ffmpeg is on the path; the run says when its side is left out.
const bool registered = [] {
    const int seeks = static_cast<int>(SeekFrames().size());
    benchmark::RegisterBenchmark("BM_Player_Open", BM_Player_Open)->Unit(benchmark::kMillisecond)->UseRealTime();
    benchmark::RegisterBenchmark("BM_Player_SeekNonKeyFrame", BM_Player_SeekNonKeyFrame)
        ->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(seeks);
    if (HaveFfmpeg())
        benchmark::RegisterBenchmark("BM_Player_Process_FfmpegSeekNonKeyFrame", BM_Player_Process_FfmpegSeekNonKeyFrame)
            ->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(seeks);
    else
        std::fputs("ffmpeg is not on the path: BM_Player_Process_FfmpegSeekNonKeyFrame is left out\n", stderr);
    benchmark::RegisterBenchmark("BM_Player_Play250Frames", BM_Player_Play250Frames)->Unit(benchmark::kMillisecond)->UseRealTime();
    return true;
}();

} // namespace
