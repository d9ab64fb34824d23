#pragma once

// The files the benchmarks work on, made once and kept between runs under the system's temporary
// folder, and the timing of whole processes.

#include "build/BuildLog.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace mw::bench {

// A folder of the benchmark's own, created when missing.
inline std::filesystem::path BenchFolder(const std::string& name)
{
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / name;
    std::filesystem::create_directories(folder);
    return folder;
}

// Appended piece by piece: GCC 12 warns falsely about "'" + string at -O2.
inline std::string Quoted(const std::filesystem::path& path)
{
    std::string quoted(1, '\'');
    quoted += path.string();
    quoted += '\'';
    return quoted;
}

// Makes file with `ffmpeg <arguments>` unless an earlier run left it. ffmpeg writes a partial file
// that is renamed when it is done, so that a run cut short leaves nothing to be taken as whole.
inline std::filesystem::path FfmpegOnce(const std::filesystem::path& file, const std::string& arguments)
{
    if (std::filesystem::exists(file))
        return file;
    std::filesystem::path partial = file;
    partial.replace_extension(".partial" + file.extension().string());
    const std::string command = "ffmpeg -nostdin -y -loglevel error " + arguments + " " + Quoted(partial);
    if (std::system(command.c_str()) != 0)
        throw std::runtime_error("ffmpeg could not make " + file.string());
    std::filesystem::rename(partial, file);
    return file;
}

// 720x576 MPEG-4 (DX50), a key frame every 250 frames, 90,000 frames. A flat colour encodes
// quickly; still the first run takes some minutes, so the file is kept for the next.
inline const std::filesystem::path& HourMovie()
{
    static const std::filesystem::path file =
        FfmpegOnce(BenchFolder("menuwright-bench-media") / "hour.avi",
                   "-f lavfi -i color=c=blue:s=720x576:r=25:d=3600 -c:v mpeg4 -vtag DX50 -g 250");
    return file;
}

// The same hour with a moving test picture and grain at 1.2 Mbit/s, so that decoding costs what
// a real film's would; key frames only every 250 frames, never at a scene change. The first run
// takes some minutes and some 540 MB.
inline const std::filesystem::path& BusyHourMovie()
{
    static const std::filesystem::path file =
        FfmpegOnce(BenchFolder("menuwright-bench-media") / "busy-hour.avi",
                   "-f lavfi -i testsrc2=size=720x576:rate=25:duration=3600,noise=alls=12:allf=t "
                   "-c:v mpeg4 -vtag DX50 -g 250 -sc_threshold 1000000000 -b:v 1200k");
    return file;
}

// A build's log that nobody reads.
struct QuietLog : mw::BuildLog {
    void Step(const std::string&) override {}
    void Progress(int, int) override {}
    void Line(const std::string&) override {}
    void ShowTextFile(const std::filesystem::path&) override {}
    void OpenResult(const std::filesystem::path&) override {}
};

// Whole processes, so that start-up counts on both sides alike.
inline void TimeCommand(benchmark::State& state, const std::string& command)
{
    for (auto _ : state) {
        if (std::system(command.c_str()) != 0)
            state.SkipWithError(("failed: " + command).c_str());
    }
}

} // namespace mw::bench
