#pragma once

namespace mw {

class Project;

// Reads the selected title's movie again. A title without chapters gets its tracks rebuilt from
// the file, keeping its default tracks; a title with chapters gets them rebuilt with the same
// frame ranges, cut to the movie's end, and the actions that played them follow. Nothing
// happens when the selection is not in a title's own rows. False when the movie cannot be read
// (the user was told): the title keeps its tracks and chapters.
bool mnuRefreshTitle(Project& project);

} // namespace mw
