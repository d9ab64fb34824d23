#include "media/AviLayout.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace mw {

namespace {

constexpr std::size_t kMaxStreams = 100;         // chunk names number streams with two digits
constexpr std::size_t kMaxHeaderChunk = 1 << 20; // far above any real header chunk
constexpr std::uint8_t kIndexOfIndexes = 0;

AviStreamInfo StreamInfoFromHeader(std::span<const std::uint8_t> strh)
{
    AviStreamInfo info;
    info.fccType = GetLe32(strh, 0);
    info.fccHandler = GetLe32(strh, 4);
    info.dwFlags = GetLe32(strh, 8);
    info.dwCaps = kAviCanReadAndWrite;
    info.wPriority = GetLe16(strh, 12);
    info.wLanguage = GetLe16(strh, 14);
    info.dwInitialFrames = GetLe32(strh, 16);
    info.dwScale = GetLe32(strh, 20);
    info.dwRate = GetLe32(strh, 24);
    info.dwStart = GetLe32(strh, 28);
    info.dwLength = GetLe32(strh, 32);
    info.dwSuggestedBufferSize = GetLe32(strh, 36);
    info.dwQuality = GetLe32(strh, 40);
    info.dwSampleSize = GetLe32(strh, 44);
    // The file holds the rectangle as four 16-bit numbers.
    info.rcFrame.left = static_cast<std::int16_t>(GetLe16(strh, 48));
    info.rcFrame.top = static_cast<std::int16_t>(GetLe16(strh, 50));
    info.rcFrame.right = static_cast<std::int16_t>(GetLe16(strh, 52));
    info.rcFrame.bottom = static_cast<std::int16_t>(GetLe16(strh, 54));
    return info;
}

// Many writers leave the rectangle empty; the bitmap header then gives the picture size.
void FrameFromBitmapHeader(AviStreamInfo& info, std::span<const std::uint8_t> format)
{
    const AviRect& rc = info.rcFrame;
    if (info.fccType != FourCC("vids") || rc.left != 0 || rc.top != 0 || rc.right != 0 || rc.bottom != 0)
        return;
    const auto width = static_cast<std::int32_t>(GetLe32(format, 4));
    const auto height = static_cast<std::int64_t>(static_cast<std::int32_t>(GetLe32(format, 8)));
    info.rcFrame.right = width;
    info.rcFrame.bottom = static_cast<std::int32_t>(std::min<std::int64_t>(std::abs(height),
                                                                           std::numeric_limits<std::int32_t>::max()));
}

// The entries of a super index, read no further than its chunk and its stream list reach.
// Writers add ix## chunks as the file grows, so an entry that does not point past the one
// before it repeats or loops and is left out.
std::vector<AviSuperIndexEntry> ReadSuperIndex(const RiffFile& file, const RiffChunk& indx, std::uint64_t listEnd)
{
    std::vector<AviSuperIndexEntry> entries;
    std::uint8_t header[kIndexHeaderSize];
    const std::uint64_t end = std::min(indx.DataEnd(), listEnd);
    if (end < indx.Data() + sizeof header || !file.Read(indx.Data(), header, sizeof header))
        return entries;
    const std::size_t stride = GetLe16(header, 0) * 4u;
    if (header[3] != kIndexOfIndexes || stride < 16)
        return entries;
    const std::uint64_t count =
        std::min<std::uint64_t>(GetLe32(header, 4), (end - indx.Data() - sizeof header) / stride);
    file.ForEachRecord(indx.Data() + sizeof header, count, stride, [&](std::span<const std::uint8_t> entry) {
        const std::uint64_t offset = GetLe64(entry, 0);
        if (entries.empty() || offset > entries.back().Offset)
            entries.push_back({offset, GetLe32(entry, 12)});
    });
    return entries;
}

std::string NameFromStrn(std::span<const std::uint8_t> strn)
{
    const auto nul = std::find(strn.begin(), strn.end(), 0);
    const auto length = std::min<std::size_t>(static_cast<std::size_t>(nul - strn.begin()), kAviMaxNameLength);
    return std::string(strn.begin(), strn.begin() + static_cast<std::ptrdiff_t>(length));
}

bool ReadStreamList(const RiffFile& file, const RiffChunk& strl, std::uint64_t end, AviStreamLayout& stream,
                    std::string& error)
{
    stream.ListEnd = std::min(strl.DataEnd(), end);
    bool haveHeader = false;
    std::string name; // strn may come before strh, which sets the whole record
    std::uint64_t at = strl.Data() + 4;
    while (const auto chunk = file.ChunkAt(at, stream.ListEnd)) {
        at = chunk->Next();
        const bool wanted = chunk->Id == FourCC("strh") || chunk->Id == FourCC("strf") || chunk->Id == FourCC("strn");
        if (chunk->Id == FourCC("indx") && !stream.Indx) {
            stream.Indx = chunk;
            stream.SuperIndex = ReadSuperIndex(file, *chunk, stream.ListEnd);
        }
        if (!wanted)
            continue;
        const auto data = file.ChunkData(*chunk, stream.ListEnd, kMaxHeaderChunk);
        if (!data) {
            error = "a stream header chunk is cut short or too large";
            return false;
        }
        if (chunk->Id == FourCC("strh") && !haveHeader) {
            stream.Stream.Info = StreamInfoFromHeader(*data);
            haveHeader = true;
        } else if (chunk->Id == FourCC("strf") && stream.Stream.Format.empty()) {
            stream.Stream.Format = *data;
        } else if (chunk->Id == FourCC("strn") && !stream.Strn) {
            stream.Strn = chunk;
            name = NameFromStrn(*data);
        }
    }
    if (!haveHeader) {
        error = "a stream list has no stream header";
        return false;
    }
    stream.Stream.Info.szName = name;
    FrameFromBitmapHeader(stream.Stream.Info, stream.Stream.Format);
    return true;
}

bool ReadHeaderList(const RiffFile& file, const RiffChunk& hdrl, std::uint64_t end, AviLayout& layout,
                    std::string& error)
{
    const std::uint64_t listEnd = std::min(hdrl.DataEnd(), end);
    bool haveMainHeader = false;
    std::uint64_t at = hdrl.Data() + 4;
    while (const auto chunk = file.ChunkAt(at, listEnd)) {
        at = chunk->Next();
        if (chunk->Id == FourCC("avih") && !haveMainHeader) {
            auto data = file.ChunkData(*chunk, listEnd, kMaxHeaderChunk);
            if (!data) {
                error = "the main header is cut short or too large";
                return false;
            }
            layout.MainHeader = std::move(*data);
            haveMainHeader = true;
        } else if (chunk->Id == FourCC("LIST") && chunk->ListType == FourCC("strl")) {
            if (layout.Streams.size() == kMaxStreams) {
                error = "more than 100 streams";
                return false;
            }
            AviStreamLayout stream;
            if (!ReadStreamList(file, *chunk, listEnd, stream, error))
                return false;
            layout.Streams.push_back(std::move(stream));
        }
    }
    if (!haveMainHeader) {
        error = "no main header";
        return false;
    }
    return true;
}

void AddMovi(const RiffChunk& movi, std::uint64_t end, AviLayout& layout)
{
    layout.Movi.push_back({movi.Data() + 4, std::min(movi.DataEnd(), end)});
}

// An AVIX extension holds one movi list; anything else at the top is skipped.
void ReadExtensions(const RiffFile& file, AviLayout& layout)
{
    std::uint64_t at = layout.FirstRiffEnd + (layout.FirstRiffEnd & 1);
    while (const auto riff = file.ChunkAt(at, file.Size())) {
        at = riff->Next();
        if (riff->Id != FourCC("RIFF") || riff->ListType != FourCC("AVIX"))
            continue;
        const std::uint64_t end = std::min(riff->DataEnd(), file.Size());
        std::uint64_t inner = riff->Data() + 4;
        while (const auto chunk = file.ChunkAt(inner, end)) {
            inner = chunk->Next();
            if (chunk->Id == FourCC("LIST") && chunk->ListType == FourCC("movi"))
                AddMovi(*chunk, end, layout);
        }
    }
}

} // namespace

