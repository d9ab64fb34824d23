#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace mw {

// What a program folder holds besides the settings: the English language file, which the build
// puts beside the program and an installed copy ships, and the library of overlay bitmaps.
inline constexpr const char* kDefaultLangFileStem = "English.Menuwright.exe";
inline constexpr const char* kOverlaysFolder = "overlays";

// True when files can be created in the folder.
bool FolderIsWritable(const std::filesystem::path& folder);

// What the choice of the program folder depends on besides the executable, so that tests can
// choose it without touching the real environment.
struct ProgramEnvironment {
    std::optional<std::string> MenuwrightHome; // MENUWRIGHT_HOME
    std::optional<std::string> XdgDataHome;    // XDG_DATA_HOME
    std::optional<std::string> Home;           // HOME
    std::function<bool(const std::filesystem::path&)> IsWritable = FolderIsWritable;

    static ProgramEnvironment FromProcess();
};

// The folder that holds the settings, the language files, the auto-save files and nick.xml:
// MENUWRIGHT_HOME when set; else the executable's folder when it is writable and holds the
// English language file (a portable copy: a writable install prefix such as ~/.local/bin lacks
// it); else $XDG_DATA_HOME/Menuwright or ~/.local/share/Menuwright. The last one is created when
// missing and gets every shipped resource it does not hold yet.
std::filesystem::path ResolveProgramFolder(const std::filesystem::path& executablePath,
                                           const ProgramEnvironment& env = ProgramEnvironment::FromProcess(),
                                           const std::filesystem::path& shippedResources = {});

// The running executable, from /proc/self/exe; empty when it cannot be read.
std::filesystem::path ExecutablePath();

} // namespace mw
