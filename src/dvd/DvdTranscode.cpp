#include "dvd/DvdTranscode.h"

#include "build/AvError.h"
#include "dvd/DvdTools.h"

extern "C" {
#include <libavformat/avformat.h>
}

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>

namespace mw {

namespace {

// Film rate within the rounding of a file's header.
bool IsFilmRate(const FrameRate& rate)
{
    return std::abs(rate.Fps() - kFilmRate.Fps()) < 0.005;
}

bool Telecined(const DvdTranscodeJob& job, const DvdSourceVideo& source)
{
    return job.Standard == TvStandard::Ntsc && IsFilmRate(source.Rate);
}

long SourceFrames(const DvdTranscodeJob& job, const DvdSourceVideo& source)
{
    const long end = job.LastFrame < 0 ? source.Frames : std::min(job.LastFrame + 1, source.Frames);
    return std::max(0L, end - std::max(0L, job.FirstFrame));
}

// Seconds of `frames` source frames, with more digits than any sample needs.
std::string Seconds(long frames, const FrameRate& rate)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.6f", double(frames) * rate.Den / rate.Num);
    return text;
}

std::string Rate(const FrameRate& rate)
{
    return std::to_string(rate.Num) + "/" + std::to_string(rate.Den);
}

// Scales the picture into the 4:3 frame with its own shape kept and fills the rest with black,
// then brings it to the standard's rate.
std::string PictureFilters(const DvdTranscodeJob& job, const DvdSourceVideo& source)
{
    const std::string w = std::to_string(kDvdFrameWidth);
    const std::string h = std::to_string(DvdFrameHeight(job.Standard));
    // A 4:3 picture fills the frame; wider ones take the whole width, narrower the whole height.
    std::string filters = "scale=w='if(gte(dar,4/3)," + w + ",round(" + w + "*dar*3/8)*2)'" +
                          ":h='if(gte(dar,4/3),round(" + h + "*4/3/dar/2)*2," + h + ")'" + ",pad=" + w + ":" + h +
                          ":(ow-iw)/2:(oh-ih)/2,setsar=" + (job.Standard == TvStandard::Pal ? "16/15" : "8/9");
    const FrameRate target = DvdFrameRate(job.Standard);
    if (Telecined(job, source))
        filters += ",telecine=first_field=top:pattern=23";
    else if (!(source.Rate == target))
        filters += ",fps=" + Rate(target);
    return filters;
}

// The group starts to force so that each of the key frames starts a unit of the disc: dvdauthor
// starts one only at a group that begins 0.4 s or more after the last unit began. The encoder
// starts a group every kGroup frames after a forced one by itself; where that leaves a short
// group before the next key frame, the last two groups share the frames.
std::vector<long> GroupStarts(std::vector<long> keys, TvStandard standard)
{
    const long group = standard == TvStandard::Pal ? 15 : 18;
    const long shortest = standard == TvStandard::Pal ? 10 : 12;
    std::sort(keys.begin(), keys.end());
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    std::vector<long> starts;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (keys[i] > 0)
            starts.push_back(keys[i]);
        if (i + 1 == keys.size())
            break;
        const long length = keys[i + 1] - keys[i];
        const long rest = length - (length - 1) / group * group;
        if (length > group && rest < shortest)
            starts.push_back(keys[i + 1] - std::max(shortest, (group + rest + 1) / 2));
    }
    return starts;
}

