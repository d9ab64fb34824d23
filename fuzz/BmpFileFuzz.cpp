// libFuzzer entry for our BMP reader: every input is a BMP file and, from its 14th byte on, a
// packed bitmap. What reads is stretched and written back, and must read again the same.

#include "render/BmpFile.h"
#include "render/cDIB.h"

#include <cstdint>
#include <span>
#include <string>

namespace {

void Exercise(const mw::cDIB& dib)
{
    const std::string bytes = mw::BmpFileBytes(dib);
    mw::cDIB again;
    if (!mw::ReadBmpFile(std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()), again) ||
        !(again == dib))
        __builtin_trap();
    mw::cDIB target;
    if (target.Create(7, 5, dib.BPP() == 24 ? 8 : 24)) {
        dib.Stretch(target, -1, 1, 9, 3, 0, 0, dib.Width(), dib.Height());
        dib.StretchTransparent(target, 2, 0, -5, 4, dib.Width() / 2, 0, -dib.Width(), dib.Height(), 0);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::span<const std::uint8_t> bytes(data, size);
    mw::cDIB dib;
    if (mw::ReadBmpFile(bytes, dib))
        Exercise(dib);
    if (size > 14 && mw::ReadPackedDib(bytes.subspan(14), dib))
        Exercise(dib);
    return 0;
}
