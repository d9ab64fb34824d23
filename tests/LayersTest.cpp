// The folders of the core library use only folders below them, in this order from the bottom.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

namespace fs = std::filesystem;

constexpr std::array<const char*, 10> kLayers = {"core",  "i18n",  "render",     "document", "media",
                                                 "menus", "build", "menuplayer", "dvd",      "generators"};

std::ptrdiff_t RankOf(const std::string& folder)
{
    return std::find(kLayers.begin(), kLayers.end(), folder) - kLayers.begin();
}

TEST(Layers, IncludesPointDownOnly)
{
    const fs::path src = fs::path(MENUWRIGHT_SOURCE_DIR) / "src";
    for (const char* layer : kLayers) {
        if (!fs::is_directory(src / layer))
            continue;
        for (const auto& entry : fs::recursive_directory_iterator(src / layer)) {
            std::ifstream file(entry.path());
            std::string line;
            const std::string prefix = "#include \"";
            while (std::getline(file, line)) {
                const std::size_t slash = line.find('/');
                if (!line.starts_with(prefix) || slash == std::string::npos)
                    continue;
                const std::string used = line.substr(prefix.size(), slash - prefix.size());
                EXPECT_LE(RankOf(used), RankOf(layer)) << entry.path().string() << ": " << line;
            }
        }
    }
}

} // namespace
