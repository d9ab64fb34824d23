#include "build/OutsideMenuVideo.h"

#include "build/BuiltInMenuVideo.h"
#include "build/DebugCheckpoint.h"
#include "build/MuxScripts.h"
#include "build/PicToMenuSteps.h"
#include "build/ToolFiles.h"
#include "core/NumberText.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "media/AviInfo.h"

namespace mw {

namespace fs = std::filesystem;

namespace {

constexpr const char* kRunCli = "__runcli__.bat";

// A path inside a VirtualDub script: as the tool sees it, each backslash doubled.
std::string ScriptPath(const std::string& path)
{
    std::string result;
    for (const char c : ToToolPath(path)) {
        result += c;
        if (c == '\\')
            result += c;
    }
    return Quoted(result);
}

bool WriteText(const fs::path& file, const std::string& text, Prompt& prompt)
{
    std::string error;
    if (WriteToolFile(file, text, error))
        return true;
    prompt.Message(error, {}, PromptIcon::Critical);
    return false;
}

// The tool of the method, asked for when its path is blank or missing. Nothing when the user
// refused; an empty path when the user chose our own encoder instead.
std::optional<std::string> ToolFor(int method, const Settings& settings, MenuVideoTools& tools)
{
    const std::string& path = method == kPicToMenuCli ? settings.cliPath : settings.virtualDubPath;
    if (FileThere(path))
        return path;
    const ToolAnswer answer = tools.Locate ? tools.Locate(method) : ToolAnswer{};
    if (!answer.Accepted)
        return std::nullopt;
    return answer.UseBuiltIn ? std::string() : answer.Path;
}

bool RunVirtualDub(const std::string& tool, const fs::path& script, const std::string& source,
                   const std::string& output, const std::string& audio, double fps, bool onlyVD, Prompt& prompt,
                   MenuVideoTools& tools)
{
    if (!WriteText(script, VirtualDubScript(source, output, audio, fps, onlyVD), prompt))
        return false;
    return RunTool(tools.Runner, tool, {"-s" + ToToolPath(script.string()), "/x"}, tools.ProgramFolder,
                   tools.Log, prompt);
}

bool RunCli(const std::string& tool, const std::string& temp, const std::string& output, const Settings& settings,
            Prompt& prompt, MenuVideoTools& tools)
{
    const fs::path folder = fs::path(temp).parent_path();
    if (!settings.ShowDOScli)
        return RunTool(tools.Runner, tool, {"-i", ToToolPath(temp), "-o", ToToolPath(output), "-q"}, folder, tools.Log,
                       prompt);
    const fs::path batch = tools.ProgramFolder / kRunCli;
    const std::string command = Quoted(ToToolPath(tool)) + " -i " + Quoted(ToToolPath(temp)) + " -o " +
                                Quoted(ToToolPath(output)) + " -q";
    if (!WriteText(batch, command + "\r\npause\r\n", prompt))
        return false;
    const bool ran = RunTool(tools.Runner, batch, {}, folder, tools.Log, prompt);
    if (ran)
        RemoveFile(batch);
    return ran;
}

// The worker of both entry points once the tool is settled.
bool EncodeByTool(const MenuVideoJob& job, int method, const std::string& tool, const Settings& settings,
                  const LangDoc& lang, Prompt& prompt, MenuVideoTools& tools)
{
    const std::string temp = job.Output + ".avi.avi";
    RemoveFile(temp);
    const bool cliAlone = method == kPicToMenuCli && settings.DonNotInvolveCliExe;
    // The outside tools encode uncompressed frames; without cli.exe our encoder does it.
    static const std::string kNoAudio;
    const MenuVideoJob frames{job.Pictures, job.Repeat, job.SinglePicture, temp, job.Fps,
                              cliAlone ? job.Audio : kNoAudio, cliAlone ? FourCC("divx") : 0u};
    if (!WriteMenuVideo(frames, settings, lang, prompt))
        return false;
    if (cliAlone) {
        std::error_code error;
        fs::rename(temp, job.Output, error);
        return !error;
    }
    if (method == kPicToMenuCli) {
        DebugCheckpoint(settings, prompt, "Before involving cli.exe");
        if (!RunCli(tool, temp, job.Output, settings, prompt, tools))
            return false;
        DebugCheckpoint(settings, prompt, "After involving cli.exe");
        const fs::path folder = fs::path(temp).parent_path();
        for (const char* left : {"vid-0.avi", "statistics.xml", "info-1.mdat"})
            RemoveFile(folder / left);
        RemoveFile(temp);
        return true;
    }
    const fs::path script = tools.ProgramFolder / "vDub.vcf";
    if (!RunVirtualDub(tool, script, temp, job.Output, job.Audio, job.Fps, false, prompt, tools))
        return false;
    RemoveFile(temp);
    RemoveFile(script);
    return true;
}

enum class Route { Refused, BuiltIn, Tool };

Route SettleTool(int method, const Settings& settings, MenuVideoTools& tools, std::string& tool)
{
    if (method == kPicToMenuCli && settings.DonNotInvolveCliExe)
        return Route::Tool;
    const std::optional<std::string> found = ToolFor(method, settings, tools);
    if (!found)
        return Route::Refused;
    tool = *found;
    return tool.empty() ? Route::BuiltIn : Route::Tool;
}

} // namespace

std::string AudioCode(const std::string& audioFile)
{
    const std::string ending = Upper(audioFile.size() >= 4 ? audioFile.substr(audioFile.size() - 4) : audioFile);
    if (ending == ".AC3")
        return "0x00000203";
    if (ending.starts_with(".MP"))
        return "0x00000202";
    return "0x00000201";
}

std::string VirtualDubScript(const std::string& source, const std::string& output, const std::string& audio, double fps,
                             bool onlyVD)
{
    std::string text = "VirtualDub.Open(" + ScriptPath(source) + ",0,0);\r\nVirtualDub.RemoveInputStreams();\r\n";
    if (FileThere(audio))
        text += "VirtualDub.stream[0].SetSource(" + ScriptPath(audio) + "," + AudioCode(audio) + ");\r\n";
    text += "VirtualDub.video.SetDepth(24,24);\r\n";
    if (onlyVD)
        text += "VirtualDub.video.SetMode(3);\r\nVirtualDub.video.SetFrameRate(" +
                NumberText(RoundHalfEven(1000000 / fps)) + ",1);\r\n";
    else
        text += "VirtualDub.video.SetMode(0);\r\nVirtualDub.video.SetFrameRate(0,1);\r\n";
    text += "VirtualDub.video.SetIVTC(0,0,-1,0);\r\n";
    text += onlyVD ? "VirtualDub.video.SetCompression(0x78766964,0,10000,0);\r\n" : "VirtualDub.video.SetCompression();\r\n";
    return text + "VirtualDub.video.filters.Clear();\r\nVirtualDub.subset.Delete();\r\nVirtualDub.SaveAVI(" +
           ScriptPath(output) + ");\r\n";
}

bool OutsideAviFromPics(const std::vector<std::string>& pictures, const std::string& output, double fps,
                        const std::string& audio, int method, const Settings& settings, const LangDoc& lang,
                        Prompt& prompt, MenuVideoTools& tools)
{
    if (pictures.empty())
        return false;
    std::string tool;
    switch (SettleTool(method, settings, tools, tool)) {
    case Route::Refused: return false;
    case Route::BuiltIn: return BuiltInAviFromPics(pictures, output, fps, audio, settings, lang, prompt);
    case Route::Tool: break;
    }
    if (method == kPicToMenuVirtualDub && settings.UseOnlyVD) {
        const fs::path script = tools.ProgramFolder / "vDubTEST.vcf";
        const bool ran = RunVirtualDub(tool, script, pictures.front(), output, audio, fps, true, prompt, tools);
        if (ran)
            RemoveFile(script);
        return ran;
    }
    return EncodeByTool({pictures, 1, false, output, fps, audio, 0}, method, tool, settings, lang, prompt, tools);
}

bool OutsideAviFromaPic(const std::string& picture, const std::string& output, double fps, const std::string& audio,
                        int method, const Settings& settings, const LangDoc& lang, Prompt& prompt,
                        MenuVideoTools& tools)
{
    std::string tool;
    switch (SettleTool(method, settings, tools, tool)) {
    case Route::Refused: return false;
    case Route::BuiltIn: return BuiltInAviFromaPic(picture, output, fps, audio, settings, lang, prompt);
    case Route::Tool: break;
    }
    const long frames = SinglePictureFrames(fps);
    if (method == kPicToMenuVirtualDub && settings.UseOnlyVD) {
        // VirtualDubMod alone reads an image sequence: one numbered copy per frame.
        const fs::path tmp = BuildFolder(tools.ProgramFolder);
        std::error_code error;
        fs::create_directories(tmp, error);
        const std::string extension = fs::path(picture).has_extension() ? fs::path(picture).extension().string() : ".bmp";
        std::vector<fs::path> copies;
        for (long k = 1; k <= frames; ++k) {
            copies.push_back(tmp / ("VD" + std::to_string(k) + extension));
            RemoveFile(copies.back());
            fs::copy_file(picture, copies.back(), error);
        }
        const fs::path script = tools.ProgramFolder / "vDubTEST.vcf";
        const bool ran =
            RunVirtualDub(tool, script, copies.empty() ? picture : copies.front().string(), output, audio, fps, true,
                          prompt, tools);
        if (ran) {
            for (const fs::path& copy : copies)
                RemoveFile(copy);
            RemoveFile(script);
        }
        return ran;
    }
    const std::vector<std::string> pictures{picture};
    return EncodeByTool({pictures, frames, true, output, fps, audio, 0}, method, tool, settings, lang, prompt, tools);
}

} // namespace mw
