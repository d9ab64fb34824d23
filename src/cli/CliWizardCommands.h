#pragma once

#include "cli/CliCommands.h"

namespace mw {

// The project wizard over the movies, saved to -o PROJECT.xml: chapters for every title when
// asked for, then the menus chosen, made and linked; prints the files made.
int RunWizard(const CliOptions& options, CliContext& context);

} // namespace mw
