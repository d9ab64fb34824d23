#include "document/AutoSave.h"

#include "core/Text.h"
#include "document/Project.h"

#include <ctime>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace mw {

namespace {

std::string SlotPrefix(int slot)
{
    return "_tmpFile_" + std::to_string(slot + 1);
}

} // namespace

std::string AutoSaveFileName(int slot, std::chrono::system_clock::time_point when)
{
    const std::time_t seconds = std::chrono::system_clock::to_time_t(when);
    std::tm local{};
    localtime_r(&seconds, &local);
    char stamp[32];
    std::strftime(stamp, sizeof stamp, "_%d.%m.%Y_%H.%M.%S", &local);
    return SlotPrefix(slot) + stamp + ".xml";
}

void DeleteAutoSaveSlot(const fs::path& folder, int slot, const fs::path& keep)
{
    const std::string prefix = SlotPrefix(slot);
    // Names are collected first: removing entries while the folder is being read is unspecified.
    std::vector<fs::path> files;
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        const std::string name = it->path().filename().string();
        std::error_code ignored;
        if (it->is_regular_file(ignored) && StartsWithNoCase(name, prefix) && EndsWithNoCase(name, ".xml") &&
            it->path().filename() != keep.filename())
            files.push_back(it->path());
    }
    for (const fs::path& file : files) {
        std::error_code ignored;
        fs::remove(file, ignored);
    }
}

void Project::AutoSaveTick()
{
    if (!AutoSaveRunning)
        return;
    // Every tick counts, whether or not anything changed.
    if (AutoSaveTicks < Values().AutoSaveMin - 1) {
        ++AutoSaveTicks;
        return;
    }
    // The slot's older file goes only once the new one stands; a failure keeps the count, so the
    // next tick tries again.
    const fs::path file = ProgramFolder() / AutoSaveFileName(AutoSaveSlot, Now());
    if (!SaveFile(false, true, file.string()))
        return;
    DeleteAutoSaveSlot(ProgramFolder(), AutoSaveSlot, file);
    AutoSaveTicks = 0;
    AutoSaveSlot = (AutoSaveSlot + 1) % kAutoSaveSlots;
}

} // namespace mw
