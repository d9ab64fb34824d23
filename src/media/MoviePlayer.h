#pragma once

#include "media/MovieSound.h"
#include "media/VideoDecoder.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace mw {

class cDIB;

// The time a player goes by; tests give their own.
using PlayerClock = std::function<std::chrono::steady_clock::time_point()>;

enum class PlayerMode { Stopped, Playing, Paused };

enum class PlayerOpen { Opened, NotFound, NotPlayable };

// One movie open for the preview: its first video stream, decoded ahead on a thread of its own
// and handed out by the clock whenever the window asks. While its sound plays, the sound is the
// clock. Positions are frames from 0 to the
// length; the picture at position n is what a grab of frame n gives (the last frame at the
// length itself). The position is always the frame of the picture handed out, so a decoder that
// falls behind skips pictures but never shows one under another frame's number.
// All calls but the thread's own come from one thread.
class MoviePlayer {
public:
    // The player shows frame 0 when it opens. The first audio stream plays on a sink of `sinks`.
    static std::unique_ptr<MoviePlayer> Open(const std::string& path, PlayerClock clock, const AudioSinkFactory& sinks,
                                             PlayerOpen& result);
    ~MoviePlayer();
    MoviePlayer(const MoviePlayer&) = delete;
    MoviePlayer& operator=(const MoviePlayer&) = delete;

    long LengthFrames() const { return length_; }
    // The movie has sound but no device to play it on.
    bool Silent() const { return silent_; }
    long FramesToMs(long frames) const;

    // Shows `from` as Seek does, then plays on by the clock and stops at `to`
    // (0 <= from <= to <= length).
    void Play(long from, long to);
    void Pause();
    // Goes on after a pause; otherwise nothing happens.
    void Resume();
    // Stops where it is.
    void Stop();
    // Stops and shows `frame` (0 to length), decoded from the key frame before it; returns once
    // the picture is there.
    void Seek(long frame);

    PlayerMode Mode();
    long Position();
    // The picture at the position; the same object until the position shows another picture.
    std::shared_ptr<const cDIB> Picture();

private:
    struct Decoded {
        long Frame = 0;
        std::shared_ptr<const cDIB> Picture; // null when the frame could not be decoded
    };

    MoviePlayer(std::shared_ptr<const AviFile> avi, std::size_t stream, PlayerClock clock);
    void Work();
    std::shared_ptr<const cDIB> DecodeFrame(long frame);
    void StartJob(long first, long last);
    // Starts the job and shows its first picture once it is decoded.
    void ShowFirst(long first, long last);
    void Take(Decoded& decoded);
    void CatchUp();
    // The frame that the sound, or else the clock, has come to.
    long DueFrame();
    void StopSound();

    const std::shared_ptr<const AviFile> avi_;
    const std::size_t stream_;
    const PlayerClock clock_;
    long length_ = 0;
    double fps_ = 0;
    VideoDecoder decoder_; // the worker's alone once it runs

    // Shared with the worker: the frames still to decode and those decoded ahead.
    std::mutex mutex_;
    std::condition_variable work_;
    std::condition_variable ready_;
    std::uint64_t job_ = 0; // counts the jobs, so that a frame of an old one is left out
    long next_ = 1;
    long last_ = 0;
    std::deque<Decoded> ahead_;
    bool quit_ = false;

    // The caller's side.
    PlayerMode mode_ = PlayerMode::Stopped;
    long to_ = 0;
    long shown_ = 0;
    std::shared_ptr<const cDIB> picture_;
    // When the frame `anchorFrame_` was shown.
    std::chrono::steady_clock::time_point anchor_;
    long anchorFrame_ = 0;

    std::unique_ptr<MovieSound> sound_;
    bool silent_ = false;
    bool soundPlaying_ = false;

    std::thread worker_;
};

} // namespace mw
