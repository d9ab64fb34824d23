#pragma once

#include "media/AviFile.h"

#include <cstddef>
#include <memory>
#include <string>

namespace mw {

class cDIB;

// One video stream of a file decoded by FFmpeg. Frames are addressed by the chunks of our own
// index, because FFmpeg's packets leave out the empty chunks of dropped frames.
class VideoDecoder {
public:
    VideoDecoder();
    ~VideoDecoder();
    VideoDecoder(const VideoDecoder&) = delete;
    VideoDecoder& operator=(const VideoDecoder&) = delete;

    // Stream `index` of the file: false when FFmpeg cannot read the file, does not see a video
    // stream there or has no decoder for it.
    bool Open(const std::string& path, std::size_t index);

    // The picture shown at chunk `chunk` of `stream` (that stream's entry of our index), as a
    // 24-bit bitmap of the decoded size. Decoding starts at `key`, a key frame at or before the
    // chunk. `decoded` counts the frames the decoder gave on the way.
    bool Decode(const AviStream& stream, long chunk, long key, cDIB& out, int& decoded);

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace mw
