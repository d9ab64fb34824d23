#include "build/AviWriter.h"

#include <algorithm>
#include <cmath>

namespace mw {

namespace {

constexpr std::uint32_t kIndexKeyFrame = 0x10; // AVIIF_KEYFRAME in idx1
constexpr std::uint32_t kNotKeyFrame = 0x80000000u; // bit 31 of an ix## size
constexpr std::uint32_t kHasIndex = 0x10;
constexpr std::uint32_t kIsInterleaved = 0x100;
constexpr std::size_t kIndxHeader = 24;
constexpr std::size_t kIndxSize = kIndxHeader + 16 * AviWriter::kSuperIndexEntries;
constexpr std::size_t kDmlhSize = 248;
constexpr std::size_t kOdmlListSize = 4 + 8 + kDmlhSize;

// Little-endian bytes, as every RIFF field is stored.
class Bytes {
public:
    std::vector<std::uint8_t> Data;

    void U8(std::uint8_t v) { Data.push_back(v); }
    void U16(std::uint16_t v)
    {
        U8(static_cast<std::uint8_t>(v));
        U8(static_cast<std::uint8_t>(v >> 8));
    }
    void U32(std::uint32_t v)
    {
        U16(static_cast<std::uint16_t>(v));
        U16(static_cast<std::uint16_t>(v >> 16));
    }
    void U64(std::uint64_t v)
    {
        U32(static_cast<std::uint32_t>(v));
        U32(static_cast<std::uint32_t>(v >> 32));
    }
    void Tag(const char (&fourcc)[5]) { U32(FourCC(fourcc)); }
    void Zeros(std::size_t n) { Data.insert(Data.end(), n, 0); }
    void Append(const std::vector<std::uint8_t>& more) { Data.insert(Data.end(), more.begin(), more.end()); }
    // A chunk: its id, size and data, padded to an even length.
    void Chunk(std::uint32_t id, const std::vector<std::uint8_t>& data)
    {
        U32(id);
        U32(static_cast<std::uint32_t>(data.size()));
        Append(data);
        if (data.size() % 2)
            U8(0);
    }
    void List(const char (&type)[5], const std::vector<std::uint8_t>& content)
    {
        Tag("LIST");
        U32(static_cast<std::uint32_t>(content.size() + 4));
        Tag(type);
        Append(content);
    }
};

std::uint32_t ClampU32(std::uint64_t v) { return static_cast<std::uint32_t>(std::min<std::uint64_t>(v, 0xFFFFFFFFu)); }

std::uint32_t StreamChunkId(std::size_t index, const AviStreamInfo& info, const std::vector<std::uint8_t>& format)
{
    const char tens = static_cast<char>('0' + index / 10 % 10);
    const char ones = static_cast<char>('0' + index % 10);
    std::string suffix = "dc";
    if (info.fccType == FourCC("auds"))
        suffix = "wb";
    else if (info.fccType == FourCC("txts"))
        suffix = "sb";
    else if (info.fccType == FourCC("vids") && format.size() >= 20 &&
             std::all_of(format.begin() + 16, format.begin() + 20, [](std::uint8_t b) { return b == 0; }))
        suffix = "db"; // an uncompressed DIB
    return FourCCFromString(std::string{tens, ones} + suffix);
}

std::uint32_t IndexChunkId(std::size_t index)
{
    return FourCCFromString(std::string{'i', 'x', static_cast<char>('0' + index / 10 % 10),
                                        static_cast<char>('0' + index % 10)});
}

} // namespace

AviWriter::AviWriter(std::uint64_t riffLimit) : riffLimit_(riffLimit) {}

AviWriter::~AviWriter() { Close(); }

bool AviWriter::Create(const std::string& path)
{
    Close();
    streams_.clear();
    segment_.clear();
    begun_ = failed_ = openDml_ = false;
    position_ = riffStart_ = moviStart_ = 0;
    file_.reset(std::fopen(path.c_str(), "wb"));
    if (file_)
        std::setvbuf(file_.get(), nullptr, _IOFBF, std::size_t(1) << 20);
    return IsOpen();
}

std::size_t AviWriter::AddStream(const AviStreamInfo& info, std::vector<std::uint8_t> format)
{
    Stream stream;
    stream.Info = info;
    stream.ChunkId = StreamChunkId(streams_.size(), info, format);
    stream.Format = std::move(format);
    streams_.push_back(std::move(stream));
    return streams_.size() - 1;
}

bool AviWriter::Begin()
{
    if (!file_ || begun_ || streams_.empty())
        return false;
    begun_ = true;
    Bytes head;
    head.Tag("RIFF");
    head.U32(0);
    head.Tag("AVI ");
    head.Append(HeaderList());
    moviStart_ = head.Data.size();
    head.Tag("LIST");
    head.U32(0);
    head.Tag("movi");
    return Write(head.Data);
}

std::uint32_t AviWriter::Length(const Stream& stream, std::uint64_t chunks, std::uint64_t bytes) const
{
    return ClampU32(stream.Info.dwSampleSize ? bytes / stream.Info.dwSampleSize : chunks);
}

std::vector<std::uint8_t> AviWriter::HeaderList() const
{
    const auto video = std::find_if(streams_.begin(), streams_.end(),
                                    [](const Stream& s) { return s.Info.fccType == FourCC("vids"); });
    std::uint64_t totalBytes = 0;
    std::uint32_t largest = 0;
    for (const Stream& s : streams_) {
        totalBytes += s.Bytes;
        largest = std::max({largest, s.Info.dwSuggestedBufferSize, s.LargestChunk});
    }

    Bytes avih;
    std::uint32_t microSecPerFrame = 0;
    std::uint32_t maxBytesPerSec = 0;
    if (video != streams_.end() && video->Info.dwRate) {
        const double frameSeconds = double(video->Info.dwScale) / video->Info.dwRate;
        microSecPerFrame = static_cast<std::uint32_t>(std::lround(1e6 * frameSeconds));
        const double seconds = frameSeconds * double(video->Chunks);
        if (seconds > 0)
            maxBytesPerSec = ClampU32(static_cast<std::uint64_t>(double(totalBytes) / seconds));
    }
    avih.U32(microSecPerFrame);
    avih.U32(maxBytesPerSec);
    avih.U32(0); // padding granularity
    avih.U32(kHasIndex | kIsInterleaved);
    avih.U32(video == streams_.end() ? 0 : ClampU32(openDml_ ? video->ChunksInFirstRiff : video->Chunks));
    avih.U32(0); // initial frames
    avih.U32(static_cast<std::uint32_t>(streams_.size()));
    avih.U32(largest);
    const AviRect frame = video == streams_.end() ? AviRect{} : video->Info.rcFrame;
    avih.U32(static_cast<std::uint32_t>(frame.right - frame.left));
    avih.U32(static_cast<std::uint32_t>(frame.bottom - frame.top));
    avih.Zeros(16);

    Bytes hdrl;
    hdrl.Chunk(FourCC("avih"), avih.Data);
    for (std::size_t i = 0; i < streams_.size(); ++i) {
        const Stream& s = streams_[i];
        const AviStreamInfo& info = s.Info;
        Bytes strh;
        strh.U32(info.fccType);
        strh.U32(info.fccHandler);
        strh.U32(info.dwFlags);
        strh.U16(info.wPriority);
        strh.U16(info.wLanguage);
        strh.U32(info.dwInitialFrames);
        strh.U32(info.dwScale);
        strh.U32(info.dwRate);
        strh.U32(info.dwStart);
        strh.U32(Length(s, s.Chunks, s.Bytes));
        strh.U32(std::max(info.dwSuggestedBufferSize, s.LargestChunk));
        strh.U32(info.dwQuality);
        strh.U32(info.dwSampleSize);
        for (std::int32_t side : {info.rcFrame.left, info.rcFrame.top, info.rcFrame.right, info.rcFrame.bottom})
            strh.U16(static_cast<std::uint16_t>(side));

        Bytes strl;
        strl.Chunk(FourCC("strh"), strh.Data);
        strl.Chunk(FourCC("strf"), s.Format);
        if (!info.szName.empty()) {
            std::vector<std::uint8_t> name(info.szName.begin(), info.szName.end());
            name.push_back(0);
            strl.Chunk(FourCC("strn"), name);
        }
        Bytes indx;
        if (openDml_) {
            indx.U16(4); // longs per entry
            indx.U8(0);
            indx.U8(0); // an index of indexes
            indx.U32(static_cast<std::uint32_t>(s.SuperIndex.size()));
            indx.U32(s.ChunkId);
            indx.Zeros(12);
            for (const SuperIndexEntry& e : s.SuperIndex) {
                indx.U64(e.Offset);
                indx.U32(e.Size);
                indx.U32(e.Duration);
            }
        }
        indx.Zeros(kIndxSize - indx.Data.size());
        strl.Chunk(openDml_ ? FourCC("indx") : FourCC("JUNK"), indx.Data);
        hdrl.List("strl", strl.Data);
    }
    if (openDml_) {
        Bytes dmlh;
        dmlh.U32(video == streams_.end() ? 0 : ClampU32(video->Chunks));
        dmlh.Zeros(kDmlhSize - 4);
        Bytes odml;
        odml.Chunk(FourCC("dmlh"), dmlh.Data);
        hdrl.List("odml", odml.Data);
    } else {
        hdrl.Chunk(FourCC("JUNK"), std::vector<std::uint8_t>(kOdmlListSize));
    }
    Bytes list;
    list.List("hdrl", hdrl.Data);
    return list.Data;
}

bool AviWriter::Write(const std::uint8_t* data, std::size_t size)
{
    if (failed_ || !file_)
        return false;
    if (size && std::fwrite(data, 1, size, file_.get()) != size) {
        failed_ = true;
        return false;
    }
    position_ += size;
    return true;
}

bool AviWriter::Write(const std::vector<std::uint8_t>& bytes) { return Write(bytes.data(), bytes.size()); }

bool AviWriter::Patch(std::uint64_t at, const std::vector<std::uint8_t>& bytes)
{
    if (failed_ || !file_)
        return false;
    std::FILE* f = file_.get();
    if (fseeko(f, static_cast<off_t>(at), SEEK_SET) != 0 || std::fwrite(bytes.data(), 1, bytes.size(), f) != bytes.size() ||
        fseeko(f, static_cast<off_t>(position_), SEEK_SET) != 0) {
        failed_ = true;
        return false;
    }
    return true;
}

bool AviWriter::PatchSize(std::uint64_t sizeField, std::uint64_t end)
{
    Bytes size;
    size.U32(ClampU32(end - sizeField - 4));
    return Patch(sizeField, size.Data);
}

bool AviWriter::WriteChunk(std::size_t stream, const std::uint8_t* data, std::size_t size, bool keyFrame)
{
    if (!begun_ || failed_ || stream >= streams_.size() || size > 0x7FFFFFFFu)
        return false;
    const std::uint64_t padded = size + size % 2;
    std::uint64_t riffBytes = position_ + 8 + padded - riffStart_;
    if (riffStart_ == 0)
        riffBytes += 8 + 16 * (segment_.size() + 1); // the idx1 that closes the first RIFF
    if (riffBytes > riffLimit_ && !segment_.empty()) {
        openDml_ = true;
        if (!FinishSegment() || !StartSegment())
            return false;
    }

    Stream& s = streams_[stream];
    segment_.push_back({stream, position_, static_cast<std::uint32_t>(size), keyFrame});
    Bytes header;
    header.U32(s.ChunkId);
    header.U32(static_cast<std::uint32_t>(size));
    const std::uint8_t pad = 0;
    if (!Write(header.Data) || !Write(data, size) || (size % 2 && !Write(&pad, 1)))
        return false;
    ++s.Chunks;
    s.Bytes += size;
    s.LargestChunk = std::max(s.LargestChunk, static_cast<std::uint32_t>(size));
    return true;
}

bool AviWriter::StartSegment()
{
    riffStart_ = position_;
    moviStart_ = position_ + 12;
    Bytes head;
    head.Tag("RIFF");
    head.U32(0);
    head.Tag("AVIX");
    head.Tag("LIST");
    head.U32(0);
    head.Tag("movi");
    return Write(head.Data);
}

// One ix## chunk per stream with chunks in this RIFF, named in the stream's super index.
bool AviWriter::WriteStandardIndexes()
{
    for (std::size_t i = 0; i < streams_.size(); ++i) {
        Stream& s = streams_[i];
        Bytes entries;
        std::uint64_t chunks = 0;
        std::uint64_t bytes = 0;
        for (const IndexEntry& e : segment_) {
            if (e.Stream != i)
                continue;
            entries.U32(ClampU32(e.Offset + 8 - moviStart_));
            entries.U32(e.Size | (e.Key ? 0 : kNotKeyFrame));
            ++chunks;
            bytes += e.Size;
        }
        if (chunks == 0)
            continue;
        if (s.SuperIndex.size() == kSuperIndexEntries) {
            failed_ = true;
            return false;
        }
        Bytes ix;
        ix.U16(2); // longs per entry
        ix.U8(0);
        ix.U8(1); // an index of chunks
        ix.U32(ClampU32(chunks));
        ix.U32(s.ChunkId);
        ix.U64(moviStart_);
        ix.U32(0);
        ix.Append(entries.Data);
        s.SuperIndex.push_back({position_, static_cast<std::uint32_t>(ix.Data.size() + 8), Length(s, chunks, bytes)});
        Bytes chunk;
        chunk.Chunk(IndexChunkId(i), ix.Data);
        if (!Write(chunk.Data))
            return false;
    }
    return true;
}

bool AviWriter::WriteIdx1()
{
    Bytes idx1;
    idx1.Tag("idx1");
    idx1.U32(static_cast<std::uint32_t>(16 * segment_.size()));
    for (const IndexEntry& e : segment_) {
        idx1.U32(streams_[e.Stream].ChunkId);
        idx1.U32(e.Key ? kIndexKeyFrame : 0);
        idx1.U32(ClampU32(e.Offset - (moviStart_ + 8)));
        idx1.U32(e.Size);
        ++streams_[e.Stream].ChunksInFirstRiff;
    }
    return Write(idx1.Data);
}

bool AviWriter::FinishSegment()
{
    if (openDml_ && !WriteStandardIndexes())
        return false;
    if (!PatchSize(moviStart_ + 4, position_))
        return false;
    if (riffStart_ == 0 && !WriteIdx1())
        return false;
    segment_.clear();
    return PatchSize(riffStart_ + 4, position_);
}

bool AviWriter::Close()
{
    if (!file_)
        return false;
    bool ok = begun_ && !failed_ && FinishSegment() && Patch(12, HeaderList());
    ok = std::fclose(file_.release()) == 0 && ok;
    return ok;
}

} // namespace mw
