#pragma once

#include "media/AviFile.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

namespace mw::test {

// Small AVI files written byte by byte from a description, for the unusual and damaged cases
// that no encoder makes on purpose.

struct AviChunkSpec {
    std::uint32_t Size = 16; // 0 is a dropped frame
    bool Key = true;
};

struct AviStreamSpec {
    std::string Type = "vids";
    std::string Handler = "DX50";
    std::string Suffix = "dc"; // of the chunk names: "00dc", "01wb"
    std::uint32_t Scale = 1;
    std::uint32_t Rate = 25;
    std::uint32_t Start = 0;
    std::optional<std::uint32_t> Length; // strh dwLength; the number of chunks when unset
    std::uint32_t SampleSize = 0;
    std::array<std::int16_t, 4> Frame{}; // rcFrame: left, top, right, bottom
    std::vector<std::uint8_t> Format;    // strf data; no strf when empty
    std::optional<std::string> Name;     // strn data exactly as given; no strn when unset
    std::optional<std::uint32_t> JunkAfterName; // data size of a JUNK chunk right after strn
    std::vector<AviChunkSpec> Chunks;
};

enum class AviIndexKind { Idx1, Idx1Absolute, OpenDml, OpenDmlAndIdx1, None };

struct AviSpec {
    std::vector<AviStreamSpec> Streams;
    AviIndexKind Index = AviIndexKind::Idx1;
    std::size_t FramesPerRiff = std::numeric_limits<std::size_t>::max(); // further frames go to RIFF AVIX
    std::size_t RecDepth = 0; // each frame's chunks inside this many nested "LIST rec "
    std::uint32_t Width = 0;  // avih
    std::uint32_t Height = 0;
};

struct AviFixture {
    std::string Bytes;
    std::vector<std::vector<std::uint64_t>> DataOffsets; // per stream, per chunk
};

inline void PatchLe(std::string& bytes, std::size_t at, std::uint64_t value, int size = 4)
{
    for (int i = 0; i < size; ++i)
        bytes[at + static_cast<std::size_t>(i)] = static_cast<char>((value >> (8 * i)) & 0xFF);
}

// Appends four-character codes, little-endian numbers and chunks whose sizes are filled in
// when they are closed.
struct AviByteWriter {
    std::string Out;

