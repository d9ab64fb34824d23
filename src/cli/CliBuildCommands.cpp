#include "cli/CliBuildCommands.h"

#include "build/CreateDivX.h"
#include "cli/ConsoleFormHost.h"
#include "document/ProgramStart.h"
#include "document/Project.h"
#include "media/NewProject.h"

#include <filesystem>
#include <fstream>
#include <ostream>

namespace mw {

namespace fs = std::filesystem;

namespace {

// The build's steps and the tools' output on standard error, so that standard output holds
// only the messages, as with the other commands.
class ConsoleBuildLog : public BuildLog {
public:
    explicit ConsoleBuildLog(std::ostream& err) : err_(err) {}
    void Step(const std::string& text) override { err_ << "== " << text << '\n'; }
    void Progress(int done, int total) override { err_ << "   " << done << " of " << total << '\n'; }
    void Line(const std::string& text) override { err_ << text << '\n'; }
    void ShowTextFile(const fs::path& file) override
    {
        err_ << "----- " << file.string() << " -----\n" << std::ifstream(file).rdbuf() << '\n';
    }
    void OpenResult(const fs::path& file) override { err_ << "Built " << file.string() << '\n'; }

private:
    std::ostream& err_;
};

fs::path Absolute(const std::string& path)
{
    std::error_code ec;
    const fs::path full = fs::absolute(path, ec);
    return ec ? fs::path(path) : full;
}

} // namespace

int RunBuild(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.size() != 1)
        return Refuse(context, options, "expected one project file");
    Project project(context.Program, context.Ask, context.Forms);
    project.ReadMovieFps = ReadMovieFps;
    if (!project.OpenFile(Absolute(options.Arguments.front()).string()))
        return kExitUnreadable;
    DivXBuild build = BuildOfProject(project);
    if (options.Output)
        build.Output = Absolute(*options.Output);
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
