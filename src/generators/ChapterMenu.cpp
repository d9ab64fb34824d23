#include "generators/ChapterMenu.h"

#include "core/Text.h"
#include "document/Project.h"
#include "generators/GeneratorRun.h"
#include "media/LoadTitlesInForm.h"

#include <optional>

namespace mw {

bool LoadChapterItems(Project& project, const std::string& titleID, MenuPage& page)
{
    const std::optional<TitleListRow> title = FindTitle(project, titleID);
    if (!title)
        return false;
    TitleTargets targets = LoadTitleTargets(project, *title);
    std::vector<ChapterChoiceRow>& chapters = targets.Chapters;
    chapters.erase(chapters.begin()); // "The Title it self"
    page.Items.clear();
    for (std::size_t i = 0; i < chapters.size(); ++i) {
        PageItem item;
        item.Caption = "Chapter " + (chapters[i].Name.empty() ? std::to_string(i + 1) : chapters[i].Name);
        item.Frame = static_cast<long>(LeadingNumber(chapters[i].StartFrame));
        page.Items.push_back(std::move(item));
    }
    if (page.Items.empty())
        page.Items.push_back(PageItem{.Caption = "Chapter 1"});
    LoadItemPictures(project, page, std::vector<std::string>(page.Items.size(), title->Path));
    return true;
}

bool OpenChapterPage(Project& project, const std::string& titleID, int perPage, MenuPage& page)
{
    page = MenuPage{};
    page.PerPage = perPage;
    if (!LoadChapterItems(project, titleID, page))
        return false;
    FitPageToItems(project, "Chapters ", page);
    return true;
}

bool CreateChapterMenu(Project& project, MenuPage& page, const ChapterMenuRequest& request, PageMenuResult& result)
{
    result = {};
    const std::optional<TitleListRow> title = FindTitle(project, request.TitleID);
    if (!title)
        return false;
    PageMenuJob job{.Request = request.Menus,
                    .WorkName = "chaptermenu_",
                    .CreatingMessage = "Creating menu/movie for chapters... ",
                    .MotionMessage = "Getting frames for motion chapter menu ",
                    .DoneMessage = "Creating menu for chapters done",
                    .PictureFolder = project.ProgramFolder() / "tmp"};
    const TitleTargets targets = LoadTitleTargets(project, *title);
    for (std::size_t i = 0; i < page.Items.size(); ++i) {
        // A title without chapters plays itself.
        job.Plays.push_back(
            PlayChoice(request.TitleID, i + 1 < targets.Chapters.size() ? targets.Chapters[i + 1].ID : request.TitleID));
        job.Movies.push_back(title->Path);
    }
    return CreatePageMenus(project, page, job, result);
}

} // namespace mw
