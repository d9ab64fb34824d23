#include "document/RecentFiles.h"

#include "core/Text.h"
#include "core/settings/Settings.h"
#include "document/Project.h"

#include <algorithm>
#include <system_error>

namespace mw {

void AddFileToRecent(std::vector<std::string>& recentFiles, const std::string& path)
{
    const auto same = std::find_if(recentFiles.begin(), recentFiles.end(),
                                   [&](const std::string& file) { return EqualsNoCase(file, path); });
    if (same != recentFiles.end())
        recentFiles.erase(same);
    else if (recentFiles.size() >= static_cast<std::size_t>(kMaxRecentFiles))
        recentFiles.resize(kMaxRecentFiles - 1);
    recentFiles.insert(recentFiles.begin(), path);
}

void Project::AddFileToRecent(const std::string& path)
{
    mw::AddFileToRecent(Values().RecentFiles, path);
}

bool Project::OpenRecentFile(std::size_t index)
{
    if (index >= RecentFiles().size())
        return false;
    // A copy: opening moves the entry.
    const std::string file = RecentFiles()[index];
    std::error_code ec;
    if (!std::filesystem::exists(file, ec)) {
        prompt_.Message("File not found");
        return false;
    }
    return OpenFile(file);
}

} // namespace mw
