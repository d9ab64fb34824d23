#include "media/AviCache.h"

#include <map>

#include <sys/stat.h>

namespace mw {

struct KeptAviFiles {
    std::map<std::string, std::shared_ptr<const AviFile>> ByPath;
};

namespace {

thread_local KeptAviFiles* activeFiles = nullptr;

bool Unchanged(const std::string& path, const AviFile& avi)
{
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0)
        return false;
    const AviFileIdentity now{static_cast<std::uint64_t>(info.st_size),
                              static_cast<std::int64_t>(info.st_mtim.tv_sec) * 1'000'000'000 + info.st_mtim.tv_nsec};
    return now == avi.Identity();
}

} // namespace

AviCacheScope::AviCacheScope()
{
    if (activeFiles == nullptr) {
        kept_ = std::make_unique<KeptAviFiles>();
        activeFiles = kept_.get();
    }
}

AviCacheScope::~AviCacheScope()
{
    if (kept_)
        activeFiles = nullptr;
}

std::shared_ptr<const AviFile> OpenAvi(const std::string& path, AviRead what, std::string* error)
{
    if (activeFiles) {
        const auto kept = activeFiles->ByPath.find(path);
        if (kept != activeFiles->ByPath.end() && (what == AviRead::Headers || kept->second->HasIndex()) &&
            Unchanged(path, *kept->second))
            return kept->second;
    }
    auto read = AviFile::Open(path, error, what);
    if (!read) {
        if (activeFiles)
            activeFiles->ByPath.erase(path);
        return nullptr;
    }
    auto avi = std::make_shared<const AviFile>(std::move(*read));
    if (activeFiles)
        activeFiles->ByPath[path] = avi;
    return avi;
}

void ForgetAvi(const std::string& path)
{
    if (activeFiles)
        activeFiles->ByPath.erase(path);
}

} // namespace mw