    void Put(const std::string& fourcc) { Out += (fourcc + "    ").substr(0, 4); }
    void PutLe(std::uint64_t v, int size = 4)
    {
        Out.append(static_cast<std::size_t>(size), '\0');
        PatchLe(Out, Out.size() - static_cast<std::size_t>(size), v, size);
    }
    // A chunk (or a RIFF/LIST with its type) whose size Close fills in.
    std::size_t Open(const std::string& id, const std::string& listType = "")
    {
        const std::size_t at = Out.size();
        Put(id);
        PutLe(0);
        if (!listType.empty())
            Put(listType);
        return at;
    }
    void Close(std::size_t at)
    {
        const std::size_t size = Out.size() - at - 8;
        PatchLe(Out, at + 4, size);
        Out.append(size % 2, '\0');
    }
};

inline std::string AviChunkName(std::size_t stream, const std::string& suffix)
{
    return std::string{static_cast<char>('0' + stream / 10 % 10), static_cast<char>('0' + stream % 10)} + suffix;
}

inline std::vector<std::uint8_t> BitmapInfoHeader(std::int32_t width, std::int32_t height)
{
    AviByteWriter w;
    for (const std::int32_t v : {40, width, height})
        w.PutLe(static_cast<std::uint32_t>(v));
    w.PutLe(1, 2); // planes
    w.PutLe(24, 2);
    w.Put("DX50");
    w.Out.append(20, '\0');
    return {w.Out.begin(), w.Out.end()};
}

namespace detail {

inline void WriteStreamList(AviByteWriter& w, const AviStreamSpec& s, std::size_t index, std::size_t segments,
                            bool odml, std::size_t& indxAt)
{
    const std::size_t strl = w.Open("LIST", "strl");
    const std::size_t strh = w.Open("strh");
    w.Put(s.Type);
    w.Put(s.Handler);
    w.Out.append(12, '\0'); // flags, priority, language, initial frames
    const std::uint32_t length = s.Length.value_or(static_cast<std::uint32_t>(s.Chunks.size()));
    for (const std::uint32_t v : {s.Scale, s.Rate, s.Start, length, 4096u, 0xFFFFFFFFu, s.SampleSize})
        w.PutLe(v);
    for (const std::int16_t v : s.Frame)
        w.PutLe(static_cast<std::uint16_t>(v), 2);
    w.Close(strh);
    const auto chunk = [&w](const char* id, const std::string& data) {
        const std::size_t at = w.Open(id);
        w.Out += data;
        w.Close(at);
    };
    if (!s.Format.empty())
        chunk("strf", std::string(s.Format.begin(), s.Format.end()));
    if (s.Name)
        chunk("strn", *s.Name);
    if (s.JunkAfterName)
        chunk("JUNK", std::string(*s.JunkAfterName, '\0'));
    if (odml) {
        indxAt = w.Open("indx");
        w.PutLe(4); // four longs per entry, an index of indexes
        w.PutLe(segments);
        w.Put(AviChunkName(index, s.Suffix));
        w.Out.append(12 + 16 * segments, '\0');
        w.Close(indxAt);
    }
    w.Close(strl);
}

} // namespace detail

// Chunks are interleaved by frame: frame i of every stream that has one, in stream order.
// OpenDML indexes are ix## chunks at the end of each movi list, as FFmpeg writes them.
inline AviFixture BuildAvi(const AviSpec& spec)
{
    const bool odml = spec.Index == AviIndexKind::OpenDml || spec.Index == AviIndexKind::OpenDmlAndIdx1;
    const bool idx1 = spec.Index == AviIndexKind::Idx1 || spec.Index == AviIndexKind::Idx1Absolute ||
                      spec.Index == AviIndexKind::OpenDmlAndIdx1;
    std::size_t frames = 0;
    for (const auto& s : spec.Streams)
        frames = std::max(frames, s.Chunks.size());
    const std::size_t perRiff = std::max<std::size_t>(1, spec.FramesPerRiff);
    const std::size_t segments = std::max<std::size_t>(1, (frames + perRiff - 1) / perRiff);

    AviFixture fixture;
    fixture.DataOffsets.resize(spec.Streams.size());
    AviByteWriter w;
    std::size_t riff = w.Open("RIFF", "AVI ");
    const std::size_t hdrl = w.Open("LIST", "hdrl");
    const std::size_t avih = w.Open("avih");
    const auto streams = static_cast<std::uint32_t>(spec.Streams.size());
    const auto length = spec.Streams.empty() ? 0u : static_cast<std::uint32_t>(spec.Streams[0].Chunks.size());
    for (const std::uint32_t v : {40000u, 0u, 0u, 0x10u, length, 0u, streams, 65536u, spec.Width, spec.Height})
        w.PutLe(v);
    w.Out.append(16, '\0');
    w.Close(avih);
    std::vector<std::size_t> indxAt(spec.Streams.size());
    for (std::size_t s = 0; s < spec.Streams.size(); ++s)
        detail::WriteStreamList(w, spec.Streams[s], s, segments, odml, indxAt[s]);
    w.Close(hdrl);

    struct Entry {
        std::string Id;
        std::size_t Header;
        AviChunkSpec Chunk;
    };
    for (std::size_t seg = 0; seg < segments; ++seg) {
        if (seg > 0)
            riff = w.Open("RIFF", "AVIX");
        const std::size_t movi = w.Open("LIST", "movi");
        std::vector<std::vector<Entry>> written(spec.Streams.size());
        std::vector<Entry> inOrder;
        for (std::size_t f = seg * perRiff; f < std::min(frames, (seg + 1) * perRiff); ++f) {
            std::vector<std::size_t> recs;
            for (std::size_t d = 0; d < spec.RecDepth; ++d)
                recs.push_back(w.Open("LIST", "rec "));
            for (std::size_t s = 0; s < spec.Streams.size(); ++s) {
                if (f >= spec.Streams[s].Chunks.size())
                    continue;
                const AviChunkSpec& c = spec.Streams[s].Chunks[f];
                const std::string id = AviChunkName(s, spec.Streams[s].Suffix);
                const std::size_t at = w.Open(id);
                w.Out.append(c.Size, static_cast<char>(s * 16 + f));
                w.Close(at);
                fixture.DataOffsets[s].push_back(at + 8);
                written[s].push_back({id, at, c});
                inOrder.push_back(written[s].back());
            }
            for (auto r = recs.rbegin(); r != recs.rend(); ++r)
                w.Close(*r);
        }
        for (std::size_t s = 0; odml && s < spec.Streams.size(); ++s) {
            const std::size_t ix = w.Open("ix" + AviChunkName(s, ""));
            w.PutLe(0x01000002); // two longs per entry, an index of chunks
            w.PutLe(written[s].size());
            w.Put(AviChunkName(s, spec.Streams[s].Suffix));
            w.PutLe(movi, 8);
            w.PutLe(0);
            for (const Entry& e : written[s]) {
                w.PutLe(e.Header + 8 - movi);
                w.PutLe(e.Chunk.Size | (e.Chunk.Key ? 0 : 0x80000000u));
            }
            w.Close(ix);
            const std::size_t entry = indxAt[s] + 8 + 24 + 16 * seg;
            PatchLe(w.Out, entry, ix, 8);
            PatchLe(w.Out, entry + 8, w.Out.size() - ix);
            PatchLe(w.Out, entry + 12, written[s].size());
        }
        w.Close(movi);
        if (seg == 0 && idx1) {
            const std::size_t index = w.Open("idx1");
            const std::size_t base = spec.Index == AviIndexKind::Idx1Absolute ? 0 : movi + 8;
            for (const Entry& e : inOrder) {
                w.Put(e.Id);
                w.PutLe(e.Chunk.Key ? 0x10 : 0);
                w.PutLe(e.Header - base);
                w.PutLe(e.Chunk.Size);
            }
            w.Close(index);
        }
        w.Close(riff);
    }
    fixture.Bytes = std::move(w.Out);
    return fixture;
}

// A video stream of `frames` chunks of 16 bytes, a key frame every `keyEvery`.
inline AviStreamSpec VideoStream(std::size_t frames, std::size_t keyEvery)
{
    AviStreamSpec s;
    s.Format = BitmapInfoHeader(64, 48);
    for (std::size_t i = 0; i < frames; ++i)
        s.Chunks.push_back({16, i % keyEvery == 0});
    return s;
}

// An MP3-like stream of `chunks` key chunks of 100 bytes at 1152 / 44100.
inline AviStreamSpec AudioStream(std::size_t chunks)
{
    AviStreamSpec s;
    s.Type = "auds";
    s.Handler = std::string(4, '\0');
    s.Suffix = "wb";
    s.Scale = 1152;
    s.Rate = 44100;
    s.Format = std::vector<std::uint8_t>(30, 1);
    s.Chunks.assign(chunks, {100, true});
    return s;
}

// 100 video streams of one frame whose super indexes claim a million entries each and, by the
// size of their chunks, reach over the rest of a 16 MB file. The rest is a JUNK chunk of
// entries that each point at another place.
inline std::string ForgedSuperIndexAvi()
{
    AviSpec spec;
    spec.Index = AviIndexKind::OpenDml;
    spec.Streams.assign(100, VideoStream(1, 1));
    std::string bytes = BuildAvi(spec).Bytes;
    constexpr std::size_t kFileSize = 16 << 20;
    for (std::size_t at = bytes.find("indx"); at != std::string::npos; at = bytes.find("indx", at + 1)) {
        PatchLe(bytes, at + 4, kFileSize);
        PatchLe(bytes, at + 12, 1'000'000);
    }
    AviByteWriter junk;
    junk.Put("JUNK");
    junk.PutLe(kFileSize - bytes.size() - 8);
    const std::size_t data = bytes.size() + 8;
    while (junk.Out.size() + 16 <= kFileSize - bytes.size()) {
        junk.PutLe(data + junk.Out.size(), 8);
        junk.PutLe(32);
        junk.PutLe(1);
    }
    junk.Out.resize(kFileSize - bytes.size(), '\0');
    return bytes + junk.Out;
}

// Opens bytes as an AVI file from memory, through the /proc path of a memory file, so that
// tests that open hundreds of variants write nothing to disk.
inline std::optional<AviFile> OpenAviBytes(const std::string& bytes, std::string* error = nullptr,
                                           AviRead what = AviRead::HeadersAndIndex)
{
    const int fd = ::memfd_create("avi", MFD_CLOEXEC);
    if (fd < 0)
        throw std::runtime_error("no memory file");
    if (::write(fd, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
        ::close(fd);
        throw std::runtime_error("memory file not written");
    }
    auto avi = AviFile::Open("/proc/self/fd/" + std::to_string(fd), error, what);
    ::close(fd);
    return avi;
}

} // namespace mw::test
