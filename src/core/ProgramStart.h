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
};

// The window-free part of the start: the first language file, the settings file, then the
// language that the settings name (which stays as it was when its file is missing).
// Returns whether that language was found.
bool StartProgram(ProgramState& state);

} // namespace mw