// A line of the progress report: "key=value", the key in lower case, digits and "_".
bool IsProgressLine(const std::string& line)
{
    const std::size_t equals = line.find('=');
    return equals != std::string::npos && equals > 0 &&
           std::all_of(line.begin(), line.begin() + long(equals),
                       [](char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_'; });
}

} // namespace

long DvdOutputFrames(const DvdTranscodeJob& job, const DvdSourceVideo& source)
{
    const long frames = SourceFrames(job, source);
    if (Telecined(job, source))
        return frames * 5 / 4;
    const FrameRate target = DvdFrameRate(job.Standard);
    if (source.Rate == target || source.Rate.Num <= 0 || source.Rate.Den <= 0)
        return frames;
    return std::lround(double(frames) * target.Fps() / source.Rate.Fps());
}

std::vector<std::string> DvdTranscodeArguments(const DvdTranscodeJob& job, const DvdSourceVideo& source,
                                               const std::filesystem::path& output)
{
    std::vector<std::string> arguments = {"-hide_banner", "-nostdin", "-nostats", "-loglevel", "warning", "-y",
                                          "-i", job.Source.string()};
    const bool ownAudio = job.AudioFile.empty();
    if (!ownAudio && !job.AudioStreams.empty())
        arguments.insert(arguments.end(), {"-i", job.AudioFile.string()});

    const long first = std::max(0L, job.FirstFrame);
    const long frames = SourceFrames(job, source);
    const std::string length = Seconds(frames, source.Rate);
    // Frames are cut by number, so the range is exact whatever the timestamps say.
    std::string graph = "[0:v]trim=start_frame=" + std::to_string(first) +
                        ":end_frame=" + std::to_string(first + frames) + ",setpts=PTS-STARTPTS," +
                        PictureFilters(job, source) + "[v]";
    std::vector<std::string> maps = {"-map", "[v]"};
    // Each audio track is cut to the picture's length exactly and filled with silence where short.
    const std::string start = ownAudio ? "start=" + Seconds(first, source.Rate) + ":" : "";
    for (std::size_t i = 0; i < job.AudioStreams.size(); ++i) {
        const std::string label = "[a" + std::to_string(i) + "]";
        graph += ";[" + std::string(ownAudio ? "0" : "1") + ":a:" + std::to_string(job.AudioStreams[i]) + "]atrim=" +
                 start + "duration=" + length + ",asetpts=PTS-STARTPTS,apad=whole_dur=" + length + label;
        maps.insert(maps.end(), {"-map", label});
    }
    if (job.AudioStreams.empty()) {
        graph += ";anullsrc=r=48000:cl=stereo,atrim=duration=" + length + "[a0]";
        maps.insert(maps.end(), {"-map", "[a0]"});
    }
    arguments.insert(arguments.end(), {"-filter_complex", graph});
    arguments.insert(arguments.end(), maps.begin(), maps.end());
    arguments.insert(arguments.end(), {"-target", job.Standard == TvStandard::Pal ? "pal-dvd" : "ntsc-dvd"});
    if (Telecined(job, source))
        arguments.insert(arguments.end(), {"-flags", "+ilme+ildct", "-top", "1"});
    // By the encoder's own frame count, which is exact where times after a rate change are not.
    // A cut of the scene would start a group of its own, perhaps just before a chapter.
    std::string keys;
    for (long frame : GroupStarts(job.KeyFrames, job.Standard))
        keys += (keys.empty() ? "expr:" : "+") + std::string("eq(n,") + std::to_string(frame) + ")";
    if (!keys.empty())
        arguments.insert(arguments.end(), {"-force_key_frames", keys, "-sc_threshold", "1000000000"});
    arguments.insert(arguments.end(), {"-aspect", "4:3", "-progress", "pipe:1", output.string()});
    return arguments;
}

bool ReadDvdSourceVideo(const std::filesystem::path& source, DvdSourceVideo& video, std::string& error)
{
    AVFormatContext* opened = nullptr;
    if (const int rc = avformat_open_input(&opened, source.c_str(), nullptr, nullptr); rc < 0) {
        error = source.string() + ": " + AvError(rc);
        return false;
    }
    const std::unique_ptr<AVFormatContext*, void (*)(AVFormatContext**)> format(&opened, avformat_close_input);
    if (const int rc = avformat_find_stream_info(opened, nullptr); rc < 0) {
        error = source.string() + ": " + AvError(rc);
        return false;
    }
    const int index = av_find_best_stream(opened, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    if (index < 0) {
        error = source.string() + ": no video stream";
        return false;
    }
    const AVStream* stream = opened->streams[index];
    AVRational rate = stream->avg_frame_rate.num > 0 ? stream->avg_frame_rate : stream->r_frame_rate;
    if (rate.num <= 0 || rate.den <= 0) {
        error = source.string() + ": the frame rate is unknown";
        return false;
    }
    av_reduce(&rate.num, &rate.den, rate.num, rate.den, 1 << 30);
    video.Rate = {rate.num, rate.den};
    if (stream->nb_frames > 0)
        video.Frames = long(stream->nb_frames);
    else if (stream->duration > 0)
        video.Frames = long(std::llround(double(stream->duration) * av_q2d(stream->time_base) * av_q2d(rate)));
    else
        video.Frames = long(std::llround(double(opened->duration) / AV_TIME_BASE * av_q2d(rate)));
    return true;
}

bool TranscodeForDvd(ToolRunner& runner, const DvdTranscodeJob& job, const DvdProgress& progress,
                     const ToolRunner::LineSink& onLine, std::string& error)
{
    if (FindDvdTool(DvdTool::Ffmpeg).empty()) {
        error = MissingToolMessage(DvdTool::Ffmpeg);
        return false;
    }
    DvdSourceVideo source;
    if (!ReadDvdSourceVideo(job.Source, source, error))
        return false;
    const int total = int(DvdOutputFrames(job, source));
    std::filesystem::path part = job.Output;
    part += ".part";
    const auto onOutput = [&](const std::string& line) {
        // The progress report is key=value lines; only its frame count is of use to a person.
        if (line.starts_with("frame=")) {
            if (progress)
                progress(std::min(total, std::atoi(line.c_str() + 6)), total);
        } else if (!IsProgressLine(line)) {
            onLine(line);
        }
    };
    const std::filesystem::path folder = job.Output.has_parent_path() ? job.Output.parent_path() : ".";
    const bool ran =
        RunDvdTool(runner, DvdTool::Ffmpeg, DvdTranscodeArguments(job, source, part), folder, onOutput, error);
    std::error_code failed;
    if (ran) {
        std::filesystem::rename(part, job.Output, failed);
        if (!failed) {
            if (progress)
                progress(total, total);
            return true;
        }
        error = job.Output.string() + ": " + failed.message();
    }
    std::filesystem::remove(part, failed);
    return false;
}

} // namespace mw
