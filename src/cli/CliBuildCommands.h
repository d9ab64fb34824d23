#pragma once

#include "build/BuildLog.h"
#include "cli/CliCommands.h"

#include <filesystem>
#include <fstream>
#include <ostream>
#include <string>

namespace mw {

// The steps and the tools' output of a build or an export on standard error, so that standard
// output holds only the messages, as with the other commands.
class ConsoleBuildLog : public BuildLog {
public:
    explicit ConsoleBuildLog(std::ostream& err) : err_(err) {}
    void Step(const std::string& text) override { err_ << "== " << text << '\n'; }
    void Progress(int done, int total) override { err_ << "   " << done << " of " << total << '\n'; }
    void Line(const std::string& text) override { err_ << text << '\n'; }
    void ShowTextFile(const std::filesystem::path& file) override
    {
        err_ << "----- " << file.string() << " -----\n" << std::ifstream(file).rdbuf() << '\n';
    }
    void OpenResult(const std::filesystem::path& file) override { err_ << "Built " << file.string() << '\n'; }

private:
    std::ostream& err_;
};

// A path of the command line, made absolute from the working folder.
std::filesystem::path AbsolutePath(const std::string& path);

// build PROJECT [--prepare-only] [-o OUT.divx]: the build of the Create DivX command with the
// settings of the program folder. Exit 0 when the muxer left an empty log (or, with
// --prepare-only, when every file is written), 1 when a tool is missing or failed (the files
// stay in the build folder), 2 when the project cannot be read, 4 when cancelled.
int RunBuild(const CliOptions& options, CliContext& context);

} // namespace mw
