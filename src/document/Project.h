#pragma once

#include "core/FormHost.h"
#include "core/Prompt.h"
#include "document/Document.h"
#include "document/MenuCanvas.h"
#include "document/NormalizeFile.h"
#include "document/ProgramStart.h"
#include "document/TreeQueries.h"
#include "document/UndoHistory.h"
#include "i18n/LangDoc.h"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace mw {

// The menu commands whose enabled state follows the project; the window shows these values.
// The commands that EnableItems switches as a group are behind ItemsEnabled instead, except
// those that the project's steps also switch one by one. Those that follow the canvas are
// rules over it (menus/MenuBarCommands.h).
struct CommandStates {
    bool mnuUndo = false;
    bool mnuNormalize = false;
    bool mnuCheck = false;
    bool mnuNextNode = false;
    bool mnuPreviusNode = false;
    bool mnuRefreshTitle = false;
    bool mnuRemoveTitle = false;
    bool mnuRemoveButton = false;
    bool mnuRemoveLang = false;
    bool mnuRemoveMenu = false;

    bool operator==(const CommandStates&) const = default;
};

// The open project of one main window, and everything the window owned about it that is not a
// widget: the document, its flags, the undo list, the auto-save state, the canvas state and the
// settings in memory. Commands are its methods or free functions over it; the window, the
// command line and the tests drive the same calls.
class Project {
public:
    using Clock = std::function<std::chrono::system_clock::time_point()>;

    Project(ProgramState& program, Prompt& prompt, FormHost& forms,
            Clock clock = [] { return std::chrono::system_clock::now(); });

    Document Doc;
    bool FileIsDirty = false;
    bool FileIsNew = false;
    double MovieFps = 23.976;
    // Reads the frame rate of a movie into fps, telling the user when the file cannot be read;
    // the media layer supplies it and whoever makes the project installs it. Without one, an
    // opened project keeps the rate 23.976.
    std::function<void(const std::string& movie, double& fps, Prompt& prompt)> ReadMovieFps;

    // Auto-save. Whoever owns the one-minute timer calls AutoSaveTick while it runs, and is
    // told through AutoSaveTimerChanged when the timer starts anew or stops.
    int AutoSaveTicks = 0;
    int AutoSaveSlot = 0;
    bool AutoSaveRunning = false;
    std::function<void(bool running)> AutoSaveTimerChanged;

    UndoHistory Undo;

    // The canvas: the menu shown, its buttons and the selection; and the overlay menus.
    MenuCanvas Canvas;
    OverlayMenus Overlays;

    std::string WindowTitle;
    bool ItemsEnabled = false; // EnableItems: the document commands and toolbar buttons
    // The toolbar's two-state NoCreateOverlays, which the build reads; released on open.
    bool NoCreateOverlays = false;
    // The canvas and the right pane: hidden from open or close until a node is selected.
    bool PanesShown = false;
    CommandStates Commands;

    ProgramState& Program() { return program_; }
    Settings& Values() { return program_.Values; }
    const Settings& Values() const { return program_.Values; }
    const LangDoc& Lang() const { return program_.Lang.LangDoc(); }
    FormTexts Texts() const { return FormTexts(program_.Lang.LangDoc(), "Form1"); }
    Prompt& Ask() { return prompt_; }
    FormHost& Forms() { return forms_; }
    std::chrono::system_clock::time_point Now() const { return clock_(); }
    const std::filesystem::path& ProgramFolder() const { return program_.Lang.ProgramFolder(); }

    // Every change by a user command marks the project dirty.
    void MarkDirty() { FileIsDirty = true; }

    // Offers to save unsaved work. False when the user cancelled, at the question or at the save
    // dialog, or the save failed: the caller must not go on.
    bool AskToSave();
    // False when the user cancelled or the file could not be read; the old project stays open.
    bool OpenFile(const std::string& path);
    // The Open command: asks for a project file, starting in LastFolderUsed, which then follows
    // the choice. False when cancelled or when OpenFile fails.
    bool OpenFileAsk();
    // Saves under the project's name; a new project, saveAs or an empty name ask for one, and a
    // given path is taken as the answer. The name, the title and the recent files change only
    // once the file is written. An auto-save writes a copy with absolute locations to the path,
    // leaves the name, the recent files and the flags alone and tells a failure once in the
    // status text. False when cancelled or failed (the user was told).
    bool SaveFile(bool saveAs, bool autoSave, const std::string& path = {});
    // False when the user cancelled at the unsaved question.
    bool CloseOpenFile();
    // The end of the program: offers to save, then deletes the auto-save files and writes the
    // settings. False when the work was not saved as asked, and the program goes on with its
    // auto-save files in place.
    bool Unload();

    void AddFileToRecent(const std::string& path);
    const std::vector<std::string>& RecentFiles() const { return program_.Values.RecentFiles; }
    // A click on a recent entry. A vanished file is said so and stays in the list.
    bool OpenRecentFile(std::size_t index);

    // One minute of the auto-save timer.
    void AutoSaveTick();

    // Before a command changes the menu on the canvas: keeps the menu and MenuTracks.
    void UndoAdd();
    // The same for a command that changes more than the menu on the canvas: keeps the element
    // with this identifier (a whole language set) instead. A language set refers to a great many
    // tracks, so a command that only adds tracks keeps none (the added ones go on undo all the same).
    void UndoAddFor(const std::string& objectID, KeptTracks kept = KeptTracks::None);
    // Puts back the last snapshot.
    void UndoDo();

    // The commands that renumber or check the whole project, with the window's part after them.
    NormalizeResult Normalize();
    bool Check(bool showMessage);

    void EnableItems(bool state);
    // The auto-save counts again from now, with the minutes of the settings.
    void RestartAutoSave();
    // For a document that replaces the open one: no undo steps, no menu on the canvas.
    void ClearUndo();
    void ForgetCanvas();

private:
    void SetAutoSaveRunning(bool running);

    ProgramState& program_;
    Prompt& prompt_;
    bool autoSaveFailing_ = false; // the failure was told; it is not told again until one succeeds
    FormHost& forms_;
    Clock clock_;
};

// The main window's caption: "<file name> - Menuwright ver. <version> by Ostrander", or without
// the file name when no project is open.
std::string WindowTitleFor(const std::string& projectFile);

} // namespace mw
