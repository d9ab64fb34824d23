#pragma once

#include "core/settings/Settings.h"
#include "i18n/LanguageFiles.h"

#include <filesystem>
#include <string>

namespace mw {

// What the program has in memory once it has started: the program folder, the interface
// language and the settings.
struct ProgramState {
    explicit ProgramState(const std::filesystem::path& programFolder) : Lang(programFolder) {}
    mw::Language Lang;
    mw::Settings Values;
    bool FirstStart = false; // the settings file was missing when the program started
    // The language whose menu entry is ticked: the last one loaded by its name. None while only
    // the first language is loaded, also when the settings named a language that is missing.
    std::string TickedLanguage;
};

// The window-free part of the start: the first language file, the settings file, then the
// language that the settings name (which stays as it was when its file is missing).
// Returns whether that language was found.
bool StartProgram(ProgramState& state);

// Loads the language of a menu caption ("German") and ticks it. False, with the language and
// the tick as they were, when its file is missing. Relabelling the windows is the caller's.
bool ChangeLanguage(ProgramState& state, const std::string& name);

// The demo project that ships with the program, below the folder that holds it.
std::filesystem::path DemoProjectFile(const std::filesystem::path& folder);

// The project that the window opens at start: nick.xml of the program folder when it is there;
// else, at the first start, the demo project when it is there, so that a new user sees a real
// project; else none (an empty path).
std::filesystem::path StartProjectFile(const std::filesystem::path& programFolder, bool firstStart);

} // namespace mw
