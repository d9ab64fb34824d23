#pragma once

#include <string>
#include <vector>

namespace mw {

class Project;

// Asks for files of the filter starting in the last folder used, which then follows the choice.
// The names chosen, up to the first empty one; none when the dialog was cancelled.
std::vector<std::string> AskForFiles(Project& project, const std::string& title, const std::string& filter,
                                     bool several);

// The same for movies (.avi, .divx).
std::vector<std::string> AskForMovies(Project& project, const std::string& title, bool several);

} // namespace mw
