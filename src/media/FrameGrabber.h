#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace mw {

class AviFile;
class cDIB;
class LangDoc;
class Prompt;

// What a grab cost: the key frame it started from and the frames the decoder gave.
struct GrabStatistics {
    long KeyFrame = -1;
    int DecodedFrames = 0;
};

// The stream that grabs and the preview show.
std::optional<std::size_t> FirstVideoStream(const AviFile& avi);

// Paints frame `frame` of the file's first video stream into picture: at the decoded picture's
// size when fitPictureToFrame is set (or the picture is empty), else stretched to the picture's
// size. Frames count from the stream's dwStart; a frame of -1 is that start, and frame is set
// to it. Every failure is told
// through the prompt and leaves the picture as it was.
bool GrabFrameToPicture(const std::string& fileName, cDIB& picture, long& frame, bool fitPictureToFrame,
                        Prompt& prompt, const LangDoc& lang, GrabStatistics* statistics = nullptr);

} // namespace mw
