#include "cli/CliBuildCommands.h"
#include "cli/CliCommands.h"
#include "cli/CliDvdCommands.h"
#include "cli/CliGeneratorCommands.h"
#include "cli/CliMenuCommands.h"
#include "cli/CliOptions.h"
#include "cli/CliOverlayCommands.h"
#include "cli/CliPlayerCommands.h"
#include "cli/CliSubEditCommands.h"
#include "cli/CliTitleCommands.h"
#include "cli/CliWholeProjectCommands.h"
#include "cli/CliWizardCommands.h"
#include "cli/ConsoleFormHost.h"
#include "cli/ConsolePrompt.h"
#include "core/CommandGuard.h"
#include "core/ProgramFolder.h"
#include "core/Version.h"
#include "document/ProgramStart.h"
#include "media/AviCache.h"

#include <iostream>
#include <map>
#include <string>

using namespace mw;

namespace {

using CommandRunner = int (*)(const CliOptions&, CliContext&);

const std::map<std::string, CommandRunner, std::less<>>& Commands()
{
    static const std::map<std::string, CommandRunner, std::less<>> commands = {
        {"resave", RunResave},
        {"check", RunCheck},
        {"normalize", RunNormalize},
        {"new", RunNew},
        {"tracks", RunTracks},
        {"keyframe", RunKeyframe},
        {"grab", RunGrab},
        {"streamname", RunStreamName},
        {"pic2avi", RunPic2Avi},
        {"add-title", RunAddTitle},
        {"chapters", RunChapters},
        {"refresh-title", RunRefreshTitle},
        {"remove-title", RunRemoveTitle},
        {"overlay", RunOverlay},
        {"overlay-from-picture", RunOverlayFromPicture},
        {"add-lang", RunAddLang},
        {"add-menu", RunAddMenu},
        {"remove-menu", RunRemoveMenu},
        {"remove-lang", RunRemoveLang},
        {"menus", RunMenus},
        {"add-button", RunAddButton},
        {"remove-button", RunRemoveButton},
        {"set-nav", RunSetNav},
        {"set-action", RunSetAction},
        {"set-overlay", RunSetOverlay},
        {"set-colors", RunSetColors},
        {"align", RunAlign},
        {"same-size", RunSameSize},
        {"move-button", RunMoveButton},
        {"export-template", RunExportTemplate},
        {"insert-template", RunInsertTemplate},
        {"build", RunBuild},
        {"dvd", RunDvd},
        {"chapter-menu", RunChapterMenu},
        {"title-menu", RunTitleMenu},
        {"setup-menu", RunSetupMenu},
        {"movie-with-chapters", RunMovieWithChapters},
        {"movies-with-menu", RunMoviesWithMenu},
        {"wizard", RunWizard},
        {"walk", RunWalk},
        {"map", RunMap},
        {"buttons-from-picture", RunButtonsFromPicture},
    };
    return commands;
}

int RunCommand(const CliOptions& options, CliContext& context)
{
    const auto found = Commands().find(options.Command);
    if (found != Commands().end())
        return found->second(options, context);
    context.Err << "menuwright-cli: unknown command " << options.Command << "\n\n" << CliUsage();
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
    AviCacheScope movies; // one command: each movie's index is read once
    // Whatever a command throws is told as a message and ends it without saving.
    int status = kExitUnexpected;
    RunCommandCaught(prompt, [&] { status = RunCommand(options, context); });
    return status;
}
