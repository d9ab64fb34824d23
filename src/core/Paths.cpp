#include "core/Paths.h"

#include <algorithm>

namespace mw {

bool IsAbsoluteLocation(std::string_view location)
{
    return (location.size() >= 2 && location[1] == ':') || (!location.empty() && location[0] == '/');
}

std::string FolderOf(std::string_view path)
{
    const auto slash = path.find_last_of("/\\");
    return slash == std::string_view::npos ? std::string() : std::string(path.substr(0, slash));
}

std::string ResolveLocation(std::string_view projectFile, std::string_view location)
{
    std::string result(location);
    if (location.size() >= 3 && (location[0] == 'Z' || location[0] == 'z') && location[1] == ':' &&
        location[2] == '\\') {
        result = location.substr(2);
        std::replace(result.begin(), result.end(), '\\', '/');
        return result;
    }
    if (IsAbsoluteLocation(location))
        return result;
    std::replace(result.begin(), result.end(), '\\', '/');
    return FolderOf(projectFile) + "/" + result;
}

std::string ToToolPath(std::string_view unixPath)
{
    if (unixPath.size() >= 2 && unixPath[1] == ':')
        return std::string(unixPath);
    std::string result = "Z:" + std::string(unixPath);
    std::replace(result.begin(), result.end(), '/', '\\');
    return result;
}

} // namespace mw
