#pragma once

namespace mw {

class Project;

// Removes the selected title after asking, with its chapters or its tracks, its name and its
// source, and in each language the first menu that plays it.
void mnuRemoveTitle(Project& project);

} // namespace mw
