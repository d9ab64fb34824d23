#include "cli/CliCommands.h"

#include "cli/ConsoleFormHost.h"
#include "core/CommandGuard.h"
#include "document/ProgramStart.h"
#include "document/Project.h"
#include "media/NewProject.h"

#include <filesystem>
#include <ostream>
#include <system_error>

namespace fs = std::filesystem;

namespace mw {

namespace {

std::string AbsolutePath(const std::string& path)
{
    std::error_code ec;
    const fs::path full = fs::absolute(path, ec);
    return ec ? path : full.string();
}

} // namespace

int SaveProject(const CliOptions& options, Project& project)
{
    const bool saved = options.Output ? project.SaveFile(false, false, AbsolutePath(*options.Output))
                                      : project.SaveFile(false, false);
    return saved ? kExitOk : kExitUnsaved;
}

int RunOnProject(const CliOptions& options, CliContext& context, const std::function<int(Project&)>& command)
{
    if (options.Arguments.empty()) {
        context.Err << "menuwright-cli " << options.Command << ": expected a project file\n";
        return kExitUnreadable;
    }
    Project project(context.Program, context.Ask, context.Forms);
    project.ReadMovieFps = ReadMovieFps;
    if (!project.OpenFile(AbsolutePath(options.Arguments.front())))
        return kExitUnreadable;
    int status = kExitOk;
    if (!RunCommandCaught(context.Ask, [&] { status = command(project); }))
        return kExitUnexpected;
    if (context.Ask.Cancelled())
        return kExitCancelled;
    if (status != kExitOk)
        return status;
    return SaveProject(options, project);
}

int RunNew(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.size() != 1 || !options.Output) {
        context.Err << "menuwright-cli new: expected one movie file and -o PROJECT.xml\n";
        return kExitUnreadable;
    }
    const std::string movie = AbsolutePath(options.Arguments.front());
    std::error_code ec;
    if (!fs::is_regular_file(movie, ec)) {
        context.Err << "menuwright-cli new: cannot find " << movie << '\n';
        return kExitUnreadable;
    }
    if (options.DefLang)
        context.Program.Values.defLang = *options.DefLang;
    context.Forms.DefaultAudio = options.DefaultAudio;
    context.Forms.DefaultSubtitle = options.DefaultSubtitle;

    Project project(context.Program, context.Ask, context.Forms);
    if (!CreateNewFile(project, movie)) {
        context.Err << "menuwright-cli new: " << context.Forms.Error << '\n';
        return kExitUnreadable;
    }
    return SaveProject(options, project);
}

} // namespace mw
