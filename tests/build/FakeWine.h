#pragma once

// A stand-in for `wine` on PATH: a shell script that records how it was called and does what
// the test says, and a build log that records what the build showed.

#include "build/BuildLog.h"
#include "core/ScratchFolder.h"

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace mw::test {

class FakeWine {
public:
    // `body` runs after the call is recorded, with the arguments in "$@".
    explicit FakeWine(const std::string& body = {}) : oldPath_(std::getenv("PATH") ? std::getenv("PATH") : "")
    {
        SetBody(body);
        ::setenv("PATH", (bin_.Path().string() + ":" + oldPath_).c_str(), 1);
    }
    ~FakeWine() { ::setenv("PATH", oldPath_.c_str(), 1); }
    FakeWine(const FakeWine&) = delete;
    FakeWine& operator=(const FakeWine&) = delete;

    void SetBody(const std::string& body) const
    {
        const auto script = bin_.Write("wine", "#!/bin/sh\nprintf '%s|%s\\n' \"$PWD\" \"$*\" >> '" + Calls().string() +
                                                   "'\n" + body + "\n");
        std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    }
    std::filesystem::path Calls() const { return bin_.Path() / "calls.txt"; }
    // One "folder|arguments" per run, in order.
    std::vector<std::string> Runs() const
    {
        std::vector<std::string> runs;
        std::istringstream lines(ReadAll(Calls()));
        for (std::string line; std::getline(lines, line);)
            runs.push_back(line);
        return runs;
    }

private:
    ScratchFolder bin_;
    std::string oldPath_;
};

// PATH without any wine for the life of the object.
class NoWine {
public:
    NoWine() : oldPath_(std::getenv("PATH") ? std::getenv("PATH") : "") { ::setenv("PATH", empty_.Path().c_str(), 1); }
    ~NoWine() { ::setenv("PATH", oldPath_.c_str(), 1); }
    NoWine(const NoWine&) = delete;
    NoWine& operator=(const NoWine&) = delete;

private:
    ScratchFolder empty_;
    std::string oldPath_;
};

struct RecordingLog : BuildLog {
    std::vector<std::string> Steps;
    std::vector<std::string> Lines;
    std::vector<std::pair<int, int>> Progressed;
    std::vector<std::filesystem::path> Shown;
    std::vector<std::filesystem::path> Opened;

    void Step(const std::string& text) override { Steps.push_back(text); }
    void Progress(int done, int total) override { Progressed.emplace_back(done, total); }
    void Line(const std::string& text) override { Lines.push_back(text); }
    void ShowTextFile(const std::filesystem::path& file) override { Shown.push_back(file); }
    void OpenResult(const std::filesystem::path& file) override { Opened.push_back(file); }
};

} // namespace mw::test
