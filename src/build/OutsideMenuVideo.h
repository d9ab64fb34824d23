#pragma once

#include "build/BuildLog.h"
#include "build/ToolRunner.h"
#include "core/Prompt.h"
#include "core/settings/Settings.h"
#include "i18n/LangDoc.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace mw {

// What the user answered when asked where a missing tool lies (frmVirtualDubPath, frmCliPath):
// a path, kept in the settings by the dialog, or our own encoder instead.
struct ToolAnswer {
    bool Accepted = false;
    bool UseBuiltIn = false;
    std::string Path;
};

// What the menu videos by VirtualDubMod and cli.exe need besides the settings.
struct MenuVideoTools {
    ToolRunner& Runner;
    BuildLog& Log;
    std::filesystem::path ProgramFolder; // holds the scripts; its "tmp" the pictures of VirtualDubMod alone
    // Asks for the tool of a method (kPicToMenuVirtualDub or kPicToMenuCli).
    std::function<ToolAnswer(int method)> Locate;
};

// The code that VirtualDubMod takes for an audio file, by its ending.
std::string AudioCode(const std::string& audioFile);

// "vDub.vcf" recompressing `source` (onlyVD false), or "vDubTEST.vcf" encoding the picture
// sequence that starts at `source` (onlyVD true); paths as the tool sees them, backslashes doubled.
std::string VirtualDubScript(const std::string& source, const std::string& output, const std::string& audio, double fps,
                             bool onlyVD);

// The menu video by the outside tool of `method` (kPicToMenuVirtualDub or kPicToMenuCli): the
// program writes the frames uncompressed and the tool encodes them. Names are settled and an old
// output deleted by the caller. False when the tool was refused, could not run or was cancelled.
bool OutsideAviFromPics(const std::vector<std::string>& pictures, const std::string& output, double fps,
                        const std::string& audio, int method, const Settings& settings, const LangDoc& lang,
                        Prompt& prompt, MenuVideoTools& tools);
bool OutsideAviFromaPic(const std::string& picture, const std::string& output, double fps, const std::string& audio,
                        int method, const Settings& settings, const LangDoc& lang, Prompt& prompt,
                        MenuVideoTools& tools);

} // namespace mw
