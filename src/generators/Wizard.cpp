#include "generators/Wizard.h"

#include "build/OutsideMenuVideo.h"
#include "core/Text.h"
#include "document/MenuTrackList.h"
#include "document/Project.h"
#include "document/TreeViewToXml.h"
#include "document/XmlToTreeView.h"
#include "document/TreeQueries.h"
#include "generators/ChapterMenu.h"
#include "generators/GeneratorRun.h"
#include "generators/PageComposer.h"
#include "generators/PageMenus.h"
#include "generators/TitleMenu.h"
#include "media/AddTitle.h"
#include "media/AskForMovies.h"
#include "media/ChapForm.h"
#include "media/ChapterNodes.h"
#include "media/Chapters.h"
#include "media/NewProject.h"
#include "media/StreamTexts.h"
#include "media/TitleNodes.h"
#include "media/mAVIDecs.h"
#include "menus/Actions.h"
#include "menus/CanvasCommands.h"
#include "menus/RemoveTitle.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <system_error>
#include <type_traits>

namespace fs = std::filesystem;

namespace mw {

namespace {

constexpr int kPerPage = 8;

WizardTitle* SelectedTitle(Wizard& wizard)
{
    const int i = wizard.ListIndex;
    return i >= 0 && i < static_cast<int>(wizard.List1.size()) ? &wizard.List1[static_cast<std::size_t>(i)] : nullptr;
}

// Beside the movie: its folder and base name with the menu's ending.
std::string BesideMovie(const std::string& movie, const char* ending)
{
    const fs::path path(movie);
    return (path.parent_path() / (path.stem().string() + ending)).string();
}

int PagesOf(const MenuPage& page) { return PageCount(static_cast<int>(page.Items.size()), page.PerPage); }

const WizardRow* RowAt(const Wizard& wizard, int index)
{
    return index >= 0 && index < static_cast<int>(wizard.TreeView1.size())
               ? &wizard.TreeView1[static_cast<std::size_t>(index)]
               : nullptr;
}

// The page a row shows: the title page or its title's chapter page, as const as the wizard.
template <typename W> auto* PageOfRow(W& wizard, int index)
{
    using Page = std::conditional_t<std::is_const_v<W>, const MenuPage, MenuPage>;
    const WizardRow* row = RowAt(wizard, index);
    Page* page = nullptr;
    if (row && row->Kind == WizardRowKind::TitleMenu && wizard.TitlePage)
        page = &*wizard.TitlePage;
    if (row && row->Kind == WizardRowKind::ChapterMenu) {
        auto& chapters = wizard.List1[static_cast<std::size_t>(row->Title)].Chapters;
        page = chapters ? &*chapters : nullptr;
    }
    return page;
}

template <typename W> auto* SetupOfRow(W& wizard, int index)
{
    using Setup = std::conditional_t<std::is_const_v<W>, const SetupPage, SetupPage>;
    const WizardRow* row = RowAt(wizard, index);
    Setup* setup = nullptr;
    if (row && row->Kind == WizardRowKind::SetupMenu) {
        auto& page = wizard.List1[static_cast<std::size_t>(row->Title)].Setup;
        setup = page ? &*page : nullptr;
    }
    return setup;
}

std::string* RowFile(Wizard& wizard, const WizardRow& row)
{
    switch (row.Kind) {
    case WizardRowKind::TitleMenu:
        return &wizard.TitleFile;
    case WizardRowKind::ChapterMenu:
        return &wizard.List1[static_cast<std::size_t>(row.Title)].ChapterFile;
    case WizardRowKind::SetupMenu:
        return &wizard.List1[static_cast<std::size_t>(row.Title)].SetupFile;
    case WizardRowKind::Root:
        break;
    }
    return nullptr;
}

// The files a wizard run puts in place, and the files of the user it replaces: on failure the
// new ones go and the old ones come back; once the run succeeds the old ones are deleted.
class RunFiles {
public:
    RunFiles() = default;
    RunFiles(const RunFiles&) = delete;
    RunFiles& operator=(const RunFiles&) = delete;

    ~RunFiles()
    {
        std::error_code ec;
        for (const fs::path& file : made_)
            fs::remove(file, ec);
        for (const auto& [file, aside] : asides_) {
            if (done_)
                fs::remove(aside, ec);
            else
                fs::rename(aside, file, ec);
        }
    }

