#pragma once

#include "media/ModuleMultimedia.h"

#include <functional>
#include <string>

namespace mw {

// The preview controls of a dialog (play, stop, the step buttons, the slider, the frame and
// time labels and the movie label) as data: the window shows these fields after each call and
// runs TimerTick while TimerEnabled is set.
struct MoviePreview {
    explicit MoviePreview(ModuleMultimedia& mm) : MM(mm) {}

    ModuleMultimedia& MM;
    std::string Alias = "video1";
    bool Opened = false;
    long LengthFrames = 0;
    double Fps = 0;

    // The play button: "4" is the play glyph of Webdings, ";" the pause glyph.
    std::string PlayCaption = "4";
    std::string PlayToolTip = "Play";
    std::string lblFrame = "0";
    std::string lblTime = "0:00:00";
    long SliderMax = 0;
    long SliderValue = 0;
    bool TimerEnabled = false;
    // That a movie plays without its sound is said once.
    bool SaidSilent = false;
    // Shows a text in lblMovieInfo at once, while the work goes on.
    std::function<void(const std::string&)> ShowMovieInfo;
};

// h:mm:ss of a frame at fps: hours without a leading zero.
std::string PreviewTimeText(long frame, double fps);

// Opens the file under the alias, fitted to a picture of width x height: "Opening movie...",
// then "Error loading file for playing" when it fails, or the first time a movie's sound has no
// device to play on, that it plays silently.
bool OpenPreview(MoviePreview& preview, const std::string& file, int width, int height);
// "Closing movie...", the close, "Closing movie... Done", then an empty label.
void ClosePreview(MoviePreview& preview);

// Play, pause or resume, by the mode.
void PreviewPlayClick(MoviePreview& preview);
// Command4: stop and back to frame 0.
void PreviewStopClick(MoviePreview& preview);
// Command5 and Command6: `frames` back (negative) or forward; a playing movie plays on from there.
void PreviewStep(MoviePreview& preview, long frames);
// Timer1: follows the position; at the end or on a failure it stops as Stop does.
void PreviewTimerTick(MoviePreview& preview);
// The user moved the slider (the window keeps the timer's moves from coming here): pause a playing movie and show that frame.
void PreviewSliderChange(MoviePreview& preview, long value);
// Ctrl+Enter in a frame field: show that frame; false when the text is no frame of the movie.
bool PreviewSeek(MoviePreview& preview, const std::string& frame);

} // namespace mw
