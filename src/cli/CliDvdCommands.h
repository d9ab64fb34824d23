#pragma once

#include "cli/CliCommands.h"

namespace mw {

// dvd PROJECT -o FOLDER [--iso OUT.iso] [--standard pal|ntsc] [--lang CODE]: the project as a
// DVD-Video. Exit 0 when it is made, 1 when a tool is missing or failed or the disc cannot hold
// the project (the old FOLDER and image stay), 2 when the command line or the project cannot be
// read. The project is never saved.
int RunDvd(const CliOptions& options, CliContext& context);

} // namespace mw
