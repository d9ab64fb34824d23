#include "media/StreamTexts.h"

#include "core/NumberText.h"
#include "core/Text.h"

#include <algorithm>
#include <cmath>

namespace mw {

namespace {

constexpr std::size_t kNameField = 64;

std::string NameText(const std::string& szName)
{
    return szName.substr(0, std::min(szName.find('\0'), kNameField));
}

// The name as the fixed field holds it: cut to 64 characters and padded with NULs.
std::string NameField(const std::string& szName)
{
    std::string field = NameText(szName);
    field.resize(kNameField, '\0');
    return field;
}

std::string SizeText(const AviStreamInfo& stream)
{
    return std::to_string(stream.rcFrame.right) + " x " + std::to_string(stream.rcFrame.bottom);
}

std::optional<double> FileFps(const AviFileInfo& file)
{
    if (file.dwScale == 0)
        return std::nullopt;
    return RoundHalfEven(double(file.dwRate) / file.dwScale, 3);
}

// The video line, or nullopt when a rate of 0 leaves it without a time.
std::optional<std::string> VideoText(const AviFileInfo& file, const AviStreamInfo& stream)
{
    const std::optional<double> fps = FileFps(file);
    if (!fps || stream.dwScale == 0 || stream.dwRate == 0)
        return std::nullopt;
    const double seconds = stream.dwLength / (double(stream.dwRate) / stream.dwScale);
    return SizeText(stream) + " - " + VideoStandard(file) + " - " + NumberText(*fps) +
           " fps, Length: " + FormatSecondsAsTime(static_cast<float>(seconds));
}

std::string AudioText(const AviStreamInfo& stream, double seconds)
{
    return "SamplesPerSec: " + NumberText(double(stream.dwRate) / stream.dwScale) +
           ", Length: " + FormatSecondsAsTime(static_cast<float>(seconds));
}

std::string SubtitleText(const AviStreamInfo& stream)
{
    return SizeText(stream) + " - Lenght: " + std::to_string(stream.dwLength);
}

} // namespace

bool IsSubtitleName(std::string_view szName)
{
    return Upper(szName.substr(0, 8)) == "SUBTITLE";
}

StreamKind KindOfStream(const AviStreamInfo& stream)
{
    if (stream.fccType == FourCC("vids"))
        return IsSubtitleName(NameText(stream.szName)) ? StreamKind::Subtitle : StreamKind::Video;
    if (stream.fccType == FourCC("auds"))
        return StreamKind::Audio;
    return StreamKind::Unknown;
}

std::string KindWord(StreamKind kind)
{
    switch (kind) {
    case StreamKind::Video: return "Video";
    case StreamKind::Audio: return "Audio";
    case StreamKind::Subtitle: return "Subtitle";
    case StreamKind::Unknown: break;
    }
    return "Unknown";
}

std::string TrackID(std::size_t index, StreamKind kind)
{
    static const char* const suffix[] = {"dc", "wb", "sb", "??"};
    return PadZeros(static_cast<long long>(index), 2) + suffix[static_cast<int>(kind)];
}

std::string VideoStandard(const AviFileInfo& file)
{
    if (file.dwScale == 0)
        return "";
    return RoundHalfEven(double(file.dwRate) / file.dwScale) == 25 ? "PAL" : "NTSC";
}

std::string FormatSecondsAsTime(float seconds)
{
    // Whole seconds in integers, so that long lengths keep their minutes; the float cannot
    // hold a fraction beyond 2^24 seconds anyway. Negative or NaN counts as 0.
    const double s = seconds > 0 ? double(seconds) : 0.0;
    const double whole = std::floor(s);
    const auto total = whole < 1.8e19 ? static_cast<unsigned long long>(whole) : 18000000000000000000ULL;
    const auto h = static_cast<long long>(total / 3600);
    const auto m = static_cast<long long>(total % 3600 / 60);
    const auto c = static_cast<long long>(total % 60);
    const auto ms = static_cast<long long>(RoundHalfEven((s - whole) * 1000));
    return PadZeros(h, 2) + ":" + PadZeros(m, 2) + ":" + PadZeros(c, 2) + "." + PadZeros(ms, 3);
}

std::string StreamInfoText(const AviFileInfo& file, const AviStreamInfo& stream, StreamKind kind)
{
    switch (kind) {
    case StreamKind::Subtitle:
        return SubtitleText(stream);
    case StreamKind::Video:
        if (auto text = VideoText(file, stream))
            return *text;
        return SizeText(stream) + " - " + VideoStandard(file) + " - <error> fps, Length: <error>";
    case StreamKind::Audio:
        if (stream.dwRate == 0 || stream.dwScale == 0)
            return "<error>";
        return AudioText(stream, (double(stream.dwScale) * stream.dwLength) / stream.dwRate);
    case StreamKind::Unknown:
        break;
    }
    return "";
}

void AppendTrackRows(const AviFileInfo& file, const std::vector<AviStreamInfo>& streams, bool withFrames,
                     TrackRows& rows, double& fps)
{
    for (std::size_t i = 0; i < streams.size(); ++i) {
        const AviStreamInfo& stream = streams[i];
        const StreamKind kind = KindOfStream(stream);
        TrackRow row{KindWord(kind), NameText(stream.szName), StreamInfoText(file, stream, kind), TrackID(i, kind),
                     "", ""};
        if (withFrames) {
            row.StartFrame = std::to_string(stream.dwStart);
            row.EndFrame = std::to_string(static_cast<long long>(stream.dwLength) - 1);
        }
        rows.push_back(std::move(row));
        if (kind == StreamKind::Video && VideoText(file, stream))
            fps = *FileFps(file);
    }
}

int CountNonSubtitle(const std::vector<AviStreamInfo>& streams)
{
    int count = 0;
    for (const AviStreamInfo& stream : streams) {
        const StreamKind kind = KindOfStream(stream);
        count += kind == StreamKind::Video || kind == StreamKind::Audio;
    }
    return count;
}

std::optional<WizardInfo> WizardInfoOf(const AviFileInfo& file, const std::vector<AviStreamInfo>& streams)
{
    WizardInfo info;
    for (const AviStreamInfo& stream : streams) {
        const std::string tail = "\r\n" + NameField(stream.szName);
        switch (KindOfStream(stream)) {
        case StreamKind::Video: {
            const auto text = VideoText(file, stream);
            if (!text)
                return std::nullopt;
            info.Video = "Video " + *text + tail;
            break;
        }
        case StreamKind::Audio:
            if (stream.dwRate == 0 || stream.dwScale == 0)
                return std::nullopt;
            // Without the scale, unlike the track rows: the wizard always showed it so.
            info.Audio.push_back(AudioText(stream, double(stream.dwLength) / stream.dwRate) + tail);
            break;
        case StreamKind::Subtitle:
            info.Subtitles.push_back(SubtitleText(stream) + tail);
            break;
        case StreamKind::Unknown:
            break;
        }
    }
    return info;
}

} // namespace mw
