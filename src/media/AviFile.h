#pragma once

#include "media/AviInfo.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mw {

// One chunk of a stream in the file, in stream order. An empty chunk is a dropped frame.
struct AviChunk {
    std::uint64_t Offset = 0; // of the chunk's data in the file
    std::uint32_t Size = 0;
    bool KeyFrame = false;
};

struct AviStream {
    AviStreamInfo Info;
    std::vector<std::uint8_t> Format; // the strf data: BITMAPINFOHEADER, WAVEFORMATEX, ...
    std::vector<AviChunk> Chunks;     // every chunk of the stream, frame dwStart + n is Chunks[n]
};

enum class KeySearch { NextKey, PreviousKey };

// How much of a file to read: the headers give every record; only key frames and frame grabs
// need the index of chunks.
enum class AviRead { Headers, HeadersAndIndex };

// Which version of a file was read: a file changed on disk differs in one of them.
struct AviFileIdentity {
    std::uint64_t Size = 0;
    std::int64_t ModifiedNs = 0;
    bool operator==(const AviFileIdentity&) const = default;
};

// What our own RIFF reader found in an AVI file: the records, the formats and the index.
// The file is read once and closed; nothing stays open.
class AviFile {
public:
    // Reads the headers and, unless told otherwise, the index. Damaged or hostile input gives
    // nullopt and a reason, never a crash, a hang or an unbounded allocation.
    static std::optional<AviFile> Open(const std::string& path, std::string* error = nullptr,
                                       AviRead what = AviRead::HeadersAndIndex);

    const AviFileInfo& FileInfo() const { return fileInfo_; }
    std::size_t StreamCount() const { return streams_.size(); }
    const AviStream& Stream(std::size_t index) const { return streams_[index]; }
    const AviFileIdentity& Identity() const { return identity_; }
    // False after AviRead::Headers: the streams have no chunks, FindSample finds nothing.
    bool HasIndex() const { return hasIndex_; }

    // First key frame at or after `frame` (NextKey) or last at or before it (PreviousKey) in
    // the stream; -1 when there is none. Frames count from the stream's dwStart: frame dwStart
    // + n is Chunks[n].
    long FindSample(std::size_t stream, long frame, KeySearch how) const;

    // Writes a new stream name into the file's strn chunk in place: true when it fitted the
    // chunk and any JUNK right after it, false (file unchanged) otherwise.
    static bool WriteStreamName(const std::string& path, std::size_t stream, const std::string& name);

private:
    AviFileInfo fileInfo_;
    AviFileIdentity identity_;
    bool hasIndex_ = false;
    std::vector<AviStream> streams_;
    std::vector<std::vector<long>> keyFrames_; // per stream, ascending, for FindSample
};

} // namespace mw
