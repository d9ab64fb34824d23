#pragma once

#include "cli/CliCommands.h"

namespace mw {

// Titles and chapters of a project, each saved back as RunOnProject does.
int RunAddTitle(const CliOptions& options, CliContext& context);
int RunChapters(const CliOptions& options, CliContext& context);
int RunRefreshTitle(const CliOptions& options, CliContext& context);
int RunRemoveTitle(const CliOptions& options, CliContext& context);

} // namespace mw
