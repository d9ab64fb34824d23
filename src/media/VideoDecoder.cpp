#include "media/VideoDecoder.h"

#include "render/cDIB.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswscale/swscale.h>
}

#include <algorithm>

namespace mw {

namespace {

struct PacketFree {
    void operator()(AVPacket* p) const { av_packet_free(&p); }
};
struct FrameFree {
    void operator()(AVFrame* f) const { av_frame_free(&f); }
};
struct ScalerFree {
    void operator()(SwsContext* s) const { sws_freeContext(s); }
};

constexpr long kUnknown = -1;

long ChunkWithData(const std::vector<AviChunk>& chunks, std::uint64_t data)
{
    const auto it = std::lower_bound(chunks.begin(), chunks.end(), data,
                                     [](const AviChunk& c, std::uint64_t offset) { return c.Offset < offset; });
    if (it != chunks.end() && it->Offset == data && it->Size > 0)
        return static_cast<long>(it - chunks.begin());
    // An index out of file order: look at every entry.
    const auto any = std::find_if(chunks.begin(), chunks.end(),
                                  [&](const AviChunk& c) { return c.Offset == data && c.Size > 0; });
    return any == chunks.end() ? kUnknown : static_cast<long>(any - chunks.begin());
}

// The chunk of our index that a packet of FFmpeg's came from. FFmpeg gives the position of
// the data when it reads through the file, that of the chunk's header when it follows its index.
long ChunkAt(const std::vector<AviChunk>& chunks, std::int64_t pos)
{
    if (pos < 0)
        return kUnknown;
    const long atData = ChunkWithData(chunks, static_cast<std::uint64_t>(pos));
    return atData != kUnknown ? atData : ChunkWithData(chunks, static_cast<std::uint64_t>(pos) + 8);
}

// FFmpeg's time stamp of a chunk, from its own index of the stream.
std::int64_t TimestampOf(AVStream* stream, std::uint64_t dataOffset, std::int64_t fallback)
{
    const int count = avformat_index_get_entries_count(stream);
    for (int i = 0; i < count; ++i) {
        const AVIndexEntry* entry = avformat_index_get_entry(stream, i);
        if (entry && static_cast<std::uint64_t>(entry->pos) + 8 == dataOffset)
            return entry->timestamp;
    }
    return fallback;
}

bool ToBitmap(const AVFrame& frame, cDIB& out)
{
    if (!out.Create(frame.width, frame.height, 24))
        return false;
    std::unique_ptr<SwsContext, ScalerFree> scaler(
        sws_getContext(frame.width, frame.height, static_cast<AVPixelFormat>(frame.format), frame.width,
                       frame.height, AV_PIX_FMT_BGR24, SWS_POINT, nullptr, nullptr, nullptr));
    if (!scaler)
        return false;
    // The bitmap is bottom-up: start at its last row and step backwards.
    std::uint8_t* rows[4] = {out.lpBits() + static_cast<std::size_t>(frame.height - 1) * out.BytesPerScanLine()};
    int strides[4] = {-out.BytesPerScanLine()};
    return sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, rows, strides) == frame.height;
}

} // namespace

struct VideoDecoder::State {
    AVFormatContext* Format = nullptr;
    AVCodecContext* Codec = nullptr;
    AVStream* Stream = nullptr;

    ~State()
    {
        avcodec_free_context(&Codec);
        avformat_close_input(&Format);
    }
};

VideoDecoder::VideoDecoder() : state_(std::make_unique<State>()) {}

VideoDecoder::~VideoDecoder() = default;

bool VideoDecoder::Open(const std::string& path, std::size_t index)
{
    state_ = std::make_unique<State>();
    State& s = *state_;
    // Our own reader has taken the file for an AVI already; FFmpeg need not probe it again.
    const AVInputFormat* avi = av_find_input_format("avi");
    if (avformat_open_input(&s.Format, path.c_str(), avi, nullptr) < 0 || index >= s.Format->nb_streams)
        return false;
    for (unsigned i = 0; i < s.Format->nb_streams; ++i)
        s.Format->streams[i]->discard = i == index ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    s.Stream = s.Format->streams[index];
    if (s.Stream->codecpar->codec_type != AVMEDIA_TYPE_VIDEO)
        return false;
    const AVCodec* codec = avcodec_find_decoder(s.Stream->codecpar->codec_id);
    if (!codec)
        return false;
    s.Codec = avcodec_alloc_context3(codec);
    return s.Codec && avcodec_parameters_to_context(s.Codec, s.Stream->codecpar) >= 0 &&
           avcodec_open2(s.Codec, codec, nullptr) >= 0;
}

bool VideoDecoder::Decode(const AviStream& stream, long chunk, long key, cDIB& out, int& decoded)
{
    State& s = *state_;
    const std::vector<AviChunk>& chunks = stream.Chunks;
    if (!s.Codec || chunk < 0 || static_cast<std::size_t>(chunk) >= chunks.size())
        return false;
    // A dropped frame shows the picture before it; FFmpeg never hands out its empty chunk.
    long target = chunk;
    while (target > 0 && chunks[static_cast<std::size_t>(target)].Size == 0)
        --target;
    if (chunks[static_cast<std::size_t>(target)].Size == 0)
        return false;
    const auto isKey = [&](long at) {
        const AviChunk& c = chunks[static_cast<std::size_t>(at)];
        return c.KeyFrame && c.Size > 0;
    };
    key = std::clamp(key, 0L, target);
    while (key > 0 && !isKey(key))
        --key;

    const std::int64_t stamp =
        TimestampOf(s.Stream, chunks[static_cast<std::size_t>(key)].Offset, stream.Info.dwStart + key);
    if (av_seek_frame(s.Format, s.Stream->index, stamp, AVSEEK_FLAG_BACKWARD) >= 0)
        avcodec_flush_buffers(s.Codec);

    std::unique_ptr<AVPacket, PacketFree> packet(av_packet_alloc());
    std::unique_ptr<AVFrame, FrameFree> frame(av_frame_alloc());
    if (!packet || !frame)
        return false;

    // The decoder gives back the chunk number we put on each packet as the frame's time stamp,
    // in display order.
    auto takeFrames = [&]() -> int {
        while (avcodec_receive_frame(s.Codec, frame.get()) >= 0) {
            ++decoded;
            if (frame->pts == target)
                return ToBitmap(*frame, out) ? 1 : -1;
            if (frame->pts > target)
                return -1;
        }
        return 0;
    };

    long last = kUnknown;
    while (av_read_frame(s.Format, packet.get()) >= 0) {
        long at = ChunkAt(chunks, packet->pos);
        if (at == kUnknown) {
            at = last + 1;
            while (static_cast<std::size_t>(at) < chunks.size() && chunks[static_cast<std::size_t>(at)].Size == 0)
                ++at;
        }
        // Landing past the key frame would decode from the wrong picture.
        if ((last == kUnknown && at > key) || at > target) {
            av_packet_unref(packet.get());
            return false;
        }
        last = at;
        packet->pts = at;
        packet->dts = AV_NOPTS_VALUE;
        int sent = 0;
        int result = 0;
        while ((sent = avcodec_send_packet(s.Codec, packet.get())) == AVERROR(EAGAIN) && result == 0)
            result = takeFrames();
        av_packet_unref(packet.get());
        // A damaged frame is left out; the decoder conceals it in the next.
        if (result == 0 && sent >= 0)
            result = takeFrames();
        if (result != 0)
            return result > 0;
        if (at == target)
            break;
    }
    avcodec_send_packet(s.Codec, nullptr);
    return takeFrames() > 0;
}

} // namespace mw
