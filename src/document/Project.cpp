#include "document/Project.h"
#include "document/TreeQueries.h"

#include "core/AutoSaveFiles.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "core/Version.h"
#include "document/CheckForErrors.h"
#include "document/MenuTrackList.h"
#include "document/TreeViewToXml.h"
#include "document/XmlToTreeView.h"

#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace mw {

namespace {

// The project's first movie: the last MediaSource of the last Title in Media, resolved against
// the project's folder. Empty when there is none or its file is not there.
std::string FirstMovieFile(const Document& doc)
{
    const DocNode* title = ChildNamed(ChildNamed(doc.Tree.Root(), "Media"), "Title", true);
    const DocNode* source = ChildNamed(title, "MediaSource", true);
    const std::string location = source ? GetPropertyInNode(*source, "location") : "";
    if (location.empty())
        return "";
    std::string movie = ResolveLocation(doc.ProjectFile, location);
    std::error_code ec;
    return fs::is_regular_file(movie, ec) ? movie : "";
}

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
                          &Commands.mnuRemoveTitle, &Commands.mnuRemoveLang, &Commands.mnuRemoveMenu,
                          &Commands.mnuRemoveButton})
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
        // A cancelled or failed save keeps the work: the caller must not go on.
        return SaveFile(false, false);
    case PromptAnswer::No:
        return true;
    default:
        return false;
    }
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
    for (bool* command : {&Commands.mnuRefreshTitle, &Commands.mnuRemoveTitle, &Commands.mnuRemoveButton,
                          &Commands.mnuRemoveLang, &Commands.mnuRemoveMenu})
        *command = false;
    FileIsNew = false;
    FileIsDirty = false;
    WindowTitle = WindowTitleFor(Doc.ProjectFile);
    Commands.mnuNormalize = true;
    Commands.mnuCheck = true;
    PanesShown = false;
    NoCreateOverlays = false;

    AddFileToRecent(Doc.ProjectFile);
    ClearUndo();
    RestartAutoSave();
    MovieFps = 23.976;
    if (const std::string movie = FirstMovieFile(Doc); ReadMovieFps && !movie.empty())
        ReadMovieFps(movie, MovieFps, prompt_);
    return true;
}

bool Project::SaveFile(bool saveAs, bool autoSave, const std::string& path)
{
    std::string error;
    if (autoSave && !path.empty()) {
        // The copy is opened by hand after a crash, from the program folder: its movies must be
        // found from there.
        if (SaveTreeToFile(Doc.Tree, path, error, Doc.ProjectFile)) {
            autoSaveFailing_ = false;
            return true;
        }
        // Said once, not at every minute; each tick tries again.
        if (!autoSaveFailing_)
            prompt_.Progress({}, "Auto-save failed, tried again every minute: " + error);
        autoSaveFailing_ = true;
        return false;
    }
    std::string name = path.empty() ? Doc.ProjectFile : path;
    const bool asked = path.empty() && (FileIsNew || saveAs || name.empty());
    if (asked) {
        FileDialogRequest request;
        request.Filter = "*.xml|*.xml";
        request.DefaultExt = "xml";
        request.OverwritePrompt = true;
        const std::optional<std::string> chosen = prompt_.SaveFile(request);
        if (!chosen || chosen->empty())
            return false;
        name = *chosen;
    }
    // A new name gets the extension; the project's own name is kept as it was read.
    if ((asked || !path.empty()) && !EndsWithNoCase(name, ".xml"))
        name += ".xml";
    // The file is replaced in one step, so a failed save leaves the old one whole; the project
    // takes the new name only once it stands on disk.
    if (!SaveTreeToFile(Doc.Tree, name, error)) {
        prompt_.Message(error, "", PromptIcon::Critical);
        return false;
    }
    Doc.ProjectFile = name;
    WindowTitle = WindowTitleFor(name);
    AddFileToRecent(name);
    FileIsNew = false;
    FileIsDirty = false;
    RestartAutoSave();
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
    PanesShown = false;
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
    if (!result.Changed)
        return result;
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
