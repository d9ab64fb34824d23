// libFuzzer entry for our RIFF/AVI reader: every input is an AVI file to open, search, dump and
// rename a stream in. Build and run as fuzz/CMakeLists.txt says.

#include "FuzzMemoryFile.h"
#include "media/AviFile.h"
#include "media/AviInfoDump.h"

#include <cstdint>
#include <string>

namespace {

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
    // Frames count from the stream's start.
    const auto& chunks = avi.Stream(stream).Chunks;
    const long start = static_cast<long>(avi.Stream(stream).Info.dwStart);
    const auto isKey = [&](long f) {
        const long chunk = f - start;
        return chunk >= 0 && static_cast<std::size_t>(chunk) < chunks.size() &&
               chunks[static_cast<std::size_t>(chunk)].KeyFrame;
    };
    if ((next != -1 && (next < frame || !isKey(next))) || (previous != -1 && (previous > frame || !isKey(previous))))
        __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string path = mw::fuzz::MemoryFile("avi-fuzz", data, size);
    if (path.empty())
        return 0;
    // Headers alone must give what the whole reading gives.
    const auto headers = mw::AviFile::Open(path, nullptr, mw::AviRead::Headers);
    const auto avi = mw::AviFile::Open(path);
    if (!avi)
        return 0;
    if (!headers || mw::DumpAviInfo(*headers) != mw::DumpAviInfo(*avi))
        __builtin_trap();
    if (avi->FileInfo().dwStreams != avi->StreamCount())
        __builtin_trap();
    (void)mw::DumpAviInfo(*avi);
    for (std::size_t s = 0; s <= avi->StreamCount(); ++s) {
        const long start = s < avi->StreamCount() ? static_cast<long>(avi->Stream(s).Info.dwStart) : 0;
        const long length = s < avi->StreamCount() ? static_cast<long>(avi->Stream(s).Chunks.size()) : 3;
        for (const long frame : {-1L, 0L, 1L, length / 2, length - 1, length, length + 1})
            CheckFindSample(*avi, s, start + frame);
    }
    if (mw::AviFile::WriteStreamName(path, 0, std::string(70, 'n')))
        (void)mw::AviFile::Open(path);
    return 0;
}
