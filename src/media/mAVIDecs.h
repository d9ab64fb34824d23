#pragma once

#include "media/StreamTexts.h"
#include "media/TrackRow.h"

#include <cstddef>
#include <optional>
#include <string>

namespace mw {

class Prompt;

// The questions the rest of the program asks about a movie file. Each call opens the file,
// reads what it needs and closes it again, unless an AviCacheScope keeps the file for the
// command; only the key-frame questions read the index. A file that cannot be read says so
// through the prompt and leaves the caller's results as they were.

// Appends one track row per stream (the caller clears the list) and sets fps as
// AppendTrackRows does. False when the file could not be read.
bool LoadStreamsToListView(const std::string& fileName, TrackRows& rows, bool withFrames, double& fps,
                           Prompt& prompt);

// The first "vids" stream for "video" (a subtitle counts), the first "auds" stream for "audio",
// any case; -1 when there is none. start and length are those of the stream found, width and
// height too for "video"; fps is the file's rate in single precision (0 when its scale is 0)
// whenever the file could be read.
int GetStreamByType(const std::string& fileName, const std::string& kind, long& start, long& length, float& fps,
                    long& width, long& height, Prompt& prompt);

// The key frame of stream 0 nearest to frame, the next one on a tie. 0 when the file cannot be
// read or stream 0 is not video (told only with showErrors); -1 passes through when the index
// has no key frame after frame. found, when given, says whether the file answered.
long FindNearestKeyFrame(const std::string& fileName, long frame, bool showErrors, Prompt& prompt,
                         bool* found = nullptr);
// The first key frame of stream 0 at or after frame, with the same failures, always told.
long FindNextKeyFrame(const std::string& fileName, long frame, Prompt& prompt, bool* found = nullptr);

// Audio streams and video streams not named as subtitles: where a menu movie's first
// subtitle stream will stand. 0 when the file cannot be read.
int CountNonSubtitleStreams(const std::string& fileName, Prompt& prompt);

// Writes a new name (cut to 64 characters) into the stream's strn chunk. False when the file
// cannot be read, has no such stream or has no room for the name in place.
bool SetStreamName(const std::string& fileName, std::size_t streamIndex, const std::string& newName, Prompt& prompt);

// The project wizard's view of a movie; nullopt (after the message) when it cannot be read.
std::optional<WizardInfo> GetInfo(const std::string& fileName, Prompt& prompt);

} // namespace mw
