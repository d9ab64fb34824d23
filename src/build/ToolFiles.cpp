#include "build/ToolFiles.h"

#include <cerrno>
#include <cstring>
#include <fstream>

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
    // Build files are made anew at each run, so a plain write does: no sync, which would cost
    // more than the writing for the hundreds of overlay pictures.
    RemoveFile(file);
    std::ofstream out(file, std::ios::binary);
    if (out && out.write(text.data(), static_cast<std::streamsize>(text.size())) && out.flush())
        return true;
    error = file.string() + ": " + std::strerror(errno);
    return false;
}

} // namespace mw
