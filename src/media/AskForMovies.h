#pragma once

#include <string>
#include <vector>

namespace mw {

class Project;

// Asks for movies (.avi, .divx) starting in the last folder used, which then follows the choice.
// The names chosen, up to the first empty one; none when the dialog was cancelled.
std::vector<std::string> AskForMovies(Project& project, const std::string& title, bool several);

} // namespace mw
