#include "build/cAVICreator.h"

#include "build/AudioMux.h"
#include "build/DebugCheckpoint.h"
#include "core/Text.h"

#include <filesystem>
#include <utility>

namespace mw {

namespace {

std::string CodeText(int code)
{
    switch (code) {
    case 1:
        return "File not found";
    case 2:
        return "Failed to open AVI file";
    case 3:
        return "Unable to open AVI frames";
    case 4:
        return "AVI contains no frames";
    case 5:
        return "Could not read the format of the AVI";
    case 6:
        return "Unsupported AVI format";
    case 7:
        return "Failed to create a new AVI stream";
    case 8:
        return "Failed to create compressed AVI stream";
    case 9:
        return "Failed to set compressed AVI stream format";
    case 10:
        return "Unsupported bits/pixel setting: only 8 and 24 bpp AVIs are currently supported.";
    case 11:
        return "Must have a valid open stream created using StreamCreate first.";
    case 12:
        return "Failed to add image to the AVI Stream.";
    default:
        return "Unexpected error " + std::to_string(code);
    }
}

} // namespace

std::string AviCreatorError::Description() const
{
    return reason_.empty() ? CodeText(code_) : CodeText(code_) + ": " + reason_;
}

bool IsMpeg4Handler(std::uint32_t fourCC)
{
    const std::string handler = Lower(FourCCToString(fourCC));
    return handler == "divx" || handler == "dx50" || handler == "xvid";
}

cAVICreator::cAVICreator(const Settings& settings, Prompt& prompt, std::uint64_t riffLimit)
    : settings_(settings), prompt_(prompt), riffLimit_(riffLimit)
{
}

cAVICreator::~cAVICreator() { AviClose(); }

const cDIB* cAVICreator::Frame(std::size_t index) const
{
    return index < frames_.size() ? &frames_[index] : nullptr;
}

bool cAVICreator::RemoveFrame(std::size_t index)
{
    if (index >= frames_.size())
        return false;
    frames_.erase(frames_.begin() + static_cast<std::ptrdiff_t>(index));
    return true;
}

void cAVICreator::AddFrame(const cDIB& bmp) { frames_.push_back(bmp); }

bool cAVICreator::InsertFrameBefore(std::size_t index, const cDIB& bmp)
{
    if (index >= frames_.size())
        return false;
    frames_.insert(frames_.begin() + static_cast<std::ptrdiff_t>(index), bmp);
    return true;
}

bool cAVICreator::InsertFrameAfter(std::size_t index, const cDIB& bmp)
{
    if (index >= frames_.size())
        return false;
    frames_.insert(frames_.begin() + static_cast<std::ptrdiff_t>(index) + 1, bmp);
    return true;
}

bool cAVICreator::CreateFromCollection()
{
    if (frames_.empty())
        return Fail(4);
    if (!StreamCreate(frames_.front()))
        return false;
    for (std::size_t i = 1; i < frames_.size(); ++i) {
        if (!StreamAdd(frames_[i]))
            return false;
    }
    return true;
}

bool cAVICreator::Fail(int code)
{
    lastError_ = AviCreatorError(code, std::exchange(reason_, {}));
    return false;
}

bool cAVICreator::FailCreate(int code)
{
    writer_.reset();
    encoder_.Close();
    std::error_code ignored;
    std::filesystem::remove(Filename, ignored);
    return Fail(code);
}

std::vector<std::uint8_t> cAVICreator::BitmapFormat() const
{
    const int depth = Encoded() ? 24 : bitsPerPixel;
    const std::uint32_t stride = (static_cast<std::uint32_t>(Width) * depth + 31) / 32 * 4;
    const std::uint32_t words[] = {40,
                                   static_cast<std::uint32_t>(Width),
                                   static_cast<std::uint32_t>(Height),
                                   1u | static_cast<std::uint32_t>(depth) << 16, // planes, bit count
                                   Encoded() ? VideoHandlerFourCC : 0u,
                                   stride * static_cast<std::uint32_t>(Height),
                                   0,
                                   0,
                                   static_cast<std::uint32_t>(palette_.size()),
                                   0};
    std::vector<std::uint8_t> format;
    for (std::uint32_t w : words) {
        for (int shift = 0; shift < 32; shift += 8)
            format.push_back(static_cast<std::uint8_t>(w >> shift));
    }
    for (Colour c : palette_) {
        format.push_back(static_cast<std::uint8_t>(c >> 16)); // blue, green, red, reserved
        format.push_back(static_cast<std::uint8_t>(c >> 8));
        format.push_back(static_cast<std::uint8_t>(c));
        format.push_back(0);
    }
    return format;
}

bool cAVICreator::StreamCreate(const cDIB& firstBitmap)
{
    StreamClose();
    lastError_.reset();
    reason_.clear();
    Width = firstBitmap.Width();
    Height = firstBitmap.Height();

    DebugCheckpoint(settings_, prompt_, "Before AVI open");
    writer_ = std::make_unique<AviWriter>(riffLimit_);
    if (!writer_->Create(Filename)) {
        writer_.reset();
        return Fail(2);
    }

    DebugCheckpoint(settings_, prompt_, "Before AVI stream");
    if (Width <= 0 || Height <= 0 || dwRate == 0 || dwScale == 0)
        return FailCreate(7);
    AviStreamInfo info;
    info.fccType = VideoTypeFourCC;
    info.fccHandler = VideoHandlerFourCC;
    info.dwScale = dwScale;
    info.dwRate = dwRate;
    info.dwSuggestedBufferSize = static_cast<std::uint32_t>(Width) * static_cast<std::uint32_t>(Height) * 4;
    info.dwQuality = 0xFFFFFFFFu;
    info.rcFrame = AviRect{0, 0, Width, Height};
    info.szName = name;

    DebugCheckpoint(settings_, prompt_, "Before AVI compressed stream");
    if (Encoded() && !IsMpeg4Handler(VideoHandlerFourCC)) {
        reason_ = "no encoder for the handler " + FourCCToString(VideoHandlerFourCC);
        return FailCreate(8);
    }
    if (Encoded() && !encoder_.Open(Width, Height, dwRate, dwScale, VideoHandlerFourCC, reason_))
        return FailCreate(8);

    if (bitsPerPixel != 8 && bitsPerPixel != 24)
        return FailCreate(10);
    palette_.clear();
    if (bitsPerPixel == 8 && !Encoded()) {
        cDIB standard;
        standard.Create(1, 1, 8);
        palette_ = firstBitmap.BPP() == 8 ? firstBitmap.GetColorTable() : standard.GetColorTable();
    }
    writer_->AddStream(info, BitmapFormat());
    if (audio_)
        audioStream_ = writer_->AddStream(audio_->StreamInfo(), audio_->Format());
    if (!writer_->Begin())
        return FailCreate(9);

    DebugCheckpoint(settings_, prompt_, "Before AVI add frame");
    position_ = 0;
    written_ = 0;
    heldPosition_ = -1;
    if (!AddFrameAt(0, firstBitmap))
        return FailCreate(12);
    DebugCheckpoint(settings_, prompt_, "After AVI add frame");
    return true;
}

bool cAVICreator::StreamAdd(const cDIB& bitmap)
{
    if (!writer_)
        return Fail(11);
    position_ += FrameDuration;
    return AddFrameAt(position_, bitmap) || Fail(12);
}

// The bitmap as the stream holds its frames: the stream's size (scaled when it differs) and
// depth, 8-bit frames on the stream's palette.
bool cAVICreator::ToStreamFormat(const cDIB& bitmap, cDIB& frame) const
{
    const int depth = Encoded() ? 24 : bitsPerPixel;
    if (bitmap.Width() == Width && bitmap.Height() == Height && bitmap.BPP() == depth) {
        frame = bitmap;
        return true;
    }
    if (!frame.Create(Width, Height, depth))
        return false;
    if (depth == 8)
        frame.SetColorTable(palette_);
    bitmap.Stretch(frame, 0, 0, Width, Height, 0, 0, bitmap.Width(), bitmap.Height());
    return true;
}

bool cAVICreator::AddFrameAt(std::int64_t position, const cDIB& bitmap)
{
    if (bitmap.Empty())
        return false;
    if (heldPosition_ >= 0 && position != heldPosition_ && !WriteHeldFrame())
        return false;
    if (position < written_)
        return false; // frames only go forwards
    while (written_ < position) {
        if (!writer_->WriteChunk(0, nullptr, 0, false))
            return false;
        ++written_;
    }
    if (!ToStreamFormat(bitmap, held_))
        return false;
    heldPosition_ = position;
    return WriteAudio(VideoSeconds());
}

// Uncompressed frames are each a key frame; the encoder says which of its frames are.
bool cAVICreator::WriteHeldFrame()
{
    heldPosition_ = -1;
    ++written_;
    if (!Encoded())
        return writer_->WriteChunk(0, held_.lpBits(), held_.Size(), true);
    EncodedFrame packet;
    return encoder_.Encode(held_.lpBits(), held_.BytesPerScanLine(), packet, reason_) &&
           writer_->WriteChunk(0, packet.Data.data(), packet.Data.size(), packet.KeyFrame);
}

bool cAVICreator::WriteAudio(double seconds)
{
    return !audio_ || audio_->WriteUntil(*writer_, audioStream_, seconds);
}

bool cAVICreator::StreamClose()
{
    if (!writer_)
        return true;
    bool ok = heldPosition_ < 0 || WriteHeldFrame();
    ok = ok && WriteAudio(VideoSeconds());
    ok = writer_->Close() && ok;
    writer_.reset();
    encoder_.Close();
    return ok || Fail(12);
}

void cAVICreator::AviClose() { StreamClose(); }

} // namespace mw
