// The preview's player on the busy one-hour movie: opening it, seeking to 20 frames that are not
// key frames, and playing 250 frames as fast as the decoder hands them out; beside it ffmpeg
// seeking to the same frames, in the same run. The seeks and the play run again on ten minutes
// of the same picture coded with B-frames, whose pictures the decoder gives back out of order.
#include "BenchFixtures.h"

#include "media/MoviePlayer.h"

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

constexpr long kKeyInterval = 250;
constexpr double kFps = 25;

struct Movie {
    const std::filesystem::path& (*File)();
    long Frames;
};

// Ten minutes of the busy picture with two B-frames between the others, as DivX 5 codes them.
const std::filesystem::path& BusyBFramesMovie()
{
    static const std::filesystem::path file =
        mw::bench::FfmpegOnce(mw::bench::BenchFolder("menuwright-bench-media") / "busy-bframes.avi",
                              "-f lavfi -i testsrc2=size=720x576:rate=25:duration=600,noise=alls=12:allf=t "
                              "-c:v mpeg4 -vtag DX50 -g 250 -bf 2 -sc_threshold 1000000000 -b:v 1200k");
    return file;
}

const Movie kBusyHour{mw::bench::BusyHourMovie, 90000};
const Movie kBusyBFrames{BusyBFramesMovie, 15000};

// The same 20 frames on both sides, none of them a key frame, spread over the whole movie.
std::array<long, 20> SeekFrames(const Movie& movie)
{
    std::array<long, 20> picked{};
    std::mt19937 random(20);
    std::uniform_int_distribution<long> any(0, movie.Frames - 1);
    for (long& frame : picked) {
        do
            frame = any(random);
        while (frame % kKeyInterval == 0);
    }
    return picked;
}

std::unique_ptr<mw::MoviePlayer> OpenMovie(benchmark::State& state, const Movie& movie, mw::PlayerClock clock)
{
    mw::PlayerOpen result = mw::PlayerOpen::NotFound;
    auto player = mw::MoviePlayer::Open(movie.File().string(), std::move(clock), {}, result);
    if (result != mw::PlayerOpen::Opened || !player)
        state.SkipWithError("the movie does not open in the player");
    else if (player->LengthFrames() < movie.Frames - 1)
        state.SkipWithError("the movie is shorter than it was made");
    return player;
}

void BM_Player_Open(benchmark::State& state)
{
    for (auto _ : state) {
        if (!OpenMovie(state, kBusyHour, Clock::now))
            break;
    }
}

// One seek an iteration, once over each of the 20 frames: the time is the mean of a seek.
void SeekNonKeyFrame(benchmark::State& state, const Movie& movie)
{
    const auto player = OpenMovie(state, movie, Clock::now);
    if (!player)
        return;
    const auto frames = SeekFrames(movie);
    std::size_t next = 0;
    for (auto _ : state) {
        const long frame = frames[next++ % frames.size()];
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
    for (const long frame : frames)
        afterKey += static_cast<double>(frame % kKeyInterval);
    state.counters["frames_after_key"] = afterKey / static_cast<double>(frames.size());
}

void BM_Player_Process_FfmpegSeekNonKeyFrame(benchmark::State& state)
{
    const auto frames = SeekFrames(kBusyHour);
    std::size_t next = 0;
    for (auto _ : state) {
        const long frame = frames[next++ % frames.size()];
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

// 250 frames from the key frame in the middle of the movie. Once playing starts the clock jumps a
// day ahead, so every frame is due as soon as it is decoded and the decoder alone sets the pace.
void Play250Frames(benchmark::State& state, const Movie& movie)
{
    // Read by the player on this thread only.
    Clock::time_point now{};
    const auto player = OpenMovie(state, movie, [&now] { return now; });
    if (!player)
        return;
    const long from = movie.Frames / 2 / kKeyInterval * kKeyInterval;
    const long to = from + 249;
    for (auto _ : state) {
        now = Clock::time_point{};
        player->Play(from, to);
        now += std::chrono::hours(24);
        while (player->Mode() == mw::PlayerMode::Playing)
            std::this_thread::yield();
        if (player->Position() != to) {
            state.SkipWithError("the player stopped before the last frame");
            break;
        }
    }
    state.SetItemsProcessed(state.iterations() * (to - from + 1));
    // Seconds of movie a second: how many times faster than real time.
    state.counters["movie_seconds"] = benchmark::Counter(
        static_cast<double>(state.iterations() * (to - from + 1)) / kFps, benchmark::Counter::kIsRate);
}

bool HaveFfmpeg()
{
    return std::system("command -v ffmpeg >/dev/null 2>&1") == 0;
}

// Registered only when ffmpeg is on the path; the run says when its side is left out.
const bool registered = [] {
    const int seeks = static_cast<int>(SeekFrames(kBusyHour).size());
    benchmark::RegisterBenchmark("BM_Player_Open", BM_Player_Open)->Unit(benchmark::kMillisecond)->UseRealTime();
    benchmark::RegisterBenchmark("BM_Player_SeekNonKeyFrame", SeekNonKeyFrame, kBusyHour)
        ->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(seeks);
    benchmark::RegisterBenchmark("BM_Player_SeekNonKeyFrame_BFrames", SeekNonKeyFrame, kBusyBFrames)
        ->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(seeks);
    if (HaveFfmpeg())
        benchmark::RegisterBenchmark("BM_Player_Process_FfmpegSeekNonKeyFrame", BM_Player_Process_FfmpegSeekNonKeyFrame)
            ->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(seeks);
    else
        std::fputs("ffmpeg is not on the path: BM_Player_Process_FfmpegSeekNonKeyFrame is left out\n", stderr);
    benchmark::RegisterBenchmark("BM_Player_Play250Frames", Play250Frames, kBusyHour)
        ->Unit(benchmark::kMillisecond)->UseRealTime();
    benchmark::RegisterBenchmark("BM_Player_Play250Frames_BFrames", Play250Frames, kBusyBFrames)
        ->Unit(benchmark::kMillisecond)->UseRealTime();
    return true;
}();

} // namespace
