#include "cli/CliCommands.h"

#include "document/CheckForErrors.h"
#include "document/Document.h"
#include "document/NormalizeFile.h"
#include "document/TreeViewToXml.h"
#include "document/XmlToTreeView.h"
#include "i18n/LanguageFiles.h"

#include <filesystem>
#include <ostream>

namespace mw {

bool ReadProject(const CliOptions& options, CliContext& context, Document& doc)
{
    if (options.Arguments.size() != 1) {
        context.Err << "menuwright-cli " << options.Command << ": expected one project file\n";
        return false;
    }
    const std::string& path = options.Arguments.front();
    if (!LoadXmlFile(path, doc, context.Ask))
        return false;
    doc.ProjectFile = std::filesystem::absolute(path).string();
    return true;
}

namespace {

int Save(const CliOptions& options, CliContext& context, Document& doc)
{
    const std::string target = options.Output.value_or(options.Arguments.front());
    std::string error;
    if (SaveTreeToFile(doc.Tree, target, error))
        return kExitOk;
    context.Err << "menuwright-cli: could not save " << target << ": " << error << '\n';
    return kExitUnsaved;
}

} // namespace

int Refuse(CliContext& context, const CliOptions& options, const std::string& why)
{
    context.Err << "menuwright-cli " << options.Command << ": " << why << '\n';
    return kExitUnreadable;
}

int RunResave(const CliOptions& options, CliContext& context)
{
    Document doc;
    if (!ReadProject(options, context, doc))
        return kExitUnreadable;
    return Save(options, context, doc);
}

int RunCheck(const CliOptions& options, CliContext& context)
{
    Document doc;
    if (!ReadProject(options, context, doc))
        return kExitUnreadable;
    return CheckForErrors(doc, context.Lang.LangDoc(), context.Ask, true) ? kExitOk : kExitFaults;
}

int RunNormalize(const CliOptions& options, CliContext& context)
{
    Document doc;
    if (!ReadProject(options, context, doc))
        return kExitUnreadable;
    NormalizeFile(doc, context.Lang.LangDoc(), context.Ask);
    return Save(options, context, doc);
}

} // namespace mw
