#pragma once

#include "media/AviFile.h"

#include <memory>
#include <string>

namespace mw {

struct KeptAviFiles;

// Keeps the AVI files read on this thread for as long as it lives, so that a command asking
// one file many times (chapters by count, the pictures of a chapter menu) reads its headers and
// index once. A file is taken again from the disk when its size or modification time changed.
// Scopes nest; the outermost keeps the files.
class AviCacheScope {
public:
    AviCacheScope();
    ~AviCacheScope();
    AviCacheScope(const AviCacheScope&) = delete;
    AviCacheScope& operator=(const AviCacheScope&) = delete;

private:
    std::unique_ptr<KeptAviFiles> kept_; // in the outermost scope only
};

// The file read as far as `what` needs, from the scope when it holds the file unchanged, else
// from the disk. Null, with the reason, when the file cannot be read.
std::shared_ptr<const AviFile> OpenAvi(const std::string& path, AviRead what, std::string* error = nullptr);

// Drops what the scope keeps of a file the program has just written to.
void ForgetAvi(const std::string& path);

} // namespace mw
