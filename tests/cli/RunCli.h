#pragma once

// The command line program run as other tools script it.

#include "media/MediaFixtures.h"

#include <filesystem>
#include <string>

namespace mw::test {

inline std::string Quoted(const std::filesystem::path& path)
{
    return "'" + path.string() + "'";
}

// Runs the program inside home, which also holds its settings. Standard error is dropped: the
// contract is standard output, the exit status and the files written.
inline CommandResult RunCli(const std::filesystem::path& home, const std::string& arguments)
{
    return RunCommand("cd " + Quoted(home) + " && MENUWRIGHT_HOME=" + Quoted(home) + " '" MENUWRIGHT_CLI_PATH "' " +
                      arguments + " 2>/dev/null");
}

} // namespace mw::test
