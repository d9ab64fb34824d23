#pragma once

#include "media/MoviePlayer.h"

#include <map>
#include <memory>
#include <string>

namespace mw {

class cDIB;

// Where the window puts an alias's picture, as the last MMPut said; empty before any.
struct PreviewWindow {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
};

// The movie preview as the windows drive it: movies open under an alias, and every command
// answers as the old text commands did, "Success" or the reason it failed, positions and
// lengths as whole numbers or -1. Frames and milliseconds count from the start of the movie.
// The window asks for the picture at the position on a timer and paints it where MMPut said.
class ModuleMultimedia {
public:
    // The movies' sound plays on sinks made by `sinks`; without them every movie is silent.
    explicit ModuleMultimedia(PlayerClock clock = {}, AudioSinkFactory sinks = {});
    ~ModuleMultimedia();
    ModuleMultimedia(const ModuleMultimedia&) = delete;
    ModuleMultimedia& operator=(const ModuleMultimedia&) = delete;

    // `type` is "MPEGVideo"; the movie shows its first frame.
    std::string MMOpen(const std::string& file, const std::string& type, const std::string& alias);
    // An empty `from` is "0", an empty `to` the length in frames.
    std::string MMPlay(const std::string& alias, const std::string& from = "", const std::string& to = "");
    std::string MMClose(const std::string& alias);
    std::string MMPause(const std::string& alias);
    std::string MMStop(const std::string& alias);
    // Goes on after MMPause to the `to` of the last MMPlay.
    std::string MMResume(const std::string& alias);
    // "playing", "paused" or "stopped"; "ERROR" for an alias that is not open.
    std::string MMStatusMode(const std::string& alias);
    long MMLengthFrames(const std::string& alias);
    long MMLengthMs(const std::string& alias);
    std::string MMSeek(const std::string& alias, const std::string& position);
    long MMPositionMs(const std::string& alias);
    long MMPositionFrames(const std::string& alias);
    std::string MMPut(const std::string& alias, int left, int top, int width, int height);

    // The picture at the alias's position, null when the alias is not open.
    std::shared_ptr<const cDIB> Picture(const std::string& alias);
    PreviewWindow Window(const std::string& alias) const;
    // The alias's movie has sound that no device plays.
    bool Silent(const std::string& alias);

private:
    struct Movie {
        std::unique_ptr<MoviePlayer> Player;
        PreviewWindow Window;
    };
    Movie* Find(const std::string& alias);
    // A command without arguments on the alias's player.
    std::string Command(const std::string& alias, void (MoviePlayer::*command)());

    PlayerClock clock_;
    AudioSinkFactory sinks_;
    std::map<std::string, Movie> movies_; // by alias in lower case
};

} // namespace mw
