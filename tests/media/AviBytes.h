#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <optional>
#include <string>
#include <vector>

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

class AviByteWriter {
public:
    std::size_t Pos() const { return out_.size(); }
    std::string& Bytes() { return out_; }

    void Put(const std::string& fourcc) { out_ += fourcc.substr(0, 4) + std::string(4 - std::min<std::size_t>(4, fourcc.size()), ' '); }
    void Put16(std::uint16_t v) { PutLe(v, 2); }
    void Put32(std::uint32_t v) { PutLe(v, 4); }
    void Put64(std::uint64_t v) { PutLe(v, 8); }
    void PutBytes(const std::vector<std::uint8_t>& bytes) { out_.append(bytes.begin(), bytes.end()); }
    void PutText(const std::string& text) { out_ += text; }
    void Fill(std::size_t count, char c) { out_.append(count, c); }

    // A chunk (or a RIFF/LIST with its type) whose size Close fills in.
    std::size_t Open(const std::string& id, const std::string& listType = "")
    {
        const std::size_t at = Pos();
        Put(id);
        Put32(0);
        if (!listType.empty())
            Put(listType);
        return at;
    }
    void Close(std::size_t at)
    {
        const auto size = static_cast<std::uint32_t>(Pos() - at - 8);
        Patch32(at + 4, size);
        if (size % 2 != 0)
            out_ += '\0';
    }
    void Patch32(std::size_t at, std::uint32_t v) { PatchLe(at, v, 4); }
    void Patch64(std::size_t at, std::uint64_t v) { PatchLe(at, v, 8); }

private:
    void PutLe(std::uint64_t v, int bytes)
    {
        for (int i = 0; i < bytes; ++i)
            out_ += static_cast<char>((v >> (8 * i)) & 0xFF);
    }
    void PatchLe(std::size_t at, std::uint64_t v, int bytes)
    {
        for (int i = 0; i < bytes; ++i)
            out_[at + static_cast<std::size_t>(i)] = static_cast<char>((v >> (8 * i)) & 0xFF);
    }

    std::string out_;
};

inline std::string AviChunkName(std::size_t stream, const std::string& suffix)
{
    char name[8];
    std::snprintf(name, sizeof name, "%02zu", stream % 100);
    return name + suffix;
}

inline std::vector<std::uint8_t> BitmapInfoHeader(std::int32_t width, std::int32_t height)
{
    AviByteWriter w;
    w.Put32(40);
    w.Put32(static_cast<std::uint32_t>(width));
    w.Put32(static_cast<std::uint32_t>(height));
    w.Put16(1);
    w.Put16(24);
    w.Put("DX50");
    w.Fill(20, '\0');
    return {w.Bytes().begin(), w.Bytes().end()};
}

