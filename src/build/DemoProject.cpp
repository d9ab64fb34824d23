#include "build/DemoProject.h"

#include "core/FormHost.h"
#include "document/ProgramStart.h"
#include "document/Project.h"
#include "document/TreeQueries.h"
#include "media/ChapForm.h"
#include "media/Chapters.h"
#include "media/NewProject.h"
#include "media/NewTitleForm.h"
#include "media/TitleNodes.h"
#include "menus/Actions.h"
#include "menus/AddNewMenu.h"
#include "menus/Buttons.h"
#include "menus/CanvasCommands.h"
#include "menus/MenuForms.h"

#include <string>
#include <system_error>

namespace fs = std::filesystem;

namespace mw {

bool DemoForms::ShowChap(ChapForm& form)
{
    form.Mode = ChapMode::Count;
    form.txtChapters = std::to_string(chapters_);
    CalcChapters(form, prompt_);
    const std::string settingsFile = SettingsFilePath(program_.Lang.ProgramFolder()).string();
    return AcceptChapForm(form, settingsFile, program_.Lang.LangDoc(), prompt_);
}

namespace {

// The project needs a program folder for its settings; the demo's own is thrown away, so
// that the one the demo ships in never gets a settings file (whose absence marks a first start).
class WorkFolder {
public:
    explicit WorkFolder(fs::path path) : path_(std::move(path))
    {
        std::error_code ec;
        fs::remove_all(path_, ec);
        fs::create_directories(path_, ec);
    }
    ~WorkFolder()
    {
        std::error_code ec;
        fs::remove_all(path_, ec);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    const fs::path& Path() const { return path_; }

private:
    fs::path path_;
};

// The start menu over the same movie, with a button for each special overlay that plays the
// title, so that the demo opens on a menu to edit and checks clean.
bool AddDemoMenu(Project& project, const fs::path& movie, const fs::path& programFolder)
{
    NewMenuForm form;
    LoadNewMenuForm(form, clsIniFile(SettingsFilePath(programFolder).string()));
    FillLanguageCombo(form, project.Doc.Tree);
    form.Combo2.ListIndex = 0;
    Combo2_Click(form, project.Doc.Tree);
    if (!LoadMovieForMenu(project, form, movie.string()))
        return false;
    form.txtMenuName = "Main";
    form.Combo3.ListIndex = 1;
    const std::string menu = AddNewMenu(project, form, false);
    if (menu.empty())
        return false;
    ParceMenu(project, project.Doc.Tree.Item("k" + menu));
    if (DocNode* source = project.Doc.Tree.ObjectNode(project.Canvas.Menu.MediaSourceID))
        UpdatePropertyInNode(project.Doc.Tree, *source, "location", movie.filename().string(), false);
    const std::vector<DocNode*> titles = TitleNodes(project.Doc);
    if (titles.empty())
        return false;
    ActionChoice play;
    play.Type = "PlayAction";
    play.TitleID = ObjectIdOf(*titles.front());
    play.ChapterID = play.TitleID;
    ActionRow row;
    if (!AcceptActionChoice(project.Ask(), play, row))
        return false;
    const char* overlays[] = {"|Rectangle", "|Oval", "|Shape1"};
    for (int i = 0; i < 3; ++i) {
        if (AddButtonToMenu(project, {"", 40, 70 + 60 * i, 150, 36}, overlays[i]).empty())
            return false;
        Label1_Click(project, i);
        ApplyActionList(project, "selectAction", true, {row});
    }
    return true;
}

bool MakeProject(const fs::path& movie, const fs::path& projectFile, const fs::path& programFolder,
                 int chapters, Prompt& prompt)
{
    ProgramState program(programFolder);
    DemoForms forms(program, chapters, prompt);
    Project project(program, prompt, forms);
    if (!CreateNewFile(project, movie.string()))
        return false;
    mnuCreateChapters(project);
    if (!AddDemoMenu(project, movie, programFolder))
        return false;

    const std::vector<DocNode*> titles = TitleNodes(project.Doc);
    DocNode* source = titles.empty() ? nullptr : MediaSourceOf(*titles.front());
    if (!source)
        return false;
    UpdatePropertyInNode(project.Doc.Tree, *source, "location", movie.filename().string(), false);
    return project.SaveFile(false, false, projectFile.string());
}

} // namespace

bool MakeDemoProject(const fs::path& folder, const DemoProjectSpec& spec, Prompt& prompt)
{
    const fs::path projectFile = fs::absolute(DemoProjectFile(folder));
    const fs::path demo = projectFile.parent_path();
    const fs::path movie = demo / "Demo.avi";
    std::error_code ec;
    fs::create_directories(demo, ec);
    fs::remove(projectFile, ec);

    const WorkFolder work(demo / ".work");
    const std::string tone = (work.Path() / "tone.wav").string();
    const Settings settings;
    if (!WriteDemoTone(tone, spec.Movie)) {
        prompt.Message("Can not write " + tone, "", PromptIcon::Critical);
        return false;
    }
    if (!WriteDemoMovie(movie.string(), spec.Movie, tone, settings, prompt))
        return false;
    if (MakeProject(movie, projectFile, work.Path(), spec.Chapters, prompt))
        return true;
    prompt.Message("Can not make the demo project " + projectFile.string(), "", PromptIcon::Critical);
    return false;
}

} // namespace mw
