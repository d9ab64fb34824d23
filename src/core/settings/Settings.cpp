#include "core/settings/Settings.h"

#include "core/Prompt.h"
#include "core/Text.h"
#include "core/Version.h"

#include <algorithm>

namespace mw {

namespace {

constexpr const char* kGeneral = "General";
constexpr const char* kRecentFiles = "RecentFiles";

// Gives the file object its section back when a load or save is done.
class SectionKeeper {
public:
    explicit SectionKeeper(clsIniFile& ini) : ini_(ini), saved_(ini.SectionName()) {}
    ~SectionKeeper() { ini_.SetSectionName(saved_); }
    SectionKeeper(const SectionKeeper&) = delete;
    SectionKeeper& operator=(const SectionKeeper&) = delete;

private:
    clsIniFile& ini_;
    std::string saved_;
};

// Booleans are "-1" and "0" in this file, and anything that is not a number 0 reads as true.
bool ReadBool(const clsIniFile& ini, const std::string& key, bool defaultValue)
{
    return ini.GetInt(key, defaultValue ? -1 : 0) != 0;
}

bool WriteBool(clsIniFile& ini, const std::string& key, bool value) { return ini.PutString(key, value ? "-1" : "0"); }

std::uint32_t ReadColor(const clsIniFile& ini, const std::string& key, std::uint32_t defaultValue)
{
    return static_cast<std::uint32_t>(ini.GetInt(key, static_cast<long>(defaultValue)));
}

bool WriteColor(clsIniFile& ini, const std::string& key, std::uint32_t value)
{
    return ini.PutInt(key, static_cast<long>(value));
}

int ReadInt(const clsIniFile& ini, const std::string& key, int defaultValue)
{
    return static_cast<int>(ini.GetInt(key, defaultValue));
}

void ReadRecentFiles(Settings& s, const clsIniFile& ini)
{
    s.RecentFiles.clear();
    const long count = std::min<long>(ini.GetInt("FilesCount", 0), kMaxRecentFiles);
    for (long n = 1; n <= count; ++n) {
        std::string file = ini.GetString("File" + std::to_string(n), "");
        if (!file.empty())
            s.RecentFiles.push_back(std::move(file));
    }
}

} // namespace

std::filesystem::path SettingsFilePath(const std::filesystem::path& programFolder)
{
    return programFolder / (std::string(kAppTitle) + ".ini");
}

int RulerSize(const Settings& settings) { return settings.ShowRulers ? kRulerSize : 0; }

void LoadValues(Settings& s, clsIniFile& ini, const std::filesystem::path& programFolder)
{
    SectionKeeper keep(ini);
    ini.SetSectionName(kGeneral);

    s.HelpOnTop = ReadBool(ini, "HelpOnTop", true);
    s.Lang = ini.GetString("Lang", "English");
    s.GuideLineColor = ReadColor(ini, "GuideLineColor", 255);
    // The executable's path stands for its folder, as file dialogs start in the folder of the
    // file they are given. Run together without a separator it would name a file beside the
    // program folder, which is no use to a dialog.
    s.LastFolderUsed = ini.GetString("LastFolderUsed", (programFolder / (std::string(kAppTitle) + ".exe")).string());
    s.ShowRulers = ReadBool(ini, "ShowRulers", true);
    s.SimpleMode = ReadBool(ini, "SimpleMode", false);
    s.AutoSaveMin = ReadInt(ini, "AutoSaveMin", 0);
    s.cliPath = ini.GetString("cliPath", "");
    s.virtualDubPath = ini.GetString("virtualDubPath", "");

    s.Left = ini.GetInt("Left", 100);
    s.Top = ini.GetInt("Top", 100);
    s.Width = ini.GetInt("Width", 13125);
    s.Height = ini.GetInt("Height", 8000);
    s.PropTextX = ReadInt(ini, "PropTextX", 599);
    s.PropTextY = ReadInt(ini, "PropTextY", 61);
    s.PropX = ReadInt(ini, "PropX", 173);
    s.PropY = ReadInt(ini, "PropY", 63);
    s.PropWidth = ReadInt(ini, "PropWidth", 169);
    s.PropHeight = ReadInt(ini, "PropHeight", 293);
    s.PropPined = ReadBool(ini, "PropPined", false);
    s.PropMenuX = ReadInt(ini, "PropMenuX", 173);
    s.PropMenuY = ReadInt(ini, "PropMenuY", 36);
    s.PropMenuWidth = ReadInt(ini, "PropMenuWidth", 169);
    s.PropMenuHeight = ReadInt(ini, "PropMenuHeight", 281);
    s.PropMenuPined = ReadBool(ini, "PropMenuPined", true);

    s.PropMenuMiddle = ReadInt(ini, "PropMenuMiddle", 85);
    s.PropMiddle = ReadInt(ini, "PropMiddle", 70);
    s.Diax = ini.GetInt("Diax", 263);
    s.Diax2 = ini.GetInt("Diax2", 692);

    s.DefOverlayPos = ReadInt(ini, "DefOverlayPos", 1);
    s.MethodForPicToMenu = ReadInt(ini, "MethodForPicToMenu", kPicToMenuVirtualDub);
    // An unknown method would pick no tool at all; the first one is what such a value did.
    if (s.MethodForPicToMenu < kPicToMenuVirtualDub || s.MethodForPicToMenu > kPicToMenuBuiltIn)
        s.MethodForPicToMenu = kPicToMenuVirtualDub;
    s.UseOnlyVD = ReadBool(ini, "UseOnlyVD", false);
    s.DonNotInvolveCliExe = ReadBool(ini, "DonNotInvolveCliExe", false);
    s.ShowDOScli = ReadBool(ini, "ShowDOScli", false);
    s.NewDivXSaveToFolder = ini.GetString("NewDivXSaveToFolder", "1");
    s.DefOverlay = ini.GetString("DefOverlay", "|Rectangle");
    s.ShowDebugMessage = ReadBool(ini, "ShowDebugMessage", false);
    s.defLang = Lower(ini.GetString("defLang", "en"));
    s.RunDivX = ReadBool(ini, "RunDivX", true);
    s.checkFirst = ReadBool(ini, "checkFirst", true);
    s.deleteTemp = ReadBool(ini, "deleteTemp", true);
    s.deleteBmp = ReadBool(ini, "deleteBmp", false);
    s.deleteDivX = ReadBool(ini, "deleteDivX", true);
    s.addPauseDivX = ReadBool(ini, "addPauseDivX", true);
    s.addPauseOverlays = ReadBool(ini, "addPauseOverlays", true);
    s.replaceExistDivX = ReadBool(ini, "replaceExistDivX", false);
    s.DoubleClickInButtonsAction = ReadInt(ini, "DoubleClickInButtonsAction", 1);
    if (s.DoubleClickInButtonsAction > 2)
        s.DoubleClickInButtonsAction = 1;
    s.defOverlayColor1 = ReadColor(ini, "defOverlayColor1", 255);
    s.defOverlayColor2 = ReadColor(ini, "defOverlayColor2", 65535);
    s.defOverlayColor3 = ReadColor(ini, "defOverlayColor3", 16777215);
    s.defButtonColor = ReadColor(ini, "defButtonColor", 255);

    ini.SetSectionName(kRecentFiles);
    ReadRecentFiles(s, ini);
}

bool SaveValues(const Settings& s, const std::string& lang, clsIniFile& ini)
{
    SectionKeeper keep(ini);
    ini.SetSectionName(kGeneral);

    bool ok = ini.PutString("Lang", lang);
    ok &= ini.PutInt("PropTextX", s.PropTextX);
    ok &= ini.PutInt("PropTextY", s.PropTextY);
    ok &= ini.PutInt("PropX", s.PropX);
    ok &= ini.PutInt("PropY", s.PropY);
    ok &= ini.PutInt("PropWidth", s.PropWidth);
    ok &= ini.PutInt("PropHeight", s.PropHeight);
    ok &= WriteBool(ini, "PropPined", s.PropPined);
    ok &= ini.PutInt("PropMenuX", s.PropMenuX);
    ok &= ini.PutInt("PropMenuY", s.PropMenuY);
    ok &= ini.PutInt("PropMenuWidth", s.PropMenuWidth);
    ok &= ini.PutInt("PropMenuHeight", s.PropMenuHeight);
    ok &= WriteBool(ini, "PropMenuPined", s.PropMenuPined);
    ok &= ini.PutString("LastFolderUsed", s.LastFolderUsed);
    ok &= WriteBool(ini, "ShowRulers", s.ShowRulers);
    ok &= WriteBool(ini, "SimpleMode", s.SimpleMode);
    ok &= ini.PutInt("PropMenuMiddle", s.PropMenuMiddle);
    ok &= ini.PutInt("PropMiddle", s.PropMiddle);
    ok &= ini.PutInt("Diax", s.Diax);
    ok &= ini.PutInt("Diax2", s.Diax2);
    ok &= ini.PutInt("Left", s.Left);
    ok &= ini.PutInt("Top", s.Top);
    ok &= ini.PutInt("Width", s.Width);
    ok &= ini.PutInt("Height", s.Height);

    ini.SetSectionName(kRecentFiles);
    ok &= ini.PutInt("FilesCount", static_cast<long>(s.RecentFiles.size()));
    for (std::size_t i = 0; i < s.RecentFiles.size(); ++i)
        ok &= ini.PutString("File" + std::to_string(i + 1), s.RecentFiles[i]);
    return ok;
}

bool SaveOptions(const Settings& s, clsIniFile& ini)
{
    SectionKeeper keep(ini);
    ini.SetSectionName(kGeneral);

    bool ok = WriteColor(ini, "GuideLineColor", s.GuideLineColor);
    ok &= ini.PutInt("AutoSaveMin", s.AutoSaveMin);
    ok &= ini.PutInt("DefOverlayPos", s.DefOverlayPos);
    ok &= ini.PutInt("MethodForPicToMenu", s.MethodForPicToMenu);
    ok &= WriteBool(ini, "UseOnlyVD", s.UseOnlyVD);
    ok &= WriteBool(ini, "DonNotInvolveCliExe", s.DonNotInvolveCliExe);
    ok &= WriteBool(ini, "ShowDOScli", s.ShowDOScli);
    ok &= ini.PutString("NewDivXSaveToFolder", s.NewDivXSaveToFolder);
    ok &= ini.PutString("DefOverlay", s.DefOverlay);
    ok &= ini.PutString("defLang", s.defLang);
    ok &= WriteBool(ini, "RunDivX", s.RunDivX);
    ok &= WriteBool(ini, "checkFirst", s.checkFirst);
    ok &= WriteBool(ini, "deleteTemp", s.deleteTemp);
    ok &= WriteBool(ini, "deleteBmp", s.deleteBmp);
    ok &= WriteBool(ini, "deleteDivX", s.deleteDivX);
    ok &= WriteBool(ini, "addPauseDivX", s.addPauseDivX);
    ok &= WriteBool(ini, "addPauseOverlays", s.addPauseOverlays);
    ok &= WriteBool(ini, "replaceExistDivX", s.replaceExistDivX);
    ok &= ini.PutInt("DoubleClickInButtonsAction", s.DoubleClickInButtonsAction);
    ok &= WriteColor(ini, "defOverlayColor1", s.defOverlayColor1);
    ok &= WriteColor(ini, "defOverlayColor2", s.defOverlayColor2);
    ok &= WriteColor(ini, "defOverlayColor3", s.defOverlayColor3);
    ok &= WriteColor(ini, "defButtonColor", s.defButtonColor);
    return ok;
}

bool SaveCliPath(Settings& settings, const std::string& path, clsIniFile& ini)
{
    SectionKeeper keep(ini);
    ini.SetSectionName(kGeneral);
    settings.cliPath = path;
    return ini.PutString("cliPath", path);
}

bool SaveVirtualDubPath(Settings& settings, const std::string& path, clsIniFile& ini)
{
    SectionKeeper keep(ini);
    ini.SetSectionName(kGeneral);
    settings.virtualDubPath = path;
    return ini.PutString("virtualDubPath", path);
}

bool SaveHelpOnTop(Settings& settings, bool onTop, clsIniFile& ini)
{
    SectionKeeper keep(ini);
    ini.SetSectionName(kGeneral);
    settings.HelpOnTop = onTop;
    return WriteBool(ini, "HelpOnTop", onTop);
}

void ToggleShowDebugMessage(Settings& settings, clsIniFile& ini, Prompt& prompt)
{
    SectionKeeper keep(ini);
    ini.SetSectionName(kGeneral);
    settings.ShowDebugMessage = !settings.ShowDebugMessage;
    WriteBool(ini, "ShowDebugMessage", settings.ShowDebugMessage);
    prompt.Message(std::string("'Show Debug Messages' is ") + (settings.ShowDebugMessage ? "ON" : "OFF"));
}

} // namespace mw
