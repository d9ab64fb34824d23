#include "render/BmpFile.h"

#include "render/PixelRow.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <vector>

namespace mw {

namespace {

constexpr std::uint32_t kFileHeaderSize = 14;
constexpr std::uint32_t kInfoHeaderSize = 40;
// Room beyond the pixels for the largest headers, a full table and trailing data such as a
// colour profile.
constexpr std::uint64_t kFileSlack = std::uint64_t(1) << 20;

void Put16(std::string& out, std::uint32_t value)
{
    out += char(value & 0xFF);
    out += char(value >> 8 & 0xFF);
}

void Put32(std::string& out, std::uint32_t value)
{
    Put16(out, value & 0xFFFF);
    Put16(out, value >> 16);
}

std::uint32_t Get16(std::span<const std::uint8_t> bytes, std::size_t at)
{
    return std::uint32_t(bytes[at]) | std::uint32_t(bytes[at + 1]) << 8;
}

std::uint32_t Get32(std::span<const std::uint8_t> bytes, std::size_t at)
{
    return Get16(bytes, at) | Get16(bytes, at + 2) << 16;
}

struct InfoHeader {
    std::uint32_t Size = 0;
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    std::uint32_t Planes = 0;
    std::uint32_t BitCount = 0;
    std::uint32_t Compression = 0;
    std::uint32_t ClrUsed = 0;
};

// The fields we use of the info header at the start of bytes; false when there is none.
bool ReadInfoHeader(std::span<const std::uint8_t> bytes, InfoHeader& info)
{
    if (bytes.size() < kInfoHeaderSize)
        return false;
    info.Size = Get32(bytes, 0);
    info.Width = std::int32_t(Get32(bytes, 4));
    info.Height = std::int32_t(Get32(bytes, 8));
    info.Planes = Get16(bytes, 12);
    info.BitCount = Get16(bytes, 14);
    info.Compression = Get32(bytes, 16);
    info.ClrUsed = Get32(bytes, 32);
    // Later headers (V4, V5) only add fields after these; the older core header is not read.
    return info.Size >= kInfoHeaderSize && info.Size <= bytes.size();
}

// The number of table entries that follow the header: biClrUsed, or when it is 0 the whole
// table of a palette depth.
std::uint64_t TableEntries(const InfoHeader& info)
{
    if (info.ClrUsed != 0)
        return info.ClrUsed;
    return info.BitCount <= 8 ? std::uint64_t(1) << info.BitCount : 0;
}

// A checked header with its table at tableAt and its pixels at pixelsAt into dib. A table
// shorter than the depth's keeps the default entries after it.
bool Decode(std::span<const std::uint8_t> bytes, const InfoHeader& info, std::uint64_t tableAt,
            std::uint64_t pixelsAt, cDIB& dib)
{
    const int bpp = int(info.BitCount);
    if (info.Planes != 1 || info.Compression != 0 || (bpp != 1 && bpp != 4 && bpp != 8 && bpp != 24))
        return false;
    if (info.Width <= 0 || info.Width > cDIB::kMaxSide || info.Height == 0 || info.Height < -cDIB::kMaxSide
        || info.Height > cDIB::kMaxSide)
        return false;
    const bool topDown = info.Height < 0;
    const int height = topDown ? -info.Height : info.Height;
    const std::uint64_t stride = (std::uint64_t(info.Width) * std::uint64_t(bpp) + 31) / 32 * 4;
    const std::uint64_t entries = TableEntries(info);
    if (tableAt + entries * 4 > pixelsAt || pixelsAt > bytes.size()
        || stride * std::uint64_t(height) > bytes.size() - pixelsAt)
        return false;
    if (!dib.Create(info.Width, height, bpp))
        return false;

    std::vector<Colour> table(std::size_t(std::min<std::uint64_t>(entries, dib.GetColorTable().size())));
    for (std::size_t i = 0; i < table.size(); ++i) {
        const std::size_t at = std::size_t(tableAt) + 4 * i;
        table[i] = Rgb(bytes[at + 2], bytes[at + 1], bytes[at]);
    }
    dib.SetColorTable(table);

    for (int row = 0; row < height; ++row) {
        const std::uint8_t* from = bytes.data() + pixelsAt + stride * std::uint64_t(row);
        std::uint8_t* to = topDown ? RowOf(dib, row) : dib.lpBits() + stride * std::uint64_t(row);
        std::memcpy(to, from, std::size_t(stride));
    }
    return true;
}

} // namespace

std::string BmpFileBytes(const cDIB& dib)
{
    if (dib.Empty())
        return {};
    const std::vector<Colour> table = dib.GetColorTable();
    const auto pixelsAt = std::uint32_t(kFileHeaderSize + kInfoHeaderSize + 4 * table.size());
    const auto imageSize = std::uint32_t(dib.Size());

    std::string out;
    out.reserve(pixelsAt + imageSize);
    out += "BM";
    Put32(out, pixelsAt + imageSize);
    Put32(out, 0);
    Put32(out, pixelsAt);

    // biClrUsed 0 says that the whole table of the depth follows; no resolution is known, so
    // both pels per metre are 0.
    Put32(out, kInfoHeaderSize);
    Put32(out, std::uint32_t(dib.Width()));
    Put32(out, std::uint32_t(dib.Height()));
    Put16(out, 1);
    Put16(out, std::uint32_t(dib.BPP()));
    Put32(out, 0);
    Put32(out, imageSize);
    Put32(out, 0);
    Put32(out, 0);
    Put32(out, 0);
    Put32(out, 0);

    for (Colour colour : table) {
        out += char(colour >> 16 & 0xFF);
        out += char(colour >> 8 & 0xFF);
        out += char(colour & 0xFF);
        out += '\0';
    }
    out.append(reinterpret_cast<const char*>(dib.lpBits()), dib.Size());
    return out;
}

bool ReadBmpFile(std::span<const std::uint8_t> bytes, cDIB& dib)
{
    dib.Destroy();
    if (bytes.size() < kFileHeaderSize || bytes[0] != 'B' || bytes[1] != 'M')
        return false;
    InfoHeader info;
    if (!ReadInfoHeader(bytes.subspan(kFileHeaderSize), info))
        return false;
    return Decode(bytes, info, kFileHeaderSize + info.Size, Get32(bytes, 10), dib);
}

bool LoadBmpFile(const std::string& file, cDIB& dib)
{
    dib.Destroy();
    std::ifstream in(file, std::ios::binary | std::ios::ate);
    const std::streamoff size = in ? std::streamoff(in.tellg()) : -1;
    if (size < 0 || std::uint64_t(size) > cDIB::kMaxBytes + kFileSlack)
        return false;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
    in.seekg(0);
    if (!in.read(reinterpret_cast<char*>(bytes.data()), size))
        return false;
    return ReadBmpFile(bytes, dib);
}

bool ReadPackedDib(std::span<const std::uint8_t> bytes, cDIB& dib)
{
    dib.Destroy();
    InfoHeader info;
    if (!ReadInfoHeader(bytes, info))
        return false;
    return Decode(bytes, info, info.Size, info.Size + TableEntries(info) * 4, dib);
}

} // namespace mw
