// libFuzzer entry for our RIFF/AVI reader: every input is an AVI file to open, search, dump and
// rename a stream in. Build and run as fuzz/CMakeLists.txt says.

#include "media/AviFile.h"
#include "media/AviInfoDump.h"

#include <cstdint>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

namespace {

// One file in memory for the whole run, refilled with every input.
int MemoryFile()
{
    static const int fd = ::memfd_create("avi-fuzz", 0);
    return fd;
}

// FindSample must agree with the chunk list it answers from.
void CheckFindSample(const mw::AviFile& avi, std::size_t stream, long frame)
{
    const long next = avi.FindSample(stream, frame, mw::KeySearch::NextKey);
    const long previous = avi.FindSample(stream, frame, mw::KeySearch::PreviousKey);
    if (stream >= avi.StreamCount()) {
        if (next != -1 || previous != -1)
            __builtin_trap();
        return;
    }
    const auto& chunks = avi.Stream(stream).Chunks;
    const auto isKey = [&](long f) {
        return f >= 0 && static_cast<std::size_t>(f) < chunks.size() && chunks[static_cast<std::size_t>(f)].KeyFrame;
    };
    if ((next != -1 && (next < frame || !isKey(next))) || (previous != -1 && (previous > frame || !isKey(previous))))
        __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const int fd = MemoryFile();
    if (fd < 0 || ::ftruncate(fd, 0) != 0 || ::pwrite(fd, data, size, 0) != static_cast<ssize_t>(size))
        return 0;
    const std::string path = "/proc/self/fd/" + std::to_string(fd);
    const auto avi = mw::AviFile::Open(path);
    if (!avi)
        return 0;
    if (avi->FileInfo().dwStreams != avi->StreamCount())
        __builtin_trap();
    (void)mw::DumpAviInfo(*avi);
    for (std::size_t s = 0; s <= avi->StreamCount(); ++s) {
        const long length = s < avi->StreamCount() ? static_cast<long>(avi->Stream(s).Chunks.size()) : 3;
        for (const long frame : {-1L, 0L, 1L, length / 2, length - 1, length, length + 1})
            CheckFindSample(*avi, s, frame);
    }
    if (mw::AviFile::WriteStreamName(path, 0, std::string(70, 'n')))
        (void)mw::AviFile::Open(path);
    return 0;
}
