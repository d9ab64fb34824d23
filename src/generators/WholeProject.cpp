#include "generators/WholeProject.h"

#include "core/Text.h"
#include "document/Project.h"
#include "document/TreeQueries.h"
#include "generators/GeneratorRun.h"
#include "generators/TitleMenu.h"
#include "media/AddTitle.h"
#include "media/AskForMovies.h"
#include "media/ChapterNodes.h"
#include "media/Chapters.h"
#include "media/LoadTitlesInForm.h"
#include "media/NewProject.h"
#include "media/TitleNodes.h"
#include "menus/Actions.h"
#include "menus/CanvasCommands.h"
#include "menus/RemoveTitle.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace mw {

namespace {

// The chapter dialog as it opens on the project's first title.
ChapForm OpenChapForm(Project& project)
{
    ChapForm form;
    LoadChapForm(form, project.Doc, ChapSettingsFile(project), project.Ask());
    return form;
}

// The intro's exit action list becomes a single PlayAction of the title.
bool PlayTitleAtEnd(Project& project, const std::string& menuID, const std::string& titleID)
{
    DocNode* menu = project.Doc.Tree.ObjectNode(menuID);
    if (!menu)
        return false;
    ParceMenu(project, *menu);
    ActionRow row;
    if (!AcceptActionChoice(project.Ask(), PlayChoice(titleID, titleID), row))
        return false;
    ApplyActionList(project, "exitAction", false, {row});
    return true;
}

} // namespace

MovieWithChapsEnd mnuMovieWithChaps(Project& project, const std::string& movie)
{
    Prompt& prompt = project.Ask();
    const fs::path intro = project.ProgramFolder() / kIntroFile;
    std::error_code ec;
    if (!fs::is_regular_file(intro, ec)) {
        prompt.Message(intro.string() + "\r\nFile not found. Is used as intro menu for one movie with chapters.");
        return MovieWithChapsEnd::Stopped;
    }
    if (!CreateNewFile(project, movie, "Select the movie you want to create chapters for it"))
        return MovieWithChapsEnd::Stopped;
    const std::vector<DocNode*> titles = TitleNodes(project.Doc);
    if (titles.empty())
        return MovieWithChapsEnd::Stopped;
    const std::string titleID = ObjectIdOf(*titles.front());

    ChapForm chapters = OpenChapForm(project);
    CreateChaps(project, chapters, true);
    if (ChapterNodesOf(*titles.front()).empty() &&
        prompt.Ask("You dont create the chapters. You want to continue?", PromptButtons::YesNo, PromptAnswer::Yes) !=
            PromptAnswer::Yes)
        return MovieWithChapsEnd::Stopped;

    const std::string menuID = AddPageMenu(project, intro.string(), "Intro", "");
    if (menuID.empty() || !PlayTitleAtEnd(project, menuID, titleID))
        return MovieWithChapsEnd::Stopped;

    prompt.Message("Movie with chapters is ready.\r\nUse the menu Features - \"Create DivX\" or hit F12 or use the "
                   "button at button bar, to create the new movie with chapters.");
    return prompt.Ask("You want to create the movie now?", PromptButtons::YesNo, PromptAnswer::Yes) ==
                   PromptAnswer::Yes
               ? MovieWithChapsEnd::CreateNow
               : MovieWithChapsEnd::Ready;
}

void LoadManyMovies(const Project& project, ManyMoviesForm& form)
{
    form.List1.clear();
    for (const TitleListRow& title : LoadTitlesInForm(project.Doc).lstTitles)
        form.List1.push_back(ManyMoviesRow{title.TitleID, title.Path, 0});
    SelectMovie(form, form.List1.empty() ? -1 : 0);
}

void SelectMovie(ManyMoviesForm& form, int index)
{
    form.ListIndex = index >= 0 && index < static_cast<int>(form.List1.size()) ? index : -1;
    form.Text1 = form.ListIndex < 0 ? "0" : std::to_string(form.List1[static_cast<std::size_t>(index)].Frame);
}

void SetMovieFrame(ManyMoviesForm& form, const std::string& text)
{
    form.Text1 = text;
    if (form.ListIndex >= 0)
        form.List1[static_cast<std::size_t>(form.ListIndex)].Frame = std::max(0L, static_cast<long>(LeadingNumber(text)));
}

void StepMovieFrame(ManyMoviesForm& form, int step)
{
    const long frame = std::max(0L, static_cast<long>(LeadingNumber(form.Text1)) + step);
    SetMovieFrame(form, std::to_string(frame));
}

bool AddMovies(Project& project, ManyMoviesForm& form, std::vector<std::string> files)
{
    if (files.empty())
        files = AskForFiles(project, "Select movies", "*.avi;*.divx|*.avi;*.divx", true);
    bool added = false;
    for (const std::string& file : files) {
        const bool made = project.Doc.Tree.Root() ? AddTitle(project, file) : CreateNewFile(project, file);
        if (!made)
            continue;
        added = true;
        const std::vector<DocNode*> titles = TitleNodes(project.Doc);
        form.List1.push_back(ManyMoviesRow{ObjectIdOf(*titles.back()), file, 0});
    }
    if (added)
        SelectMovie(form, static_cast<int>(form.List1.size()) - 1);
    return added;
}

void RemoveMovie(Project& project, ManyMoviesForm& form)
{
    if (form.ListIndex < 0)
        return;
    const auto row = form.List1.begin() + form.ListIndex;
    DocNode* title = project.Doc.Tree.ObjectNode(row->TitleID);
    if (IsTitleNode(title)) {
        project.Doc.Tree.Select(title);
        mnuRemoveTitle(project);
        // The user may have kept the title at the question.
        if (project.Doc.Tree.ObjectNode(row->TitleID))
            return;
    }
    form.List1.erase(row);
    SelectMovie(form, std::min(form.ListIndex, static_cast<int>(form.List1.size()) - 1));
}

bool CloseExistingFile(Project& project, ManyMoviesForm& form)
{
    if (!project.CloseOpenFile())
        return false;
    form.List1.clear();
    SelectMovie(form, -1);
    return true;
}

int MoviesPerPage(const ManyMoviesForm& form) { return LeadingNumber(form.txtColumns) == 3 ? 6 : 8; }

bool OpenManyMoviesPage(Project& project, const ManyMoviesForm& form, MenuPage& page)
{
    if (form.List1.empty()) {
        project.Ask().Message("Please add some titles");
        return false;
    }
    if (form.chkCreateChap) {
        ChapForm chapters = OpenChapForm(project);
        if (chapters.Combo1.Items.empty())
            return false;
        chapters.Combo1.ListIndex = 0;
        if (!Combo1_Click(chapters, project.Doc, project.Ask()))
            return false;
        chapters.chkAll = true;
        chapters.Mode = form.Mode;
        chapters.txtChapters = form.txtChapters;
        chapters.txtMinutes = form.txtMinutes;
        CalcChapters(chapters, project.Ask());
        if (!CreateChaps(project, chapters, false))
            return false;
    }
    if (!OpenTitlePage(project, MoviesPerPage(form), page) || page.Items.size() != form.List1.size())
        return false;
    // The page opened on each title's first frame; grab again only when a row asks for another.
    std::vector<std::string> movies;
    bool otherFrames = false;
    for (std::size_t i = 0; i < form.List1.size(); ++i) {
        page.Items[i].Frame = form.List1[i].Frame;
        otherFrames = otherFrames || form.List1[i].Frame != 0;
        movies.push_back(form.List1[i].Movie);
    }
    if (otherFrames)
        LoadItemPictures(project, page, movies);
    return true;
}

} // namespace mw
