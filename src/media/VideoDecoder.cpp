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
    if (!s.Codec || !s.Last || chunk < 0 || static_cast<std::size_t>(chunk) >= chunks.size())
        return false;
    const auto at = [&](long n) -> const AviChunk& { return chunks[static_cast<std::size_t>(n)]; };
    // A dropped frame shows the picture before it.
    long target = chunk;
    while (target > 0 && at(target).Size == 0)
        --target;
    if (at(target).Size == 0)
        return false;
    const auto keyAtOrBefore = [&](long n) {
        while (n > 0 && !(at(n).KeyFrame && at(n).Size > 0))
            --n;
        return n;
    };
    key = keyAtOrBefore(std::clamp(key, 0L, target));
    if (s.Next >= 0 && s.Last->buf[0] && s.Last->pts == target)
        return s.ToBitmap(*s.Last, out);
    if (s.Next >= 0 && s.Last->buf[0] && s.Last->pts < target && key <= s.Next) {
        const Sent result = SendFrom(stream, s.Next, target, out, decoded);
        if (result != Sent::Missed)
            return result == Sent::Found;
    }
    // B-frames coded just after a key frame may be shown before it and lean on the picture before
    // the key frame too: the decoder leaves them out, and the key frame before gives them.
    for (int tries = 0;; ++tries) {
        avcodec_flush_buffers(s.Codec);
        const Sent result = SendFrom(stream, key, target, out, decoded);
        if (result != Sent::Missed || key == 0 || tries > 0 || s.Codec->has_b_frames == 0)
            return result == Sent::Found;
        key = keyAtOrBefore(key - 1);
    }
}

VideoDecoder::Sent VideoDecoder::SendFrom(const AviStream& stream, long first, long target, cDIB& out, int& decoded)
{
    State& s = *state_;
    const std::vector<AviChunk>& chunks = stream.Chunks;
    const long count = static_cast<long>(chunks.size());
    std::unique_ptr<AVPacket, PacketFree> packet(av_packet_alloc());
    if (!packet)
        return Sent::Failed;
    AVFrame& frame = *s.Last;
    s.Next = -1;

    // Each packet carries its chunk number. A decoder that holds pictures back for B-frames gives
    // the picture shown at n when chunk n + delay goes in, so the number of the chunk in the
    // decoder at the time, less the delay, is the frame shown; draining goes on from there.
    long drained = -1;
    auto takeFrames = [&]() -> Sent {
        while (avcodec_receive_frame(s.Codec, &frame) >= 0) {
            ++decoded;
            frame.pts = drained >= 0 ? drained++ : frame.pkt_dts - s.Codec->has_b_frames;
            if (frame.pts == target)
                return s.ToBitmap(frame, out) ? Sent::Found : Sent::Failed;
            if (frame.pts > target)
                return Sent::Missed;
        }
        return Sent::More;
    };

    const std::uint64_t fileSize = s.File.Size();
    long n = first;
    for (; n < count && n <= target + s.Codec->has_b_frames; ++n) {
        const AviChunk& c = chunks[static_cast<std::size_t>(n)];
        // An entry pointing past the end of the file is no frame. That is checked before the
        // packet is made, so a hostile size cannot make us allocate more than the file holds.
        if (c.Size == 0 || c.Size > kMaxPacket || c.Offset > fileSize || fileSize - c.Offset < c.Size)
            continue;
        if (av_new_packet(packet.get(), static_cast<int>(c.Size)) < 0)
            return Sent::Failed;
        if (!s.File.Read(c.Offset, packet->data, c.Size)) {
            av_packet_unref(packet.get());
            continue;
        }
        packet->pts = n;
        packet->dts = n;
        if (c.KeyFrame)
            packet->flags |= AV_PKT_FLAG_KEY;
        int sent = 0;
        Sent result = Sent::More;
        while ((sent = avcodec_send_packet(s.Codec, packet.get())) == AVERROR(EAGAIN) && result == Sent::More)
            result = takeFrames();
        av_packet_unref(packet.get());
        // A damaged frame is left out; the decoder conceals it in the next.
        if (result == Sent::More && sent >= 0)
            result = takeFrames();
        if (result == Sent::Found)
            s.Next = n + 1;
        if (result != Sent::More)
            return result;
    }
    if (n < count)
        return Sent::Missed;
    // Draining ends what the decoder can go on with.
    drained = count - s.Codec->has_b_frames;
    avcodec_send_packet(s.Codec, nullptr);
    const Sent result = takeFrames();
    return result == Sent::More ? Sent::Failed : result;
}

} // namespace mw
