#pragma once

#include <array>
#include <cstdint>
#include <optional>

class QWidget;

namespace mw {

// The colour choice of the canvas's colour buttons: a colour dialog whose first three custom
// colours are the menu's three overlay colours (0x00BBGGRR). Returns the three custom colours
// as the user left them, nothing when cancelled.
std::optional<std::array<std::uint32_t, 3>> PickOverlayColor(QWidget* parent, const std::array<std::uint32_t, 3>& colors,
                                                             int button);

} // namespace mw
