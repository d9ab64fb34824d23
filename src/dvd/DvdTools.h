#pragma once

#include "build/ToolRunner.h"

#include <filesystem>
#include <initializer_list>
#include <string>
#include <vector>

namespace mw {

// The Linux programs that make a DVD-Video, each from a Debian package.
enum class DvdTool { Ffmpeg, Spumux, Dvdauthor, Genisoimage, Lsdvd };

const char* ToolProgram(DvdTool tool);
const char* ToolPackage(DvdTool tool);

// The program's full path from PATH; empty when it is not installed.
std::filesystem::path FindDvdTool(DvdTool tool);

// "<program> was not found; install the package <package>"
std::string MissingToolMessage(DvdTool tool);

// True when every tool is installed; otherwise the message of the first one missing.
bool HaveDvdTools(std::initializer_list<DvdTool> tools, std::string& error);

// Runs one of the tools in `folder` through the runner (so a cancel stops it), its output lines
// going to onLine. `streams` redirects its input or output to files (spumux reads and writes the
// MPEG stream that way). False with the reason when the tool is missing, cannot start, is
// cancelled or exits with an error.
bool RunDvdTool(ToolRunner& runner, DvdTool tool, const std::vector<std::string>& arguments,
                const std::filesystem::path& folder, const ToolRunner::LineSink& onLine, std::string& error,
                const ToolStreams& streams = {});

} // namespace mw
