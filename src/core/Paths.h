#pragma once

#include <string>
#include <string_view>

namespace mw {

// A location is absolute when its second character is ":" (a drive) or when it starts with "/".
// Every other location is relative to the folder of the project file.
bool IsAbsoluteLocation(std::string_view location);

// The file a location names, for a project saved at projectFile. Relative locations are joined
// to the project's folder; Windows separators in them become "/". A "Z:\" location, the outside
// tools' view of the Unix root, is mapped back.
std::string ResolveLocation(std::string_view projectFile, std::string_view location);

// The folder part of a path, without the trailing separator ("" when there is none).
std::string FolderOf(std::string_view path);

// How the outside Windows tools see a Unix path through Wine: "/home/a/b.avi" is "Z:\home\a\b.avi".
// A path that already has a drive is returned as it is.
std::string ToToolPath(std::string_view unixPath);

} // namespace mw
