#pragma once

#include <array>
#include <cstdint>

class QWidget;

namespace mw {

// The colour dialog of the overlay colour buttons: a menu's three colours are its first three
// custom colours, and come back as the user left them. False when cancelled.
bool ShowOverlayColorDialog(std::array<std::uint32_t, 3>& colors, QWidget* parent);

} // namespace mw
