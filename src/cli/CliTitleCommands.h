#pragma once

#include "cli/CliCommands.h"

namespace mw {

struct ChapForm;

// Fills the chapter dialog as the user would for the mode the options choose: 0 when it is
// accepted, 1 when the dialog refused it (it said why), 2 for values the dialog could not take.
int FillChapForm(ChapForm& form, const CliOptions& options, Project& project, CliContext& context);

// Titles and chapters of a project, each saved back as RunOnProject does.
int RunAddTitle(const CliOptions& options, CliContext& context);
int RunChapters(const CliOptions& options, CliContext& context);
int RunRefreshTitle(const CliOptions& options, CliContext& context);
int RunRemoveTitle(const CliOptions& options, CliContext& context);

} // namespace mw
