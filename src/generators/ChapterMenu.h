#pragma once

#include "generators/PageModel.h"

#include <string>
#include <vector>

namespace mw {

class Project;

// The file of page `page`: page 1 keeps the chosen name, a later page gets "_" and its number
// before the last four characters (".avi").
std::string PageFileName(const std::string& fileName, int page);

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
    std::string FileName{}; // the video of page 1; ".avi" is added when missing
    std::string MainMenuID{};// the menu the main buttons lead to; none when empty
    std::string Language{}; // the language set's code; the selected one when empty
};

struct ChapterMenuResult {
    std::vector<std::string> MenuIDs; // one per page
    std::string SetupButtonID;
};

// Makes a still menu of every page of the chapter window, each with its video made by the
// built-in encoder, a button per chapter playing it, the page buttons and the navigation of the
// remote. All videos are made before the project is touched: a run that fails leaves the project
// as it was, and no file of the user is replaced until every page has its video.
bool CreateChapterMenu(Project& project, MenuPage& page, const ChapterMenuRequest& request, ChapterMenuResult& result);

} // namespace mw
