#include "media/MovieSound.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libswresample/swresample.h>
}

#include <algorithm>
#include <cmath>

namespace mw {

namespace {

constexpr int kChannels = 2;
constexpr int kBytesPerSample = 2 * kChannels;
// The device's clock may end a little short of all it was given.
constexpr std::int64_t kEndSlackUs = 100'000;

std::int64_t BytesToUs(std::int64_t bytes)
{
    return bytes / kBytesPerSample * 1'000'000 / kSoundRate;
}

} // namespace

struct MovieSound::Decoder {
    AVFormatContext* Format = nullptr;
    AVCodecContext* Codec = nullptr;
    SwrContext* Resampler = nullptr;
    AVPacket* Packet = av_packet_alloc();
    AVFrame* Frame = av_frame_alloc();
    int Stream = -1;
    bool Drained = false;
    // Seconds before which decoded sound is left out, after a seek.
    double From = 0;

    ~Decoder()
    {
        av_frame_free(&Frame);
        av_packet_free(&Packet);
        swr_free(&Resampler);
        avcodec_free_context(&Codec);
        avformat_close_input(&Format);
    }

    bool Open(const std::string& path)
    {
        if (!Packet || !Frame || avformat_open_input(&Format, path.c_str(), nullptr, nullptr) < 0)
            return false;
        Stream = av_find_best_stream(Format, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
        if (Stream < 0)
            return false;
        for (unsigned i = 0; i < Format->nb_streams; ++i) {
            if (static_cast<int>(i) != Stream)
                Format->streams[i]->discard = AVDISCARD_ALL;
        }
        const AVCodecParameters* parameters = Format->streams[Stream]->codecpar;
        const AVCodec* codec = avcodec_find_decoder(parameters->codec_id);
        if (!codec || !(Codec = avcodec_alloc_context3(codec)) || avcodec_parameters_to_context(Codec, parameters) < 0 ||
            avcodec_open2(Codec, codec, nullptr) < 0)
            return false;
        if (Codec->ch_layout.order == AV_CHANNEL_ORDER_UNSPEC)
            av_channel_layout_default(&Codec->ch_layout, Codec->ch_layout.nb_channels);
        AVChannelLayout stereo = AV_CHANNEL_LAYOUT_STEREO;
        return swr_alloc_set_opts2(&Resampler, &stereo, AV_SAMPLE_FMT_S16, kSoundRate, &Codec->ch_layout,
                                   Codec->sample_fmt, Codec->sample_rate, 0, nullptr) >= 0 &&
               swr_init(Resampler) >= 0;
    }

    void Seek(double seconds)
    {
        const AVStream* stream = Format->streams[Stream];
        const auto at = static_cast<std::int64_t>(seconds / av_q2d(stream->time_base));
        av_seek_frame(Format, Stream, at, AVSEEK_FLAG_BACKWARD);
        avcodec_flush_buffers(Codec);
        swr_init(Resampler);
        Drained = false;
        From = seconds;
    }

    // The samples of the next frame, appended to out; false at the end.
    bool Next(std::vector<char>& out)
    {
        for (;;) {
            const int received = avcodec_receive_frame(Codec, Frame);
            if (received >= 0) {
                Append(out);
                return true;
            }
            if (received == AVERROR_EOF || Drained)
                return false;
            const int read = av_read_frame(Format, Packet);
            if (read < 0) {
                avcodec_send_packet(Codec, nullptr);
                Drained = true;
                continue;
            }
            if (Packet->stream_index == Stream)
                avcodec_send_packet(Codec, Packet);
            av_packet_unref(Packet);
        }
    }

    void Append(std::vector<char>& out)
    {
        const int room = swr_get_out_samples(Resampler, Frame->nb_samples);
        std::vector<char> samples(static_cast<std::size_t>(std::max(room, 0)) * kBytesPerSample);
        auto* data = reinterpret_cast<std::uint8_t*>(samples.data());
        const int made = swr_convert(Resampler, &data, room, const_cast<const std::uint8_t**>(Frame->extended_data),
                                     Frame->nb_samples);
        std::size_t skip = 0;
        if (Frame->best_effort_timestamp != AV_NOPTS_VALUE) {
            const double start = static_cast<double>(Frame->best_effort_timestamp) *
                                 av_q2d(Format->streams[Stream]->time_base);
            if (start < From)
                skip = static_cast<std::size_t>(std::lround((From - start) * kSoundRate)) * kBytesPerSample;
        }
        const std::size_t bytes = static_cast<std::size_t>(std::max(made, 0)) * kBytesPerSample;
        if (skip < bytes)
            out.insert(out.end(), samples.begin() + static_cast<std::ptrdiff_t>(skip),
                       samples.begin() + static_cast<std::ptrdiff_t>(bytes));
        av_frame_unref(Frame);
    }
};

std::unique_ptr<MovieSound> MovieSound::Open(const std::string& path, const AudioSinkFactory& sinks, Opened& result)
{
    result = Opened::NoSound;
    auto decoder = std::make_unique<Decoder>();
    if (!decoder->Open(path))
        return nullptr;
    result = Opened::NoDevice;
    auto sink = sinks ? sinks() : nullptr;
    if (!sink || !sink->Open())
        return nullptr;
    result = Opened::Playable;
    return std::unique_ptr<MovieSound>(new MovieSound(std::move(decoder), std::move(sink)));
}

MovieSound::MovieSound(std::unique_ptr<Decoder> decoder, std::unique_ptr<AudioSink> sink)
    : decoder_(std::move(decoder)), sink_(std::move(sink))
{
}

MovieSound::~MovieSound() = default;

void MovieSound::Start(long ms)
{
    startSeconds_ = ms / 1000.0;
    decoder_->Seek(startSeconds_);
    pending_.clear();
    ended_ = false;
    writtenBytes_ = 0;
    sink_->Start();
    Feed();
}

void MovieSound::Pause()
{
    sink_->Pause();
}

void MovieSound::Resume()
{
    sink_->Resume();
}

void MovieSound::Stop()
{
    sink_->Stop();
}

void MovieSound::Feed()
{
    for (;;) {
        if (pending_.empty()) {
            if (ended_ || !decoder_->Next(pending_)) {
                ended_ = true;
                return;
            }
            continue; // a frame from before the start may give nothing
        }
        const std::size_t taken = sink_->Write(pending_.data(), pending_.size());
        writtenBytes_ += static_cast<std::int64_t>(taken);
        pending_.erase(pending_.begin(), pending_.begin() + static_cast<std::ptrdiff_t>(taken));
        if (!pending_.empty())
            return;
    }
}

std::optional<double> MovieSound::Seconds()
{
    Feed();
    const std::int64_t played = sink_->PlayedUs();
    if (ended_ && pending_.empty() && played + kEndSlackUs >= BytesToUs(writtenBytes_))
        return std::nullopt;
    return startSeconds_ + static_cast<double>(played) / 1e6;
}

} // namespace mw
