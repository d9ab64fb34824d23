#include "core/ProgramStart.h"

namespace mw {

bool StartProgram(ProgramState& state)
{
    state.Lang.StartLanguage();
    const auto& folder = state.Lang.ProgramFolder();
    clsIniFile ini(SettingsFilePath(folder).string());
    LoadValues(state.Values, ini, folder);
    return state.Lang.LoadNewLang(LangFileStemOf(state.Values.Lang));
}

} // namespace mw
