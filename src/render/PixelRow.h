#pragma once

#include "render/cDIB.h"

#include <cstdint>

namespace mw {

// Row y of a bitmap counted from the top; rows are kept bottom-up.
inline const std::uint8_t* RowOf(const cDIB& dib, int y)
{
    return dib.lpBits() + std::size_t(dib.Height() - 1 - y) * std::size_t(dib.BytesPerScanLine());
}

inline std::uint8_t* RowOf(cDIB& dib, int y)
{
    return dib.lpBits() + std::size_t(dib.Height() - 1 - y) * std::size_t(dib.BytesPerScanLine());
}

// Pixel x of a row: a palette index, high bits first within a byte, or at 24 bits the colour
// from its blue, green, red bytes.
inline std::uint32_t ReadValue(const std::uint8_t* row, int x, int bpp)
{
    switch (bpp) {
    case 1:
        return row[x >> 3] >> (7 - (x & 7)) & 1;
    case 4:
        return (x & 1) ? row[x >> 1] & 0x0F : row[x >> 1] >> 4;
    case 8:
        return row[x];
    default:
        return Rgb(row[3 * x + 2], row[3 * x + 1], row[3 * x]);
    }
}

inline void WriteValue(std::uint8_t* row, int x, int bpp, std::uint32_t value)
{
    switch (bpp) {
    case 1: {
        const auto mask = std::uint8_t(0x80 >> (x & 7));
        row[x >> 3] = std::uint8_t(value ? row[x >> 3] | mask : row[x >> 3] & ~mask);
        break;
    }
    case 4:
        row[x >> 1] = (x & 1) ? std::uint8_t((row[x >> 1] & 0xF0) | (value & 0x0F))
                              : std::uint8_t((row[x >> 1] & 0x0F) | (value & 0x0F) << 4);
        break;
    case 8:
        row[x] = std::uint8_t(value);
        break;
    default:
        row[3 * x] = std::uint8_t(value >> 16);
        row[3 * x + 1] = std::uint8_t(value >> 8);
        row[3 * x + 2] = std::uint8_t(value);
        break;
    }
}

} // namespace mw
