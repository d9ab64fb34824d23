#pragma once

#include <atomic>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class QProcess;

namespace mw {

// The Debian package that brings the `wine` command.
inline constexpr const char* kWinePackage = "wine";

struct ToolRun {
    enum class Outcome { Finished, NoWine, NotStarted, Cancelled };
    Outcome Result = Outcome::NotStarted;
    int ExitCode = -1; // of a finished run; the build never reads it, the log window shows it

    bool Finished() const { return Result == Outcome::Finished; }
};

// Files in place of a program's standard input and output. Without an input file it reads
// an empty input; without an output file its output comes as lines with its errors.
struct ToolStreams {
    std::filesystem::path Input;
    std::filesystem::path Output;
};

// Runs the outside tools: the Windows ones (the muxer, the encoders, the batch files we write for
// them) through Wine, a ".bat" through "cmd /c", anything else as a program; Linux programs as
// they are. One runner serves one build: once cancelled, it starts nothing more.
class ToolRunner {
public:
    using LineSink = std::function<void(const std::string& line)>;

    // `wine`: the command that runs Windows programs, looked up on PATH when it has no "/".
    explicit ToolRunner(std::string wine = "wine");

    bool HaveWine() const;

    // What follows the Wine command: the program as the tool sees it, then the arguments.
    static std::vector<std::string> WineArguments(const std::filesystem::path& program,
                                                  const std::vector<std::string>& arguments);

    // Starts the program in `folder`, hands each line of its output (standard output and error
    // together, line ends cut) to onLine as it comes, and waits for it to end.
    ToolRun Run(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                const std::filesystem::path& folder, const LineSink& onLine);
    // Runs a Linux program (a path, or a name looked up on PATH) as Run runs a Windows tool,
    // with the same cancel. NotStarted when it cannot be found or started.
    ToolRun RunNative(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                      const std::filesystem::path& folder, const LineSink& onLine, const ToolStreams& streams = {});
    // Starts the program and lets it run on its own; Finished once it has started.
    ToolRun Start(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                  const std::filesystem::path& folder);

    // From any thread: stops the running tool with everything it started, and every later run.
    void Cancel();
    bool Cancelled() const { return cancelled_; }

private:
    std::string WineProgram() const;
    // Sets the process up to run the program through Wine; the outcome instead when it must not start.
    std::optional<ToolRun> PrepareWine(QProcess& process, const std::filesystem::path& program,
                                       const std::vector<std::string>& arguments,
                                       const std::filesystem::path& folder) const;
    // Starts the prepared process and passes its lines until it ends or the runner is cancelled.
    ToolRun Wait(QProcess& process, const LineSink& onLine) const;

    std::string wine_;
    std::atomic<bool> cancelled_ = false;
};

} // namespace mw
