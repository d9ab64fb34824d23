// libFuzzer entry for the project file: every input is read as a project, checked, normalised
// and saved. Each step runs under the guard that every command of the program runs under, so
// what the fuzzer reports is what would reach the user as a crash, not a message.

#include "FuzzMemoryFile.h"
#include "core/CommandGuard.h"
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

namespace {

// Where the projects are saved; removed when the run ends.
struct SavedFile {
    std::string Path = (std::filesystem::temp_directory_path() /
                        ("project-fuzz-" + std::to_string(::getpid()) + ".xml")).string();
    ~SavedFile() { std::filesystem::remove(Path); }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string path = mw::fuzz::MemoryFile("project-fuzz", data, size);
    if (path.empty())
        return 0;
    static const mw::LangDoc lang;
    static const SavedFile saved;
    mw::ScriptedPrompt prompt;
    mw::Document doc;
    if (!mw::LoadXmlFile(path, doc, prompt))
        return 0;
    mw::RunCommandCaught(prompt, [&] { mw::CheckForErrors(doc, lang, prompt, true); });
    mw::RunCommandCaught(prompt, [&] { mw::NormalizeFile(doc, lang, prompt); });
    mw::RunCommandCaught(prompt, [&] {
        std::string error;
        mw::SaveTreeToFile(doc.Tree, saved.Path, error);
    });
    return 0;
}
