#pragma once

#include "build/ToolRunner.h"
#include "core/Prompt.h"

#include <filesystem>
#include <string>
#include <vector>

namespace mw {

// Where a build shows what it does: the log window of the program, the console of the command
// line, a recording in the tests. Calls may come from a thread other than the interface's.
class BuildLog {
public:
    virtual ~BuildLog() = default;

    // The step under way, and how far the build has come.
    virtual void Step(const std::string& text) = 0;
    virtual void Progress(int done, int total) = 0;
    // One line of a tool's output, or one of ours.
    virtual void Line(const std::string& text) = 0;
    // The muxer's log, non-empty, for the user to read.
    virtual void ShowTextFile(const std::filesystem::path& file) = 0;
    // A finished result, opened as the desktop opens such a file.
    virtual void OpenResult(const std::filesystem::path& file) = 0;
};

// "Wine is not installed", with the package to install, as one message.
std::string NoWineMessage();

// The shell command that runs a tool by hand through Wine, in its folder.
std::string HandCommand(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                        const std::filesystem::path& folder);
// The first line of the log's note on running the steps by hand.
inline constexpr const char* kByHandLine = "Wine is missing. The prepared files stay; to run the steps by hand:";

// Runs a tool, its output going into the log, and waits for it. Without Wine the user gets the
// one message, and the log says how to run the tool by hand; every file stays. True when the
// tool ran to its end (whatever its exit code: the outside tools tell their failures otherwise).
bool RunTool(ToolRunner& runner, const std::filesystem::path& program, const std::vector<std::string>& arguments,
             const std::filesystem::path& folder, BuildLog& log, Prompt& prompt);
// The same for a tool that nothing waits for.
bool StartTool(ToolRunner& runner, const std::filesystem::path& program, const std::vector<std::string>& arguments,
               const std::filesystem::path& folder, BuildLog& log, Prompt& prompt);

} // namespace mw
