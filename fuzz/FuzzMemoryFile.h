#pragma once

// One file in memory for a whole fuzzing run, refilled with every input, so that the readers
// that take a path read each input without touching the disk.

#include <cstdint>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

namespace mw::fuzz {

// The path of the memory file holding the bytes; empty when it could not be written.
inline std::string MemoryFile(const char* name, const std::uint8_t* data, std::size_t size)
{
    static const int fd = ::memfd_create(name, 0);
    if (fd < 0 || ::ftruncate(fd, 0) != 0 || ::pwrite(fd, data, size, 0) != static_cast<ssize_t>(size))
        return {};
    return "/proc/self/fd/" + std::to_string(fd);
}

} // namespace mw::fuzz
