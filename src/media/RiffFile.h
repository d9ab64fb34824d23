#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace mw {

// Little-endian fields of a chunk's data. A field past the end of the data reads as 0, so a
// short header from an old writer reads as a full one with its last fields zero.
inline std::uint16_t GetLe16(std::span<const std::uint8_t> bytes, std::size_t at)
{
    if (at > bytes.size() || bytes.size() - at < 2)
        return 0;
    return static_cast<std::uint16_t>(bytes[at] | bytes[at + 1] << 8);
}

inline std::uint32_t GetLe32(std::span<const std::uint8_t> bytes, std::size_t at)
{
    if (at > bytes.size() || bytes.size() - at < 4)
        return 0;
    return static_cast<std::uint32_t>(bytes[at]) | static_cast<std::uint32_t>(bytes[at + 1]) << 8 |
           static_cast<std::uint32_t>(bytes[at + 2]) << 16 | static_cast<std::uint32_t>(bytes[at + 3]) << 24;
}

inline std::uint64_t GetLe64(std::span<const std::uint8_t> bytes, std::size_t at)
{
    if (at > bytes.size() || bytes.size() - at < 8)
        return 0;
    return GetLe32(bytes, at) | static_cast<std::uint64_t>(GetLe32(bytes, at + 4)) << 32;
}

void PutLe32(std::uint8_t* out, std::uint32_t value);

struct RiffChunk {
    std::uint64_t Offset = 0;   // of the chunk's header
    std::uint32_t Id = 0;
    std::uint32_t Size = 0;     // of the data, as the file says
    std::uint32_t ListType = 0; // the form type of a RIFF or LIST chunk, else 0

    std::uint64_t Data() const { return Offset + 8; }
    std::uint64_t DataEnd() const { return Data() + Size; }
    std::uint64_t Next() const { return DataEnd() + (Size & 1); } // data is padded to even sizes
};

// A RIFF file read by position. Every read is checked against the end of the file first, so no
// size or offset taken from the file can make us read past it or allocate more than it holds.
class RiffFile {
public:
    RiffFile() = default;
    ~RiffFile();
    RiffFile(const RiffFile&) = delete;
    RiffFile& operator=(const RiffFile&) = delete;

    bool Open(const std::string& path, bool forUpdate, std::string& error);
    std::uint64_t Size() const { return size_; }
    std::int64_t ModifiedNs() const { return modifiedNs_; }

    // False, with nothing read, when the bytes are not all in the file.
    bool Read(std::uint64_t offset, void* out, std::size_t count) const;
    bool Write(std::uint64_t offset, const void* data, std::size_t count) const;

    // The chunk whose header starts at `offset`, when that header lies wholly before `end`.
    std::optional<RiffChunk> ChunkAt(std::uint64_t offset, std::uint64_t end) const;
    // The data of a chunk that lies wholly before `end` and is at most `limit` bytes long.
    std::optional<std::vector<std::uint8_t>> ChunkData(const RiffChunk& chunk, std::uint64_t end,
                                                        std::size_t limit) const;

    // Calls each(record) for `count` records of `stride` bytes from `offset`, reading in blocks;
    // stops at the end of the file.
    template <typename Each>
    void ForEachRecord(std::uint64_t offset, std::uint64_t count, std::size_t stride, Each each) const;

private:
    int fd_ = -1;
    std::uint64_t size_ = 0;
    std::int64_t modifiedNs_ = 0;
};

template <typename Each>
void RiffFile::ForEachRecord(std::uint64_t offset, std::uint64_t count, std::size_t stride, Each each) const
{
    if (stride == 0 || offset > size_)
        return;
    count = std::min<std::uint64_t>(count, (size_ - offset) / stride);
    const std::size_t perBlock = std::max<std::size_t>(1, (64 * 1024) / stride);
    std::vector<std::uint8_t> block(std::min<std::uint64_t>(count, perBlock) * stride);
    while (count > 0) {
        const std::size_t n = static_cast<std::size_t>(std::min<std::uint64_t>(count, perBlock));
        if (!Read(offset, block.data(), n * stride))
            return;
        for (std::size_t i = 0; i < n; ++i)
            each(std::span<const std::uint8_t>(block.data() + i * stride, stride));
        offset += n * stride;
        count -= n;
    }
}

} // namespace mw
