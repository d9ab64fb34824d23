#include "render/cDIB.h"

#include "core/AtomicFile.h"
#include "render/BmpFile.h"
#include "render/PixelRow.h"

#include <QImage>

#include <algorithm>
#include <array>

namespace mw {

namespace {

// The standard 16 colours in the order of the Windows palette.
constexpr std::array<Colour, 16> kStandardColours = {
    Rgb(0, 0, 0),       Rgb(128, 0, 0),   Rgb(0, 128, 0),   Rgb(128, 128, 0),
    Rgb(0, 0, 128),     Rgb(128, 0, 128), Rgb(0, 128, 128), Rgb(192, 192, 192),
    Rgb(128, 128, 128), Rgb(255, 0, 0),   Rgb(0, 255, 0),   Rgb(255, 255, 0),
    Rgb(0, 0, 255),     Rgb(255, 0, 255), Rgb(0, 255, 255), Rgb(255, 255, 255)};

// At 8 bits: the 16 standard colours first, so that the indexes of a 4-bit picture keep their
// colours; then the 6x6x6 cube of the levels 0, 51, ..., 255 at 16 + 36 red + 6 green + blue;
// then the 24 greys 8, 18, ..., 238 that the cube lacks.
std::vector<Colour> DefaultTable(int bpp)
{
    switch (bpp) {
    case 1:
        return {Rgb(0, 0, 0), Rgb(255, 255, 255)};
    case 4:
        return {kStandardColours.begin(), kStandardColours.end()};
    case 8: {
        std::vector<Colour> table(kStandardColours.begin(), kStandardColours.end());
        for (int r = 0; r < 6; ++r) {
            for (int g = 0; g < 6; ++g) {
                for (int b = 0; b < 6; ++b)
                    table.push_back(Rgb(std::uint8_t(r * 51), std::uint8_t(g * 51), std::uint8_t(b * 51)));
            }
        }
        for (int grey = 8; grey <= 238; grey += 10)
            table.push_back(Rgb(std::uint8_t(grey), std::uint8_t(grey), std::uint8_t(grey)));
        return table;
    }
    default:
        return {};
    }
}

int Distance(Colour a, Colour b)
{
    const int dr = int(a & 0xFF) - int(b & 0xFF);
    const int dg = int(a >> 8 & 0xFF) - int(b >> 8 & 0xFF);
    const int db = int(a >> 16 & 0xFF) - int(b >> 16 & 0xFF);
    return dr * dr + dg * dg + db * db;
}

// One direction of a stretch, sizes made positive: destination pixel `To + i` takes the source
// pixel under its centre, counted from the far end when mirrored. Wide types keep any int
// arguments free of overflow.
struct Axis {
    long long To;
    long long Count;
    long long From;
    long long Size;
    bool Mirrored = false;

