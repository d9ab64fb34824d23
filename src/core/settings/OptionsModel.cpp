#include "core/settings/OptionsModel.h"

#include "core/Prompt.h"
#include "core/Text.h"
#include "core/settings/DefOverlays.h"

#include <algorithm>
#include <array>
#include <utility>

namespace mw {

namespace {

// The menu languages offered first; a code from the settings file that is not among them is
// added, so that opening and confirming the dialog never changes it.
const std::vector<std::string> kMenuLanguages{
    "en - English", "de - German",     "fr - French",  "es - Spanish", "it - Italian",
    "nl - Dutch",   "pt - Portuguese", "sv - Swedish", "pl - Polish",  "el - Greek",
    "ru - Russian", "ja - Japanese",   "zh - Chinese",
};

// The check boxes that each show one switch of the settings.
const std::array<std::pair<bool OptionsModel::*, bool Settings::*>, 11> kCheckBoxes{{
    {&OptionsModel::chkOnlyVD, &Settings::UseOnlyVD},
    {&OptionsModel::chkDonNotInvolveCliExe, &Settings::DonNotInvolveCliExe},
    {&OptionsModel::chkShowDOScli, &Settings::ShowDOScli},
    {&OptionsModel::chkRunDivX, &Settings::RunDivX},
    {&OptionsModel::chkErrors, &Settings::checkFirst},
    {&OptionsModel::chkDeleteTemp, &Settings::deleteTemp},
    {&OptionsModel::chkDeleteBmp, &Settings::deleteBmp},
    {&OptionsModel::chkDeleteDivX, &Settings::deleteDivX},
    {&OptionsModel::chkAddPauseDivX, &Settings::addPauseDivX},
    {&OptionsModel::chkAddPauseOverlays, &Settings::addPauseOverlays},
    {&OptionsModel::chkReplaceExistDivX, &Settings::replaceExistDivX},
}};

int IndexOf(const std::vector<std::string>& rows, const std::string& text)
{
    const auto it = std::find(rows.begin(), rows.end(), text);
    return it == rows.end() ? -1 : static_cast<int>(it - rows.begin());
}

} // namespace

OptionsModel OptionsModel::Load(const Settings& s, const std::filesystem::path& programFolder)
{
    OptionsModel m;
    m.chkAutoSave = s.AutoSaveMin > 0;
    m.txtAutoSaveMin = s.AutoSaveMin > 0 ? std::to_string(s.AutoSaveMin) : "";
    m.DoubleClickInButtonsAction = s.DoubleClickInButtonsAction;
    m.Combo1 = kMenuLanguages;
    const auto language = std::find_if(m.Combo1.begin(), m.Combo1.end(),
                                       [&](const std::string& row) { return row.substr(0, 2) == s.defLang; });
    if (language == m.Combo1.end())
        m.Combo1.push_back(s.defLang);
    m.Combo1Index = language == m.Combo1.end() ? static_cast<int>(m.Combo1.size()) - 1
                                               : static_cast<int>(language - m.Combo1.begin());
    m.lblGuideColor = s.GuideLineColor;

    m.MethodForPicToMenu = s.MethodForPicToMenu;
    for (const auto& [box, key] : kCheckBoxes)
        m.*box = s.*key;
    if (s.NewDivXSaveToFolder == "1" || s.NewDivXSaveToFolder == "2") {
        m.SaveToOption = s.NewDivXSaveToFolder == "1" ? 1 : 2;
    } else {
        m.SaveToOption = 3;
        m.txtFolder = s.NewDivXSaveToFolder;
    }

    m.List1 = LoadDefOverlays(programFolder);
    m.List1Index = IndexOf(m.List1, s.DefOverlay);
    m.DefOverlayPos = s.DefOverlayPos;
    m.lblColor = {s.defOverlayColor1, s.defOverlayColor2, s.defOverlayColor3};
    m.lblButtonColor = s.defButtonColor;
    return m;
}

void OptionsModel::PickOverlayColor(int index, Prompt& prompt)
{
    std::uint32_t& color = lblColor.at(static_cast<std::size_t>(index));
    const std::optional<std::uint32_t> picked = prompt.PickColor(color);
    if (!picked)
        return;
    if (*picked == kTransparentBlue) {
        prompt.Message(kBlueIsReserved);
        return;
    }
    color = *picked;
}

void OptionsModel::PickButtonColor(Prompt& prompt)
{
    if (const std::optional<std::uint32_t> picked = prompt.PickColor(lblButtonColor))
        lblButtonColor = *picked;
}

void OptionsModel::PickGuideColor(Prompt& prompt)
{
    if (const std::optional<std::uint32_t> picked = prompt.PickColor(lblGuideColor))
        lblGuideColor = *picked;
}

bool OptionsModel::Validate(Prompt& prompt) const
{
    std::error_code ec;
    if (SaveToOption == 3 && (txtFolder.empty() || !std::filesystem::is_directory(txtFolder, ec))) {
        prompt.Message("Error in folder where to save new DivXFile");
        return false;
    }
    return true;
}

void OptionsModel::Apply(Settings& s) const
{
    s.AutoSaveMin = chkAutoSave ? static_cast<int>(std::max(0LL, LeadingNumber(txtAutoSaveMin))) : 0;
    s.DoubleClickInButtonsAction = DoubleClickInButtonsAction;
    if (Combo1Index >= 0 && Combo1Index < static_cast<int>(Combo1.size()))
        s.defLang = Combo1[static_cast<std::size_t>(Combo1Index)].substr(0, 2);
    s.GuideLineColor = lblGuideColor;

    s.MethodForPicToMenu = MethodForPicToMenu;
    for (const auto& [box, key] : kCheckBoxes)
        s.*key = this->*box;
    s.NewDivXSaveToFolder = SaveToOption == 3 ? txtFolder : std::to_string(SaveToOption);

    // The separator is no overlay: choosing it keeps the one there was.
    if (List1Index >= 0 && List1Index < static_cast<int>(List1.size())) {
        const std::string& row = List1[static_cast<std::size_t>(List1Index)];
        if (!row.starts_with("===="))
            s.DefOverlay = row;
    }
    s.DefOverlayPos = DefOverlayPos;
    s.defOverlayColor1 = lblColor[0];
    s.defOverlayColor2 = lblColor[1];
    s.defOverlayColor3 = lblColor[2];
    s.defButtonColor = lblButtonColor;
}

bool ConfirmOptions(const OptionsModel& model, Settings& settings, clsIniFile& ini, Prompt& prompt)
{
    if (!model.Validate(prompt))
        return false;
    model.Apply(settings);
    SaveOptions(settings, ini);
    return true;
}

} // namespace mw
