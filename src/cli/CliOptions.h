#pragma once

#include "core/Prompt.h"

#include <map>
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
    std::optional<int> DefaultAudio;         // --default-audio N|none; none is -1
    std::optional<int> DefaultSubtitle;      // --default-subtitle N|none
    std::optional<std::string> DefLang;      // --lang CODE
    bool Next = false;                       // --next
    std::optional<double> Fps;               // --fps F
    std::optional<std::string> Audio;        // --audio FILE
    std::optional<std::string> ChapCount;    // --count N
    std::optional<std::string> ChapEvery;    // --every MINUTES
    std::optional<std::string> ChapImport;   // --import FILE.txt
    std::optional<std::string> ChapManual;   // --manual START-END[:NAME],...
    bool AllTitles = false;                  // --all
    std::map<std::string, std::string> Values; // the overlay commands' options, by name
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
