#include "build/AudioMux.h"

#include "build/AvError.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/audio_fifo.h>
#include <libavutil/channel_layout.h>
#include <libavutil/samplefmt.h>
#include <libswresample/swresample.h>
}

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace mw {

namespace {

constexpr int kStereoBitRate = 192000;
constexpr int kMonoBitRate = 96000;

// The WAVEFORMATEX tag of the codecs that go in as they are; 0 for the others.
std::uint16_t CopiedFormatTag(AVCodecID id)
{
    switch (id) {
    case AV_CODEC_ID_PCM_U8:
    case AV_CODEC_ID_PCM_S16LE:
    case AV_CODEC_ID_PCM_S24LE:
    case AV_CODEC_ID_PCM_S32LE:
        return 0x0001;
    case AV_CODEC_ID_MP2:
        return 0x0050;
    case AV_CODEC_ID_MP3:
        return 0x0055;
    case AV_CODEC_ID_AC3:
        return 0x2000;
    default:
        return 0;
    }
}

// Samples in one frame of a compressed stream.
int FrameSamples(const AVCodecParameters& par)
{
    if (par.frame_size > 0)
        return par.frame_size;
    if (const int n = av_get_audio_frame_duration2(const_cast<AVCodecParameters*>(&par), 0); n > 0)
        return n;
    return par.codec_id == AV_CODEC_ID_AC3 ? 1536 : 1152;
}

struct WaveFormat {
    std::uint16_t Tag = 0;
    int Channels = 0;
    int SampleRate = 0;
    std::uint32_t BytesPerSecond = 0;
    int BlockAlign = 0;
    int BitsPerSample = 0;
    std::int64_t BitRate = 0;
};

void Put16(std::vector<std::uint8_t>& out, std::uint32_t v)
{
    out.push_back(static_cast<std::uint8_t>(v));
    out.push_back(static_cast<std::uint8_t>(v >> 8));
}

void Put32(std::vector<std::uint8_t>& out, std::uint32_t v)
{
    Put16(out, v & 0xFFFF);
    Put16(out, v >> 16);
}

// WAVEFORMATEX, with the MPEG layer 3 and MPEG-1 extensions that players look for.
std::vector<std::uint8_t> WaveFormatBytes(const WaveFormat& w)
{
    std::vector<std::uint8_t> out;
    Put16(out, w.Tag);
    Put16(out, static_cast<std::uint32_t>(w.Channels));
    Put32(out, static_cast<std::uint32_t>(w.SampleRate));
    Put32(out, w.BytesPerSecond);
    Put16(out, static_cast<std::uint32_t>(w.BlockAlign));
    Put16(out, static_cast<std::uint32_t>(w.BitsPerSample));
    if (w.Tag == 0x0055) {
        Put16(out, 12);
        Put16(out, 1);    // MPEGLAYER3_ID_MPEG
        Put32(out, 2);    // padding off
        Put16(out, static_cast<std::uint32_t>(w.BlockAlign));
        Put16(out, 1);    // frames per block
        Put16(out, 1393); // codec delay
    } else if (w.Tag == 0x0050) {
        Put16(out, 22);
        Put16(out, 2); // layer II
        Put32(out, static_cast<std::uint32_t>(w.BitRate));
        Put16(out, w.Channels == 2 ? 1 : 8); // stereo or single channel
        Put16(out, 0);
        Put16(out, 1);
        Put16(out, 16);
        Put32(out, 0);
        Put32(out, 0);
    } else {
        Put16(out, 0);
    }
    return out;
}

} // namespace

struct AudioMux::Input {
    AVFormatContext* Format = nullptr;
    AVPacket* Packet = av_packet_alloc();
    int Stream = -1;

    ~Input()
    {
        av_packet_free(&Packet);
        avformat_close_input(&Format);
    }

    // The next packet of the audio stream; false at the end or where the file is damaged.
    bool Read()
    {
        av_packet_unref(Packet);
        while (av_read_frame(Format, Packet) >= 0) {
            if (Packet->stream_index == Stream)
                return true;
            av_packet_unref(Packet);
        }
        return false;
    }
};

struct AudioMux::Encoder {
    AVCodecContext* Decoder = nullptr;
    AVCodecContext* Context = nullptr;
    SwrContext* Resampler = nullptr;
    AVAudioFifo* Fifo = nullptr;
    AVFrame* Decoded = av_frame_alloc();
    AVFrame* Resampled = av_frame_alloc();
    AVFrame* ToEncode = av_frame_alloc();
    AVPacket* Out = av_packet_alloc();
    bool DecoderDraining = false;
    bool InputEnded = false;
    bool EncoderDraining = false;
    std::int64_t Pts = 0;

    ~Encoder()
    {
        av_packet_free(&Out);
        av_frame_free(&ToEncode);
        av_frame_free(&Resampled);
        av_frame_free(&Decoded);
        if (Fifo)
            av_audio_fifo_free(Fifo);
        swr_free(&Resampler);
        avcodec_free_context(&Context);
        avcodec_free_context(&Decoder);
    }

    bool Open(const AVCodecParameters& par, std::string& error)
    {
        const AVCodec* decoder = avcodec_find_decoder(par.codec_id);
        const AVCodec* encoder = avcodec_find_encoder_by_name("libmp3lame");
        if (!encoder)
            encoder = avcodec_find_encoder(AV_CODEC_ID_MP2);
        if (!decoder || !encoder) {
            error = decoder ? "no MP3 or MP2 encoder" : "no decoder for the audio";
            return false;
        }
        Decoder = avcodec_alloc_context3(decoder);
        Context = avcodec_alloc_context3(encoder);
        if (!Decoder || !Context || !Decoded || !Resampled || !ToEncode || !Out) {
            error = "out of memory";
            return false;
        }
        int rc = avcodec_parameters_to_context(Decoder, &par);
        if (rc >= 0)
            rc = avcodec_open2(Decoder, decoder, nullptr);
        if (rc < 0) {
            error = AvError(rc);
            return false;
        }
        if (Decoder->ch_layout.order == AV_CHANNEL_ORDER_UNSPEC)
            av_channel_layout_default(&Decoder->ch_layout, Decoder->ch_layout.nb_channels);

        Context->sample_fmt = encoder->sample_fmts ? encoder->sample_fmts[0] : AV_SAMPLE_FMT_S16;
        Context->sample_rate = NearestRate(encoder, Decoder->sample_rate);
        const int channels = std::clamp(Decoder->ch_layout.nb_channels, 1, 2);
        av_channel_layout_default(&Context->ch_layout, channels);
        Context->bit_rate = channels == 1 ? kMonoBitRate : kStereoBitRate;
        Context->time_base = AVRational{1, Context->sample_rate};
        if (rc = avcodec_open2(Context, encoder, nullptr); rc < 0) {
            error = AvError(rc);
            return false;
        }
        rc = swr_alloc_set_opts2(&Resampler, &Context->ch_layout, Context->sample_fmt, Context->sample_rate,
                                 &Decoder->ch_layout, Decoder->sample_fmt, Decoder->sample_rate, 0, nullptr);
        if (rc >= 0)
            rc = swr_init(Resampler);
        if (rc < 0) {
            error = AvError(rc);
            return false;
        }
        Fifo = av_audio_fifo_alloc(Context->sample_fmt, channels, Context->frame_size);
        if (!Fifo) {
            error = "out of memory";
            return false;
        }
        return true;
    }

    static int NearestRate(const AVCodec* encoder, int rate)
    {
        if (!encoder->supported_samplerates)
            return rate > 0 ? rate : 44100;
        int best = encoder->supported_samplerates[0];
        for (const int* r = encoder->supported_samplerates; *r; ++r) {
            if (std::abs(*r - rate) < std::abs(best - rate))
                best = *r;
        }
        return best;
    }

    // Resamples a decoded frame, or what the resampler still holds when frame is null, into
    // the FIFO.
    bool Resample(const AVFrame* frame)
    {
        av_frame_unref(Resampled);
        Resampled->format = Context->sample_fmt;
        Resampled->sample_rate = Context->sample_rate;
        if (av_channel_layout_copy(&Resampled->ch_layout, &Context->ch_layout) < 0 ||
            swr_convert_frame(Resampler, Resampled, frame) < 0)
            return false;
        return Resampled->nb_samples == 0 ||
               av_audio_fifo_write(Fifo, reinterpret_cast<void**>(Resampled->extended_data), Resampled->nb_samples) >= 0;
    }

    // Decodes until some samples reach the FIFO or the input has ended. Damaged packets are
    // skipped, as a player would.
    bool Decode(Input& input)
    {
        for (;;) {
            const int rc = avcodec_receive_frame(Decoder, Decoded);
            if (rc == 0) {
                const bool ok = Resample(Decoded);
                av_frame_unref(Decoded);
                return ok;
            }
            if (rc != AVERROR(EAGAIN) || DecoderDraining) {
                InputEnded = true;
                return Resample(nullptr);
            }
            if (input.Read()) {
                avcodec_send_packet(Decoder, input.Packet);
            } else {
                avcodec_send_packet(Decoder, nullptr);
                DecoderDraining = true;
            }
        }
    }

    // One frame of the encoder's size from the FIFO; the last one is filled up with silence.
    bool SendFrame()
    {
        const int frameSize = Context->frame_size;
        const int n = std::min(frameSize, av_audio_fifo_size(Fifo));
        av_frame_unref(ToEncode);
        ToEncode->nb_samples = frameSize;
        ToEncode->format = Context->sample_fmt;
        ToEncode->sample_rate = Context->sample_rate;
        if (av_channel_layout_copy(&ToEncode->ch_layout, &Context->ch_layout) < 0 ||
            av_frame_get_buffer(ToEncode, 0) < 0 ||
            av_audio_fifo_read(Fifo, reinterpret_cast<void**>(ToEncode->extended_data), n) < n)
            return false;
        if (n < frameSize)
            av_samples_set_silence(ToEncode->extended_data, n, frameSize - n, Context->ch_layout.nb_channels,
                                   Context->sample_fmt);
        ToEncode->pts = Pts;
        Pts += frameSize;
        return avcodec_send_frame(Context, ToEncode) >= 0;
    }

    // The next encoded packet into chunk; false at the end (failed tells a fault from it).
    bool Next(Input& input, std::vector<std::uint8_t>& chunk, bool& failed)
    {
        for (;;) {
            const int rc = avcodec_receive_packet(Context, Out);
            if (rc == 0) {
                chunk.assign(Out->data, Out->data + Out->size);
                av_packet_unref(Out);
                return true;
            }
            if (rc != AVERROR(EAGAIN)) {
                failed = rc != AVERROR_EOF;
                return false;
            }
            const int buffered = av_audio_fifo_size(Fifo);
            bool ok = false;
            if (buffered >= Context->frame_size || (InputEnded && buffered > 0)) {
                ok = SendFrame();
            } else if (!InputEnded) {
                ok = Decode(input);
            } else if (!EncoderDraining) {
                EncoderDraining = true;
                ok = avcodec_send_frame(Context, nullptr) >= 0;
            }
            if (!ok) {
                failed = true;
                return false;
            }
        }
    }
};

AudioMux::AudioMux() = default;
AudioMux::~AudioMux() = default;

bool AudioMux::Open(const std::string& file, std::string& error)
{
    auto input = std::make_unique<Input>();
    if (!input->Packet) {
        error = "out of memory";
        return false;
    }
    int rc = avformat_open_input(&input->Format, file.c_str(), nullptr, nullptr);
    if (rc >= 0)
        rc = avformat_find_stream_info(input->Format, nullptr);
    if (rc >= 0)
        rc = av_find_best_stream(input->Format, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
    if (rc < 0) {
        error = rc == AVERROR_STREAM_NOT_FOUND ? "no audio stream in " + file : AvError(rc);
        return false;
    }
    input->Stream = rc;
    const AVCodecParameters& par = *input->Format->streams[rc]->codecpar;

    WaveFormat wave;
    info_ = AviStreamInfo{};
    info_.fccType = FourCC("auds");
    info_.dwQuality = 0xFFFFFFFFu;
    wave.Tag = CopiedFormatTag(par.codec_id);
    if (wave.Tag == 0x0001) {
        wave.Channels = par.ch_layout.nb_channels;
        wave.SampleRate = par.sample_rate;
        wave.BitsPerSample = av_get_bits_per_sample(par.codec_id);
        wave.BlockAlign = wave.Channels * wave.BitsPerSample / 8;
        wave.BytesPerSecond = static_cast<std::uint32_t>(wave.SampleRate * wave.BlockAlign);
        if (wave.BlockAlign <= 0 || wave.SampleRate <= 0) {
            error = "invalid PCM format";
            return false;
        }
        info_.dwScale = static_cast<std::uint32_t>(wave.BlockAlign);
        info_.dwRate = wave.BytesPerSecond;
        info_.dwSampleSize = static_cast<std::uint32_t>(wave.BlockAlign);
    } else {
        int frameSamples = 0;
        if (wave.Tag) {
            wave.Channels = par.ch_layout.nb_channels;
            wave.SampleRate = par.sample_rate;
            wave.BitRate = par.bit_rate;
            frameSamples = FrameSamples(par);
        } else {
            auto encoder = std::make_unique<Encoder>();
            if (!encoder->Open(par, error))
                return false;
            const AVCodecContext& c = *encoder->Context;
            wave.Tag = c.codec_id == AV_CODEC_ID_MP3 ? 0x0055 : 0x0050;
            wave.Channels = c.ch_layout.nb_channels;
            wave.SampleRate = c.sample_rate;
            wave.BitRate = c.bit_rate;
            frameSamples = c.frame_size;
            encoder_ = std::move(encoder);
        }
        if (wave.SampleRate <= 0 || frameSamples <= 0) {
            error = "invalid audio format";
            return false;
        }
        wave.BlockAlign = frameSamples;
        wave.BytesPerSecond = static_cast<std::uint32_t>(wave.BitRate / 8);
        info_.dwScale = static_cast<std::uint32_t>(frameSamples);
        info_.dwRate = static_cast<std::uint32_t>(wave.SampleRate);
    }
    format_ = WaveFormatBytes(wave);
    input_ = std::move(input);
    return true;
}

bool AudioMux::NextChunk(std::vector<std::uint8_t>& chunk)
{
    if (encoder_)
        return encoder_->Next(*input_, chunk, failed_);
    if (!input_->Read())
        return false;
    chunk.assign(input_->Packet->data, input_->Packet->data + input_->Packet->size);
    return true;
}

double AudioMux::SecondsWritten() const
{
    const double units = info_.dwSampleSize ? double(bytes_) / info_.dwSampleSize : double(chunks_);
    return units * info_.dwScale / info_.dwRate;
}

bool AudioMux::WriteUntil(AviWriter& writer, std::size_t stream, double seconds)
{
    if (!input_)
        return false;
    std::vector<std::uint8_t> chunk;
    while (!ended_ && SecondsWritten() < seconds) {
        if (!NextChunk(chunk)) {
            ended_ = true;
            break;
        }
        if (chunk.empty())
            continue;
        if (!writer.WriteChunk(stream, chunk.data(), chunk.size(), true))
            return false;
        ++chunks_;
        bytes_ += chunk.size();
    }
    return !failed_;
}

} // namespace mw
