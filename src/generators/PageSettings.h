#pragma once

#include "generators/PageModel.h"

#include <filesystem>
#include <string>

namespace mw {

// "TitleMenu", "ChaptersMenu" or "SetupMenu".
const char* SectionName(GeneratorKind kind);

// The layout a generator window starts with on a page of the given size, before its settings
// section is read: every label on the page, with the window's own captions.
PageDesign StartDesign(GeneratorKind kind, int width, int height);

// Reads the kind's section of the settings file. A key that is missing keeps its default: the
// start layout for rectangles and captions, the current menu name, the background and border
// pictures shipped in the program folder.
PageDesign LoadDefValues(GeneratorKind kind, const std::filesystem::path& settingsFile,
                         const std::filesystem::path& programFolder, const std::string& menuName, int width,
                         int height);

// Writes every key of the kind's section; false when the file could not be written.
bool SaveDefValues(GeneratorKind kind, const PageDesign& design, const std::filesystem::path& settingsFile);

} // namespace mw
