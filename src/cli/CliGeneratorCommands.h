#pragma once

#include "cli/CliCommands.h"

namespace mw {

// Menus made by the generators with the layout of their settings section, as the windows make
// them; each prints the new menus' identifiers and saves the project in place.
int RunChapterMenu(const CliOptions& options, CliContext& context);
int RunTitleMenu(const CliOptions& options, CliContext& context);
int RunSetupMenu(const CliOptions& options, CliContext& context);

} // namespace mw
