#pragma once

#include <string>

namespace mw {

class Project;
struct ChapForm;

// The settings file that the chapter dialog keeps "StepFrames" in.
std::string ChapSettingsFile(const Project& project);

// The "Create chapters" command: the dialog for the project's titles, then CreateChaps.
bool mnuCreateChapters(Project& project);

// Turns the chapter list of the form into Chapter nodes of the chosen title, or of every title
// of the form with chkAll. With showForm the dialog is shown first (first title chosen, chkAll
// off) and nothing happens unless it is accepted; without it the caller has filled the form.
// False when the run stopped: cancelled, or a movie could not be read, whose title then keeps
// the chapters it had.
bool CreateChaps(Project& project, ChapForm& form, bool showForm);

} // namespace mw
