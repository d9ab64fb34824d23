#pragma once

#include "build/DemoMovie.h"
#include "core/Prompt.h"

#include <filesystem>

namespace mw {

struct DemoProjectSpec {
    DemoMovieSpec Movie;
    int Chapters = 4;
};

// Makes the demo that a new user sees at the first start: the movie Demo/Demo.avi below the
// folder and the project Demo/Demo.xml around it, made as a user would make it (a new project
// from the movie, then chapters of equal length). The project names its movie relative to
// itself, so the Demo folder still works wherever it is copied. On failure the message has
// been shown and false is returned.
bool MakeDemoProject(const std::filesystem::path& folder, const DemoProjectSpec& spec, Prompt& prompt);

} // namespace mw
