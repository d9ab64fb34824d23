#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace mw {

struct EncodedFrame {
    std::vector<std::uint8_t> Data;
    bool KeyFrame = false;
};

// libavcodec's MPEG-4 Part 2 encoder ("mpeg4") for the AVI writer: 24-bit frames in, one
// packet out per frame, in order (no B-frames, so nothing is held back). Quality is a fixed
// quantiser, with a key frame every kKeyFrameInterval frames.
class Mpeg4Encoder {
public:
    static constexpr int kKeyFrameInterval = 12;
    static constexpr int kQuantiser = 3;

    Mpeg4Encoder();
    ~Mpeg4Encoder();
    Mpeg4Encoder(const Mpeg4Encoder&) = delete;
    Mpeg4Encoder& operator=(const Mpeg4Encoder&) = delete;

    // Frames of width by height at rate / scale frames per second; the FourCC is the tag the
    // stream will carry. False, with the reason in error, when the encoder refuses.
    bool Open(int width, int height, std::uint32_t rate, std::uint32_t scale, std::uint32_t fourCC,
              std::string& error);
    // One bottom-up BGR frame of the opened size, rows `stride` bytes apart, as a DIB holds it.
    // A frame with the same bits as the one before is not converted again.
    bool Encode(const std::uint8_t* bits, int stride, EncodedFrame& out, std::string& error);
    void Close();

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace mw
