#pragma once

#include "core/settings/Settings.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace mw {

class Prompt;

// Pure blue, the transparent key of overlays (red in the low byte).
inline constexpr std::uint32_t kTransparentBlue = 0xFF0000;
// Said wherever colours are taken for overlays and blue is chosen.
inline constexpr const char* kBlueIsReserved =
    "Please do not use the Blue color. It's reserved for transparency. Select a similar color.";

// The fields of the options dialog under their control names, with the rules that are more
// than widget state. The dialog shows these and writes the user's changes straight back.
struct OptionsModel {
    // Page 0: general.
    bool chkAutoSave = false;
    std::string txtAutoSaveMin;
    int DoubleClickInButtonsAction = 1;     // optDoubleClick(0..2)
    std::vector<std::string> Combo1;        // default menu language, "xx - Name"
    int Combo1Index = -1;
    std::uint32_t lblGuideColor = 255;

    // Page 1: building.
    int MethodForPicToMenu = kPicToMenuVirtualDub; // optUseVirtualDubMod, optUseCli, optUseBuiltIn
    bool chkOnlyVD = false;
    bool chkDonNotInvolveCliExe = false;
    bool chkShowDOScli = false;
    bool chkRunDivX = true;
    bool chkErrors = true;
    bool chkDeleteTemp = true;
    bool chkDeleteBmp = false;
    bool chkDeleteDivX = true;
    bool chkAddPauseDivX = true;
    bool chkAddPauseOverlays = true;
    bool chkReplaceExistDivX = false;
    int SaveToOption = 1;                   // Option1, Option2, Option3
    std::string txtFolder;                  // the folder of Option3

    // Page 2: overlays and buttons.
    std::vector<std::string> List1;
    int List1Index = -1;
    int DefOverlayPos = 1;                  // optOverlayPos6 = 0, optOverlayPosSame = 1
    std::array<std::uint32_t, 3> lblColor{255, 65535, 16777215};
    std::uint32_t lblButtonColor = 255;

    // What the controls hold when the dialog opens.
    static OptionsModel Load(const Settings& settings, const std::filesystem::path& programFolder);

    bool AutoSaveMinEnabled() const { return chkAutoSave; }
    bool CliControlsEnabled() const { return MethodForPicToMenu == kPicToMenuCli; }
    bool OnlyVDEnabled() const { return MethodForPicToMenu == kPicToMenuVirtualDub; }
    bool DeleteDetailsEnabled() const { return chkDeleteTemp; }

    // A click on lblColor(index): blue is refused with a message and the colour stays.
    void PickOverlayColor(int index, Prompt& prompt);
    // lblButtonColor and lblGuideColor take any colour.
    void PickButtonColor(Prompt& prompt);
    void PickGuideColor(Prompt& prompt);

    // False, after telling the user, when the dialog must stay open.
    bool Validate(Prompt& prompt) const;
    // Takes the fields into memory.
    void Apply(Settings& settings) const;
};

// OKButton: validates, takes the fields into memory and writes the dialog's keys. False when
// the dialog must stay open.
bool ConfirmOptions(const OptionsModel& model, Settings& settings, clsIniFile& ini, Prompt& prompt);

} // namespace mw
