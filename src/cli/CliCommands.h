#pragma once

#include "cli/CliOptions.h"
#include "cli/ConsolePrompt.h"

#include <functional>
#include <iosfwd>
#include <string>

namespace mw {

class ConsoleFormHost;
struct Document;
class Language;
class Project;
struct ProgramState;

enum CliExit : int {
    kExitOk = 0,
    kExitFaults = 1,
    kExitUnreadable = 2,
    kExitUnsaved = 3,
    kExitCancelled = 4,
    kExitUnexpected = 5,
};

// What every command needs: the interface language for its texts and the user's answers.
struct CliContext {
    const Language& Lang;
    ConsolePrompt& Ask;
    std::ostream& Err;
    ProgramState& Program; // the settings in memory, for commands that open a project
    ConsoleFormHost& Forms;
};

// The command's own complaint about its command line or arguments, on standard error; exit 2.
int Refuse(CliContext& context, const CliOptions& options, const std::string& why);

// Reads the one project the command names, for a command that only reads it; the reader has
// told the user what went wrong.
bool ReadProject(const CliOptions& options, CliContext& context, Document& doc);

int RunResave(const CliOptions& options, CliContext& context);
int RunCheck(const CliOptions& options, CliContext& context);
int RunNormalize(const CliOptions& options, CliContext& context);

// Opens the project named by the first argument as the window opens a file, runs the command
// on it and saves it back in place (under the very name it was read from), or to -o OUT. A
// command that returns anything but kExitOk, that the user cancelled (exit 4) or that threw
// (exit 5) is not saved. Exit 2 when the project cannot be read, 3 when it cannot be saved.
int RunOnProject(const CliOptions& options, CliContext& context, const std::function<int(Project&)>& command);

// Saves under the -o name, or else under the project's own; the user has been told of a failure.
int SaveProject(const CliOptions& options, Project& project);

// A new project around a movie, saved to -o PROJECT.xml.
int RunNew(const CliOptions& options, CliContext& context);

// Movie files: track rows, key frames, frame grabs and stream names.
int RunTracks(const CliOptions& options, CliContext& context);
int RunKeyframe(const CliOptions& options, CliContext& context);
int RunGrab(const CliOptions& options, CliContext& context);
int RunStreamName(const CliOptions& options, CliContext& context);

// Pictures made into a menu video by our own encoder.
int RunPic2Avi(const CliOptions& options, CliContext& context);

} // namespace mw
