#pragma once

#include "core/Prompt.h"

#include <filesystem>

namespace mw {

// The files a new program folder starts with, drawn by our own code: the overlay library
// (overlays/*.bmp, frames with "_" names that keep their borders at any size, lower corners
// with "}", an underline, a bracket and an arrow; overlays/frames/ for the chapter menus),
// the thumbnail border frames/DVD_Button_2.gif, the background Templates/Pictures/sky.jpg,
// the picture of the subtitle editor's settings DVDSubEditSettings.jpg and the black intro clip
// black.avi. Files are replaced. On failure the message has been shown
// and false is returned.
bool MakeStarterLibrary(const std::filesystem::path& folder, Prompt& prompt);

} // namespace mw
