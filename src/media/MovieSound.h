#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace mw {

// Where the preview's sound goes: the sound device, or a stand-in in the tests. It is given
// 16-bit samples, two channels interleaved at kSoundRate.
class AudioSink {
public:
    virtual ~AudioSink() = default;
    // False when there is no device to play on.
    virtual bool Open() = 0;
    // Starts afresh, with nothing queued and nothing played.
    virtual void Start() = 0;
    // Takes what the device has room for now; returns the bytes taken.
    virtual std::size_t Write(const char* data, std::size_t size) = 0;
    // Microseconds of sound played since Start.
    virtual std::int64_t PlayedUs() = 0;
    virtual void Pause() = 0;
    virtual void Resume() = 0;
    virtual void Stop() = 0;
};

inline constexpr int kSoundRate = 48000;

// Makes the sink for a movie that has sound; null for none.
using AudioSinkFactory = std::function<std::unique_ptr<AudioSink>()>;

// The first audio stream of a movie, decoded and resampled by FFmpeg and fed to a sink. While it
// plays, its time is the time of the movie that the picture follows.
class MovieSound {
public:
    enum class Opened { NoSound, NoDevice, Playable };

    // The sound of the file: null unless Playable.
    static std::unique_ptr<MovieSound> Open(const std::string& path, const AudioSinkFactory& sinks, Opened& result);
    ~MovieSound();
    MovieSound(const MovieSound&) = delete;
    MovieSound& operator=(const MovieSound&) = delete;

    // Plays from `ms` into the movie.
    void Start(long ms);
    void Pause();
    void Resume();
    void Stop();
    // Feeds the device what it has room for; the seconds into the movie that have been heard,
    // or nothing once the sound has run out.
    std::optional<double> Seconds();

private:
    struct Decoder;
    MovieSound(std::unique_ptr<Decoder> decoder, std::unique_ptr<AudioSink> sink);
    void Feed();

    std::unique_ptr<Decoder> decoder_;
    std::unique_ptr<AudioSink> sink_;
    double startSeconds_ = 0;
    std::vector<char> pending_; // decoded, not yet taken by the device
    bool ended_ = false;        // the decoder has given all it has
    std::int64_t writtenBytes_ = 0;
};

} // namespace mw
