#pragma once

#include "generators/PageMenus.h"

#include <string>

namespace mw {

class Project;

// The items of the chapter window for one title: a thumbnail per chapter, captioned "Chapter "
// and the chapter's name (or its number), showing the chapter's first video frame. A title
// without chapters gets one item, "Chapter 1", at frame 0. False, with nothing changed, when the
// identifier names no title of the project.
bool LoadChapterItems(Project& project, const std::string& titleID, MenuPage& page);

// The chapter window as it opens for a title: the layout of the settings section ChaptersMenu
// on a page of the movie's size, the chapters loaded and laid out at `perPage` a page. False
// when the identifier names no title.
bool OpenChapterPage(Project& project, const std::string& titleID, int perPage, MenuPage& page);

struct ChapterMenuRequest {
    std::string TitleID{};
    PageMenuRequest Menus{};
};

// The still chapter menus of the page, each chapter button playing its chapter.
bool CreateChapterMenu(Project& project, MenuPage& page, const ChapterMenuRequest& request, PageMenuResult& result);

} // namespace mw
