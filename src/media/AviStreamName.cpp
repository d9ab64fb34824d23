#include "media/AviFile.h"

#include "media/AviLayout.h"

#include <algorithm>

namespace mw {

namespace {

// The bytes from the strn header on: the name, NULs up to `strnSize` (and its pad byte), then
// a JUNK header for `junkSize` when there is one.
std::vector<std::uint8_t> StrnBytes(const std::string& text, std::uint32_t strnSize,
                                    std::optional<std::uint32_t> junkSize)
{
    std::vector<std::uint8_t> bytes(8 + strnSize + (strnSize & 1) + (junkSize ? 8 : 0), 0);
    PutLe32(bytes.data(), FourCC("strn"));
    PutLe32(bytes.data() + 4, strnSize);
    std::copy(text.begin(), text.end(), bytes.begin() + 8);
    if (junkSize) {
        PutLe32(bytes.data() + bytes.size() - 8, FourCC("JUNK"));
        PutLe32(bytes.data() + bytes.size() - 4, *junkSize);
    }
    return bytes;
}

} // namespace

// The name goes into the strn chunk as it is, or grows it into a JUNK chunk right after it.
// The bytes of the stream list stay as many as they were, so no RIFF or LIST size changes.
bool AviFile::WriteStreamName(const std::string& path, std::size_t stream, const std::string& name)
{
    RiffFile file;
    std::string error;
    if (!file.Open(path, true, error))
        return false;
    const auto layout = ReadAviLayout(file, error);
    if (!layout || stream >= layout->Streams.size() || !layout->Streams[stream].Strn)
        return false;
    const AviStreamLayout& list = layout->Streams[stream];
    const RiffChunk& strn = *list.Strn;
    const std::string text = name.substr(0, kAviMaxNameLength);
    const std::uint64_t needed = text.size() + 1;

    if (needed <= strn.Size) {
        const auto bytes = StrnBytes(text, strn.Size, std::nullopt);
        return file.Write(strn.Offset, bytes.data(), 8 + strn.Size);
    }
    const auto junk = file.ChunkAt(strn.Next(), list.ListEnd);
    if (!junk || junk->Id != FourCC("JUNK") || junk->Next() > list.ListEnd)
        return false;
    const std::uint64_t room = junk->Next() - strn.Data();
    if (needed > room || room % 2 != 0)
        return false;
    auto strnSize = static_cast<std::uint32_t>(needed + (needed & 1));
    std::optional<std::uint32_t> junkSize;
    const std::uint64_t left = room - strnSize;
    if (left >= 8)
        junkSize = static_cast<std::uint32_t>(left - 8);
    else
        strnSize += static_cast<std::uint32_t>(left); // too little for a JUNK header: NULs instead
    const auto bytes = StrnBytes(text, strnSize, junkSize);
    return file.Write(strn.Offset, bytes.data(), bytes.size());
}

} // namespace mw
