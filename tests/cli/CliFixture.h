#pragma once

// The command line program run as other tools script it.

#include "core/ScratchFolder.h"
#include "media/MediaFixtures.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace mw::test {

// Each test runs the program in a scratch folder of its own, its home and working folder.
class CliFixture : public ::testing::Test {
protected:
    using CommandResult = test::CommandResult;

    static std::string Quoted(const std::filesystem::path& path) { return "'" + path.string() + "'"; }

    // Standard error is dropped: the contract is standard output, the exit status and the files
    // written.
    CommandResult Run(const std::string& arguments) const
    {
        return RunCommand("cd " + Quoted(folder.Path()) + " && MENUWRIGHT_HOME=" + Quoted(folder.Path()) +
                          " '" MENUWRIGHT_CLI_PATH "' " + arguments + " 2>/dev/null");
    }

    // Skips the test when a tool it needs is missing (fails it in CI).
    static void Require(const std::string& tool) { REQUIRE_MEDIA(HaveTool(tool), tool + " is not installed"); }

    // Copies a movie the tests share into the folder and returns the copy; empty when ffmpeg could
    // not make the movie.
    std::filesystem::path CopyMovie(const std::filesystem::path& movie, const std::string& name) const
    {
        if (movie.empty())
            return {};
        std::filesystem::copy_file(movie, folder.Path() / name);
        return folder.Path() / name;
    }

    ScratchFolder folder;
};

} // namespace mw::test
