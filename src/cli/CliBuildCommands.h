#pragma once

#include "cli/CliCommands.h"

namespace mw {

// build PROJECT [--prepare-only] [-o OUT.divx]: the build of the Create DivX command with the
// settings of the program folder. Exit 0 when the muxer left an empty log (or, with
// --prepare-only, when every file is written), 1 when a tool is missing or failed (the files
// stay in the build folder), 2 when the project cannot be read, 4 when cancelled.
int RunBuild(const CliOptions& options, CliContext& context);

} // namespace mw
