#include "media/AviLayout.h"

#include <algorithm>
#include <set>

namespace mw {

namespace {

constexpr std::uint32_t kKeyFrameFlag = 0x10; // AVIIF_KEYFRAME in idx1
constexpr std::uint32_t kListFlag = 0x01;     // AVIIF_LIST: the entry is a "rec " list, not a chunk
constexpr std::uint32_t kNotKeyBit = 0x80000000u; // in the size of an OpenDML index entry
constexpr std::uint8_t kIndexOfIndexes = 0;
constexpr std::uint8_t kIndexOfChunks = 1;
constexpr int kMaxListDepth = 8;

using ChunkLists = std::vector<std::vector<AviChunk>>;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// The stream of a chunk named "##xx" (two digits, two letters), or -1.
int StreamOfChunk(std::uint32_t id)
{
    const char name[4] = {static_cast<char>(id), static_cast<char>(id >> 8), static_cast<char>(id >> 16),
                          static_cast<char>(id >> 24)};
    if (!IsDigit(name[0]) || !IsDigit(name[1]) || !IsLetter(name[2]) || !IsLetter(name[3]))
        return -1;
    if (name[2] == 'p' && name[3] == 'c') // a palette change, not a frame
        return -1;
    return (name[0] - '0') * 10 + (name[1] - '0');
}

std::uint32_t ChunkIdAt(const RiffFile& file, std::uint64_t offset)
{
    std::uint8_t id[4];
    return file.Read(offset, id, 4) ? GetLe32(id, 0) : 0;
}

// idx1 offsets count from the "movi" four characters in most files and from the start of the
// file in some. The first entry tells which: its chunk name must stand where it points.
std::uint64_t Idx1Base(const RiffFile& file, const AviLayout& layout, std::uint32_t id, std::uint32_t offset)
{
    if (ChunkIdAt(file, layout.MoviStart + offset) == id)
        return layout.MoviStart;
    if (ChunkIdAt(file, offset) == id)
        return 0;
    return offset < layout.MoviStart ? layout.MoviStart : 0;
}

ChunkLists ReadIdx1(const RiffFile& file, const AviLayout& layout)
{
    ChunkLists lists(layout.Streams.size());
    const RiffChunk& idx1 = *layout.Idx1;
    // A first pass counts the chunks of each stream, so that the lists are made once.
    std::vector<std::size_t> counts(lists.size());
    file.ForEachRecord(idx1.Data(), idx1.Size / 16, 16, [&](std::span<const std::uint8_t> entry) {
        const int stream = StreamOfChunk(GetLe32(entry, 0));
        if ((GetLe32(entry, 4) & kListFlag) == 0 && stream >= 0 && static_cast<std::size_t>(stream) < lists.size())
            ++counts[static_cast<std::size_t>(stream)];
    });
    for (std::size_t s = 0; s < lists.size(); ++s)
        lists[s].reserve(counts[s]);
    std::optional<std::uint64_t> base;
    file.ForEachRecord(idx1.Data(), idx1.Size / 16, 16, [&](std::span<const std::uint8_t> entry) {
        const std::uint32_t id = GetLe32(entry, 0);
        const std::uint32_t flags = GetLe32(entry, 4);
        const std::uint32_t offset = GetLe32(entry, 8);
        const int stream = StreamOfChunk(id);
        if ((flags & kListFlag) != 0 || stream < 0 || static_cast<std::size_t>(stream) >= lists.size())
            return;
        if (!base)
            base = Idx1Base(file, layout, id, offset);
        lists[static_cast<std::size_t>(stream)].push_back(
            {*base + offset + 8, GetLe32(entry, 12), (flags & kKeyFrameFlag) != 0});
    });
    return lists;
}

// Entries every OpenDML index may still add: no file holds more chunks than eight-byte headers
// fit in it, so index chunks that repeat or overlap cannot make the lists grow beyond the file.
struct IndexBudget {
    std::uint64_t Left = 0;
};

// A standard index (an ix## chunk, or an indx that is one): entries of an offset from the base
// and a size whose top bit marks a frame that is not a key frame.
bool ReadStandardIndex(const RiffFile& file, const RiffChunk& chunk, std::vector<AviChunk>& chunks,
                       IndexBudget& budget, std::string& error)
{
    std::uint8_t header[24];
    if (chunk.Size < sizeof header || !file.Read(chunk.Data(), header, sizeof header))
        return true;
    const std::size_t stride = GetLe16(header, 0) * 4u;
    if (header[3] != kIndexOfChunks || stride < 8)
        return true;
    const std::uint64_t inFile = std::min<std::uint64_t>(chunk.Size, file.Size() - chunk.Data());
    const std::uint64_t fits = (inFile - sizeof header) / stride;
    const std::uint64_t count = std::min<std::uint64_t>(GetLe32(header, 4), fits);
    if (count > budget.Left) {
        error = "the index lists more chunks than the file can hold";
        return false;
    }
    budget.Left -= count;
    const std::uint64_t base = GetLe64(header, 12);
    file.ForEachRecord(chunk.Data() + sizeof header, count, stride, [&](std::span<const std::uint8_t> entry) {
        const std::uint32_t size = GetLe32(entry, 4);
        chunks.push_back({base + GetLe32(entry, 0), size & ~kNotKeyBit, (size & kNotKeyBit) == 0});
    });
    return true;
}

// The super index of a stream points at its ix## chunks, in stream order.
bool ReadOdmlIndex(const RiffFile& file, const RiffChunk& indx, std::vector<AviChunk>& chunks,
                   IndexBudget& budget, std::string& error)
{
    std::uint8_t header[24];
    if (indx.Size < sizeof header || !file.Read(indx.Data(), header, sizeof header))
        return true;
    if (header[3] == kIndexOfChunks)
        return ReadStandardIndex(file, indx, chunks, budget, error);
    const std::size_t stride = GetLe16(header, 0) * 4u;
    if (header[3] != kIndexOfIndexes || stride < 16)
        return true;
    const std::uint64_t count = std::min<std::uint64_t>(GetLe32(header, 4), (indx.Size - sizeof header) / stride);
    std::vector<std::uint64_t> offsets;
    file.ForEachRecord(indx.Data() + sizeof header, count, stride,
                       [&](std::span<const std::uint8_t> entry) { offsets.push_back(GetLe64(entry, 0)); });
    std::set<std::uint64_t> seen;
    for (const std::uint64_t offset : offsets) {
        if (!seen.insert(offset).second)
            continue;
        const auto ix = file.ChunkAt(offset, file.Size());
        if (ix && !ReadStandardIndex(file, *ix, chunks, budget, error))
            return false;
    }
    return true;
}

// With no index at all every chunk of a stream counts, and each is a key frame. Chunks may sit
// in "rec " lists; deeper nesting than any writer uses is skipped.
void ScanMovi(const RiffFile& file, std::uint64_t from, std::uint64_t end, int depth, ChunkLists& lists)
{
    std::uint64_t at = from;
    while (const auto chunk = file.ChunkAt(at, end)) {
        at = chunk->Next();
        if (chunk->Id == FourCC("LIST")) {
            if (depth < kMaxListDepth && chunk->ListType != 0)
                ScanMovi(file, chunk->Data() + 4, std::min(chunk->DataEnd(), end), depth + 1, lists);
            continue;
        }
        const int stream = StreamOfChunk(chunk->Id);
        // A chunk cut off by the end of the file is no frame.
        if (stream >= 0 && static_cast<std::size_t>(stream) < lists.size() && chunk->DataEnd() <= end)
            lists[static_cast<std::size_t>(stream)].push_back({chunk->Data(), chunk->Size, true});
    }
}

} // namespace

// idx1 is the index of AVI 1.0. A file past 1 GB keeps in it only the chunks of its first RIFF,
// so a stream whose OpenDML index lists more chunks takes that one instead.
bool ReadAviIndex(const RiffFile& file, AviLayout& layout, std::string& error)
{
    std::optional<ChunkLists> idx1 = layout.Idx1 ? std::optional(ReadIdx1(file, layout)) : std::nullopt;
    IndexBudget budget{file.Size() / 8};
    std::vector<bool> unindexed(layout.Streams.size());
    for (std::size_t s = 0; s < layout.Streams.size(); ++s) {
        AviStreamLayout& stream = layout.Streams[s];
        std::vector<AviChunk> odml;
        if (stream.Indx && !ReadOdmlIndex(file, *stream.Indx, odml, budget, error))
            return false;
        if (!odml.empty() && (!idx1 || odml.size() > (*idx1)[s].size()))
            stream.Stream.Chunks = std::move(odml);
        else if (idx1)
            stream.Stream.Chunks = std::move((*idx1)[s]);
        else
            unindexed[s] = true;
    }
    if (std::find(unindexed.begin(), unindexed.end(), true) == unindexed.end())
        return true;
    ChunkLists scanned(layout.Streams.size());
    for (const AviMoviRange& movi : layout.Movi)
        ScanMovi(file, movi.Begin, movi.End, 0, scanned);
    for (std::size_t s = 0; s < layout.Streams.size(); ++s) {
        if (unindexed[s])
            layout.Streams[s].Stream.Chunks = std::move(scanned[s]);
    }
    return true;
}

} // namespace mw
