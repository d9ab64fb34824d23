#pragma once

#include "cli/CliCommands.h"

#include <functional>
#include <string>
#include <vector>

namespace mw {

class Project;

// The movies of the arguments made absolute; false after the complaint when one is missing.
bool ExistingMovies(const CliOptions& options, CliContext& context, std::vector<std::string>& movies);

// Runs the command on a project that starts empty and saves it to -o when the command succeeds;
// nothing is written otherwise.
int RunOnNewProject(const CliOptions& options, CliContext& context, const std::function<int(Project&)>& command);

// Whole projects from movies, saved to -o PROJECT.xml: one movie with chapters behind the black
// intro, or many movies behind a still title menu.
int RunMovieWithChapters(const CliOptions& options, CliContext& context);
int RunMoviesWithMenu(const CliOptions& options, CliContext& context);

} // namespace mw
