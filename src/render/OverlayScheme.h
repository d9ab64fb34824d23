#pragma once

#include "render/cDIB.h"

#include <array>
#include <vector>

namespace mw {

// An overlay picture uses four palette indexes: 0 transparent, 1 lines and text body, 2 the
// frame of a rectangle and the text outline, 3 the text shadow. It is painted in these pure
// colours so that every pixel lands on its index; the menu's own colours then replace entries
// 1 to 3 of the table while the pixels stay.
constexpr Colour kOverlayBlue = Rgb(0, 0, 255);
constexpr Colour kOverlayRed = Rgb(255, 0, 0);
constexpr Colour kOverlayYellow = Rgb(255, 255, 0);
constexpr Colour kOverlayWhite = Rgb(255, 255, 255);
constexpr std::array<Colour, 4> kOverlayPaintColours = {kOverlayBlue, kOverlayRed, kOverlayYellow, kOverlayWhite};

// The 16-entry table of an overlay while it is painted: the four colours above, then black.
std::vector<Colour> OverlayColorTable();

// A new 4-bit picture of the size with that table, all pixels on index 0. Empty when the size
// cannot be made.
cDIB NewOverlayDib(int width, int height);

} // namespace mw
