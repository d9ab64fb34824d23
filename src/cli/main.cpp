#include "cli/CliCommands.h"
#include "cli/CliOptions.h"
#include "cli/ConsolePrompt.h"
#include "core/ProgramFolder.h"
#include "core/Version.h"
#include "core/ProgramStart.h"

#include <iostream>

int main(int argc, char** argv)
{
    using namespace mw;
    const CliParseResult parsed = ParseCliOptions(std::vector<std::string>(argv + 1, argv + argc));
    const CliOptions& options = parsed.Options;
    if (options.Help) {
        std::cout << CliUsage();
        return kExitOk;
    }
    if (options.Version) {
        std::cout << "menuwright-cli " << kVersionText << '\n';
        return kExitOk;
    }
    if (!parsed.Error.empty() || options.Command.empty()) {
        std::cerr << "menuwright-cli: " << (parsed.Error.empty() ? "no command given" : parsed.Error) << "\n\n"
                  << CliUsage();
        return kExitUnreadable;
    }

    ProgramState program(ResolveProgramFolder(ExecutablePath()));
    StartProgram(program);
    ConsolePrompt prompt(std::cout, std::cerr, options.Answer);
    CliContext context{program.Lang, prompt, std::cerr};

    if (options.Command == "resave")
        return RunResave(options, context);
    if (options.Command == "check")
        return RunCheck(options, context);
    if (options.Command == "normalize")
        return RunNormalize(options, context);
    std::cerr << "menuwright-cli: unknown command " << options.Command << "\n\n" << CliUsage();
    return kExitUnreadable;
}