namespace detail {

inline void WriteStreamList(AviByteWriter& w, const AviStreamSpec& s, std::size_t segments, bool odml,
                            std::size_t& indxAt)
{
    const std::size_t strl = w.Open("LIST", "strl");
    const std::size_t strh = w.Open("strh");
    w.Put(s.Type);
    w.Put(s.Handler);
    w.Put32(0);    // flags
    w.Put32(0);    // priority, language
    w.Put32(0);    // initial frames
    w.Put32(s.Scale);
    w.Put32(s.Rate);
    w.Put32(s.Start);
    w.Put32(s.Length.value_or(static_cast<std::uint32_t>(s.Chunks.size())));
    w.Put32(4096); // suggested buffer size
    w.Put32(0xFFFFFFFFu);
    w.Put32(s.SampleSize);
    for (const std::int16_t v : s.Frame)
        w.Put16(static_cast<std::uint16_t>(v));
    w.Close(strh);
    if (!s.Format.empty()) {
        const std::size_t strf = w.Open("strf");
        w.PutBytes(s.Format);
        w.Close(strf);
    }
    if (s.Name) {
        const std::size_t strn = w.Open("strn");
        w.PutText(*s.Name);
        w.Close(strn);
    }
    if (s.JunkAfterName) {
        const std::size_t junk = w.Open("JUNK");
        w.Fill(*s.JunkAfterName, '\0');
        w.Close(junk);
    }
    if (odml) {
        indxAt = w.Open("indx");
        w.Fill(24 + 16 * segments, '\0');
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
    w.Put32(40000);
    w.Put32(0);
    w.Put32(0);
    w.Put32(0x10);
    w.Put32(spec.Streams.empty() ? 0 : static_cast<std::uint32_t>(spec.Streams[0].Chunks.size()));
    w.Put32(0);
    w.Put32(static_cast<std::uint32_t>(spec.Streams.size()));
    w.Put32(65536);
    w.Put32(spec.Width);
    w.Put32(spec.Height);
    w.Fill(16, '\0');
    w.Close(avih);
    std::vector<std::size_t> indxAt(spec.Streams.size());
    for (std::size_t s = 0; s < spec.Streams.size(); ++s)
        detail::WriteStreamList(w, spec.Streams[s], segments, odml, indxAt[s]);
    w.Close(hdrl);

    for (std::size_t seg = 0; seg < segments; ++seg) {
        if (seg > 0)
            riff = w.Open("RIFF", "AVIX");
        const std::size_t movi = w.Open("LIST", "movi");
        struct Entry {
            std::string Id;
            std::size_t Header;
            std::uint32_t Size;
            bool Key;
        };
        std::vector<std::vector<Entry>> written(spec.Streams.size());
        std::vector<Entry> inOrder;
        for (std::size_t f = seg * perRiff; f < std::min(frames, (seg + 1) * perRiff); ++f) {
            std::vector<std::size_t> recs;
            for (std::size_t d = 0; d < spec.RecDepth; ++d)
                recs.push_back(w.Open("LIST", "rec "));
            for (std::size_t s = 0; s < spec.Streams.size(); ++s) {
                const auto& stream = spec.Streams[s];
                if (f >= stream.Chunks.size())
                    continue;
                const AviChunkSpec& c = stream.Chunks[f];
                const std::string id = AviChunkName(s, stream.Suffix);
                const std::size_t at = w.Open(id);
                w.Fill(c.Size, static_cast<char>(s * 16 + f));
                w.Close(at);
                fixture.DataOffsets[s].push_back(at + 8);
                written[s].push_back({id, at, c.Size, c.Key});
                inOrder.push_back(written[s].back());
            }
            for (auto r = recs.rbegin(); r != recs.rend(); ++r)
                w.Close(*r);
        }
        for (std::size_t s = 0; odml && s < spec.Streams.size(); ++s) {
            const std::size_t ix = w.Open("ix" + AviChunkName(s, ""));
            w.Put16(2);
            w.Bytes() += '\0';
            w.Bytes() += '\1';
            w.Put32(static_cast<std::uint32_t>(written[s].size()));
            w.Put(AviChunkName(s, spec.Streams[s].Suffix));
            w.Put64(movi);
            w.Put32(0);
            for (const Entry& e : written[s]) {
                w.Put32(static_cast<std::uint32_t>(e.Header + 8 - movi));
                w.Put32(e.Size | (e.Key ? 0 : 0x80000000u));
            }
            w.Close(ix);
            const std::size_t entry = indxAt[s] + 8 + 24 + 16 * seg;
            w.Patch64(entry, ix);
            w.Patch32(entry + 8, static_cast<std::uint32_t>(w.Pos() - ix));
            w.Patch32(entry + 12, static_cast<std::uint32_t>(written[s].size()));
        }
        w.Close(movi);
        if (seg == 0 && idx1) {
            const std::size_t index = w.Open("idx1");
            const bool absolute = spec.Index == AviIndexKind::Idx1Absolute;
            for (const Entry& e : inOrder) {
                w.Put(e.Id);
                w.Put32(e.Key ? 0x10 : 0);
                w.Put32(static_cast<std::uint32_t>(absolute ? e.Header : e.Header - (movi + 8)));
                w.Put32(e.Size);
            }
            w.Close(index);
        }
        w.Close(riff);
    }
    for (std::size_t s = 0; odml && s < spec.Streams.size(); ++s) {
        const std::size_t at = indxAt[s] + 8;
        w.Patch32(at, 4); // four longs per entry, a super index
        w.Patch32(at + 4, static_cast<std::uint32_t>(segments));
        w.Bytes().replace(at + 8, 4, AviChunkName(s, spec.Streams[s].Suffix));
    }
    fixture.Bytes = std::move(w.Bytes());
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

} // namespace mw::test
