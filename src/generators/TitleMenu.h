#pragma once

#include "generators/PageMenus.h"

#include <string>

namespace mw {

class Project;

// The title window as it opens: a thumbnail per title of the media branch, captioned "Title "
// and the title's name (or its number), showing the title's first frame from its own movie, on
// a page of the first movie's size with the layout of the settings section TitleMenu at
// `perPage` a page. False when the project has no title.
bool OpenTitlePage(Project& project, int perPage, MenuPage& page);

// The still title menus of the page, each title button playing its title. Title menus have no
// setup button.
bool CreateTitleMenu(Project& project, MenuPage& page, const PageMenuRequest& request, PageMenuResult& result);

} // namespace mw
