// libFuzzer entry for the project file: every input is read as a project, checked, normalised
// and saved; a saved project must read again.

#include "FuzzMemoryFile.h"
#include "core/ScriptedPrompt.h"
#include "document/CheckForErrors.h"
#include "document/Document.h"
#include "document/NormalizeFile.h"
#include "document/TreeViewToXml.h"
#include "document/XmlToTreeView.h"
#include "i18n/LangDoc.h"

#include <cstdint>
#include <filesystem>
#include <string>

#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string path = mw::fuzz::MemoryFile("project-fuzz", data, size);
    if (path.empty())
        return 0;
    static const mw::LangDoc lang;
    static const std::string saved =
        (std::filesystem::temp_directory_path() / ("project-fuzz-" + std::to_string(::getpid()) + ".xml")).string();
    mw::ScriptedPrompt prompt;
    mw::Document doc;
    if (!mw::LoadXmlFile(path, doc, prompt))
        return 0;
    mw::CheckForErrors(doc, lang, prompt, true);
    mw::NormalizeFile(doc, lang, prompt);
    std::string error;
    if (!mw::SaveTreeToFile(doc.Tree, saved, error))
        return 0;
    mw::Document again;
    if (!mw::LoadXmlFile(saved, again, prompt))
        __builtin_trap();
    return 0;
}
