#pragma once

#include "core/settings/Settings.h"
#include "i18n/LanguageFiles.h"

#include <filesystem>

namespace mw {

// What the program has in memory once it has started: the program folder, the interface
// language and the settings.
struct ProgramState {
    explicit ProgramState(const std::filesystem::path& programFolder) : Lang(programFolder) {}
    mw::Language Lang;
    mw::Settings Values;
    bool FirstStart = false; // the settings file was missing when the program started
};

// The window-free part of the start: the first language file, the settings file, then the
// language that the settings name (which stays as it was when its file is missing).
// Returns whether that language was found.
bool StartProgram(ProgramState& state);

// The demo project that ships with the program, below the folder that holds it.
std::filesystem::path DemoProjectFile(const std::filesystem::path& folder);

// The project that the window opens at start: nick.xml of the program folder when it is there;
// else, at the first start, the demo project when it is there, so that a new user sees a real
// project; else none (an empty path).
std::filesystem::path StartProjectFile(const std::filesystem::path& programFolder, bool firstStart);

} // namespace mw
