#include "build/Mpeg4Encoder.h"

#include "build/AvError.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/frame.h>
#include <libavutil/rational.h>
#include <libswscale/swscale.h>
}

#include <algorithm>
#include <cstring>
#include <thread>

namespace mw {

struct Mpeg4Encoder::State {
    AVCodecContext* Context = nullptr;
    AVFrame* Frame = nullptr;
    AVPacket* Packet = nullptr;
    SwsContext* Scaler = nullptr;
    std::vector<std::uint8_t> LastBits; // the frame now in Frame, to skip converting it again
    std::int64_t NextPts = 0;

    ~State()
    {
        sws_freeContext(Scaler);
        av_packet_free(&Packet);
        av_frame_free(&Frame);
        avcodec_free_context(&Context);
    }
};

Mpeg4Encoder::Mpeg4Encoder() = default;
Mpeg4Encoder::~Mpeg4Encoder() = default;

void Mpeg4Encoder::Close() { state_.reset(); }

bool Mpeg4Encoder::Open(int width, int height, std::uint32_t rate, std::uint32_t scale, std::uint32_t fourCC,
                        std::string& error)
{
    Close();
    const AVCodec* codec = avcodec_find_encoder_by_name("mpeg4");
    if (!codec) {
        error = "no MPEG-4 encoder";
        return false;
    }
    if (width <= 0 || height <= 0 || rate == 0 || scale == 0) {
        error = "invalid frame size or rate";
        return false;
    }
    auto state = std::make_unique<State>();
    AVCodecContext* c = state->Context = avcodec_alloc_context3(codec);
    state->Frame = av_frame_alloc();
    state->Packet = av_packet_alloc();
    if (!c || !state->Frame || !state->Packet) {
        error = "out of memory";
        return false;
    }
    // MPEG-4 keeps the time base denominator in 16 bits.
    int num = 0;
    int den = 0;
    av_reduce(&num, &den, scale, rate, 65535);
    c->time_base = AVRational{num, den};
    c->framerate = AVRational{den, num};
    c->width = width;
    c->height = height;
    c->pix_fmt = AV_PIX_FMT_YUV420P;
    c->codec_tag = fourCC;
    c->gop_size = kKeyFrameInterval;
    c->max_b_frames = 0;
    c->flags |= AV_CODEC_FLAG_QSCALE;
    c->global_quality = kQuantiser * FF_QP2LAMBDA;
    // One slice per thread, and no more slices than rows of macroblocks.
    c->thread_count = static_cast<int>(std::clamp(std::thread::hardware_concurrency(), 1u,
                                                  static_cast<unsigned>((height + 15) / 16)));
    if (const int rc = avcodec_open2(c, codec, nullptr); rc < 0) {
        error = "the MPEG-4 encoder refuses frames of " + std::to_string(width) + "x" + std::to_string(height) +
                " (" + AvError(rc) + ")";
        return false;
    }

    AVFrame* f = state->Frame;
    f->format = AV_PIX_FMT_YUV420P;
    f->width = width;
    f->height = height;
    if (const int rc = av_frame_get_buffer(f, 0); rc < 0) {
        error = AvError(rc);
        return false;
    }
    state->Scaler = sws_getContext(width, height, AV_PIX_FMT_BGR24, width, height, AV_PIX_FMT_YUV420P,
                                   SWS_BILINEAR, nullptr, nullptr, nullptr);
    if (!state->Scaler) {
        error = "no colour conversion to YUV 4:2:0";
        return false;
    }
    state_ = std::move(state);
    return true;
}

bool Mpeg4Encoder::Encode(const std::uint8_t* bits, int stride, EncodedFrame& out, std::string& error)
{
    if (!state_) {
        error = "the encoder is not open";
        return false;
    }
    State& s = *state_;
    AVFrame* f = s.Frame;
    const std::size_t size = static_cast<std::size_t>(stride) * static_cast<std::size_t>(f->height);
    if (s.LastBits.size() != size || std::memcmp(s.LastBits.data(), bits, size) != 0) {
        if (const int rc = av_frame_make_writable(f); rc < 0) {
            error = AvError(rc);
            return false;
        }
        // The DIB is bottom-up: start at its last row and step backwards.
        const std::uint8_t* top[1] = {bits + static_cast<std::ptrdiff_t>(stride) * (f->height - 1)};
        const int strides[1] = {-stride};
        sws_scale(s.Scaler, top, strides, 0, f->height, f->data, f->linesize);
        s.LastBits.assign(bits, bits + size);
    }
    f->pts = s.NextPts++;
    f->quality = s.Context->global_quality;
    f->pict_type = AV_PICTURE_TYPE_NONE;
    int rc = avcodec_send_frame(s.Context, f);
    if (rc >= 0)
        rc = avcodec_receive_packet(s.Context, s.Packet);
    if (rc < 0) {
        error = AvError(rc);
        return false;
    }
    out.Data.assign(s.Packet->data, s.Packet->data + s.Packet->size);
    out.KeyFrame = (s.Packet->flags & AV_PKT_FLAG_KEY) != 0;
    av_packet_unref(s.Packet);
    return true;
}

} // namespace mw
