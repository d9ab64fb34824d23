#pragma once

#include "core/settings/clsIniFile.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace mw {

class Prompt;

// How a menu video is made from a picture.
inline constexpr int kPicToMenuVirtualDub = 0;
inline constexpr int kPicToMenuCli = 1;
inline constexpr int kPicToMenuBuiltIn = 2; // our own encoder: needs no outside tool

inline constexpr int kMaxRecentFiles = 10;
inline constexpr int kRulerSize = 27;

// The settings in memory: the keys of section General under their own names, and the recent
// files. Window places are opaque layout numbers here; the windows give them their meaning.
// Colours are 24-bit values with red in the low byte. Every member has an initializer, so that
// a designated initializer may name only some of them.
struct Settings {
    bool HelpOnTop = true;
    std::string Lang = "English";
    std::uint32_t GuideLineColor = 255;
    std::string LastFolderUsed{}; // LoadValues defaults it to the program's own path
    bool ShowRulers = true;
    bool SimpleMode = false; // the left pane shows tv2 instead of the document tree
    int AutoSaveMin = 0;
    std::string cliPath{};
    std::string virtualDubPath{};

    long Left = 100;
    long Top = 100;
    long Width = 13125;
    long Height = 8000;
    int PropTextX = 599;
    int PropTextY = 61;
    int PropX = 173;
    int PropY = 63;
    int PropWidth = 169;
    int PropHeight = 293;
    bool PropPined = false;
    int PropMenuX = 173;
    int PropMenuY = 36;
    int PropMenuWidth = 169;
    int PropMenuHeight = 281;
    bool PropMenuPined = true;
    int PropMenuMiddle = 85;
    int PropMiddle = 70;
    long Diax = 263;
    long Diax2 = 692;

    int DefOverlayPos = 1;
    int MethodForPicToMenu = kPicToMenuVirtualDub;
    bool UseOnlyVD = false;
    bool DonNotInvolveCliExe = false;
    bool ShowDOScli = false;
    std::string NewDivXSaveToFolder = "1";
    std::string DefOverlay = "|Rectangle";
    bool ShowDebugMessage = false;
    std::string defLang = "en";
    bool RunDivX = true;
    bool checkFirst = true;
    bool deleteTemp = true;
    bool deleteBmp = false;
    bool deleteDivX = true;
    bool addPauseDivX = true;
    bool addPauseOverlays = true;
    bool replaceExistDivX = false;
    int DoubleClickInButtonsAction = 1;
    std::uint32_t defOverlayColor1 = 255;
    std::uint32_t defOverlayColor2 = 65535;
    std::uint32_t defOverlayColor3 = 16777215;
    std::uint32_t defButtonColor = 255;

    std::vector<std::string> RecentFiles{}; // at most kMaxRecentFiles, none empty

    bool operator==(const Settings&) const = default;
};

// The settings file of a program folder: "Menuwright.ini".
std::filesystem::path SettingsFilePath(const std::filesystem::path& programFolder);

// The space the rulers take around the canvas: kRulerSize when shown, 0 when hidden.
int RulerSize(const Settings& settings);

// The functions below switch the file object's section as they go and give it back as they
// found it. The Save functions return false when the file could not be written; callers may
// ignore it, a failed save is silent.

// Reads sections General and RecentFiles; a missing or unreadable file gives every default.
void LoadValues(Settings& settings, clsIniFile& ini, const std::filesystem::path& programFolder);
// What the window writes at exit: its layout, the last folder, the rulers, the recent files.
// `lang` is the loaded language's name, its file stem before the first ".".
bool SaveValues(const Settings& settings, const std::string& lang, clsIniFile& ini);
// The keys of the options dialog, in the dialog's order.
bool SaveOptions(const Settings& settings, clsIniFile& ini);
// Keeps the located tool in memory and writes its one key.
bool SaveCliPath(Settings& settings, const std::string& path, clsIniFile& ini);
bool SaveVirtualDubPath(Settings& settings, const std::string& path, clsIniFile& ini);
// The help window's place above the others, kept the same way.
bool SaveHelpOnTop(Settings& settings, bool onTop, clsIniFile& ini);
// The hidden switch of the debug boxes: flips ShowDebugMessage, writes it at once and says
// which way it went.
void ToggleShowDebugMessage(Settings& settings, clsIniFile& ini, Prompt& prompt);

} // namespace mw
