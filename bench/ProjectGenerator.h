#pragma once

#include <filesystem>
#include <string>

namespace mw::bench {

struct ProjectShape {
    int Titles = 20;
    int ChaptersPerTitle = 10;
    int Menus = 90;
    int ButtonsPerMenu = 6;
};

// Writes a well-formed project of the given shape into folder (project.xml and the empty media
// files its locations name, so that checking finds nothing missing). Returns the project's path.
std::filesystem::path WriteGeneratedProject(const std::filesystem::path& folder, const ProjectShape& shape);

} // namespace mw::bench
