#include "core/AutoSaveFiles.h"

#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace mw {

namespace {

bool IsAutoSaveName(std::string_view name)
{
    constexpr std::string_view prefix = "_tmpFile_";
    constexpr std::string_view suffix = ".xml";
    return name.size() >= prefix.size() + suffix.size() && name.starts_with(prefix) && name.ends_with(suffix);
}

} // namespace

int DeleteAutoSaveFiles(const fs::path& programFolder)
{
    // Names are collected first: removing entries while the folder is being read is unspecified.
    std::vector<fs::path> files;
    std::error_code ec;
    for (fs::directory_iterator it(programFolder, ec), end; !ec && it != end; it.increment(ec)) {
        std::error_code ignored;
        if (it->is_regular_file(ignored) && IsAutoSaveName(it->path().filename().string()))
            files.push_back(it->path());
    }
    int deleted = 0;
    for (const fs::path& file : files) {
        std::error_code ignored;
        if (fs::remove(file, ignored))
            ++deleted;
    }
    return deleted;
}

fs::path NickFile(const fs::path& programFolder)
{
    const fs::path nick = programFolder / "nick.xml";
    std::error_code ec;
    return fs::is_regular_file(nick, ec) ? nick : fs::path();
}

} // namespace mw
