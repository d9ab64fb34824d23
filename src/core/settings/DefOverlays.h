#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace mw {

// The row of the overlay list that only separates the drawn shapes from the pictures.
inline constexpr const char* kOverlaySeparator = "=================";

// The overlays a button can get by default: the drawn shapes, the separator, then the pictures
// of <program folder>/overlays by file name.
std::vector<std::string> LoadDefOverlays(const std::filesystem::path& programFolder);

} // namespace mw
