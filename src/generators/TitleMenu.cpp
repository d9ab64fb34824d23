#include "generators/TitleMenu.h"

#include "document/TreeQueries.h"
#include "document/Project.h"
#include "document/SimpleTree.h"
#include "media/LoadTitlesInForm.h"

#include <filesystem>
#include <system_error>

namespace mw {

namespace {

std::vector<TitleListRow> ProjectTitles(const Project& project) { return LoadTitlesInForm(project.Doc).lstTitles; }

} // namespace

bool OpenTitlePage(Project& project, int perPage, MenuPage& page)
{
    const std::vector<TitleListRow> titles = ProjectTitles(project);
    if (titles.empty())
        return false;
    page = MenuPage{.Kind = GeneratorKind::TitleMenu, .PerPage = perPage};
    std::vector<std::string> movies;
    for (std::size_t i = 0; i < titles.size(); ++i) {
        const DocNode* node = project.Doc.Tree.ObjectNode(titles[i].TitleID);
        const std::string name =
            node ? TranslationOf(project.Doc.Tree, GetPropertyInNode(*node, "translationlookupid")) : std::string();
        page.Items.push_back(PageItem{.Caption = "Title " + (name.empty() ? std::to_string(i + 1) : name)});
        movies.push_back(titles[i].Path);
    }
    LoadItemPictures(project, page, movies);
    FitPageToItems(project, "Titles ", page);
    return true;
}

bool CreateTitleMenu(Project& project, MenuPage& page, const PageMenuRequest& request, PageMenuResult& result)
{
    result = {};
    const std::vector<TitleListRow> titles = ProjectTitles(project);
    if (titles.size() != page.Items.size())
        return false;
    page.Design.Setup.Visible = false;
    std::error_code ec;
    const std::filesystem::path temp = std::filesystem::temp_directory_path(ec);
    if (ec)
        return false;
    PageMenuJob job{.Request = request,
                    .WorkName = "titlemenu_",
                    .CreatingMessage = "Creating menu movie... ",
                    .MotionMessage = "Getting frames for motion title menu ",
                    .DoneMessage = "Creating menu for titles done.",
                    .PictureFolder = temp};
    for (const TitleListRow& title : titles) {
        job.Plays.push_back(PlayChoice(title.TitleID, title.TitleID));
        job.Movies.push_back(title.Path);
    }
    return CreatePageMenus(project, page, job, result);
}

} // namespace mw
