#pragma once

namespace mw {

class Project;
struct MenuVideoTools;
struct NewMenuForm;

// "from picture" in the new-menu dialog: the pictures and the name of the video are asked for,
// the video is made by the method of the settings at the form's frame rate, and becomes the
// menu's background. The outside tools' methods need `tools`. False when cancelled or when the
// video could not be made.
bool MenuVideoFromPictures(Project& project, NewMenuForm& form, MenuVideoTools* tools);

} // namespace mw
