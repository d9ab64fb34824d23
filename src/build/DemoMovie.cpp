#include "build/DemoMovie.h"

#include "build/AudioMux.h"
#include "build/PicToMenuSteps.h"
#include "build/cAVICreator.h"
#include "render/cDIB.h"

#include <QColor>
#include <QFont>
#include <QLinearGradient>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <system_error>
#include <vector>

namespace mw {

namespace {

constexpr const char* kStreamName = "Menuwright demo";
constexpr int kToneRate = 22050;
constexpr double kBeepHz = 1000;
constexpr double kBeepSeconds = 0.1;
constexpr double kFadeSeconds = 0.005; // the beep fades in and out, or it clicks
constexpr double kLoudness = 0.3;

// "mm:ss.ff": minutes, seconds and the frame within the second.
QString RunningTime(int frame, int fps)
{
    const int seconds = frame / fps;
    return QString::asprintf("%02d:%02d.%02d", seconds / 60, seconds % 60, frame % fps);
}

void DrawColourBars(QPainter& painter, const QRect& area)
{
    static const QColor bars[] = {{191, 191, 191}, {191, 191, 0}, {0, 191, 191}, {0, 191, 0},
                                  {191, 0, 191},   {191, 0, 0},   {0, 0, 191}};
    const int count = static_cast<int>(std::size(bars));
    for (int i = 0; i < count; ++i) {
        const int left = area.left() + area.width() * i / count;
        const int right = area.left() + area.width() * (i + 1) / count;
        painter.fillRect(QRect(left, area.top(), right - left, area.height()), bars[i]);
    }
}

// White text with a black shadow, readable on any part of the background.
void DrawCentredText(QPainter& painter, const QRect& box, const QString& text, int pixelSize, bool bold)
{
    QFont font(QStringLiteral("Sans Serif"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(std::max(pixelSize, 1));
    font.setBold(bold);
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(box.translated(2, 2), Qt::AlignCenter, text);
    painter.setPen(Qt::white);
    painter.drawText(box, Qt::AlignCenter, text);
}

void PutLe(std::vector<char>& out, std::uint32_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        out.push_back(static_cast<char>(value >> (8 * i) & 0xFF));
}

void PutId(std::vector<char>& out, const char (&id)[5])
{
    out.insert(out.end(), id, id + 4);
}

} // namespace

QImage DemoFrame(const DemoMovieSpec& spec, int frame)
{
    const int w = spec.Width;
    const int h = spec.Height;
    QImage image(w, h, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);

    const int hue = spec.Frames > 0 ? 360 * frame / spec.Frames % 360 : 0;
    QLinearGradient background(0, 0, 0, h);
    background.setColorAt(0, QColor::fromHsv(hue, 170, 130));
    background.setColorAt(1, QColor::fromHsv((hue + 40) % 360, 200, 40));
    painter.fillRect(image.rect(), background);

    const int margin = w / 22;
    DrawColourBars(painter, QRect(margin, h / 12, w - 2 * margin, h / 4));
    DrawCentredText(painter, QRect(0, h * 5 / 12, w, h / 6), QStringLiteral("Menuwright demo"), h / 10, true);
    DrawCentredText(painter, QRect(0, h * 7 / 12, w, h / 8), RunningTime(frame, std::max(spec.Fps, 1)), h / 12,
                    false);

    const QRect track(margin, h - h / 6, w - 2 * margin, h / 20);
    const double done = spec.Frames > 1 ? double(frame) / (spec.Frames - 1) : 1.0;
    painter.fillRect(track, QColor(0, 0, 0, 140));
    painter.fillRect(QRect(track.topLeft(), QSize(int(track.width() * done), track.height())), Qt::white);
    return image;
}

bool WriteDemoTone(const std::string& file, const DemoMovieSpec& spec)
{
    const std::int64_t samples = spec.Fps > 0 ? std::int64_t(spec.Frames) * kToneRate / spec.Fps : 0;
    const auto dataBytes = static_cast<std::uint32_t>(samples * 2);
    std::vector<char> wav;
    PutId(wav, "RIFF");
    PutLe(wav, 36 + dataBytes, 4);
    PutId(wav, "WAVE");
    PutId(wav, "fmt ");
    PutLe(wav, 16, 4);
    PutLe(wav, 1, 2); // PCM
    PutLe(wav, 1, 2); // mono
    PutLe(wav, kToneRate, 4);
    PutLe(wav, kToneRate * 2, 4);
    PutLe(wav, 2, 2);
    PutLe(wav, 16, 2);
    PutId(wav, "data");
    PutLe(wav, dataBytes, 4);
    for (std::int64_t i = 0; i < samples; ++i) {
        const double t = double(i) / kToneRate;
        const double intoSecond = t - std::floor(t);
        double value = 0;
        if (intoSecond < kBeepSeconds) {
            const double envelope = std::min({1.0, intoSecond / kFadeSeconds, (kBeepSeconds - intoSecond) / kFadeSeconds});
            value = kLoudness * envelope * std::sin(2 * std::numbers::pi * kBeepHz * t);
        }
        PutLe(wav, static_cast<std::uint16_t>(static_cast<std::int16_t>(std::lround(value * 32767))), 2);
    }
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out.write(wav.data(), static_cast<std::streamsize>(wav.size()));
    out.close();
    return !out.fail();
}

bool WriteDemoMovie(const std::string& file, const DemoMovieSpec& spec, const std::string& audio,
                    const Settings& settings, Prompt& prompt)
{
    cAVICreator avi(settings, prompt);
    avi.Filename = file;
    avi.VideoHandlerFourCC = FourCC("divx");
    avi.bitsPerPixel = 24;
    avi.FrameDuration = 1;
    avi.dwRate = MenuVideoRate(spec.Fps);
    avi.name = kStreamName;

    std::string error;
    AudioMux tone;
    if (!tone.Open(audio, error)) {
        ShowAviCreationError(error, prompt);
        return false;
    }
    avi.SetAudio(&tone);

    cDIB picture;
    bool ok = spec.Frames > 0 && picture.CreateFromImage(DemoFrame(spec, 0)) && avi.StreamCreate(picture);
    for (int frame = 1; ok && frame < spec.Frames; ++frame)
        ok = picture.CreateFromImage(DemoFrame(spec, frame)) && avi.StreamAdd(picture);
    ok = avi.StreamClose() && ok;
    if (ok)
        return true;
    ShowAviCreationError(avi.LastError() ? avi.LastError()->Description() : "no frames to write", prompt);
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
    return false;
}

} // namespace mw
