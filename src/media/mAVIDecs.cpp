#include "media/mAVIDecs.h"

#include "core/Prompt.h"
#include "core/Text.h"
#include "media/AviCache.h"

#include <algorithm>

namespace mw {

namespace {

const std::string kInfoError = "Error geting info for file";
const std::string kNotVideo = "Stream 0 is not a video stream";

std::vector<AviStreamInfo> StreamInfos(const AviFile& avi)
{
    std::vector<AviStreamInfo> infos;
    const std::size_t count = std::min<std::size_t>(avi.FileInfo().dwStreams, avi.StreamCount());
    infos.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        infos.push_back(avi.Stream(i).Info);
    return infos;
}

long KeyFrameOfStream0(const std::string& fileName, long frame, bool nearest, bool showErrors, Prompt& prompt,
                       bool* found)
{
    if (found)
        *found = false;
    const auto avi = OpenAvi(fileName, AviRead::HeadersAndIndex);
    if (!avi) {
        if (showErrors)
            prompt.Message(kInfoError + " '" + fileName + "'");
        return 0;
    }
    if (avi->StreamCount() == 0 || avi->Stream(0).Info.fccType != FourCC("vids")) {
        if (showErrors)
            prompt.Message(kNotVideo);
        return 0;
    }
    if (found)
        *found = true;
    const long next = avi->FindSample(0, frame, KeySearch::NextKey);
    if (!nearest)
        return next;
    const long previous = avi->FindSample(0, frame, KeySearch::PreviousKey);
    return next - frame > frame - previous ? previous : next;
}

} // namespace

bool LoadStreamsToListView(const std::string& fileName, TrackRows& rows, bool withFrames, double& fps,
                           Prompt& prompt)
{
    const auto avi = OpenAvi(fileName, AviRead::Headers);
    if (!avi) {
        prompt.Message(kInfoError);
        return false;
    }
    AppendTrackRows(avi->FileInfo(), StreamInfos(*avi), withFrames, rows, fps);
    return true;
}

int GetStreamByType(const std::string& fileName, const std::string& kind, long& start, long& length, float& fps,
                    long& width, long& height, Prompt& prompt)
{
    const auto avi = OpenAvi(fileName, AviRead::Headers);
    if (!avi) {
        prompt.Message(kInfoError + "\r\n" + fileName);
        return -1;
    }
    const AviFileInfo& file = avi->FileInfo();
    fps = file.dwScale == 0 ? 0.0f : static_cast<float>(file.dwRate) / static_cast<float>(file.dwScale);

    const std::string wanted = Lower(kind);
    const bool video = wanted == "video";
    if (!video && wanted != "audio")
        return -1;
    const std::uint32_t type = video ? FourCC("vids") : FourCC("auds");
    const auto infos = StreamInfos(*avi);
    for (std::size_t i = 0; i < infos.size(); ++i) {
        const AviStreamInfo& stream = infos[i];
        if (stream.fccType != type)
            continue;
        start = static_cast<long>(stream.dwStart);
        length = static_cast<long>(stream.dwLength);
        if (video) {
            width = stream.rcFrame.right;
            height = stream.rcFrame.bottom;
        }
        return static_cast<int>(i);
    }
    return -1;
}

long FindNearestKeyFrame(const std::string& fileName, long frame, bool showErrors, Prompt& prompt, bool* found)
{
    return KeyFrameOfStream0(fileName, frame, true, showErrors, prompt, found);
}

long FindNextKeyFrame(const std::string& fileName, long frame, Prompt& prompt, bool* found)
{
    return KeyFrameOfStream0(fileName, frame, false, true, prompt, found);
}

int CountNonSubtitleStreams(const std::string& fileName, Prompt& prompt)
{
    const auto avi = OpenAvi(fileName, AviRead::Headers);
    if (!avi) {
        prompt.Message(kInfoError + " '" + fileName + "'");
        return 0;
    }
    return CountNonSubtitle(StreamInfos(*avi));
}

bool SetStreamName(const std::string& fileName, std::size_t streamIndex, const std::string& newName, Prompt& prompt)
{
    const auto avi = OpenAvi(fileName, AviRead::Headers);
    if (!avi) {
        prompt.Message(kInfoError);
        return false;
    }
    if (streamIndex >= avi->StreamCount())
        return false;
    const bool written = AviFile::WriteStreamName(fileName, streamIndex, newName.substr(0, 64));
    ForgetAvi(fileName);
    return written;
}

std::optional<WizardInfo> GetInfo(const std::string& fileName, Prompt& prompt)
{
    const auto avi = OpenAvi(fileName, AviRead::Headers);
    std::optional<WizardInfo> info;
    if (avi)
        info = WizardInfoOf(avi->FileInfo(), StreamInfos(*avi));
    if (!info)
        prompt.Message(kInfoError);
    return info;
}

} // namespace mw
