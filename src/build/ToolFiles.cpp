#include "build/ToolFiles.h"

#include "core/AtomicFile.h"

namespace mw {

std::string Quoted(const std::string& text)
{
    return "\"" + text + "\"";
}

bool FileThere(const std::filesystem::path& file)
{
    std::error_code ignored;
    return !file.empty() && std::filesystem::is_regular_file(file, ignored);
}

void RemoveFile(const std::filesystem::path& file)
{
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
}

bool WriteToolFile(const std::filesystem::path& file, const std::string& text, std::string& error)
{
    RemoveFile(file);
    if (WriteFileAtomically(file.string(), text, error))
        return true;
    error = file.string() + ": " + error;
    return false;
}

} // namespace mw
