#pragma once

#include "render/cDIB.h"

#include <array>
#include <filesystem>
#include <string>
#include <vector>

namespace mw {

// A menu button as a DVD subpicture sees it.
struct SubpictureButton {
    // The button's place in the DVD frame, in pixels.
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
    // Its overlay, a palette picture whose indexes 1 to 3 are the three colours and 0 (and
    // anything above 3) is clear. Stretched to the rectangle when its size differs.
    cDIB Overlay;
};

// The three colours of indexes 1, 2 and 3.
using SubpictureColours = std::array<Colour, 3>;

// Writes the highlight and the select picture of a menu for spumux: full-frame palette PNGs of
// four entries, entry 0 transparent, the buttons' overlays drawn in their rectangles. False with
// the reason when a file cannot be written; neither file is then left behind.
bool WriteSubpictures(const std::vector<SubpictureButton>& buttons, int frameWidth, int frameHeight,
                      const SubpictureColours& highlight, const SubpictureColours& select,
                      const std::filesystem::path& highlightPng, const std::filesystem::path& selectPng,
                      std::string& error);

} // namespace mw