std::optional<AviLayout> ReadAviLayout(const RiffFile& file, std::string& error)
{
    const auto riff = file.ChunkAt(0, file.Size());
    if (!riff || riff->Id != FourCC("RIFF") || riff->ListType != FourCC("AVI ")) {
        error = "not an AVI file";
        return std::nullopt;
    }
    AviLayout layout;
    // A file cut off while it was written claims more than it holds; what is there is read.
    layout.FirstRiffEnd = std::min(riff->DataEnd(), file.Size());
    bool haveHeaders = false;
    std::uint64_t at = riff->Data() + 4;
    while (const auto chunk = file.ChunkAt(at, layout.FirstRiffEnd)) {
        at = chunk->Next();
        if (chunk->Id == FourCC("LIST") && chunk->ListType == FourCC("hdrl") && !haveHeaders) {
            if (!ReadHeaderList(file, *chunk, layout.FirstRiffEnd, layout, error))
                return std::nullopt;
            haveHeaders = true;
        } else if (chunk->Id == FourCC("LIST") && chunk->ListType == FourCC("movi") && layout.MoviStart == 0) {
            layout.MoviStart = chunk->Data();
            AddMovi(*chunk, layout.FirstRiffEnd, layout);
        } else if (chunk->Id == FourCC("idx1") && !layout.Idx1) {
            layout.Idx1 = chunk;
        }
    }
    if (!haveHeaders) {
        error = "no header list";
        return std::nullopt;
    }
    ReadExtensions(file, layout);
    return layout;
}

} // namespace mw
