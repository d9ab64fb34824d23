#include "core/settings/DefOverlays.h"

#include "core/ProgramFolder.h"
#include "core/Text.h"

#include <algorithm>

namespace mw {

std::vector<std::string> LoadDefOverlays(const std::filesystem::path& programFolder)
{
    std::vector<std::string> rows{"|Shape1", "|Oval", "|Rectangle", kOverlaySeparator};
    std::vector<std::string> pictures;
    std::error_code ec;
    for (const auto& entry : std::filesystem::directory_iterator(programFolder / kOverlaysFolder, ec)) {
        const std::string name = entry.path().filename().string();
        if (entry.is_regular_file(ec) && EndsWithNoCase(name, ".bmp"))
            pictures.push_back(name);
    }
    // The folder lists in no fixed order; the dialog shows them by name.
    std::sort(pictures.begin(), pictures.end());
    rows.insert(rows.end(), pictures.begin(), pictures.end());
    return rows;
}

} // namespace mw
