#pragma once

#include "cli/CliCommands.h"

#include <optional>
#include <string>
#include <utility>

namespace mw {

// The valued options of the overlay commands (--width, --colors, --text, --font, --font-size,
// --outline, --shadow, --transparent); the parser keeps them in CliOptions::Values.
bool IsOverlayOption(const std::string& option);

// The pixel of --transparent, X,Y (0,0 when not given); nothing when the value is no such pair.
std::optional<std::pair<int, int>> TransparentPixel(const CliOptions& options);

// An overlay of a button size as a 4-bit BMP: a special overlay ("*Rect", "*Oval", "*Shape1",
// "*Text") painted, or a file of the overlay library fitted with its stretch mode; the colours
// go into entries 1 to 3.
int RunOverlay(const CliOptions& options, CliContext& context);

// A picture reduced to 16 colours with the colour of one pixel transparent, saved with the
// overlay colours in its first four entries.
int RunOverlayFromPicture(const CliOptions& options, CliContext& context);

} // namespace mw
