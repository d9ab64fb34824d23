#include "document/Project.h"
#include "document/TreeQueries.h"

#include "core/AutoSaveFiles.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "core/Version.h"
#include "document/CheckForErrors.h"
#include "document/MenuTrackList.h"
#include "document/NewProjectTree.h"
#include "document/TreeViewToXml.h"
#include "document/XmlToTreeView.h"
#include "media/NewTitleForm.h"
#include "media/mAVIDecs.h"

#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace mw {

namespace {

} // namespace

std::string WindowTitleFor(const std::string& projectFile)
{
    std::string title = std::string(kAppTitle) + " ver. " + std::to_string(kVersionMajor) + "." +
                        std::to_string(kVersionMinor) + "." + std::to_string(kVersionRevision) + " by Ostrander";
    if (projectFile.empty())
        return title;
    return fs::path(projectFile).filename().string() + " - " + title;
}

Project::Project(ProgramState& program, Prompt& prompt, FormHost& forms, Clock clock)
    : WindowTitle(WindowTitleFor("")), program_(program), prompt_(prompt), forms_(forms), clock_(std::move(clock))
{
}

void Project::EnableItems(bool state)
{
    ItemsEnabled = state;
    for (bool* command : {&Commands.mnuNormalize, &Commands.mnuCheck, &Commands.mnuRefreshTitle,
                          &Commands.mnuAddButton, &Commands.mnuRemoveTitle, &Commands.mnuRemoveLang,
                          &Commands.mnuRemoveMenu, &Commands.mnuRemoveButton})
        *command = state;
}

void Project::RestartAutoSave()
{
    AutoSaveTicks = 0;
    SetAutoSaveRunning(Values().AutoSaveMin > 0);
}

void Project::SetAutoSaveRunning(bool running)
{
    AutoSaveRunning = running;
    if (AutoSaveTimerChanged)
        AutoSaveTimerChanged(running);
}

void Project::ClearUndo()
{
    Undo.Clear();
    Commands.mnuUndo = false;
}

void Project::ForgetCanvas()
{
    Doc.Tree.Select(nullptr);
    Canvas.Forget();
    Commands.mnuNextNode = false;
    Commands.mnuPreviusNode = false;
}

bool Project::AskToSave()
{
    if (!FileIsDirty)
        return true;
    switch (prompt_.Ask(Texts()(1, "File is not saved. Save it now?"), PromptButtons::YesNoCancel, PromptAnswer::Yes)) {
    case PromptAnswer::Yes:
        SaveFile(false, false);
        return true;
    case PromptAnswer::No:
        return true;
    default:
        return false;
    }
}

bool Project::CreateNewFile(const std::string& preset, const std::string& dialogTitle)
{
    if (!AskToSave())
        return false;
    std::string movie = preset;
    if (movie.empty()) {
        FileDialogRequest request;
        request.Title = dialogTitle;
        request.Filter = "*.avi;*.divx|*.avi;*.divx";
        request.InitialDir = Values().LastFolderUsed;
        const std::vector<std::string> files = prompt_.OpenFiles(request);
        if (files.empty() || files.front().empty())
            return false;
        movie = files.front();
        Values().LastFolderUsed = FolderOf(movie);
    }

    NewTitleForm form;
    double fps = MovieFps;
    FillNewTitleForm(form, movie, fps, prompt_);
    if (!forms_.ShowNewTitle(form))
        return false;

    ForgetCanvas();
    EnableItems(true);
    Doc.ProjectFile = (ProgramFolder() / "Untitled.xml").string();
    FileIsNew = true;
    WindowTitle = WindowTitleFor(Doc.ProjectFile);

    BuildNewProjectTree(Doc, movie, form.Tracks, Values().defLang, ChosenStream(form.Combo1),
                        ChosenStream(form.Combo2));
    Doc.Tree.Root()->Expanded = true;
    Doc.Tree.Select(Doc.Tree.Root());
    LoadMediaTracsFromMenuTracs(Doc, Doc.MenuTracks);
    MovieFps = fps;
    FileIsDirty = true;
    ClearUndo();
    RestartAutoSave();
    return true;
}

bool Project::OpenFileAsk()
{
    FileDialogRequest request;
    request.Filter = "*.xml|*.xml";
    request.DefaultExt = "xml";
    request.InitialDir = Values().LastFolderUsed;
    const std::vector<std::string> files = prompt_.OpenFiles(request);
    if (files.empty() || files.front().empty())
        return false;
    Values().LastFolderUsed = FolderOf(files.front());
    return OpenFile(files.front());
}

