#pragma once

#include "cli/CliCommands.h"

namespace mw {

// Whole projects from movies, saved to -o PROJECT.xml: one movie with chapters behind the black
// intro, or many movies behind a still title menu.
int RunMovieWithChapters(const CliOptions& options, CliContext& context);
int RunMoviesWithMenu(const CliOptions& options, CliContext& context);

} // namespace mw
