#pragma once

#include "media/AviFile.h"
#include "media/RiffFile.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mw {

constexpr std::uint32_t kAviCanReadAndWrite = 3; // dwCaps: AVIFILECAPS_CANREAD | AVIFILECAPS_CANWRITE
constexpr std::size_t kAviMaxNameLength = 64;     // of szName
constexpr std::size_t kIndexHeaderSize = 24;      // of indx and ix## chunks

// One entry of an OpenDML super index: where an ix## chunk lies and how many chunks of the
// stream it lists (frames, in a video stream).
struct AviSuperIndexEntry {
    std::uint64_t Offset = 0;
    std::uint32_t Duration = 0;
};

// One stream list of the header, with the places the index reading and name writing need.
struct AviStreamLayout {
    AviStream Stream;
    std::uint64_t ListEnd = 0;     // end of the strl list's data
    std::optional<RiffChunk> Strn;
    std::optional<RiffChunk> Indx; // OpenDML super index, or a standard index in its place
    std::vector<AviSuperIndexEntry> SuperIndex; // of Indx, in ascending file order
};

struct AviMoviRange {
    std::uint64_t Begin = 0; // first chunk of the list
    std::uint64_t End = 0;
};

// Where things lie in an AVI file, as the walk over its chunks found them.
struct AviLayout {
    std::vector<std::uint8_t> MainHeader; // avih data
    std::vector<AviStreamLayout> Streams;
    std::uint64_t MoviStart = 0;          // the "movi" four characters of the first RIFF
    std::vector<AviMoviRange> Movi;       // every movi list: the first RIFF's, then the AVIX ones
    std::optional<RiffChunk> Idx1;
    std::uint64_t FirstRiffEnd = 0;
};

// Walks the RIFF AVI chunk, its header lists (super indexes included) and the RIFF AVIX
// extensions after it, but no index of chunks. Gives nullopt and a reason for a file that is
// not an AVI or whose headers are damaged.
std::optional<AviLayout> ReadAviLayout(const RiffFile& file, std::string& error);

// Fills every stream's chunks from idx1, the OpenDML indexes or, with neither, a scan of the
// movi lists.
bool ReadAviIndex(const RiffFile& file, AviLayout& layout, std::string& error);

} // namespace mw
