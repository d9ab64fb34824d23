#pragma once

#include "core/Prompt.h"

#include <optional>
#include <string>
#include <vector>

namespace mw {

// The command line, taken apart: a command word, its plain arguments and the options.
struct CliOptions {
    std::string Command;
    std::vector<std::string> Arguments;
    std::optional<std::string> Output;       // -o FILE
    std::optional<PromptAnswer> Answer;      // --answer yes|no|cancel
    bool Help = false;
    bool Version = false;
};

struct CliParseResult {
    CliOptions Options;
    std::string Error; // empty when the line was understood
};

CliParseResult ParseCliOptions(const std::vector<std::string>& args);

std::string CliUsage();

} // namespace mw
