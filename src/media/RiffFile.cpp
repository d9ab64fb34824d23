#include "media/RiffFile.h"

#include "media/AviInfo.h"

#include <cerrno>
#include <cstring>
#include <limits>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace mw {

void PutLe32(std::uint8_t* out, std::uint32_t value)
{
    for (int i = 0; i < 4; ++i)
        out[i] = static_cast<std::uint8_t>(value >> (8 * i));
}

RiffFile::~RiffFile()
{
    if (fd_ >= 0)
        ::close(fd_);
}

bool RiffFile::Open(const std::string& path, bool forUpdate, std::string& error)
{
    fd_ = ::open(path.c_str(), (forUpdate ? O_RDWR : O_RDONLY) | O_CLOEXEC);
    struct stat info {};
    if (fd_ < 0 || ::fstat(fd_, &info) != 0) {
        error = path + ": " + std::strerror(errno);
        return false;
    }
    if (!S_ISREG(info.st_mode)) {
        error = path + ": not a file";
        return false;
    }
    size_ = static_cast<std::uint64_t>(info.st_size);
    modifiedNs_ = static_cast<std::int64_t>(info.st_mtim.tv_sec) * 1'000'000'000 + info.st_mtim.tv_nsec;
    return true;
}

bool RiffFile::Read(std::uint64_t offset, void* out, std::size_t count) const
{
    if (offset > size_ || count > size_ - offset)
        return false;
    auto* to = static_cast<char*>(out);
    while (count > 0) {
        const ssize_t got = ::pread(fd_, to, count, static_cast<off_t>(offset));
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return false;
        to += got;
        offset += static_cast<std::uint64_t>(got);
        count -= static_cast<std::size_t>(got);
    }
    return true;
}

bool RiffFile::Write(std::uint64_t offset, const void* data, std::size_t count) const
{
    const auto* from = static_cast<const char*>(data);
    while (count > 0) {
        const ssize_t put = ::pwrite(fd_, from, count, static_cast<off_t>(offset));
        if (put < 0 && errno == EINTR)
            continue;
        if (put <= 0)
            return false;
        from += put;
        offset += static_cast<std::uint64_t>(put);
        count -= static_cast<std::size_t>(put);
    }
    return true;
}

std::optional<RiffChunk> RiffFile::ChunkAt(std::uint64_t offset, std::uint64_t end) const
{
    std::uint8_t header[12];
    end = std::min(end, size_);
    if (offset > end || end - offset < 8 || !Read(offset, header, 8))
        return std::nullopt;
    RiffChunk chunk;
    chunk.Offset = offset;
    chunk.Id = GetLe32(header, 0);
    chunk.Size = GetLe32(header, 4);
    // An interrupted capture leaves its RIFF size 0: the form runs to the end of the file.
    if (chunk.Id == FourCC("RIFF") && chunk.Size == 0)
        chunk.Size = static_cast<std::uint32_t>(
            std::min<std::uint64_t>(size_ - chunk.Data(), std::numeric_limits<std::uint32_t>::max()));
    const bool isList = chunk.Id == FourCC("RIFF") || chunk.Id == FourCC("LIST");
    if (isList && chunk.Size >= 4 && end - offset >= 12 && Read(offset + 8, header + 8, 4))
        chunk.ListType = GetLe32(header, 8);
    return chunk;
}

std::optional<std::vector<std::uint8_t>> RiffFile::ChunkData(const RiffChunk& chunk, std::uint64_t end,
                                                             std::size_t limit) const
{
    if (chunk.Size > limit || chunk.DataEnd() > std::min(end, size_))
        return std::nullopt;
    std::vector<std::uint8_t> data(chunk.Size);
    if (!Read(chunk.Data(), data.data(), data.size()))
        return std::nullopt;
    return data;
}

} // namespace mw
