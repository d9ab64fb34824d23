#include "cli/CliDvdCommands.h"

#include "cli/CliBuildCommands.h"
#include "cli/ConsoleFormHost.h"
#include "document/Project.h"
#include "dvd/DvdExport.h"
#include "media/NewProject.h"

namespace mw {

int RunDvd(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.size() != 1)
        return Refuse(context, options, "expected one project file");
    if (!options.Output)
        return Refuse(context, options, "-o FOLDER names the folder of the disc");
    DvdExportRequest request;
    request.Target = AbsolutePath(*options.Output);
    if (options.Menu.Iso)
        request.Iso = AbsolutePath(*options.Menu.Iso);
    if (options.Menu.Standard) {
        request.Standard = ParseStandard(*options.Menu.Standard);
        if (!request.Standard)
            return Refuse(context, options, "--standard takes pal or ntsc");
    }
    request.Language = options.DefLang.value_or("");

    Project project(context.Program, context.Ask, context.Forms);
    project.ReadMovieFps = ReadMovieFps;
    if (!project.OpenFile(AbsolutePath(options.Arguments.front()).string()))
        return kExitUnreadable;
    ConsoleBuildLog log(context.Err);
    ToolRunner runner;
    std::string error;
    if (ExportDvd(project, request, runner, log, error))
        return kExitOk;
    project.Ask().Message(error);
    return kExitFaults;
}

} // namespace mw
