#pragma once

#include "media/AviInfo.h"
#include "media/TrackRow.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mw {

// How a stream is told apart. Subtitles live in video streams; their name is the only mark.
enum class StreamKind { Video, Audio, Subtitle, Unknown };

// A "vids" stream whose name starts with "SUBTITLE" in any case is a subtitle.
bool IsSubtitleName(std::string_view szName);
StreamKind KindOfStream(const AviStreamInfo& stream);
// "Video", "Audio", "Subtitle" or "Unknown", the row text of a track.
std::string KindWord(StreamKind kind);
// The stream's index with at least two digits and the kind's suffix: "00dc", "01wb", "02sb", "03??".
std::string TrackID(std::size_t index, StreamKind kind);

// "PAL" when the file's rate rounds to 25, "NTSC" for any other rate, "" when its scale is 0.
std::string VideoStandard(const AviFileInfo& file);

// h:mm:ss.mmm as "00:00:00.000"; the milliseconds are rounded and never carried, so a fraction
// that rounds up to a whole second prints "1000".
std::string FormatSecondsAsTime(float seconds);

// The Info column of a track row. Rates of 0 give the "<error>" forms instead of a division.
std::string StreamInfoText(const AviFileInfo& file, const AviStreamInfo& stream, StreamKind kind);

// One track row per stream, appended to rows. fps becomes the file's rate rounded to three
// decimals when a video stream can be timed (the last such stream wins); otherwise it keeps
// the caller's value.
void AppendTrackRows(const AviFileInfo& file, const std::vector<AviStreamInfo>& streams, bool withFrames,
                     TrackRows& rows, double& fps);

// Audio streams and video streams not named as subtitles.
int CountNonSubtitle(const std::vector<AviStreamInfo>& streams);

// What the project wizard shows about a movie. Each text ends in "\r\n" and the stream's whole
// 64-character name field, NUL padding included, as the wizard always showed it.
struct WizardInfo {
    std::string Video;                  // "Video " and the info text of the last video stream
    std::vector<std::string> Audio;     // one row per audio stream
    std::vector<std::string> Subtitles; // one row per subtitle stream
};

// The wizard's texts. Unlike the track rows they are not guarded against rates of 0: such a
// file gives nullopt, the wizard's "Error geting info for file".
std::optional<WizardInfo> WizardInfoOf(const AviFileInfo& file, const std::vector<AviStreamInfo>& streams);

} // namespace mw
