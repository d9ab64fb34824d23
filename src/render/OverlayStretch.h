#pragma once

#include "render/cDIB.h"

#include <string>

namespace mw {

// How a file overlay fits a button of another size.
enum class OverlayStretchMode {
    Whole = 0,        // the whole picture scaled to the whole button
    NineSlice = 1,    // 15-pixel borders: corners unscaled, edges stretched along, middle empty
    LowerCorners = 2, // only the two lower 15 by 15 corners, unscaled
};

// From the character before the last "." of the file name: "_" nine-slice, "}" lower corners.
OverlayStretchMode StretchModeOfFile(const std::string& file);

// Copies the source into the target, which keeps its size; the pixels keep their indexes.
// Nothing is checked: a target under 30 pixels makes the nine-slice's edges mirrored or empty.
void StretchOverlay(const cDIB& source, cDIB& target, OverlayStretchMode mode);

} // namespace mw
