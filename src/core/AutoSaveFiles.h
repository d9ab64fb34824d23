#pragma once

#include <filesystem>

namespace mw {

// Deletes every "_tmpFile_*.xml" in the program folder, whatever its age: auto-save files of
// this run and those an earlier crash left behind. Returns how many went.
int DeleteAutoSaveFiles(const std::filesystem::path& programFolder);

// The start file "nick.xml" of the program folder, or an empty path when there is none.
std::filesystem::path NickFile(const std::filesystem::path& programFolder);

} // namespace mw
