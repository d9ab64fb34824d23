#pragma once

#include "build/OutsideMenuVideo.h"
#include "core/Prompt.h"
#include "core/settings/Settings.h"
#include "document/Document.h"
#include "i18n/LangDoc.h"

#include <filesystem>

namespace mw {

// Writes the copy of the project that the muxer reads into the build folder, under the project's
// file name: each menu source with a location points at the intermediate ".divx" that the
// overlay script leaves there, a picture background first made into its menu video ("<id>_<name>.avi",
// `fps` frames a second), and every location as the tools see it. The open document ends as it
// began, byte for byte, whatever happens. False, after the message, when the copy could not be
// written.
bool ReplaceAviNamesForOverlaysSaveAndReverse(Document& doc, const std::filesystem::path& programFolder, double fps,
                                              const Settings& settings, const LangDoc& lang, Prompt& prompt,
                                              MenuVideoTools* tools = nullptr);

} // namespace mw
