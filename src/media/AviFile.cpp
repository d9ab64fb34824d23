#include "media/AviFile.h"

#include "media/AviLayout.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace mw {

namespace {

// Some writers count in strh only the frames of the first RIFF of a file past 1 GB. When the
// length is exactly what the super index gives the first RIFF and the super index goes on,
// the super index is right.
void LengthFromSuperIndex(AviStreamInfo& info, const std::vector<AviSuperIndexEntry>& entries,
                          std::uint64_t firstRiffEnd)
{
    if (info.fccType != FourCC("vids") || info.dwSampleSize != 0)
        return;
    std::uint64_t inFirstRiff = 0;
    std::uint64_t total = 0;
    for (const AviSuperIndexEntry& entry : entries) {
        total += entry.Duration;
        if (entry.Offset < firstRiffEnd)
            inFirstRiff += entry.Duration;
    }
    if (total > info.dwLength && inFirstRiff == info.dwLength)
        info.dwLength = static_cast<std::uint32_t>(std::min<std::uint64_t>(total, std::numeric_limits<std::uint32_t>::max()));
}

std::vector<long> KeyFramesOf(const std::vector<AviChunk>& chunks)
{
    std::vector<long> keys;
    for (std::size_t i = 0; i < chunks.size(); ++i) {
        if (chunks[i].KeyFrame)
            keys.push_back(static_cast<long>(i));
    }
    return keys;
}

// A stream's length in the file's time units (those of stream 0), rounded; 0 when either rate
// is unknown.
std::uint32_t LengthInFileTime(const AviStreamInfo& stream, const AviFileInfo& file)
{
    if (stream.dwRate == 0 || stream.dwScale == 0 || file.dwRate == 0 || file.dwScale == 0)
        return 0;
    const long double length = static_cast<long double>(stream.dwLength) * stream.dwScale * file.dwRate /
                               (static_cast<long double>(stream.dwRate) * file.dwScale);
    return static_cast<std::uint32_t>(
        std::min(std::round(length), static_cast<long double>(std::numeric_limits<std::uint32_t>::max())));
}

// The file record as the AVIFile service fills it: the main header's sizes and flags, stream
// 0's rate, and the longest stream's length in that rate.
AviFileInfo FileInfoOf(std::span<const std::uint8_t> avih, const std::vector<AviStream>& streams)
{
    AviFileInfo info;
    info.dwMaxBytesPerSecond = GetLe32(avih, 4);
    info.dwFlags = GetLe32(avih, 12);
    info.dwCaps = kAviCanReadAndWrite;
    info.dwStreams = static_cast<std::uint32_t>(streams.size());
    info.dwSuggestedBufferSize = GetLe32(avih, 28);
    info.dwWidth = GetLe32(avih, 32);
    info.dwHeight = GetLe32(avih, 36);
    info.szFileType = "AVI";
    if (streams.empty())
        return info;
    info.dwScale = streams[0].Info.dwScale;
    info.dwRate = streams[0].Info.dwRate;
    info.dwLength = streams[0].Info.dwLength;
    for (const AviStream& stream : streams)
        info.dwLength = std::max(info.dwLength, LengthInFileTime(stream.Info, info));
    return info;
}

} // namespace

std::optional<AviFile> AviFile::Open(const std::string& path, std::string* error, AviRead what)
{
    std::string reason;
    RiffFile file;
    std::optional<AviLayout> layout;
    const bool withIndex = what == AviRead::HeadersAndIndex;
    if (file.Open(path, false, reason))
        layout = ReadAviLayout(file, reason);
    if (layout && withIndex && !ReadAviIndex(file, *layout, reason))
        layout.reset();
    if (!layout) {
        if (error)
            *error = reason;
        return std::nullopt;
    }
    AviFile avi;
    avi.identity_ = {file.Size(), file.ModifiedNs()};
    avi.hasIndex_ = withIndex;
    for (AviStreamLayout& stream : layout->Streams) {
        LengthFromSuperIndex(stream.Stream.Info, stream.SuperIndex, layout->FirstRiffEnd);
        avi.keyFrames_.push_back(KeyFramesOf(stream.Stream.Chunks));
        avi.streams_.push_back(std::move(stream.Stream));
    }
    avi.fileInfo_ = FileInfoOf(layout->MainHeader, avi.streams_);
    return avi;
}

long AviFile::FindSample(std::size_t stream, long frame, KeySearch how) const
{
    if (stream >= keyFrames_.size())
        return -1;
    const long start = static_cast<long>(streams_[stream].Info.dwStart);
    const std::vector<long>& keys = keyFrames_[stream];
    if (how == KeySearch::NextKey) {
        const auto next = std::lower_bound(keys.begin(), keys.end(), frame - start);
        return next == keys.end() ? -1 : start + *next;
    }
    const auto after = std::upper_bound(keys.begin(), keys.end(), frame - start);
    return after == keys.begin() ? -1 : start + *(after - 1);
}

} // namespace mw
