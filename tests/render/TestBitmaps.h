#pragma once

#include "render/cDIB.h"

#include <set>

namespace mw::test {

// A bitmap of the given size and depth, every pixel 0.
inline cDIB Blank(int width, int height, int bpp)
{
    cDIB dib;
    dib.Create(width, height, bpp);
    return dib;
}

// A bitmap whose pixels differ from their neighbours and from row to row, so that swapped rows,
// columns or nibbles show.
inline cDIB Patterned(int width, int height, int bpp)
{
    cDIB dib = Blank(width, height, bpp);
    const std::uint32_t mask = bpp == 24 ? 0xFFFFFF : (1u << bpp) - 1;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            dib.SetPixel(x, y, (std::uint32_t(x) * 0x3D1F07 + std::uint32_t(y) * 0x11C03 + 5) & mask);
    }
    return dib;
}

// Every pixel value that occurs in the bitmap.
inline std::set<std::uint32_t> ValuesIn(const cDIB& dib)
{
    std::set<std::uint32_t> values;
    for (int y = 0; y < dib.Height(); ++y) {
        for (int x = 0; x < dib.Width(); ++x)
            values.insert(dib.Pixel(x, y));
    }
    return values;
}

} // namespace mw::test
