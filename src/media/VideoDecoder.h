#pragma once

#include "media/AviFile.h"

#include <cstddef>
#include <memory>
#include <string>

namespace mw {

class cDIB;

// One video stream of a file decoded by FFmpeg from the chunks of our own index: the bytes of
// each chunk are read where the index says and handed to the decoder as a packet. FFmpeg only
// supplies the codec and its parameters, so neither its packet order (which differs in files
// that are not interleaved) nor its leaving out of empty chunks bears on which frame we get.
class VideoDecoder {
public:
    VideoDecoder();
    ~VideoDecoder();
    VideoDecoder(const VideoDecoder&) = delete;
    VideoDecoder& operator=(const VideoDecoder&) = delete;

    // Stream `index` of the file: false when FFmpeg cannot read the file's headers, does not see
    // a video stream there or has no decoder for it.
    bool Open(const std::string& path, std::size_t index);

    // Later pictures come at this size, each pixel the average of those it covers, as a
    // thumbnail wants them; 0 for the decoded size, which Open sets again.
    void SetPictureSize(int width, int height);

    // The picture shown at chunk `chunk` of `stream` (that stream's entry of our index), as a
    // 24-bit bitmap of the decoded size or the size set. Decoding starts at `key`, a key frame
    // at or before the chunk. `decoded` counts the frames the decoder gave on the way. Asked for frames in order,
    // as a player asks, it goes on from the last picture instead of the key frame when that is
    // nearer.
    bool Decode(const AviStream& stream, long chunk, long key, cDIB& out, int& decoded);

private:
    enum class Sent { Found, Missed, More, Failed };
    // Sends the chunks from `first` on until the picture shown at `target` comes out: Missed when
    // a later one comes first.
    Sent SendFrom(const AviStream& stream, long first, long target, cDIB& out, int& decoded);

    struct State;
    std::unique_ptr<State> state_;
};

} // namespace mw
