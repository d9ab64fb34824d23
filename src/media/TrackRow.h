#pragma once

#include <string>
#include <vector>

namespace mw {

// One stream of a media file as the track lists show it.
struct TrackRow {
    std::string Kind;         // "Video", "Audio", "Subtitle" or "Unknown"
    std::string NameLanguage; // the stream's strn text
    std::string Info;
    std::string TrackID;      // "00dc", "01wb", "02sb"
    std::string StartFrame;   // empty when inspected without frames
    std::string EndFrame;
};

using TrackRows = std::vector<TrackRow>;

} // namespace mw
