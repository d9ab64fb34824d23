#pragma once

#include "core/Prompt.h"
#include "document/MenuCanvas.h"

#include <filesystem>
#include <string>

namespace mw {

// Fills the overlay menus from the overlays folder: its bitmaps at the top, and its first seven
// sub-folders as submenus ("No overlays", disabled, for one without bitmaps). More folders are
// said once and left out. Names are taken in sorted order.
void LoadOverlaysToMenu(const std::filesystem::path& overlaysFolder, OverlayMenus& menus, Prompt& prompt);

// The item that shows a stored Shape value: a special item for "*...", else a folder's item for
// "folder\name" or a top item, compared without case and without ".bmp". Nothing when none fits.
OverlayCheck SetOverlayCheckItem(const OverlayMenus& menus, const std::string& name);

} // namespace mw
