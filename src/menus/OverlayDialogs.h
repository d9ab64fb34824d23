#pragma once

#include "render/OverlayFromPicture.h"

#include <string>
#include <vector>

namespace mw {

class Project;

// What frmCreateOverFromPic shows and what it gives back: the picture, where the overlay will be
// saved, and the picture reduced to 16 colours once a transparent colour is picked.
struct CreateOverFromPicForm {
    std::string Picture; // lblFileName
    std::string Target;  // the bitmap of the overlays folder that the overlay becomes
    OverlayFromPicture Overlay;
    bool Accepted = false;
};

// The picture for an overlay: "Select picture" with bitmaps, JPEG and GIF pictures, starting in
// the last folder used, which then follows the choice. Empty when cancelled.
std::string AskForOverlayPicture(Project& project);

// The selected button gets a text overlay from its extra info: the text panel shows the text
// attributes (missing ones at their defaults) and all of them are written back, in one undo
// step. A tag that does not parse is "Error in Text overlay", and nothing changes. False when
// nothing changed.
bool CreateTextOverlay(Project& project);

// A picture becomes a bitmap of the overlays folder, named after it: asked for, confirmed when
// the name is taken, reduced in frmCreateOverFromPic and saved with the painting colours in its
// first four entries. The overlay menus are then filled again and the selection shows the new
// overlay, in one undo step. A cancel at any question, or a bitmap that cannot be written,
// leaves the project and the folder as they were; false then.
bool CreateOverlayFromPic(Project& project);
// The same for a picture chosen already.
bool CreateOverlayFromPic(Project& project, const std::string& picture);

// The colour buttons: the menu's three overlay colours through the colour dialog. Blue, the
// transparent colour, is refused with a message; a cancel or a refusal changes nothing.
bool SelectColor(Project& project);

} // namespace mw
