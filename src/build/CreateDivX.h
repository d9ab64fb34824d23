#pragma once

#include "build/BuildLog.h"
#include "build/MuxScripts.h"
#include "build/OutsideMenuVideo.h"
#include "build/ToolRunner.h"
#include "core/Prompt.h"
#include "core/settings/Settings.h"
#include "document/Document.h"
#include "i18n/LangDoc.h"

#include <array>
#include <filesystem>
#include <functional>

namespace mw {

class Project;

// What a build of the open project works with.
struct DivXBuild {
    Document& Doc;
    const Settings& Options;
    const LangDoc& Lang;
    std::filesystem::path ProgramFolder;
    std::array<Colour, 3> Colours{}; // the current overlay colours
    bool NoCreateOverlays = false;   // the toolbar button is enabled and pressed
    double Fps = 25;                 // of the menu videos made from pictures
    std::filesystem::path Output;    // when given, the result's path as it stands
    bool PrepareOnly = false;        // write every file, but run no tool and clean nothing
    // Asks where the tool of a menu video method lies; without it such a tool counts as missing.
    std::function<ToolAnswer(int method)> LocateTool;
};

// The build of the project as its window holds it: its settings, colours and toolbar state.
DivXBuild BuildOfProject(Project& project);

// The whole build of the open project into a ".divx" file: the checks when checkFirst asks for
// them, the build folder with the muxer in it, the overlay pictures, the project copy for the
// muxer, the scripts and their runs. The log shows the step under way and the menus done; a
// cancelled runner stops at the next step. Whatever the end, the open project is as it was and
// every file written stays in the build folder.
BuildEnd mnuCreateDivX_Click(const DivXBuild& build, Prompt& prompt, ToolRunner& runner, BuildLog& log);

} // namespace mw
