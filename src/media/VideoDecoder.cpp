#include "media/VideoDecoder.h"

#include "media/RiffFile.h"
#include "render/cDIB.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswscale/swscale.h>
}

#include <algorithm>

namespace mw {

namespace {

struct FrameFree {
    void operator()(AVFrame* f) const { av_frame_free(&f); }
};

struct FormatClose {
    void operator()(AVFormatContext* f) const { avformat_close_input(&f); }
};
struct PacketFree {
    void operator()(AVPacket* p) const { av_packet_free(&p); }
};
struct ScalerFree {
    void operator()(SwsContext* s) const { sws_freeContext(s); }
};

// What one packet of FFmpeg's can hold, its padding included.
constexpr std::uint32_t kMaxPacket = INT32_MAX - AV_INPUT_BUFFER_PADDING_SIZE;

} // namespace

struct VideoDecoder::State {
    RiffFile File;
    AVCodecContext* Codec = nullptr;
    // Where a following call may go on: the next chunk to send (-1 after a flush or a drain)
    // and the last picture given, kept for the dropped frames after it.
    long Next = -1;
    std::unique_ptr<AVFrame, FrameFree> Last{av_frame_alloc()};
    int Width = 0; // of the pictures given; 0 for the decoded size
    int Height = 0;
    std::unique_ptr<SwsContext, ScalerFree> Scaler;

    ~State() { avcodec_free_context(&Codec); }

    bool ToBitmap(const AVFrame& frame, cDIB& out)
    {
        const int width = Width > 0 ? Width : frame.width;
        const int height = Height > 0 ? Height : frame.height;
        if (!out.Create(width, height, 24))
            return false;
        // A smaller picture averages the pixels it covers; one of the decoded size copies them.
        const int flags = width == frame.width && height == frame.height ? SWS_POINT : SWS_AREA;
        Scaler.reset(sws_getCachedContext(Scaler.release(), frame.width, frame.height,
                                          static_cast<AVPixelFormat>(frame.format), width, height, AV_PIX_FMT_BGR24,
                                          flags, nullptr, nullptr, nullptr));
        if (!Scaler)
            return false;
        // The bitmap is bottom-up: start at its last row and step backwards.
        std::uint8_t* rows[4] = {out.lpBits() + static_cast<std::size_t>(height - 1) * out.BytesPerScanLine()};
        int strides[4] = {-out.BytesPerScanLine()};
        return sws_scale(Scaler.get(), frame.data, frame.linesize, 0, frame.height, rows, strides) == height;
    }
};

VideoDecoder::VideoDecoder() : state_(std::make_unique<State>()) {}

VideoDecoder::~VideoDecoder() = default;

bool VideoDecoder::Open(const std::string& path, std::size_t index)
{
    state_ = std::make_unique<State>();
    State& s = *state_;
    std::string error;
    if (!s.File.Open(path, false, error))
        return false;
    // FFmpeg reads the stream headers for the codec and its parameters, as it reads them when it
    // decodes the file itself; our own reader has taken the file for an AVI already.
    AVFormatContext* opened = nullptr;
    if (avformat_open_input(&opened, path.c_str(), av_find_input_format("avi"), nullptr) < 0)
        return false;
    const std::unique_ptr<AVFormatContext, FormatClose> format(opened);
    if (index >= format->nb_streams)
        return false;
    const AVCodecParameters* parameters = format->streams[index]->codecpar;
    if (parameters->codec_type != AVMEDIA_TYPE_VIDEO)
        return false;
    const AVCodec* codec = avcodec_find_decoder(parameters->codec_id);
    if (!codec)
        return false;
    s.Codec = avcodec_alloc_context3(codec);
    return s.Codec && avcodec_parameters_to_context(s.Codec, parameters) >= 0 &&
           avcodec_open2(s.Codec, codec, nullptr) >= 0;
}

void VideoDecoder::SetPictureSize(int width, int height)
{
    state_->Width = std::max(width, 0);
    state_->Height = std::max(height, 0);
}

bool VideoDecoder::Decode(const AviStream& stream, long chunk, long key, cDIB& out, int& decoded)
{
    State& s = *state_;
    const std::vector<AviChunk>& chunks = stream.Chunks;
    if (!s.Codec || chunk < 0 || static_cast<std::size_t>(chunk) >= chunks.size())
        return false;
    const auto at = [&](long n) -> const AviChunk& { return chunks[static_cast<std::size_t>(n)]; };
    // A dropped frame shows the picture before it.
    long target = chunk;
    while (target > 0 && at(target).Size == 0)
        --target;
    if (at(target).Size == 0)
        return false;
    key = std::clamp(key, 0L, target);
    while (key > 0 && !(at(key).KeyFrame && at(key).Size > 0))
        --key;
    if (!s.Last)
        return false;
    const bool haveLast = s.Next >= 0 && s.Last->buf[0];
    if (haveLast && s.Last->pts == target)
        return s.ToBitmap(*s.Last, out);
    long first = key;
    if (haveLast && s.Last->pts < target && key <= s.Next)
        first = s.Next;
    else
        avcodec_flush_buffers(s.Codec);
    s.Next = -1;

    std::unique_ptr<AVPacket, PacketFree> packet(av_packet_alloc());
    if (!packet)
        return false;
    AVFrame& frame = *s.Last;

    // The decoder gives back the chunk number we put on each packet as the frame's time stamp,
    // in display order.
    auto takeFrames = [&]() -> int {
        while (avcodec_receive_frame(s.Codec, &frame) >= 0) {
            ++decoded;
            if (frame.pts == target)
                return s.ToBitmap(frame, out) ? 1 : -1;
            if (frame.pts > target)
                return -1;
        }
        return 0;
    };

    const std::uint64_t fileSize = s.File.Size();
    for (long n = first; n <= target; ++n) {
        const AviChunk& c = at(n);
        // An entry pointing past the end of the file is no frame. That is checked before the
        // packet is made, so a hostile size cannot make us allocate more than the file holds.
        if (c.Size == 0 || c.Size > kMaxPacket || c.Offset > fileSize || fileSize - c.Offset < c.Size)
            continue;
        if (av_new_packet(packet.get(), static_cast<int>(c.Size)) < 0)
            return false;
        if (!s.File.Read(c.Offset, packet->data, c.Size)) {
            av_packet_unref(packet.get());
            continue;
        }
        packet->pts = n;
        if (c.KeyFrame)
            packet->flags |= AV_PKT_FLAG_KEY;
        int sent = 0;
        int result = 0;
        while ((sent = avcodec_send_packet(s.Codec, packet.get())) == AVERROR(EAGAIN) && result == 0)
            result = takeFrames();
        av_packet_unref(packet.get());
        // A damaged frame is left out; the decoder conceals it in the next.
        if (result == 0 && sent >= 0)
            result = takeFrames();
        if (result > 0)
            s.Next = n + 1;
        if (result != 0)
            return result > 0;
    }
    // Draining ends what the decoder can go on with.
    avcodec_send_packet(s.Codec, nullptr);
    return takeFrames() > 0;
}

} // namespace mw
