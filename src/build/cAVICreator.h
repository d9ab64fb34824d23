#pragma once

#include "build/AviWriter.h"
#include "build/Mpeg4Encoder.h"
#include "core/Prompt.h"
#include "core/settings/Settings.h"
#include "media/AviInfo.h"
#include "render/cDIB.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace mw {

class AudioMux;

// Why an operation of cAVICreator failed. Number() is the code plus vbObjectError + 512
// (0x80040000 + 512), the range of errors that classes raise, so that callers that log the
// number see the values they always saw. The reason that the encoder gave, when there is one,
// follows the description.
class AviCreatorError {
public:
    static constexpr std::int32_t kNumberBase = static_cast<std::int32_t>(0x80040000u + 512u);

    explicit AviCreatorError(int code, std::string reason = {}) : code_(code), reason_(std::move(reason)) {}

    int Code() const { return code_; }
    std::int32_t Number() const { return kNumberBase + code_; }
    std::string Source() const { return "cAVICreator.cAVIFrameExtract"; }
    std::string Description() const;

private:
    int code_;
    std::string reason_;
};

// Writes bitmaps as the video stream of an AVI file: uncompressed DIBs of 8 or 24 bits with
// handler 0, or MPEG-4 Part 2 with handler divx, DX50 or XVID (any case), stored under that
// very FourCC. It also keeps a collection of frames to write in one go.
//
// Frames go in order. StreamCreate writes the first frame at position 0; StreamAdd moves the
// position on by FrameDuration and writes there. A frame written at the position of the one
// before replaces it (FrameDuration 0), and a gap is filled with empty chunks, the dropped
// frames that repeat the one before.
class cAVICreator {
public:
    // riffLimit: the size at which the file turns into an OpenDML file.
    cAVICreator(const Settings& settings, Prompt& prompt,
                std::uint64_t riffLimit = AviWriter::kOpenDmlThreshold);
    ~cAVICreator();
    cAVICreator(const cAVICreator&) = delete;
    cAVICreator& operator=(const cAVICreator&) = delete;

    std::int32_t Width = 0;
    std::int32_t Height = 0;
    std::string name; // the stream's name, written into strn
    std::uint32_t VideoHandlerFourCC = 0;
    std::uint32_t dwScale = 1000;
    std::uint32_t dwRate = 10000;
    std::uint32_t VideoTypeFourCC = FourCC("vids");
    std::int32_t FrameDuration = 0;
    std::int32_t bitsPerPixel = 0;
    std::string Filename;

    // The collection; indexes count from 0. Out of range: nullptr and false.
    std::size_t FrameCount() const { return frames_.size(); }
    const cDIB* Frame(std::size_t index) const;
    bool RemoveFrame(std::size_t index);
    void AddFrame(const cDIB& bmp);
    bool InsertFrameBefore(std::size_t index, const cDIB& bmp);
    bool InsertFrameAfter(std::size_t index, const cDIB& bmp);
    // StreamCreate on the first frame of the collection and StreamAdd on the others; an empty
    // collection fails with code 4.
    bool CreateFromCollection();

    // An audio stream to write beside the video, interleaved with it; set before
    // StreamCreate. The audio ends with the video: what is longer is cut off by StreamClose.
    void SetAudio(AudioMux* audio) { audio_ = audio; }

    // Opens Filename, prepares the stream and writes the first frame at position 0. A
    // failure removes the file.
    bool StreamCreate(const cDIB& firstBitmap);
    bool StreamAdd(const cDIB& bitmap);
    // Writes what is held back, the rest of the audio and the indexes, and closes the file.
    // True when nothing was open.
    bool StreamClose();
    void AviClose();

    // The error of the last failed operation.
    const std::optional<AviCreatorError>& LastError() const { return lastError_; }

private:
    bool Fail(int code);
    bool FailCreate(int code);
    double VideoSeconds() const { return double(written_) * dwScale / dwRate; }
    bool Encoded() const { return VideoHandlerFourCC != 0; }
    bool ToStreamFormat(const cDIB& bitmap, cDIB& frame) const;
    bool AddFrameAt(std::int64_t position, const cDIB& bitmap);
    bool WriteHeldFrame();
    bool WriteAudio(double seconds);
    std::vector<std::uint8_t> BitmapFormat() const;

    const Settings& settings_;
    Prompt& prompt_;
    std::uint64_t riffLimit_;
    std::vector<cDIB> frames_;
    AudioMux* audio_ = nullptr;
    std::optional<AviCreatorError> lastError_;
    std::string reason_; // the encoder's, for the next failure

    std::unique_ptr<AviWriter> writer_;
    Mpeg4Encoder encoder_;
    std::size_t audioStream_ = 0;
    std::vector<Colour> palette_; // of an 8-bit stream, from the first frame
    cDIB held_;                   // the last frame, kept until a frame at another position comes
    std::int64_t heldPosition_ = -1;
    std::int64_t position_ = 0;
    std::int64_t written_ = 0; // video chunks in the file
};

// True for the handlers that our MPEG-4 encoder serves: divx, DX50 and XVID in any case.
bool IsMpeg4Handler(std::uint32_t fourCC);

} // namespace mw
