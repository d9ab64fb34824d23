#pragma once

#include "cli/CliOptions.h"

#include <iosfwd>

namespace mw {

class Language;
class Prompt;

enum CliExit : int { kExitOk = 0, kExitFaults = 1, kExitUnreadable = 2, kExitUnsaved = 3 };

// What every command needs: the interface language for its texts and the user's answers.
struct CliContext {
    const Language& Lang;
    Prompt& Ask;
    std::ostream& Err;
};

int RunResave(const CliOptions& options, CliContext& context);
int RunCheck(const CliOptions& options, CliContext& context);
int RunNormalize(const CliOptions& options, CliContext& context);

} // namespace mw
