#pragma once

#include "build/ToolRunner.h"
#include "dvd/DvdStandard.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace mw {

// One movie (or a part of it) made into a DVD-Video program stream: MPEG-2 video at the
// standard's size and rate, AC-3 audio.
struct DvdTranscodeJob {
    std::filesystem::path Source;
    long FirstFrame = 0;
    long LastFrame = -1; // inclusive; -1 runs to the end
    // Audio from this file instead of the source's own streams. It plays from its start, cut or
    // filled with silence to the length of the picture.
    std::filesystem::path AudioFile;
    // The audio streams to keep, by their number among the audio streams of the audio's file
    // (0 = the first). None gives one silent track: some players want audio even on a menu.
    std::vector<int> AudioStreams;
    TvStandard Standard = TvStandard::Pal;
    std::filesystem::path Output; // .mpg
    // Frames of the output (from 0) that must be key frames, so that a chapter starts there.
    std::vector<long> KeyFrames;
};

// What the arguments need to know of the source's picture.
struct DvdSourceVideo {
    FrameRate Rate;
    long Frames = 0; // all frames of the source
};

// The frames the output will have, at the standard's rate.
long DvdOutputFrames(const DvdTranscodeJob& job, const DvdSourceVideo& source);

// The arguments of `ffmpeg` (the program name left out) that make job.Output from the job;
// `output` names the file written, which the run renames to job.Output at the end.
std::vector<std::string> DvdTranscodeArguments(const DvdTranscodeJob& job, const DvdSourceVideo& source,
                                               const std::filesystem::path& output);

// The source's frame rate and frame count, read with FFmpeg. False with the reason otherwise.
bool ReadDvdSourceVideo(const std::filesystem::path& source, DvdSourceVideo& video, std::string& error);

using DvdProgress = std::function<void(int done, int total)>;

// Runs ffmpeg for the job through the runner: progress in output frames, ffmpeg's own messages
// to onLine. job.Output appears only when the run succeeds; a failed or cancelled run leaves
// nothing behind.
bool TranscodeForDvd(ToolRunner& runner, const DvdTranscodeJob& job, const DvdProgress& progress,
                     const ToolRunner::LineSink& onLine, std::string& error);

} // namespace mw
