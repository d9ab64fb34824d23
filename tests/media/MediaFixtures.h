#pragma once

// Media files for tests, made at test time by ffmpeg and the other muxers and kept for the run
// in one folder, so that several tests share a file without making it twice.

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

#include <sys/wait.h>
#include <unistd.h>

namespace mw::test {

inline bool HaveTool(const std::string& tool)
{
    return std::system(("command -v " + tool + " >/dev/null 2>&1").c_str()) == 0;
}

// In CI (the variable CI set) every tool is installed. A test whose tools or movies are missing
// skips on a developer's machine but fails there, where a skip would hide that nothing was tested.
inline bool InCi()
{
    return std::getenv("CI") != nullptr;
}

#define REQUIRE_MEDIA(ready, why)                                                                                      \
    do {                                                                                                               \
        if (!(ready)) {                                                                                                \
            if (mw::test::InCi())                                                                                      \
                FAIL() << (why);                                                                                       \
            GTEST_SKIP() << (why);                                                                                     \
        }                                                                                                              \
    } while (false)

// The folder of this test run's media files; removed by nobody, it lives under the system's
// temporary folder and is named after the process.
inline const std::filesystem::path& MediaFixtureFolder()
{
    static const std::filesystem::path folder = [] {
        auto f = std::filesystem::temp_directory_path() / ("mw-media-" + std::to_string(::getpid()));
        std::filesystem::create_directories(f);
        return f;
    }();
    return folder;
}

// Runs `command` once per file name, with the file's quoted path appended (the command ends in
// a space or an "="), and returns the path, or an empty path when `tool` is missing or the
// command fails.
inline std::filesystem::path CommandFixture(const std::string& name, const std::string& tool, const std::string& command)
{
    const auto file = MediaFixtureFolder() / name;
    if (std::filesystem::exists(file))
        return file;
    if (!HaveTool(tool))
        return {};
    if (std::system((command + "'" + file.string() + "'").c_str()) != 0) {
        std::filesystem::remove(file);
        return {};
    }
    return file;
}

// `ffmpeg -y -loglevel error <arguments> <file>`: the arguments name the inputs and codecs.
inline std::filesystem::path FfmpegFixture(const std::string& name, const std::string& arguments)
{
    return CommandFixture(name, "ffmpeg", "ffmpeg -nostdin -y -loglevel error " + arguments + " ");
}

struct CommandResult {
    int Exit = -1;
    std::string Out;
};

// Exit status and standard output of a shell command.
inline CommandResult RunCommand(const std::string& command)
{
    CommandResult result;
    if (FILE* pipe = ::popen(command.c_str(), "r")) {
        char buffer[4096];
        std::size_t n = 0;
        while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0)
            result.Out.append(buffer, n);
        const int status = ::pclose(pipe);
        result.Exit = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    return result;
}

// Output of a shell command, or empty when it fails.
inline std::string CommandOutput(const std::string& command)
{
    CommandResult result = RunCommand(command);
    return result.Exit == 0 ? std::move(result.Out) : std::string();
}

} // namespace mw::test
