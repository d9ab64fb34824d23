#pragma once

#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

namespace mw::test {

// A fresh folder under the system's temporary folder, removed with everything in it at the end.
class ScratchFolder {
public:
    ScratchFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "mw-test-XXXXXX").string();
        path_ = ::mkdtemp(pattern.data());
    }
    ~ScratchFolder()
    {
        std::error_code ec;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ec);
        std::filesystem::remove_all(path_, ec);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }

    // Writes a file below the folder, making its folders; returns its path.
    std::filesystem::path Write(const std::filesystem::path& relative, const std::string& content) const
    {
        const std::filesystem::path file = path_ / relative;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return file;
    }

private:
    std::filesystem::path path_;
};

inline std::string ReadAll(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

} // namespace mw::test
