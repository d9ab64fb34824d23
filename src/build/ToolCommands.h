#pragma once

#include "build/BuildLog.h"
#include "build/ToolRunner.h"
#include "core/Prompt.h"
#include "core/settings/clsIniFile.h"
#include "i18n/LangDoc.h"

#include <filesystem>

namespace mw {

// "File DivXMux.exe not found at program's folder", with the folder where it belongs.
void MuxerMissing(const std::filesystem::path& programFolder, const LangDoc& lang, Prompt& prompt);

// The Tools entries that only start an outside program; nothing waits for it. False when it was
// not started (the user was told).

// mnuMux: the muxer of the program folder, or the copy in the build folder, on its own.
bool mnuMux(const std::filesystem::path& programFolder, const LangDoc& lang, Prompt& prompt, ToolRunner& runner,
            BuildLog& log);

// mnuSrt2Divx: Sub2DivX.exe of the program folder, else the file of key Sub2DivX in section
// Tools, else the file the user picks, which that key then remembers.
bool mnuSrt2Divx(const std::filesystem::path& programFolder, clsIniFile& ini, Prompt& prompt, ToolRunner& runner,
                 BuildLog& log);

} // namespace mw
