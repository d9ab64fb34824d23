#include "ui/QtAudioSinks.h"

#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSink>
#include <QIODevice>
#include <QMediaDevices>

#include <algorithm>

namespace mw {

namespace {

// Half a second queued rides out a busy moment of the window's timer, which feeds it.
constexpr int kQueuedBytes = kSoundRate * 2 * 2 / 2;

class DeviceSink : public AudioSink {
public:
    bool Open() override
    {
        const QAudioDevice device = QMediaDevices::defaultAudioOutput();
        QAudioFormat format;
        format.setSampleRate(kSoundRate);
        format.setChannelCount(2);
        format.setSampleFormat(QAudioFormat::Int16);
        if (device.isNull() || !device.isFormatSupported(format))
            return false;
        sink_ = std::make_unique<QAudioSink>(device, format);
        sink_->setBufferSize(kQueuedBytes);
        return true;
    }

    void Start() override
    {
        sink_->stop();
        queue_ = sink_->start();
        startUs_ = sink_->processedUSecs();
    }

    std::size_t Write(const char* data, std::size_t size) override
    {
        if (!queue_)
            return 0;
        const auto room = static_cast<std::size_t>(std::max<qsizetype>(sink_->bytesFree(), 0));
        const qint64 written = queue_->write(data, static_cast<qint64>(std::min(size, room)));
        return written > 0 ? static_cast<std::size_t>(written) : 0;
    }

    std::int64_t PlayedUs() override { return queue_ ? sink_->processedUSecs() - startUs_ : 0; }
    void Pause() override { sink_->suspend(); }
    void Resume() override { sink_->resume(); }

    void Stop() override
    {
        sink_->stop();
        queue_ = nullptr;
    }

private:
    std::unique_ptr<QAudioSink> sink_;
    QIODevice* queue_ = nullptr; // the sink's own, while it plays
    std::int64_t startUs_ = 0;
};

} // namespace

AudioSinkFactory DeviceSinks()
{
    return [] { return std::make_unique<DeviceSink>(); };
}

} // namespace mw
