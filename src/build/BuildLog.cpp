#include "build/BuildLog.h"

namespace mw {

namespace {

bool Report(const ToolRun& run, const std::filesystem::path& program, const std::vector<std::string>& arguments,
            const std::filesystem::path& folder, BuildLog& log, Prompt& prompt)
{
    switch (run.Result) {
    case ToolRun::Outcome::Finished:
        log.Line(program.filename().string() + " ended with code " + std::to_string(run.ExitCode));
        return true;
    case ToolRun::Outcome::NoWine:
        log.Line(kByHandLine);
        log.Line(HandCommand(program, arguments, folder));
        prompt.Message(NoWineMessage(), {}, PromptIcon::Warning);
        return false;
    case ToolRun::Outcome::NotStarted:
        log.Line("Could not start " + program.string());
        prompt.Message("Could not start " + program.string(), {}, PromptIcon::Critical);
        return false;
    case ToolRun::Outcome::Cancelled:
        log.Line("Cancelled. The prepared files stay in " + folder.string());
        return false;
    }
    return false;
}

} // namespace

std::string HandCommand(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                        const std::filesystem::path& folder)
{
    std::string command = "cd \"" + folder.string() + "\" && wine";
    for (const std::string& argument : ToolRunner::WineArguments(program, arguments))
        command += argument.find_first_of(" \"\\") == std::string::npos ? " " + argument : " '" + argument + "'";
    return command;
}

std::string NoWineMessage()
{
    return std::string("Wine is not installed, so the Windows tools cannot run. Install the package \"") +
           kWinePackage + "\" (sudo apt install " + kWinePackage +
           ") and build again. Every prepared file stays in place; the log says how to run them by hand.";
}

bool RunTool(ToolRunner& runner, const std::filesystem::path& program, const std::vector<std::string>& arguments,
             const std::filesystem::path& folder, BuildLog& log, Prompt& prompt)
{
    log.Line("> " + program.filename().string());
    const ToolRun run = runner.Run(program, arguments, folder, [&log](const std::string& line) { log.Line(line); });
    return Report(run, program, arguments, folder, log, prompt);
}

bool StartTool(ToolRunner& runner, const std::filesystem::path& program, const std::vector<std::string>& arguments,
               const std::filesystem::path& folder, BuildLog& log, Prompt& prompt)
{
    const ToolRun run = runner.Start(program, arguments, folder);
    if (run.Finished()) {
        log.Line("Started " + program.filename().string());
        return true;
    }
    return Report(run, program, arguments, folder, log, prompt);
}

} // namespace mw
