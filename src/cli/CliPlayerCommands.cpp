#include "cli/CliPlayerCommands.h"

#include "document/Document.h"
#include "menuplayer/MenuWalk.h"

#include <iostream>

namespace mw {

int RunWalk(const CliOptions& options, CliContext& context)
{
    Document doc;
    if (!ReadProject(options, context, doc))
        return kExitUnreadable;
    WalkReport report;
    std::string error;
    if (!WalkMenus(doc, options.DefLang.value_or(""), report, error))
        return Refuse(context, options, error);
    std::cout << WalkText(report);
    return report.DeadEnds.empty() ? kExitOk : kExitFaults;
}

int RunMap(const CliOptions& options, CliContext& context)
{
    if (!options.Output)
        return Refuse(context, options, "needs -o MAP.svg");
    Document doc;
    if (!ReadProject(options, context, doc))
        return kExitUnreadable;
    std::string error;
    if (!WriteMenuMap(doc, *options.Output, error)) {
        context.Err << "menuwright-cli map: " << error << '\n';
        return kExitFaults;
    }
    return kExitOk;
}

} // namespace mw
