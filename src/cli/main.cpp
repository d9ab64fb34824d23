#include "cli/CliCommands.h"
#include "cli/CliOptions.h"
#include "cli/CliTitleCommands.h"
#include "cli/ConsoleFormHost.h"
#include "cli/ConsolePrompt.h"
#include "core/CommandGuard.h"
#include "core/ProgramFolder.h"
#include "core/Version.h"
#include "document/ProgramStart.h"

#include <iostream>

using namespace mw;

namespace {

int RunCommand(const CliOptions& options, CliContext& context)
{
    const std::string& command = options.Command;
    if (command == "resave")
        return RunResave(options, context);
    if (command == "check")
        return RunCheck(options, context);
    if (command == "normalize")
        return RunNormalize(options, context);
    if (command == "new")
        return RunNew(options, context);
    if (command == "tracks")
        return RunTracks(options, context);
    if (command == "keyframe")
        return RunKeyframe(options, context);
    if (command == "grab")
        return RunGrab(options, context);
    if (command == "streamname")
        return RunStreamName(options, context);
    if (command == "pic2avi")
        return RunPic2Avi(options, context);
    if (command == "add-title")
        return RunAddTitle(options, context);
    if (command == "chapters")
        return RunChapters(options, context);
    if (command == "refresh-title")
        return RunRefreshTitle(options, context);
    if (command == "remove-title")
        return RunRemoveTitle(options, context);
    context.Err << "menuwright-cli: unknown command " << command << "\n\n" << CliUsage();
    return kExitUnreadable;
}

} // namespace

int main(int argc, char** argv)
{
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
    ConsoleFormHost forms;
    CliContext context{program.Lang, prompt, std::cerr, program, forms};
    // Whatever a command throws is told as a message and ends it without saving.
    int status = kExitUnexpected;
    RunCommandCaught(prompt, [&] { status = RunCommand(options, context); });
    return status;
}
