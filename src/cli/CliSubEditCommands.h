#pragma once

#include "cli/CliCommands.h"

namespace mw {

// The highlight areas of a picture made buttons, with their overlays, of a menu; prints the new
// buttons' identifiers.
int RunButtonsFromPicture(const CliOptions& options, CliContext& context);

} // namespace mw
