#pragma once

#include "build/BuildLog.h"
#include "build/ToolRunner.h"
#include "core/Prompt.h"
#include "core/settings/Settings.h"
#include "document/Document.h"
#include "i18n/LangDoc.h"
#include "render/cDIB.h"

#include <array>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace mw {

// The rectangle of each overlay picture, "(0 0 width height)", by menu id "_" subtitle source id
// "_" start frame; the overlay preparation fills it, the linker files read it.
using OverlayRects = std::map<std::string, std::string>;

// The picture of one button's overlay in the build folder: the program's name, "_", the menu
// media's file name, the menu's id, "_", the subtitle source's id, "_", the start frame, ".bmp".
std::string OverlayBitmapName(const std::string& menuFile, const std::string& menuID, const std::string& sourceID,
                              const std::string& startFrame);

// The folder beside the program where a build keeps its files; it outlives the run.
std::filesystem::path BuildFolder(const std::filesystem::path& programFolder);

// The MenuTracks of the project, without making one; nullptr when there is none.
const DocNode* MenuTracksOf(const Document& doc);

// A menu whose background is a picture, which the build first makes into a menu video.
bool IsPictureMenu(const std::string& location);

// A video track of the menus that has buttons, with the names its scripts use.
struct MenuVideo {
    std::string TrackID;             // objectID of the MediaTrack
    std::string ID;                  // its mediaSourceID
    std::string File;                // the source's location less the folder
    std::filesystem::path VideoFile; // the video on this system
    std::string Video;               // the same as the tools see it
    std::string Obj;                 // objectID of the source
    std::string Menu;                // menuID of the extra info
    long Buttons = 0;
};

// A menu's own Color1, Color2 and Color3 in place of the current colours, each where it has one.
void TakeMenuColours(const DocNode* menu, std::array<Colour, 3>& colours);

// The video tracks of MenuTracks with Buttons above 0, in tree order. A track without them
// uses the extra info of its source, as older files keep it there; the tree is not changed.
std::vector<MenuVideo> MenuVideosWithButtons(const Document& doc, const std::filesystem::path& programFolder);

// What a build of the open project needs besides the tools.
struct MuxJob {
    const Document& Doc;
    const Settings& Options;
    const LangDoc& Lang;
    std::filesystem::path ProgramFolder;
    const OverlayRects& Rects;
    std::array<Colour, 3> Colours{}; // the current overlay colours
    bool NoCreateOverlays = false;   // reuse the intermediate files of an earlier run
    std::filesystem::path Output;    // when given, the result's path as it stands
    bool PrepareOnly = false;        // write every file, but run no tool and clean nothing
};

// How a build ended.
enum class BuildEnd {
    Done,      // the muxer ran and left an empty log, or none
    Prepared,  // every file written, no tool run
    Failed,    // a tool was missing or failed, or a file could not be written; the files stay
    Cancelled, // the user said no, closed a dialog or pressed Cancel
};

// Writes "DoOverlays.bat" and a linker file per menu with buttons into the build folder. False
// with the reason when a file could not be written.
bool WriteOverlayScripts(const MuxJob& job, std::string& error);

// The linker and palette file of one menu video: its palette, then one line per overlay picture
// that exists in the build folder, one second apart.
std::string LinkerFileText(const MuxJob& job, const MenuVideo& video);

// "FinalDivX.bat" for the output file.
std::string FinalDivXText(const MuxJob& job, const std::filesystem::path& output);

// Where the build writes its result, by NewDivXSaveToFolder and replaceExistDivX; nothing when
// the user cancelled the dialog. With keepExisting an output to be replaced is not deleted yet.
std::optional<std::filesystem::path> DivXOutputPath(const std::string& projectFile, const Settings& options,
                                                    const LangDoc& lang, Prompt& prompt, bool keepExisting = false);

// The muxer's log of an output: its name with ".log" for ".divx".
std::filesystem::path MuxLogPath(const std::filesystem::path& output);

// Clears the build folder as deleteTemp, deleteBmp and deleteDivX say. With logShown the
// muxer's log "divxmux.log" stays.
void CleanBuildFolder(const std::filesystem::path& programFolder, const Settings& options, bool logShown);

// Writes and runs the two batch files, picks the output, shows a non-empty muxer log or opens
// the result, and cleans the build folder. Every file written stays for a run by hand when a
// tool could not run.
BuildEnd CreateDivXwithOverlays(const MuxJob& job, Prompt& prompt, ToolRunner& runner, BuildLog& log);

} // namespace mw
