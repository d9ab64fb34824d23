#pragma once

#include "core/Prompt.h"
#include "core/settings/Settings.h"
#include "i18n/LangDoc.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace mw {

class cDIB;

// A menu video written by the program itself.
struct MenuVideoJob {
    const std::vector<std::string>& Pictures;
    long Repeat = 1; // frames of the first picture
    bool SinglePicture = false;
    const std::string& Output;
    double Fps = 0;
    const std::string& Audio; // none when empty or missing
    // "divx": encoded by our own encoder; 0: uncompressed frames, for an outside tool to encode.
    std::uint32_t Handler = 0;
};

// Writes the frames with the checkpoints of the build; on failure the message has been shown and
// no output is left behind.
bool WriteMenuVideo(const MenuVideoJob& job, const Settings& settings, const LangDoc& lang, Prompt& prompt);

// Frame `index` of a video made frame by frame, into `frame`, which holds the frame before (left
// as it is, that frame repeats). False ends the video as failed: a non-empty error is shown as the
// video's error, else the source has told the user itself (or the user cancelled).
using MenuFrameSource = std::function<bool(long index, cDIB& frame, std::string& error)>;

// `count` frames from the source encoded by our own encoder as BuiltInAviFromPics does, without a
// picture file per frame.
bool BuiltInAviFromFrames(long count, const MenuFrameSource& source, const std::string& output, double fps,
                          const std::string& audio, const Settings& settings, const LangDoc& lang, Prompt& prompt);

// Our own route from pictures to a menu video (MethodForPicToMenu 2): the pictures are
// encoded to MPEG-4 under the FourCC "divx" and written straight into the output, with the
// audio file, when given and present, as a second stream that ends with the video. The caller has settled the names
// and deleted an old output. True on success; on failure the message has been shown and no
// output is left behind.

// One frame per picture, in order.
bool BuiltInAviFromPics(const std::vector<std::string>& pictures, const std::string& output, double fps,
                        const std::string& audio, const Settings& settings, const LangDoc& lang, Prompt& prompt);
// Five seconds of one picture: Round(fps) * 5 frames.
bool BuiltInAviFromaPic(const std::string& picture, const std::string& output, double fps, const std::string& audio,
                        const Settings& settings, const LangDoc& lang, Prompt& prompt);

} // namespace mw
