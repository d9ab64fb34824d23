#include "core/AtomicFile.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace mw {

namespace {

std::string Reason(int errorNumber) { return std::strerror(errorNumber); }

bool IsReadOnly(const std::string& path, const struct stat& info)
{
    return (info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0 || ::access(path.c_str(), W_OK) != 0;
}

// A new file beside the target, with a name nobody else uses.
int CreateTemporary(const std::filesystem::path& target, std::string& temporary)
{
    const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
    const std::string stem = "." + target.filename().string() + "." + std::to_string(::getpid()) + ".";
    for (int attempt = 0; attempt < 1000; ++attempt) {
        temporary = (folder / (stem + std::to_string(attempt) + ".tmp")).string();
        const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0 || errno != EEXIST)
            return fd;
    }
    return -1;
}

bool WriteAll(int fd, std::string_view content)
{
    while (!content.empty()) {
        const ssize_t written = ::write(fd, content.data(), content.size());
        if (written < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// Makes the rename itself durable; a folder that cannot be synced is no reason to fail.
void SyncFolder(const std::filesystem::path& target)
{
    const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
}

} // namespace

bool WriteFileAtomically(const std::string& path, std::string_view content, std::string& error)
{
    struct stat old {};
    const bool exists = ::stat(path.c_str(), &old) == 0;
    if (exists && S_ISDIR(old.st_mode)) {
        error = "Could not save " + path + ": it is a folder.";
        return false;
    }
    if (exists && IsReadOnly(path, old)) {
        error = "Could not save " + path + ": the file is read-only.";
        return false;
    }

    std::string temporary;
    const int fd = CreateTemporary(path, temporary);
    if (fd < 0) {
        error = "Could not save " + path + ": " + Reason(errno) + ".";
        return false;
    }
    // The new file keeps the permissions of the one it replaces.
    bool ok = (!exists || ::fchmod(fd, old.st_mode & 07777) == 0) && WriteAll(fd, content) && ::fsync(fd) == 0;
    int failure = ok ? 0 : errno;
    if (::close(fd) != 0 && ok) {
        ok = false;
        failure = errno;
    }
    if (ok && ::rename(temporary.c_str(), path.c_str()) != 0) {
        ok = false;
        failure = errno;
    }
    if (!ok) {
        ::unlink(temporary.c_str());
        error = "Could not save " + path + ": " + Reason(failure) + ".";
        return false;
    }
    SyncFolder(path);
    return true;
}

} // namespace mw