    // Moves aside every page file of a menu that stands already. False when one cannot be moved.
    bool MakeRoom(const std::string& file, int pages)
    {
        std::error_code ec;
        for (int p = 1; p <= pages; ++p) {
            const fs::path name = PageFileName(file, p);
            if (!fs::is_regular_file(name, ec))
                continue;
            const fs::path aside = name.string() + ".wizard-old";
            fs::rename(name, aside, ec);
            if (ec)
                return false;
            asides_.emplace_back(name, aside);
        }
        return true;
    }

    void Made(const std::string& file) { made_.emplace_back(file); }
    void Done()
    {
        done_ = true;
        made_.clear();
    }

private:
    std::vector<std::pair<fs::path, fs::path>> asides_;
    std::vector<fs::path> made_;
    bool done_ = false;
};

// The whole project as its file would hold it, put back unless the run finishes: the tree and
// its identifiers, the undo steps, the flags, what was selected and opened.
class ProjectGuard {
public:
    explicit ProjectGuard(Project& project)
        : project_(project), file_(project.ProgramFolder() / "tmp" / "wizard-before.xml"), undo_(project.Undo),
          nextID_(project.Doc.NextObjectID), dirty_(project.FileIsDirty), shownMenu_(project.Canvas.CurrentMenuID)
    {
        std::error_code ec;
        fs::create_directories(file_.parent_path(), ec);
        std::string error;
        kept_ = SaveTreeToFile(project.Doc.Tree, file_.string(), error);
        const DocNode* selected = project.Doc.Tree.Selected();
        selected_ = selected ? selected->Key() : std::string();
        project.Doc.Tree.ForEach([this](DocNode& node) {
            if (node.Expanded)
                expanded_.push_back(node.Key());
        });
    }
    ProjectGuard(const ProjectGuard&) = delete;
    ProjectGuard& operator=(const ProjectGuard&) = delete;

    ~ProjectGuard()
    {
        if (kept_ && !done_ && LoadXmlFile(file_.string(), project_.Doc, project_.Ask())) {
            Document& doc = project_.Doc;
            doc.NextObjectID = nextID_;
            LoadMediaTracsFromMenuTracs(doc, doc.MenuTracks);
            for (const std::string& key : expanded_) {
                if (DocNode* node = doc.Tree.Find(key))
                    node->Expanded = true;
            }
            doc.Tree.Select(doc.Tree.Find(selected_));
            project_.Undo = std::move(undo_);
            project_.Commands.mnuUndo = !project_.Undo.Empty();
            project_.FileIsDirty = dirty_;
            // Each menu made was shown on the canvas in its turn.
            if (DocNode* shown = shownMenu_.empty() ? nullptr : doc.Tree.ObjectNode(shownMenu_))
                ParceMenu(project_, *shown);
            else
                project_.ForgetCanvas();
        }
        std::error_code ec;
        fs::remove(file_, ec);
    }

