// Writes the English language file: the texts of every window and every numbered text that the
// sources give with its English default, so that a translator starts from a complete file.

#include "core/Version.h"
#include "langfile/LangFileWriter.h"
#include "langfile/NumberedTexts.h"
#include "langfile/ProgramWindows.h"

#include <QApplication>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

namespace fs = std::filesystem;

namespace {

// Routines that are handed a texts object get the main window's.
constexpr const char* kMainForm = "Form1";

std::vector<mw::SourceFile> ReadSources(const fs::path& folder)
{
    std::vector<mw::SourceFile> sources;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const fs::path& path = entry.path();
        if (!entry.is_regular_file() || (path.extension() != ".cpp" && path.extension() != ".h"))
            continue;
        std::ifstream in(path, std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        sources.push_back({fs::relative(path, folder).generic_string(), text.str()});
    }
    std::sort(sources.begin(), sources.end(), [](const auto& a, const auto& b) { return a.Name < b.Name; });
    return sources;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    if (argc != 3) {
        std::cerr << "usage: menuwright-langfile <source folder> <language file>\n";
        return 2;
    }
    const fs::path sourceFolder = argv[1];
    if (!fs::is_directory(sourceFolder)) {
        std::cerr << sourceFolder.string() << ": no such folder\n";
        return 2;
    }

    mw::NumberedTextScan scan = mw::ScanNumberedTexts(ReadSources(sourceFolder), kMainForm);
    const mw::LangFileContents contents{.RootName = mw::kAppTitle,
                                        .Creator = mw::kAppTitle,
                                        .ProgramVersion = mw::kVersionText,
                                        .Designs = mw::ProgramWindowDesigns(),
                                        .Modules = scan.Forms};
    std::vector<std::string>& errors = scan.Errors;
    if (errors.empty())
        mw::WriteLangFile(argv[2], contents, errors);
    for (const std::string& error : errors)
        std::cerr << error << "\n";
    return errors.empty() ? 0 : 1;
}
