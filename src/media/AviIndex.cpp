#include "media/AviLayout.h"

#include <algorithm>

namespace mw {

namespace {

constexpr std::uint32_t kKeyFrameFlag = 0x10; // AVIIF_KEYFRAME in idx1
constexpr std::uint32_t kListFlag = 0x01;     // AVIIF_LIST: the entry is a "rec " list, not a chunk
constexpr std::uint32_t kNotKeyBit = 0x80000000u; // in the size of an OpenDML index entry
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

// Index entries that the readers may still visit, over all indexes of the file: no file holds
// more chunks than eight-byte headers fit in it, so indexes that repeat, overlap or point at each
// other cannot make the work grow beyond the size of the file.
class IndexBudget {
public:
    explicit IndexBudget(std::uint64_t entries) : left_(entries) {}
    bool Take(std::uint64_t entries, std::string& error)
    {
        if (entries > left_) {
            error = "the index lists more chunks than the file can hold";
            return false;
        }
        left_ -= entries;
        return true;
    }

private:
    std::uint64_t left_;
};

// idx1 is read only as far as its own chunk and the first RIFF reach.
bool ReadIdx1(const RiffFile& file, const AviLayout& layout, IndexBudget& budget, ChunkLists& lists,
              std::string& error)
{
    lists.assign(layout.Streams.size(), {});
    const RiffChunk& idx1 = *layout.Idx1;
    const std::uint64_t end = std::min(idx1.DataEnd(), layout.FirstRiffEnd);
    const std::uint64_t count = end > idx1.Data() ? (end - idx1.Data()) / 16 : 0;
    if (!budget.Take(count, error))
        return false;
    // A first pass counts the chunks of each stream, so that the lists are made once.
    std::vector<std::size_t> counts(lists.size());
    file.ForEachRecord(idx1.Data(), count, 16, [&](std::span<const std::uint8_t> entry) {
        const int stream = StreamOfChunk(GetLe32(entry, 0));
        if ((GetLe32(entry, 4) & kListFlag) == 0 && stream >= 0 && static_cast<std::size_t>(stream) < lists.size())
            ++counts[static_cast<std::size_t>(stream)];
    });
    for (std::size_t s = 0; s < lists.size(); ++s)
        lists[s].reserve(counts[s]);
    std::optional<std::uint64_t> base;
    file.ForEachRecord(idx1.Data(), count, 16, [&](std::span<const std::uint8_t> entry) {
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
    return true;
}

// A standard index (an ix## chunk, or an indx that is one), read as far as its chunk reaches
// before `end`: entries of an offset from the base and a size whose top bit marks a frame that
// is not a key frame.
bool ReadStandardIndex(const RiffFile& file, const RiffChunk& chunk, std::uint64_t end,
                       std::vector<AviChunk>& chunks, IndexBudget& budget, std::string& error)
{
    std::uint8_t header[kIndexHeaderSize];
    end = std::min(chunk.DataEnd(), end);
    if (end < chunk.Data() + sizeof header || !file.Read(chunk.Data(), header, sizeof header))
        return true;
    const std::size_t stride = GetLe16(header, 0) * 4u;
    if (header[3] != kIndexOfChunks || stride < 8)
        return true;
    const std::uint64_t fits = (end - chunk.Data() - sizeof header) / stride;
    const std::uint64_t count = std::min<std::uint64_t>(GetLe32(header, 4), fits);
    if (!budget.Take(count, error))
        return false;
    const std::uint64_t base = GetLe64(header, 12);
    file.ForEachRecord(chunk.Data() + sizeof header, count, stride, [&](std::span<const std::uint8_t> entry) {
        const std::uint32_t size = GetLe32(entry, 4);
        chunks.push_back({base + GetLe32(entry, 0), size & ~kNotKeyBit, (size & kNotKeyBit) == 0});
    });
    return true;
}

// The ix## chunks a super index points at follow each other in the file; one that starts
// inside the one before it is a repeat, not more of the stream.
bool ReadOdmlIndex(const RiffFile& file, const AviStreamLayout& stream, std::vector<AviChunk>& chunks,
                   IndexBudget& budget, std::string& error)
{
    const RiffChunk& indx = *stream.Indx;
    std::uint8_t header[kIndexHeaderSize];
    if (indx.Size >= sizeof header && file.Read(indx.Data(), header, sizeof header) && header[3] == kIndexOfChunks)
        return ReadStandardIndex(file, indx, stream.ListEnd, chunks, budget, error);
    if (!budget.Take(stream.SuperIndex.size(), error))
        return false;
    std::uint64_t after = 0;
    for (const AviSuperIndexEntry& entry : stream.SuperIndex) {
        if (entry.Offset < after)
            continue;
        const auto ix = file.ChunkAt(entry.Offset, file.Size());
        if (!ix)
            continue;
        after = ix->DataEnd();
        if (!ReadStandardIndex(file, *ix, file.Size(), chunks, budget, error))
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
    IndexBudget budget(file.Size() / 8);
    std::optional<ChunkLists> idx1;
    if (layout.Idx1 && !ReadIdx1(file, layout, budget, idx1.emplace(), error))
        return false;
    std::vector<bool> unindexed(layout.Streams.size());
    for (std::size_t s = 0; s < layout.Streams.size(); ++s) {
        AviStreamLayout& stream = layout.Streams[s];
        std::vector<AviChunk> odml;
        if (stream.Indx && !ReadOdmlIndex(file, stream, odml, budget, error))
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
