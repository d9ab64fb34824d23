#pragma once

#include "cli/CliCommands.h"

namespace mw {

// What a remote control reaches in the project's menus: the dead ends and the menus and
// buttons no path reaches; exit 1 when there is a dead end.
int RunWalk(const CliOptions& options, CliContext& context);
// The menus and their links drawn by Graphviz into -o MAP.svg.
int RunMap(const CliOptions& options, CliContext& context);

} // namespace mw
