#include "cli/CliCommands.h"
#include "cli/CliMenuCommands.h"
#include "cli/CliOptions.h"
#include "cli/CliTitleCommands.h"
#include "cli/ConsoleFormHost.h"
#include "cli/ConsolePrompt.h"
#include "core/ProgramFolder.h"
#include "core/Version.h"
#include "core/ProgramStart.h"

#include <iostream>

int main(int argc, char** argv)
{
    using namespace mw;
    MenuCliOptions menuOptions;
    const CliParseResult parsed = ParseMenuCommandLine(std::vector<std::string>(argv + 1, argv + argc), menuOptions);
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

    if (options.Command == "resave")
        return RunResave(options, context);
    if (options.Command == "check")
        return RunCheck(options, context);
    if (options.Command == "normalize")
        return RunNormalize(options, context);
    if (options.Command == "new")
        return RunNew(options, context);
    if (options.Command == "tracks")
        return RunTracks(options, context);
    if (options.Command == "keyframe")
        return RunKeyframe(options, context);
    if (options.Command == "grab")
        return RunGrab(options, context);
    if (options.Command == "streamname")
        return RunStreamName(options, context);
    if (options.Command == "pic2avi")
        return RunPic2Avi(options, context);
    if (options.Command == "add-title")
        return RunAddTitle(options, context);
    if (options.Command == "chapters")
        return RunChapters(options, context);
    if (options.Command == "refresh-title")
        return RunRefreshTitle(options, context);
    if (options.Command == "remove-title")
        return RunRemoveTitle(options, context);
    if (options.Command == "add-lang")
        return RunAddLang(options, context);
    if (options.Command == "add-menu")
        return RunAddMenu(options, menuOptions, context);
    if (options.Command == "remove-menu")
        return RunRemoveMenu(options, context);
    if (options.Command == "remove-lang")
        return RunRemoveLang(options, context);
    if (options.Command == "menus")
        return RunMenus(options, context);
    if (options.Command == "add-button")
        return RunAddButton(options, menuOptions, context);
    if (options.Command == "remove-button")
        return RunRemoveButton(options, context);
    if (options.Command == "set-nav")
        return RunSetNav(options, context);
    if (options.Command == "set-action")
        return RunSetAction(options, context);
    if (options.Command == "set-overlay")
        return RunSetOverlay(options, menuOptions, context);
    if (options.Command == "set-colors")
        return RunSetColors(options, context);
    if (options.Command == "align")
        return RunAlign(options, context);
    if (options.Command == "same-size")
        return RunSameSize(options, context);
    if (options.Command == "move-button")
        return RunMoveButton(options, context);
    std::cerr << "menuwright-cli: unknown command " << options.Command << "\n\n" << CliUsage();
    return kExitUnreadable;
}