    bool Kept() const { return kept_; }
    void Done() { done_ = true; }

private:
    Project& project_;
    fs::path file_;
    UndoHistory undo_;
    long nextID_;
    bool dirty_;
    std::string shownMenu_;
    std::string selected_;
    std::vector<std::string> expanded_;
    bool kept_ = false;
    bool done_ = false;
};

// The menus of one menu's pages go to the list of files made.
void ListMade(Wizard& wizard, RunFiles& files, const std::string& file, std::size_t pages)
{
    for (std::size_t p = 1; p <= pages; ++p) {
        wizard.List3.push_back(PageFileName(file, static_cast<int>(p)));
        files.Made(wizard.List3.back());
    }
}

// The question before a menu's file is replaced; only Yes makes the menu.
bool MayWrite(Prompt& prompt, const char* question, const std::string& file)
{
    std::error_code ec;
    return !fs::exists(file, ec) ||
           prompt.Ask(std::string(question) + file + " exist. Replace it?", PromptButtons::YesNo, PromptAnswer::Yes) ==
               PromptAnswer::Yes;
}

PageMenuRequest RequestFor(const std::string& file, const MenuPage& page, MenuVideoTools* tools,
                           const std::string& mainMenuID)
{
    return PageMenuRequest{.FileName = file,
                           .MainMenuID = mainMenuID,
                           .MotionSeconds = static_cast<double>(std::max(0LL, LeadingNumber(page.Design.Animation))),
                           .Tools = tools};
}

} // namespace

bool WizardAddTitles(Project& project, Wizard& wizard, std::vector<std::string> files)
{
    if (files.empty())
        files = AskForFiles(project, "Select movies", "*.avi;*.divx|*.avi;*.divx", true);
    bool added = false;
    for (const std::string& file : files) {
        bool made = false;
        if (wizard.ProjectMade) {
            made = AddTitle(project, file);
        } else {
            // The save question was asked when the wizard opened.
            const bool dirty = project.FileIsDirty;
            project.FileIsDirty = false;
            made = CreateNewFile(project, file);
            if (!made)
                project.FileIsDirty = dirty;
            wizard.ProjectMade = made;
        }
        if (!made)
            continue;
        added = true;
        wizard.List1.push_back(WizardTitle{.TitleID = ObjectIdOf(*TitleNodes(project.Doc).back()), .Path = file});
    }
    if (added)
        wizard.TitlePage.reset(); // the title page shows every title
    wizard.btnNextEnabled = !wizard.List1.empty();
    return added;
}

void WizardRemoveTitle(Project& project, Wizard& wizard)
{
    const WizardTitle* title = SelectedTitle(wizard);
    if (!title)
        return;
    DocNode* node = project.Doc.Tree.ObjectNode(title->TitleID);
    if (IsTitleNode(node)) {
        project.Doc.Tree.Select(node);
        mnuRemoveTitle(project);
        // The user may have kept the title at the question.
        if (project.Doc.Tree.ObjectNode(title->TitleID))
            return;
    }
    wizard.List1.erase(wizard.List1.begin() + wizard.ListIndex);
    wizard.TitlePage.reset();
    wizard.ListIndex = std::min(wizard.ListIndex, static_cast<int>(wizard.List1.size()) - 1);
    wizard.btnNextEnabled = !wizard.List1.empty();
}

bool WizardCreateChapters(Project& project, Wizard& wizard)
{
    WizardTitle* title = SelectedTitle(wizard);
    if (!title)
        return false;
    ChapForm form;
    LoadChapForm(form, project.Doc, ChapSettingsFile(project), project.Ask());
    const auto& items = form.Combo1.Items;
    const auto found = std::find_if(items.begin(), items.end(),
                                    [&](const ComboItem& item) { return std::to_string(item.ItemData) == title->TitleID; });
    if (found == items.end())
        return false;
    form.Combo1.ListIndex = static_cast<int>(found - items.begin());
    if (!Combo1_Click(form, project.Doc, project.Ask()) || !project.Forms().ShowChap(form) ||
        !CreateChaps(project, form, false))
        return false;
    const DocNode* node = project.Doc.Tree.ObjectNode(title->TitleID);
    title->HasChapters = node && !ChapterNodesOf(*node).empty();
    title->Chapters.reset(); // its page shows the new chapters
    return true;
}

void WizardSelectTitle(Project& project, Wizard& wizard, int index)
{
    wizard.ListIndex = index >= 0 && index < static_cast<int>(wizard.List1.size()) ? index : -1;
    wizard.Info1.clear();
    wizard.Info2.clear();
    const WizardTitle* title = SelectedTitle(wizard);
    if (!title)
        return;
    if (const std::optional<WizardInfo> info = GetInfo(title->Path, project.Ask())) {
        wizard.Info1 = info->Video;
        wizard.Info2 = info->Audio;
        wizard.Info2.insert(wizard.Info2.end(), info->Subtitles.begin(), info->Subtitles.end());
    }
}

void WizardShowMenus(Wizard& wizard)
{
    wizard.Panel = WizardPanel::SelectMenus;
    wizard.chkCreateTitleMenu = wizard.List1.size() > 1;
    wizard.chkCreateChapterMenu =
        std::any_of(wizard.List1.begin(), wizard.List1.end(), [](const WizardTitle& t) { return t.HasChapters; });
    wizard.btnBackEnabled = true;
}

void SetChapterMenuBox(Project& project, Wizard& wizard, bool on)
{
    if (!on && wizard.chkCreateSetupMenu) {
        wizard.chkCreateChapterMenu = true;
        project.Ask().Message("You can not have a setup menu without a chapter menu");
        return;
    }
    wizard.chkCreateChapterMenu = on;
}

void SetSetupMenuBox(Wizard& wizard, bool on)
{
    wizard.chkCreateSetupMenu = on;
    if (on)
        wizard.chkCreateChapterMenu = true;
}

bool WizardShowPreview(Project& project, Wizard& wizard)
{
    Prompt& prompt = project.Ask();
    wizard.TreeView1.clear();
    wizard.List2.clear();
    prompt.Progress(kWizardMessage, "Loading menus...");
    for (std::size_t i = 0; i < wizard.List1.size(); ++i) {
        WizardTitle& title = wizard.List1[i];
        prompt.Progress(kWizardMessage, "Loading menus... " + std::to_string(i + 1) + "/" +
                                            std::to_string(wizard.List1.size()) + " " + title.Path);
        title.WantsSetupMenu = false;
        if (wizard.chkCreateSetupMenu) {
            if (!title.Setup) {
                SetupPage setup;
                if (!OpenSetupPage(project, title.TitleID, setup))
                    return false;
                setup.Page.Gradient = kPaleGradient;
                title.Setup = std::move(setup);
            }
            // "None" closes the subtitle column: more rows than that mean a subtitle stream.
            title.WantsSetupMenu = title.Setup->Audio.size() > 1 || title.Setup->Subtitles.size() > 1;
            title.Setup->Page.Design.Main.Visible = wizard.chkCreateChapterMenu && title.HasChapters;
            if (title.SetupFile.empty())
                title.SetupFile = BesideMovie(title.Path, "_Setup.avi");
        }
        title.WantsChapterMenu = wizard.chkCreateChapterMenu && title.HasChapters;
        if (title.WantsChapterMenu) {
            if (!title.Chapters) {
                MenuPage page;
                if (!OpenChapterPage(project, title.TitleID, kPerPage, page))
                    return false;
                page.Gradient = kPaleGradient;
                title.Chapters = std::move(page);
            }
            // A button that would lead nowhere is left out: the setup button without the title's
            // setup menu, the main button without the title menu.
            MenuPage& page = *title.Chapters;
            page.Page = 1;
            page.SetupHiddenByPaging = false;
            page.Design.Setup.Visible = title.WantsSetupMenu;
            page.Design.Main.Visible = wizard.chkCreateTitleMenu;
            PlacePictures(page, false);
            if (title.ChapterFile.empty())
                title.ChapterFile = BesideMovie(title.Path, "_Chapter.avi");
        }
    }
    if (wizard.chkCreateTitleMenu && !wizard.List1.empty()) {
        if (!wizard.TitlePage) {
            MenuPage page;
            if (!OpenTitlePage(project, kPerPage, page))
                return false;
            page.Gradient = kPaleGradient;
            // The title menu is the top menu: there is no menu above it to lead to.
            page.Design.Main.Visible = false;
            wizard.TitlePage = std::move(page);
        }
        if (wizard.TitleFile.empty())
            wizard.TitleFile = BesideMovie(wizard.List1.front().Path, "_Title.avi");
    }
    prompt.Progress(kWizardMessage, "");
    WizardRebuildRows(wizard);
    wizard.Panel = WizardPanel::Preview;
    wizard.btnBackEnabled = true;
    return true;
}

void WizardRebuildRows(Wizard& wizard)
{
    wizard.TreeView1.clear();
    wizard.List2.clear();
    wizard.TreeIndex = -1;
    wizard.Text1.clear();
    const auto addPages = [&](WizardRowKind kind, int title, const std::string& file, int pages) {
        for (int p = 1; p <= pages; ++p) {
            wizard.TreeView1.push_back(WizardRow{.Kind = kind,
                                                 .Key = "k_" + std::to_string(title + 1),
                                                 .Text = fs::path(file).filename().string() + " " + std::to_string(p) +
                                                         "/" + std::to_string(pages),
                                                 .Title = title,
                                                 .Page = p});
            wizard.List2.push_back(PageFileName(file, p));
        }
    };
    const auto addRoot = [&](const char* caption) {
        wizard.TreeView1.push_back(WizardRow{.Kind = WizardRowKind::Root, .Key = caption, .Text = caption});
    };
    addRoot(kTitlesRoot);
    if (wizard.chkCreateTitleMenu && wizard.TitlePage)
        addPages(WizardRowKind::TitleMenu, -1, wizard.TitleFile, PagesOf(*wizard.TitlePage));
    addRoot(kChaptersRoot);
    for (std::size_t i = 0; i < wizard.List1.size(); ++i) {
        const WizardTitle& title = wizard.List1[i];
        if (title.WantsChapterMenu && title.Chapters)
            addPages(WizardRowKind::ChapterMenu, static_cast<int>(i), title.ChapterFile, PagesOf(*title.Chapters));
    }
    addRoot(kSetupRoot);
    for (std::size_t i = 0; i < wizard.List1.size(); ++i) {
        const WizardTitle& title = wizard.List1[i];
        if (title.WantsSetupMenu && title.Setup)
            addPages(WizardRowKind::SetupMenu, static_cast<int>(i), title.SetupFile, 1);
    }
}

void WizardSelectRow(Wizard& wizard, int index)
{
    const WizardRow* row = RowAt(wizard, index);
    wizard.TreeIndex = row ? index : -1;
    const std::string* file = row ? RowFile(wizard, *row) : nullptr;
    wizard.Text1 = file ? *file : std::string();
    if (MenuPage* page = WizardRowPage(wizard, index)) {
        page->Page = row->Page;
        PlacePictures(*page, false);
    }
}

void WizardSetFile(Wizard& wizard, const std::string& file)
{
    const WizardRow* row = RowAt(wizard, wizard.TreeIndex);
    std::string* target = row ? RowFile(wizard, *row) : nullptr;
    if (!target || file.empty())
        return;
    const int selected = wizard.TreeIndex;
    *target = EndsWithNoCase(file, ".avi") ? file : file + ".avi";
    WizardRebuildRows(wizard);
    WizardSelectRow(wizard, selected);
}

MenuPage* WizardRowPage(Wizard& wizard, int index) { return PageOfRow(wizard, index); }

SetupPage* WizardRowSetup(Wizard& wizard, int index) { return SetupOfRow(wizard, index); }

QImage WizardRowPicture(const Wizard& wizard, int index)
{
    if (const SetupPage* setup = SetupOfRow(wizard, index))
        return ComposeSetupPage(*setup);
    const MenuPage* page = PageOfRow(wizard, index);
    return page ? ComposePage(*page, LoadPageArt(*page)) : QImage();
}

void WizardBack(Wizard& wizard)
{
    if (wizard.Panel == WizardPanel::SelectTitles || wizard.Panel == WizardPanel::Finish)
        return;
    wizard.Panel = static_cast<WizardPanel>(static_cast<int>(wizard.Panel) - 1);
    wizard.btnBackEnabled = wizard.Panel != WizardPanel::SelectTitles;
    wizard.btnNextEnabled = !wizard.List1.empty();
}

bool WizardCreate(Project& project, Wizard& wizard, MenuVideoTools* tools)
{
    Prompt& prompt = project.Ask();
    DocTree& tree = project.Doc.Tree;
    const auto stopped = [&] { return tools && tools->Runner.Cancelled(); };
    const auto forget = [&] {
        wizard.List3.clear();
        wizard.TitleMenus.clear();
        for (WizardTitle& title : wizard.List1) {
            title.ChapterMenus.clear();
            title.SetupMenu.clear();
        }
    };
    forget();
    // Declared first, so that the project is back before the files are.
    RunFiles files;
    ProjectGuard guard(project);
    if (!guard.Kept()) {
        prompt.Message("There was an error working with the file:\n" + (project.ProgramFolder() / "tmp").string(), "",
                       PromptIcon::Critical);
        return false;
    }
    const auto fail = [&] {
        forget();
        prompt.Progress(kWizardMessage, "");
        return false;
    };

    if (wizard.chkCreateTitleMenu && wizard.TitlePage) {
        prompt.Progress(kWizardMessage, "Creating menu for titles...");
        if (MayWrite(prompt, "The file name for title menu ", wizard.TitleFile)) {
            PageMenuResult result;
            if (!files.MakeRoom(wizard.TitleFile, PagesOf(*wizard.TitlePage)) ||
                !CreateTitleMenu(project, *wizard.TitlePage, RequestFor(wizard.TitleFile, *wizard.TitlePage, tools, ""),
                                 result))
                return fail();
            ListMade(wizard, files, wizard.TitleFile, result.MenuIDs.size());
            wizard.TitleMenus = result.MenuIDs;
        }
    }
    if (stopped())
        return fail();
    const std::string titleMenu = wizard.TitleMenus.empty() ? std::string() : wizard.TitleMenus.front();

    // The first chapter menu and the setup button of each title, by its identifier.
    std::map<std::string, PageMenuResult> chapterMenus;
    if (wizard.chkCreateChapterMenu) {
        for (WizardTitle& title : wizard.List1) {
            if (!title.WantsChapterMenu || !title.Chapters)
                continue;
            prompt.Progress(kWizardMessage, "Creating menu for chapters... " + fs::path(title.Path).filename().string());
            if (!MayWrite(prompt, "The file name for chapter menu ", title.ChapterFile))
                continue;
            PageMenuResult result;
            // The main buttons lead to the title menu; without one they are left out.
            if (titleMenu.empty())
                title.Chapters->Design.Main.Visible = false;
            if (!files.MakeRoom(title.ChapterFile, PagesOf(*title.Chapters)) ||
                !CreateChapterMenu(project, *title.Chapters,
                                   {title.TitleID, RequestFor(title.ChapterFile, *title.Chapters, tools, titleMenu)},
                                   result))
                return fail();
            ListMade(wizard, files, title.ChapterFile, result.MenuIDs.size());
            title.ChapterMenus = result.MenuIDs;
            chapterMenus[title.TitleID] = result;
            if (stopped())
                return fail();
        }
    }

    if (wizard.chkCreateSetupMenu) {
        for (WizardTitle& title : wizard.List1) {
            if (!title.WantsSetupMenu || !title.Setup)
                continue;
            prompt.Progress(kWizardMessage, "Creating menu for setup... " + fs::path(title.Path).filename().string());
            if (!MayWrite(prompt, "The file name for setup menu ", title.SetupFile))
                continue;
            const auto chapters = chapterMenus.find(title.TitleID);
            // The main button goes back to the title's first chapter menu.
            const std::string back = chapters == chapterMenus.end() ? std::string() : chapters->second.MenuIDs.front();
            SetupMenuResult result;
            if (back.empty())
                title.Setup->Page.Design.Main.Visible = false;
            if (!files.MakeRoom(title.SetupFile, 1) ||
                !CreateSetupMenu(project, *title.Setup,
                                 {.Menus = RequestFor(title.SetupFile, title.Setup->Page, tools, back),
                                  .FromWizard = true},
                                 result))
                return fail();
            ListMade(wizard, files, title.SetupFile, 1);
            title.SetupMenu = result.MenuID;
            if (chapters != chapterMenus.end() && !chapters->second.SetupButtonID.empty())
                ActionFromButtonToMenu(project, chapters->second.SetupButtonID, result.MenuID);
            if (stopped())
                return fail();
        }
    }

    // A title button of the title menu leads to the title's chapter menu when it has one, and
    // plays the title otherwise.
    for (const std::string& menuID : wizard.TitleMenus) {
        const DocNode* menu = tree.ObjectNode(menuID);
        if (!menu)
            continue;
        std::vector<std::string> buttons;
        for (const auto& child : *menu) {
            if (EqualsNoCase(child->Text, "ButtonMenu"))
                buttons.push_back(GetPropertyInNode(*child, "objectid"));
        }
        for (const std::string& button : buttons) {
            const DocNode* node = tree.ObjectNode(button);
            const std::vector<ActionRow> actions =
                node ? LoadActionRows(tree, GetPropertyInNode(*node, "selectaction")) : std::vector<ActionRow>{};
            if (actions.empty() || !EqualsNoCase(actions.front().Type, "PlayAction"))
                continue;
            const auto chapters = chapterMenus.find(actions.front().Target1);
            if (chapters != chapterMenus.end())
                ActionFromButtonToMenu(project, button, chapters->second.MenuIDs.front());
        }
    }

    // The remote's menu key leads to the menu the disc starts with, unless the set names one.
    std::string firstMade = wizard.TitleMenus.empty() ? std::string() : wizard.TitleMenus.front();
    for (const WizardTitle& title : wizard.List1) {
        if (firstMade.empty())
            firstMade = !title.ChapterMenus.empty() ? title.ChapterMenus.front() : title.SetupMenu;
    }
    if (const DocNode* menu = tree.ObjectNode(firstMade); menu && menu->Parent()) {
        DocNode& language = *menu->Parent();
        if (EqualsNoCase(GetPropertyInNode(language, "rootMenuID"), "none"))
            UpdatePropertyInNode(tree, language, "rootMenuID", GetPropertyInNode(language, "startingMenuID"), true);
    }

    prompt.Progress(kWizardMessage, "");
    guard.Done();
    files.Done();
    wizard.Panel = WizardPanel::Finish;
    wizard.btnBackEnabled = false;
    wizard.btnNextEnabled = false;
    prompt.Message("Menu creation finished");
    return true;
}

} // namespace mw
