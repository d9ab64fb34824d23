#pragma once

#include "document/TreeQueries.h"
#include "render/cDIB.h"

#include <string>

namespace mw {

class Project;

// A button's overlay as a player shows it over the menu: the picture in the menu's three
// colours and where it stands on the menu's picture.
struct PlayerOverlay {
    cDIB Picture;
    ButtonShape Where;
};

// Paints the overlay of a button of a menu as the canvas would, from the menu's own data: the
// canvas is neither read nor changed, so a worker may paint while the window shows it. False
// when the menu or the button is gone, or the menu's background movie is missing (the canvas
// would ask about it; a player only shows less).
bool PaintButtonOverlay(const Project& project, const std::string& menuID, const std::string& buttonID,
                        PlayerOverlay& overlay);

} // namespace mw
