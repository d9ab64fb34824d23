#pragma once

#include "core/Prompt.h"
#include "core/settings/Settings.h"

#include <QImage>

#include <string>

namespace mw {

// The demo movie that ships with the program: colour bars, its name, a running clock and a
// progress bar, on a background whose hue turns once over the movie, so that frames from
// different parts of it never look alike.
struct DemoMovieSpec {
    int Width = 352;
    int Height = 288;
    int Fps = 25;
    int Frames = 200;
};

// Frame `frame` (from 0) of the movie. The text needs a QGuiApplication; the offscreen
// platform will do.
QImage DemoFrame(const DemoMovieSpec& spec, int frame);

// A mono 16-bit PCM WAV file as long as the movie, silent but for a short beep at the start
// of every second. False when the file cannot be written.
bool WriteDemoTone(const std::string& file, const DemoMovieSpec& spec);

// The movie as an MPEG-4 AVI under the FourCC "divx", with the audio file as its second
// stream. On failure the message has been shown and no file is left behind.
bool WriteDemoMovie(const std::string& file, const DemoMovieSpec& spec, const std::string& audio,
                    const Settings& settings, Prompt& prompt);

} // namespace mw
