#pragma once

#include "core/Prompt.h"
#include "core/settings/Settings.h"
#include "i18n/LangDoc.h"

#include <string>
#include <vector>

namespace mw {

struct MenuVideoTools;

// The two ways a menu gets its video from pictures. Both ask for an empty output name (and
// add ".avi" when it is missing) and for missing pictures, delete an old output, and make the
// video by `method`, a value of MethodForPicToMenu. True when the video was made. The methods of
// the outside tools need `tools`; without it they fail.

// One frame per picture, in the order given.
bool CreateAviFromPics(const std::vector<std::string>& pictures, const std::string& output, double fps,
                       const std::string& audio, int method, const Settings& settings, const LangDoc& lang,
                       Prompt& prompt, MenuVideoTools* tools = nullptr);
// Five seconds of one picture; a missing picture is reported ("Image not found").
bool CreateAviFromaPic(const std::string& picture, const std::string& output, double fps, const std::string& audio,
                       int method, const Settings& settings, const LangDoc& lang, Prompt& prompt,
                       MenuVideoTools* tools = nullptr);

} // namespace mw
