#pragma once

#include "build/BuildLog.h"
#include "build/MuxScripts.h"
#include "build/ToolRunner.h"
#include "core/Prompt.h"
#include "document/Document.h"
#include "i18n/LangDoc.h"
#include "render/cDIB.h"

#include <array>
#include <filesystem>
#include <string>

namespace mw {

// Paints one 4-bit picture of the whole menu per subtitle track of the menu track list into
// the build folder, transparent (index 0) but for the button's overlay, and notes its
// rectangle in rects, which it fills anew. A track that lacks what it needs is skipped without
// a word; a painter that fails tells why and leaves its picture blank. `colours` are the
// current overlay colours, which a menu's own colours override for its pictures. The log shows
// the menu under way; a cancelled runner stops the work. False, after the message, when a
// picture could not be written, or when cancelled.
bool CreateOverlays(const Document& doc, const std::filesystem::path& programFolder,
                    const std::array<Colour, 3>& colours, const LangDoc& lang, Prompt& prompt, BuildLog& log,
                    const ToolRunner& runner, OverlayRects& rects);

} // namespace mw
