#pragma once

#include "render/cDIB.h"

#include <cstdint>
#include <span>
#include <string>

namespace mw {

// The bytes of a BMP file of the bitmap: the 14-byte file header, a 40-byte BITMAPINFOHEADER,
// at 8 bits or less the whole colour table, then the pixels as they are in memory, bottom-up.
// Empty for an empty bitmap.
std::string BmpFileBytes(const cDIB& dib);

// The bytes of a BMP file: uncompressed, 1, 4, 8 or 24 bits per pixel, bottom-up or top-down,
// any info header from BITMAPINFOHEADER on. Anything else, or anything that does not add up
// within the bytes, gives false and an empty bitmap.
bool ReadBmpFile(std::span<const std::uint8_t> bytes, cDIB& dib);
// The same from a file, which is not read when it is larger than any bitmap could be.
bool LoadBmpFile(const std::string& file, cDIB& dib);

// A packed bitmap: the info header, the colour table, the pixels straight after it.
bool ReadPackedDib(std::span<const std::uint8_t> bytes, cDIB& dib);

} // namespace mw
