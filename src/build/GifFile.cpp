#include "build/GifFile.h"

#include "build/AvError.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/imgutils.h>
}

#include <cstdio>
#include <cstring>
#include <memory>

namespace mw {

namespace {

struct GifWriter {
    AVFormatContext* Format = nullptr;
    AVCodecContext* Codec = nullptr;
    AVFrame* Frame = nullptr;
    AVPacket* Packet = nullptr;
    bool Opened = false;

    ~GifWriter()
    {
        av_packet_free(&Packet);
        av_frame_free(&Frame);
        avcodec_free_context(&Codec);
        if (Format != nullptr && Opened)
            avio_closep(&Format->pb);
        avformat_free_context(Format);
    }

    // Sends the frame (nullptr: the end) and writes what the encoder gives back.
    int Send(const AVFrame* frame, AVStream* stream)
    {
        int rc = avcodec_send_frame(Codec, frame);
        while (rc >= 0) {
            rc = avcodec_receive_packet(Codec, Packet);
            if (rc == AVERROR(EAGAIN) || rc == AVERROR_EOF)
                return 0;
            if (rc < 0)
                return rc;
            av_packet_rescale_ts(Packet, Codec->time_base, stream->time_base);
            Packet->stream_index = stream->index;
            rc = av_interleaved_write_frame(Format, Packet);
        }
        return rc;
    }
};

int WriteGif(const QImage& image, const std::string& file)
{
    const QImage indexed = image.convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither | Qt::AvoidDither);
    const AVCodec* encoder = avcodec_find_encoder(AV_CODEC_ID_GIF);
    GifWriter w;
    int rc = encoder == nullptr ? AVERROR_ENCODER_NOT_FOUND
                                : avformat_alloc_output_context2(&w.Format, nullptr, "gif", file.c_str());
    AVStream* stream = rc >= 0 ? avformat_new_stream(w.Format, nullptr) : nullptr;
    if (rc >= 0 && stream == nullptr)
        rc = AVERROR(ENOMEM);
    if (rc >= 0) {
        w.Codec = avcodec_alloc_context3(encoder);
        w.Frame = av_frame_alloc();
        w.Packet = av_packet_alloc();
        if (w.Codec == nullptr || w.Frame == nullptr || w.Packet == nullptr)
            rc = AVERROR(ENOMEM);
    }
    if (rc >= 0) {
        w.Codec->width = indexed.width();
        w.Codec->height = indexed.height();
        w.Codec->pix_fmt = AV_PIX_FMT_PAL8;
        w.Codec->time_base = {1, 25};
        rc = avcodec_open2(w.Codec, encoder, nullptr);
    }
    if (rc >= 0)
        rc = avcodec_parameters_from_context(stream->codecpar, w.Codec);
    if (rc >= 0) {
        stream->time_base = w.Codec->time_base;
        rc = avio_open(&w.Format->pb, file.c_str(), AVIO_FLAG_WRITE);
        w.Opened = rc >= 0;
    }
    if (rc >= 0)
        rc = avformat_write_header(w.Format, nullptr);
    if (rc >= 0) {
        w.Frame->format = AV_PIX_FMT_PAL8;
        w.Frame->width = indexed.width();
        w.Frame->height = indexed.height();
        w.Frame->pts = 0;
        rc = av_frame_get_buffer(w.Frame, 0);
    }
    if (rc >= 0) {
        for (int y = 0; y < indexed.height(); ++y)
            std::memcpy(w.Frame->data[0] + std::ptrdiff_t(y) * w.Frame->linesize[0], indexed.constScanLine(y),
                        std::size_t(indexed.width()));
        auto* palette = reinterpret_cast<std::uint32_t*>(w.Frame->data[1]);
        const QList<QRgb> table = indexed.colorTable();
        for (int i = 0; i < 256; ++i)
            palette[i] = i < table.size() ? (table[i] | 0xFF000000u) : 0xFF000000u;
        rc = w.Send(w.Frame, stream);
    }
    if (rc >= 0)
        rc = w.Send(nullptr, stream);
    if (rc >= 0)
        rc = av_write_trailer(w.Format);
    return rc;
}

} // namespace

bool WriteGifFile(const QImage& image, const std::string& file, std::string& error)
{
    const int rc = WriteGif(image, file);
    if (rc >= 0)
        return true;
    error = AvError(rc);
    std::remove(file.c_str());
    return false;
}

} // namespace mw
