#pragma once

#include <string>
#include <vector>

namespace mw {

// Puts a file at the top of the recent files. A name already in the list, case ignored, moves
// up instead of standing twice; a new name beyond kMaxRecentFiles pushes the oldest out.
void AddFileToRecent(std::vector<std::string>& recentFiles, const std::string& path);

} // namespace mw
