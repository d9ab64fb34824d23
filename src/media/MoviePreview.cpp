#include "media/MoviePreview.h"

#include <algorithm>
#include <cstdio>

namespace mw {

namespace {

constexpr const char* kPlaysSilently = "No sound device: the movie plays without sound";

void Say(MoviePreview& preview, const std::string& text)
{
    if (preview.ShowMovieInfo)
        preview.ShowMovieInfo(text);
}

void ShowPosition(MoviePreview& preview, long frame)
{
    preview.lblFrame = std::to_string(frame);
    preview.lblTime = PreviewTimeText(frame, preview.Fps);
    preview.SliderValue = frame;
}

void ShowPlaying(MoviePreview& preview, bool playing, const char* tip)
{
    preview.PlayCaption = playing ? ";" : "4";
    preview.PlayToolTip = tip;
    preview.TimerEnabled = playing;
}

void PlayFrom(MoviePreview& preview, long frame)
{
    if (preview.MM.MMPlay(preview.Alias, std::to_string(frame)) == "Success")
        ShowPlaying(preview, true, "Pause");
}

} // namespace

std::string PreviewTimeText(long frame, double fps)
{
    const long seconds = fps > 0 ? static_cast<long>(frame / fps) : 0;
    char text[32];
    std::snprintf(text, sizeof text, "%ld:%02ld:%02ld", seconds / 3600, seconds / 60 % 60, seconds % 60);
    return text;
}

bool OpenPreview(MoviePreview& preview, const std::string& file, int width, int height)
{
    if (preview.Opened)
        ClosePreview(preview);
    Say(preview, "Opening movie...");
    if (preview.MM.MMOpen(file, "MPEGVideo", preview.Alias) != "Success") {
        Say(preview, "Error loading file for playing");
        return false;
    }
    preview.Opened = true;
    preview.LengthFrames = preview.MM.MMLengthFrames(preview.Alias);
    const long ms = preview.MM.MMLengthMs(preview.Alias);
    preview.Fps = ms > 0 ? preview.LengthFrames * 1000.0 / ms : 0;
    preview.MM.MMPut(preview.Alias, 0, 0, width, height);
    preview.SliderMax = preview.LengthFrames;
    ShowPosition(preview, 0);
    ShowPlaying(preview, false, "Play");
    const bool silent = !preview.SaidSilent && preview.MM.Silent(preview.Alias);
    preview.SaidSilent = preview.SaidSilent || silent;
    Say(preview, silent ? kPlaysSilently : "");
    return true;
}

void ClosePreview(MoviePreview& preview)
{
    if (!preview.Opened)
        return;
    Say(preview, "Closing movie...");
    preview.MM.MMClose(preview.Alias);
    preview.Opened = false;
    ShowPlaying(preview, false, "Play");
    Say(preview, "Closing movie... Done");
    Say(preview, "");
}

void PreviewPlayClick(MoviePreview& preview)
{
    if (!preview.Opened)
        return;
    const std::string mode = preview.MM.MMStatusMode(preview.Alias);
    if (mode == "playing") {
        preview.MM.MMPause(preview.Alias);
        ShowPlaying(preview, false, "Resume play");
    } else if (mode == "paused") {
        preview.MM.MMResume(preview.Alias);
        ShowPlaying(preview, true, "Pause");
    } else {
        const long position = preview.MM.MMPositionFrames(preview.Alias);
        PlayFrom(preview, position >= preview.LengthFrames ? 0 : position);
    }
}

void PreviewStopClick(MoviePreview& preview)
{
    if (!preview.Opened)
        return;
    preview.MM.MMStop(preview.Alias);
    preview.MM.MMSeek(preview.Alias, "0");
    ShowPosition(preview, 0);
    ShowPlaying(preview, false, "Play");
}

void PreviewStep(MoviePreview& preview, long frames)
{
    if (!preview.Opened)
        return;
    const bool playing = preview.MM.MMStatusMode(preview.Alias) == "playing";
    const long frame = std::clamp(preview.MM.MMPositionFrames(preview.Alias) + frames, 0L, preview.LengthFrames);
    preview.MM.MMSeek(preview.Alias, std::to_string(frame));
    ShowPosition(preview, frame);
    if (playing)
        PlayFrom(preview, frame);
}

void PreviewTimerTick(MoviePreview& preview)
{
    const long frame = preview.MM.MMPositionFrames(preview.Alias);
    if (frame < 0) {
        preview.TimerEnabled = false;
        return;
    }
    ShowPosition(preview, frame);
    if (frame >= preview.LengthFrames)
        PreviewStopClick(preview);
}

void PreviewSliderChange(MoviePreview& preview, long value)
{
    if (!preview.Opened)
        return;
    const std::string mode = preview.MM.MMStatusMode(preview.Alias);
    if (mode == "playing")
        preview.MM.MMPause(preview.Alias);
    if (preview.MM.MMSeek(preview.Alias, std::to_string(value)) != "Success")
        return;
    ShowPosition(preview, value);
    ShowPlaying(preview, false, mode == "stopped" ? "Play" : "Resume play");
}

bool PreviewSeek(MoviePreview& preview, const std::string& frame)
{
    if (!preview.Opened || preview.MM.MMSeek(preview.Alias, frame) != "Success")
        return false;
    ShowPosition(preview, preview.MM.MMPositionFrames(preview.Alias));
    ShowPlaying(preview, false, "Play");
    return true;
}

} // namespace mw
