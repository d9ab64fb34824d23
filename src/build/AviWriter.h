#pragma once

#include "media/AviInfo.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace mw {

// Writes an AVI file chunk by chunk, in the order the chunks come: an AVI 1.0 file with an idx1
// index, which turns into an OpenDML file (RIFF AVIX extensions, indx and ix## indexes) once
// its data passes the RIFF limit. Room for the OpenDML headers is kept as JUNK from the start,
// so a file that stays small is a plain AVI 1.0 file.
class AviWriter {
public:
    static constexpr std::uint64_t kOpenDmlThreshold = std::uint64_t(1) << 30;
    // Segments one stream's super index can name: 256 GB at the default limit.
    static constexpr std::size_t kSuperIndexEntries = 256;

    explicit AviWriter(std::uint64_t riffLimit = kOpenDmlThreshold);
    ~AviWriter();
    AviWriter(const AviWriter&) = delete;
    AviWriter& operator=(const AviWriter&) = delete;

    // Creates (or truncates) the file.
    bool Create(const std::string& path);
    // Declares a stream before Begin: its header (dwLength and the buffer size are filled in
    // as chunks come) and its strf data. The strh name goes into a strn chunk when not empty.
    // Returns the stream's number.
    std::size_t AddStream(const AviStreamInfo& info, std::vector<std::uint8_t> format);
    // Writes the headers; no stream may be added after it.
    bool Begin();
    // Appends one chunk of a stream; an empty chunk is a dropped frame.
    bool WriteChunk(std::size_t stream, const std::uint8_t* data, std::size_t size, bool keyFrame);
    // Writes the indexes and the final headers and closes the file. A file that was never
    // begun is only closed (and false is returned).
    bool Close();

    bool IsOpen() const { return file_ != nullptr; }

private:
    struct IndexEntry {
        std::size_t Stream = 0;
        std::uint64_t Offset = 0; // of the chunk header in the file
        std::uint32_t Size = 0;
        bool Key = false;
    };
    struct SuperIndexEntry {
        std::uint64_t Offset = 0; // of the ix## chunk header
        std::uint32_t Size = 0;   // of the whole ix## chunk
        std::uint32_t Duration = 0;
    };
    struct Stream {
        AviStreamInfo Info;
        std::vector<std::uint8_t> Format;
        std::uint32_t ChunkId = 0; // "00dc", "01wb"
        std::uint64_t Chunks = 0;
        std::uint64_t Bytes = 0;
        std::uint32_t LargestChunk = 0;
        std::uint64_t ChunksInFirstRiff = 0;
        std::vector<SuperIndexEntry> SuperIndex;
    };
    struct FileCloser {
        void operator()(std::FILE* f) const { std::fclose(f); }
    };

    std::vector<std::uint8_t> HeaderList() const;
    std::uint32_t Length(const Stream& stream, std::uint64_t chunks, std::uint64_t bytes) const;
    bool Write(const std::vector<std::uint8_t>& bytes);
    bool Write(const std::uint8_t* data, std::size_t size);
    bool PatchSize(std::uint64_t sizeField, std::uint64_t end);
    bool Patch(std::uint64_t at, const std::vector<std::uint8_t>& bytes);
    bool StartSegment();
    bool FinishSegment();
    bool WriteStandardIndexes();
    bool WriteIdx1();

    std::uint64_t riffLimit_;
    std::unique_ptr<std::FILE, FileCloser> file_;
    std::vector<Stream> streams_;
    bool begun_ = false;
    bool failed_ = false;
    bool openDml_ = false;
    std::uint64_t position_ = 0;
    std::uint64_t riffStart_ = 0; // of the current RIFF chunk header
    std::uint64_t moviStart_ = 0; // of the current movi LIST header
    std::vector<IndexEntry> segment_; // the chunks of the current RIFF, in file order
};

} // namespace mw
