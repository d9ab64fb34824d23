#include "document/ProgramStart.h"

#include "core/AutoSaveFiles.h"

#include <system_error>

namespace fs = std::filesystem;

namespace mw {

bool StartProgram(ProgramState& state)
{
    state.Lang.StartLanguage();
    const auto& folder = state.Lang.ProgramFolder();
    std::error_code ec;
    state.FirstStart = !fs::exists(SettingsFilePath(folder), ec);
    clsIniFile ini(SettingsFilePath(folder).string());
    LoadValues(state.Values, ini, folder);
    return ChangeLanguage(state, state.Values.Lang);
}

bool ChangeLanguage(ProgramState& state, const std::string& name)
{
    if (!state.Lang.LoadNewLang(LangFileStemOf(name)))
        return false;
    state.TickedLanguage = state.Lang.LangName();
    return true;
}

fs::path DemoProjectFile(const fs::path& folder)
{
    return folder / "Demo" / "Demo.xml";
}

fs::path StartProjectFile(const fs::path& programFolder, bool firstStart)
{
    if (fs::path nick = NickFile(programFolder); !nick.empty())
        return nick;
    const fs::path demo = DemoProjectFile(programFolder);
    std::error_code ec;
    return firstStart && fs::is_regular_file(demo, ec) ? demo : fs::path();
}

} // namespace mw