bool Project::OpenFile(const std::string& path)
{
    if (!AskToSave())
        return false;
    const long keptID = Doc.NextObjectID;
    Doc.NextObjectID = 0;
    if (!LoadXmlFile(path, Doc, prompt_)) {
        Doc.NextObjectID = keptID;
        return false;
    }
    std::error_code ec;
    const fs::path full = fs::absolute(path, ec);
    Doc.ProjectFile = ec ? path : full.string();

    DocNode* root = Doc.Tree.Root();
    root->Expanded = true;
    for (const auto& child : *root) {
        if (EqualsNoCase(child->Text, "LanguageMenus")) {
            child->Expanded = true;
            break;
        }
    }

    ForgetCanvas();
    LoadMediaTracsFromMenuTracs(Doc, Doc.MenuTracks);
    EnableItems(true);
    // These need a selection, and nothing is selected yet.
    for (bool* command : {&Commands.mnuExportToTemplate, &Commands.mnuInsertTemplate, &Commands.mnuRefreshTitle,
                          &Commands.mnuAddButton, &Commands.mnuRemoveTitle, &Commands.mnuRemoveButton,
                          &Commands.mnuRemoveLang, &Commands.mnuRemoveMenu})
        *command = false;
    FileIsNew = false;
    FileIsDirty = false;
    WindowTitle = WindowTitleFor(Doc.ProjectFile);
    Commands.mnuNormalize = true;
    Commands.mnuCheck = true;

    AddFileToRecent(Doc.ProjectFile);
    ClearUndo();
    RestartAutoSave();
    ReadMovieFps();
    return true;
}

void Project::ReadMovieFps()
{
    MovieFps = 23.976;
    const DocNode* media = ChildNamed(Doc.Tree.Root(), "Media", false);
    const DocNode* title = ChildNamed(media, "Title", true);
    const DocNode* source = ChildNamed(title, "MediaSource", true);
    if (!source)
        return;
    const std::string location = GetPropertyInNode(*source, "location");
    if (location.empty())
        return;
    const std::string movie = ResolveLocation(Doc.ProjectFile, location);
    std::error_code ec;
    if (!fs::is_regular_file(movie, ec))
        return;
    TrackRows rows;
    LoadStreamsToListView(movie, rows, false, MovieFps, prompt_);
}

bool Project::SaveFile(bool saveAs, bool autoSave, const std::string& path)
{
    const bool autoSaving = autoSave && !path.empty();
    std::string name = path.empty() ? Doc.ProjectFile : path;
    if (!autoSaving) {
        if (path.empty() && (FileIsNew || saveAs || name.empty())) {
            FileDialogRequest request;
            request.Filter = "*.xml|*.xml";
            request.DefaultExt = "xml";
            request.OverwritePrompt = true;
            const std::optional<std::string> chosen = prompt_.SaveFile(request);
            if (!chosen || chosen->empty())
                return false;
            name = *chosen;
        }
        if (!EndsWithNoCase(name, ".xml"))
            name += ".xml";
        Doc.ProjectFile = name;
        WindowTitle = WindowTitleFor(name);
        AddFileToRecent(name);
    }
    // The file is replaced in one step, so the old one is not deleted first: a failed save
    // leaves it whole.
    std::string error;
    if (!SaveTreeToFile(Doc.Tree, name, error)) {
        prompt_.Message(error, "", PromptIcon::Critical);
        return false;
    }
    if (!autoSaving) {
        FileIsNew = false;
        FileIsDirty = false;
        RestartAutoSave();
    }
    return true;
}

bool Project::CloseOpenFile()
{
    if (!AskToSave())
        return false;
    FileIsDirty = false;
    ForgetCanvas();
    Doc = Document{};
    EnableItems(false);
    Commands = CommandStates{};
    WindowTitle = WindowTitleFor("");
    ClearUndo();
    SetAutoSaveRunning(false);
    return true;
}

bool Project::Unload()
{
    if (!AskToSave())
        return false;
    DeleteAutoSaveFiles(ProgramFolder());
    clsIniFile ini(SettingsFilePath(ProgramFolder()).string());
    SaveValues(Values(), program_.Lang.LangName(), ini);
    return true;
}

NormalizeResult Project::Normalize()
{
    NormalizeResult result = NormalizeFile(Doc, Lang(), prompt_);
    if (result.Changed)
        MarkDirty();
    std::string& menu = Canvas.CurrentMenuID;
    const auto renumbered = result.NewNumber.find(LeadingNumber(menu));
    if (!menu.empty() && renumbered != result.NewNumber.end())
        menu = std::to_string(renumbered->second);
    // Snapshots hold the old identifiers.
    ClearUndo();
    return result;
}

bool Project::Check(bool showMessage)
{
    return CheckForErrors(Doc, Lang(), prompt_, showMessage);
}

} // namespace mw