    Axis(int to, int count, int from, int size) : To(to), Count(count), From(from), Size(size)
    {
        if (Count < 0) {
            To += Count;
            Count = -Count;
            Mirrored = !Mirrored;
        }
        if (Size < 0) {
            From += Size;
            Size = -Size;
            Mirrored = !Mirrored;
        }
    }
    long long SourceOf(long long i) const
    {
        const unsigned long long k = Mirrored ? Count - 1 - i : i;
        return From + (long long)((2 * k + 1) * (unsigned long long)Size / (2 * (unsigned long long)Count));
    }
    // The destination pixels that land inside [0, limit).
    long long First() const { return std::max(0LL, -To); }
    long long End(int limit) const { return std::clamp(limit - To, 0LL, Count); }
};

// Turns pixel values of the source into values of the target, and knows the transparent ones.
class ValueMap {
public:
    ValueMap(const cDIB& source, const cDIB& target, const Colour* transparent)
        : target_(target), same_(source.BPP() == target.BPP()), transparent_(transparent)
    {
        if (source.BPP() > 8)
            return;
        for (Colour colour : source.GetColorTable()) {
            palette_.push_back(same_ ? std::uint32_t(palette_.size()) : target.ValueOf(colour));
            skip_.push_back(transparent != nullptr && colour == (*transparent & 0xFFFFFF));
        }
    }
    bool Skip(std::uint32_t value) const
    {
        if (!palette_.empty())
            return skip_[value];
        return transparent_ != nullptr && value == (*transparent_ & 0xFFFFFF);
    }
    std::uint32_t operator()(std::uint32_t value)
    {
        if (!palette_.empty())
            return palette_[value];
        if (same_)
            return value;
        // Neighbouring pixels of a picture often share a colour; that spares most searches.
        if (value != lastColour_) {
            lastColour_ = value;
            lastValue_ = target_.ValueOf(value);
        }
        return lastValue_;
    }

private:
    const cDIB& target_;
    bool same_;
    const Colour* transparent_;
    std::vector<std::uint32_t> palette_;
    std::vector<bool> skip_;
    std::uint32_t lastColour_ = 0xFFFFFFFF;
    std::uint32_t lastValue_ = 0;
};

void Blit(const cDIB& source, cDIB& target, const Axis& ax, const Axis& ay, const Colour* transparent)
{
    if (source.Empty() || target.Empty() || ax.Count == 0 || ay.Count == 0 || ax.Size == 0 || ay.Size == 0)
        return;
    if (&source == &target) {
        // Overlapping parts of one bitmap: read from a copy so no pixel is read after it was written.
        const cDIB copy = source;
        Blit(copy, target, ax, ay, transparent);
        return;
    }
    ValueMap map(source, target, transparent);
    const long long xEnd = ax.End(target.Width());
    const long long yEnd = ay.End(target.Height());
    for (long long j = ay.First(); j < yEnd; ++j) {
        const long long sy = ay.SourceOf(j);
        if (sy < 0 || sy >= source.Height())
            continue;
        const std::uint8_t* from = RowOf(source, int(sy));
        std::uint8_t* to = RowOf(target, int(ay.To + j));
        for (long long i = ax.First(); i < xEnd; ++i) {
            const long long sx = ax.SourceOf(i);
            if (sx < 0 || sx >= source.Width())
                continue;
            const std::uint32_t value = ReadValue(from, int(sx), source.BPP());
            if (!map.Skip(value))
                WriteValue(to, int(ax.To + i), target.BPP(), map(value));
        }
    }
}

} // namespace

bool cDIB::Create(int width, int height, int bitsPerPixel)
{
    Destroy();
    if (bitsPerPixel != 1 && bitsPerPixel != 4 && bitsPerPixel != 8 && bitsPerPixel != 24)
        return false;
    if (width <= 0 || height <= 0 || width > kMaxSide || height > kMaxSide)
        return false;
    const int stride = (width * bitsPerPixel + 31) / 32 * 4;
    if (std::size_t(stride) * std::size_t(height) > kMaxBytes)
        return false;
    width_ = width;
    height_ = height;
    bpp_ = bitsPerPixel;
    stride_ = stride;
    table_ = DefaultTable(bitsPerPixel);
    bits_.assign(std::size_t(stride) * std::size_t(height), 0);
    return true;
}

bool cDIB::CreateFromBitmapFile(const std::string& file) { return LoadBmpFile(file, *this); }

bool cDIB::CreateFromPicture(const std::string& file)
{
    return CreateFromImage(QImage(QString::fromStdString(file)));
}

bool cDIB::CreateFromPackedDIB(const std::uint8_t* data, std::size_t size)
{
    return ReadPackedDib({data, size}, *this);
}

bool cDIB::CreateFromImage(const QImage& image)
{
    Destroy();
    if (image.isNull() || !Create(image.width(), image.height(), 24))
        return false;
    const QImage rgb = image.convertToFormat(QImage::Format_RGB888);
    for (int y = 0; y < height_; ++y) {
        const std::uint8_t* from = rgb.constScanLine(y);
        std::uint8_t* to = RowOf(*this, y);
        for (int x = 0; x < width_; ++x) {
            to[3 * x] = from[3 * x + 2];
            to[3 * x + 1] = from[3 * x + 1];
            to[3 * x + 2] = from[3 * x];
        }
    }
    return true;
}

QImage cDIB::ToImage(bool firstEntryClear) const
{
    if (Empty())
        return {};
    const bool clear = firstEntryClear && bpp_ <= 8;
    QImage image(width_, height_, clear ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    for (int y = 0; y < height_; ++y) {
        const std::uint8_t* from = RowOf(*this, y);
        auto* to = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < width_; ++x) {
            const std::uint32_t value = ReadValue(from, x, bpp_);
            const Colour colour = ColourOf(value);
            to[x] = clear && value == 0 ? 0 : qRgb(int(colour & 0xFF), int(colour >> 8 & 0xFF), int(colour >> 16 & 0xFF));
        }
    }
    return image;
}

void cDIB::CloneTo(cDIB& target) const { target = *this; }

bool cDIB::Save(const std::string& file) const
{
    if (Empty())
        return false;
    std::string error;
    return WriteFileAtomically(file, BmpFileBytes(*this), error);
}

void cDIB::Destroy() { *this = cDIB(); }

void cDIB::SetColorTable(const std::vector<Colour>& table)
{
    const std::size_t count = std::min(table.size(), table_.size());
    for (std::size_t i = 0; i < count; ++i)
        table_[i] = table[i] & 0xFFFFFF;
}

std::uint32_t cDIB::Pixel(int x, int y) const
{
    if (x < 0 || y < 0 || x >= width_ || y >= height_)
        return 0;
    return ReadValue(RowOf(*this, y), x, bpp_);
}

void cDIB::SetPixel(int x, int y, std::uint32_t value)
{
    if (x < 0 || y < 0 || x >= width_ || y >= height_)
        return;
    WriteValue(RowOf(*this, y), x, bpp_, bpp_ == 24 ? value & 0xFFFFFF : value & ((1u << bpp_) - 1));
}

void cDIB::Cls(Colour colour)
{
    const std::uint32_t value = ValueOf(colour);
    // Whole bytes of a palette row take one pattern; the rest of the row goes pixel by pixel.
    const int wholeBytes = bpp_ <= 8 ? width_ * bpp_ / 8 : 0;
    const int pattern = bpp_ == 1 ? (value ? 0xFF : 0) : bpp_ == 4 ? int(value * 0x11) : int(value);
    for (int y = 0; y < height_; ++y) {
        std::uint8_t* row = RowOf(*this, y);
        std::fill_n(row, wholeBytes, std::uint8_t(pattern));
        for (int x = bpp_ <= 8 ? wholeBytes * 8 / bpp_ : 0; x < width_; ++x)
            WriteValue(row, x, bpp_, value);
    }
}

void cDIB::Reset() { std::fill(bits_.begin(), bits_.end(), std::uint8_t(0)); }

void cDIB::LoadBlt(const cDIB& source, int x, int y)
{
    source.Stretch(*this, 0, 0, width_, height_, x, y, width_, height_);
}

void cDIB::Paint(cDIB& target, int x, int y) const { Stretch(target, x, y, width_, height_, 0, 0, width_, height_); }

void cDIB::Stretch(cDIB& target, int x, int y, int w, int h, int srcX, int srcY, int srcW, int srcH) const
{
    Blit(*this, target, Axis(x, w, srcX, srcW), Axis(y, h, srcY, srcH), nullptr);
}

void cDIB::StretchTransparent(cDIB& target, int x, int y, int w, int h, int srcX, int srcY, int srcW, int srcH,
                              Colour transparent) const
{
    Blit(*this, target, Axis(x, w, srcX, srcW), Axis(y, h, srcY, srcH), &transparent);
}

Colour cDIB::ColourOf(std::uint32_t value) const
{
    if (bpp_ == 24)
        return value & 0xFFFFFF;
    return value < table_.size() ? table_[value] : 0;
}

std::uint32_t cDIB::ValueOf(Colour colour) const
{
    colour &= 0xFFFFFF;
    if (bpp_ == 24 || table_.empty())
        return colour;
    std::uint32_t best = 0;
    int bestDistance = Distance(colour, table_[0]);
    for (std::uint32_t i = 1; i < table_.size() && bestDistance > 0; ++i) {
        const int distance = Distance(colour, table_[i]);
        if (distance < bestDistance) {
            best = i;
            bestDistance = distance;
        }
    }
    return best;
}

BestFit GetBestFitInfo(int width, int height, int boxWidth, int boxHeight)
{
    if (width <= 0 || height <= 0 || boxWidth <= 0 || boxHeight <= 0)
        return {};
    BestFit fit;
    // Compare the ratios crosswise so that no division decides which side fills the box;
    // the other side is rounded half up and kept at one pixel at least.
    if ((long long)width * boxHeight >= (long long)height * boxWidth) {
        fit.Width = boxWidth;
        fit.Height = int(std::max(1LL, (2LL * height * boxWidth + width) / (2LL * width)));
    } else {
        fit.Height = boxHeight;
        fit.Width = int(std::max(1LL, (2LL * width * boxHeight + height) / (2LL * height)));
    }
    fit.Left = (boxWidth - fit.Width) / 2;
    fit.Top = (boxHeight - fit.Height) / 2;
    return fit;
}

} // namespace mw
