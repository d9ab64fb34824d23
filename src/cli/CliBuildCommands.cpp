#include "cli/CliBuildCommands.h"

#include "build/CreateDivX.h"
#include "cli/ConsoleFormHost.h"
#include "document/ProgramStart.h"
#include "document/Project.h"
#include "media/NewProject.h"

#include <filesystem>

namespace mw {

namespace fs = std::filesystem;

fs::path AbsolutePath(const std::string& path)
{
    std::error_code ec;
    const fs::path full = fs::absolute(path, ec);
    return ec ? fs::path(path) : full;
}

int RunBuild(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.size() != 1)
        return Refuse(context, options, "expected one project file");
    Project project(context.Program, context.Ask, context.Forms);
    project.ReadMovieFps = ReadMovieFps;
    if (!project.OpenFile(AbsolutePath(options.Arguments.front()).string()))
        return kExitUnreadable;
    DivXBuild build = BuildOfProject(project);
    if (options.Output)
        build.Output = AbsolutePath(*options.Output);
    build.PrepareOnly = options.PrepareOnly;
    ConsoleBuildLog log(context.Err);
    ToolRunner runner;
    switch (mnuCreateDivX_Click(build, context.Ask, runner, log)) {
    case BuildEnd::Done:
    case BuildEnd::Prepared:
        return kExitOk;
    case BuildEnd::Cancelled:
        return kExitCancelled;
    case BuildEnd::Failed:
        break;
    }
    return kExitFaults;
}

} // namespace mw
