#include "build/ToolCommands.h"

#include "build/MuxScripts.h"
#include "build/ToolFiles.h"

namespace mw {

namespace fs = std::filesystem;

void MuxerMissing(const fs::path& programFolder, const LangDoc& lang, Prompt& prompt)
{
    prompt.Message(FormTexts(lang, "Form1")(
                       10, "File DivXMux.exe not found at program's folder. Please, place a copy at folder") +
                       "\n" + programFolder.string(),
                   {}, PromptIcon::Critical);
}

bool mnuMux(const fs::path& programFolder, const LangDoc& lang, Prompt& prompt, ToolRunner& runner, BuildLog& log)
{
    fs::path tool = programFolder / "DivXMux.exe";
    if (!FileThere(tool))
        tool = BuildFolder(programFolder) / "DivXMux.exe";
    if (!FileThere(tool)) {
        MuxerMissing(programFolder, lang, prompt);
        return false;
    }
    return StartTool(runner, tool, {}, tool.parent_path(), log, prompt);
}

bool mnuSrt2Divx(const fs::path& programFolder, clsIniFile& ini, Prompt& prompt, ToolRunner& runner, BuildLog& log)
{
    fs::path tool = programFolder / "Sub2DivX.exe";
    if (!FileThere(tool)) {
        const std::string section = ini.SectionName();
        ini.SetSectionName("Tools");
        tool = ini.GetString("Sub2DivX", "");
        if (!FileThere(tool)) {
            FileDialogRequest request;
            request.Title = "Sub2DivX.exe";
            request.Filter = "Programs (*.exe)|*.exe";
            const std::vector<std::string> chosen = prompt.OpenFiles(request);
            if (chosen.empty() || chosen.front().empty()) {
                ini.SetSectionName(section);
                return false;
            }
            tool = chosen.front();
            ini.PutString("Sub2DivX", tool.string());
        }
        ini.SetSectionName(section);
    }
    return StartTool(runner, tool, {}, tool.parent_path(), log, prompt);
}

} // namespace mw
