#include "dvd/DvdTools.h"

#include <QStandardPaths>
#include <QString>

namespace mw {

const char* ToolProgram(DvdTool tool)
{
    switch (tool) {
    case DvdTool::Ffmpeg:
        return "ffmpeg";
    case DvdTool::Spumux:
        return "spumux";
    case DvdTool::Dvdauthor:
        return "dvdauthor";
    case DvdTool::Genisoimage:
        return "genisoimage";
    case DvdTool::Lsdvd:
        return "lsdvd";
    }
    return "";
}

const char* ToolPackage(DvdTool tool)
{
    // spumux comes with dvdauthor; the others are packages of their own name.
    return tool == DvdTool::Spumux ? "dvdauthor" : ToolProgram(tool);
}

std::filesystem::path FindDvdTool(DvdTool tool)
{
    return QStandardPaths::findExecutable(QString::fromLatin1(ToolProgram(tool))).toStdString();
}

std::string MissingToolMessage(DvdTool tool)
{
    return std::string(ToolProgram(tool)) + " was not found; install the package " + ToolPackage(tool);
}

bool HaveDvdTools(std::initializer_list<DvdTool> tools, std::string& error)
{
    for (const DvdTool tool : tools) {
        if (FindDvdTool(tool).empty()) {
            error = MissingToolMessage(tool);
            return false;
        }
    }
    return true;
}

bool RunDvdTool(ToolRunner& runner, DvdTool tool, const std::vector<std::string>& arguments,
                const std::filesystem::path& folder, const ToolRunner::LineSink& onLine, std::string& error,
                const ToolStreams& streams)
{
    const std::filesystem::path program = FindDvdTool(tool);
    if (program.empty()) {
        error = MissingToolMessage(tool);
        return false;
    }
    const ToolRun run = runner.RunNative(program, arguments, folder, onLine, streams);
    switch (run.Result) {
    case ToolRun::Outcome::Finished:
        if (run.ExitCode == 0)
            return true;
        error = std::string(ToolProgram(tool)) + " failed (exit code " + std::to_string(run.ExitCode) + ")";
        return false;
    case ToolRun::Outcome::Cancelled:
        error = "Cancelled";
        return false;
    case ToolRun::Outcome::NoWine:
    case ToolRun::Outcome::NotStarted:
        break;
    }
    error = std::string(ToolProgram(tool)) + " could not be started (" + program.string() + ")";
    return false;
}

} // namespace mw
