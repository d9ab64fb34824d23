#pragma once

#include "build/AviWriter.h"
#include "media/AviInfo.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace mw {

// An audio file made into the audio stream of an AVI. PCM, MP2, MP3 and AC3 go in packet for
// packet as they are; anything else is decoded and encoded to MP3 (or to MP2 where libavcodec
// has no libmp3lame). Compressed audio is stored one frame per chunk, with the frame's
// samples as dwScale and the sample rate as dwRate, as players expect of variable-rate audio.
class AudioMux {
public:
    AudioMux();
    ~AudioMux();
    AudioMux(const AudioMux&) = delete;
    AudioMux& operator=(const AudioMux&) = delete;

    // False, with the reason in error, when the file has no audio that can be read or encoded.
    bool Open(const std::string& file, std::string& error);

    // What to declare to the writer: the stream header and its WAVEFORMATEX.
    const AviStreamInfo& StreamInfo() const { return info_; }
    const std::vector<std::uint8_t>& Format() const { return format_; }

    // Writes into the writer's stream the chunks that start before `seconds`. A damaged packet
    // in the input ends the audio there; false only when the writer or the encoder fails.
    bool WriteUntil(AviWriter& writer, std::size_t stream, double seconds);

private:
    struct Input;
    struct Encoder;
    bool NextChunk(std::vector<std::uint8_t>& chunk);
    double SecondsWritten() const;

    std::unique_ptr<Input> input_;
    std::unique_ptr<Encoder> encoder_;
    AviStreamInfo info_;
    std::vector<std::uint8_t> format_;
    std::uint64_t chunks_ = 0;
    std::uint64_t bytes_ = 0;
    bool ended_ = false;
    bool failed_ = false;
};

} // namespace mw
