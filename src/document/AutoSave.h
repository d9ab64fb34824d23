#pragma once

#include <chrono>
#include <filesystem>
#include <string>

namespace mw {

// How many auto-save files take turns.
inline constexpr int kAutoSaveSlots = 3;

// "_tmpFile_<slot + 1>_<dd.mm.yyyy>_<hh.mm.ss>.xml" in local time.
std::string AutoSaveFileName(int slot, std::chrono::system_clock::time_point when);

// Deletes the files "_tmpFile_<slot + 1>*.xml" of the folder but the one to keep: the slot's
// earlier auto-save, once its new one is written.
void DeleteAutoSaveSlot(const std::filesystem::path& folder, int slot, const std::filesystem::path& keep);

} // namespace mw
