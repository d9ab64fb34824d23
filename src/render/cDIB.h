#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

class QImage;

namespace mw {

// A colour as the program keeps it: 0x00BBGGRR, red in the low byte.
using Colour = std::uint32_t;

constexpr Colour Rgb(std::uint8_t red, std::uint8_t green, std::uint8_t blue)
{
    return Colour(red) | Colour(green) << 8 | Colour(blue) << 16;
}

// The one bitmap class: a bottom-up pixel buffer of 1, 4, 8 or 24 bits per pixel with its
// colour table, laid out exactly as a BMP file holds it.
class cDIB {
public:
    // Larger bitmaps are refused before anything is allocated.
    static constexpr int kMaxSide = 32767;
    static constexpr std::size_t kMaxBytes = std::size_t(256) << 20;

    // A new bitmap with the default table of its depth, all pixels 0. False for a size or
    // depth that cannot be made; the bitmap is then empty.
    bool Create(int width, int height, int bitsPerPixel);
    // A BMP file of any of the four depths (uncompressed), read by our own code.
    bool CreateFromBitmapFile(const std::string& file);
    // Any picture that Qt reads (.bmp, .jpg, .gif, .tiff, .png), as 24 bits per pixel.
    bool CreateFromPicture(const std::string& file);
    // A packed bitmap: BITMAPINFOHEADER, colour table, pixels.
    bool CreateFromPackedDIB(const std::uint8_t* data, std::size_t size);
    bool CreateFromImage(const QImage& image); // as 24 bits per pixel
    // RGB32 for painting on screen; with firstEntryClear ARGB32 where a palette bitmap's entry
    // 0 is left out, as an overlay shows over the menu.
    QImage ToImage(bool firstEntryClear = false) const;

    void CloneTo(cDIB& target) const;
    bool Save(const std::string& file) const;
    void Destroy();

    // Same size, depth, table and bits (row padding included).
    bool operator==(const cDIB& other) const = default;

    bool Empty() const { return width_ == 0; }
    int Width() const { return width_; }
    int Height() const { return height_; }
    int BPP() const { return bpp_; }
    int BytesPerScanLine() const { return stride_; }
    std::size_t Size() const { return bits_.size(); }
    std::uint8_t* lpBits() { return bits_.data(); }
    const std::uint8_t* lpBits() const { return bits_.data(); }

    // The table as colours (0x00BBGGRR). A shorter table sets only its first entries.
    void SetColorTable(const std::vector<Colour>& table);
    std::vector<Colour> GetColorTable() const { return table_; }

    // A pixel: the palette index at 8 bits or less, the colour at 24 bits. (0,0) is top left.
    std::uint32_t Pixel(int x, int y) const;
    void SetPixel(int x, int y, std::uint32_t value);

    // Clears to a colour; on a palette bitmap to the nearest entry of the table.
    void Cls(Colour colour);
    // All bits to zero.
    void Reset();

    // Plain copy of source, from (x, y) of the source, into the whole of this bitmap.
    void LoadBlt(const cDIB& source, int x, int y);
    // This bitmap into target at (x, y), clipped.
    void Paint(cDIB& target, int x, int y) const;
    // A scaled copy of a part of this bitmap into a rectangle of target, nearest pixel, no
    // blending. Between palette bitmaps of one depth the pixels keep their indexes; across
    // depths a pixel takes its colour, or the nearest entry of the target's table. A negative
    // size covers the pixels from x + w to x and mirrors, as the overlays' nine-slice expects.
    void Stretch(cDIB& target, int x, int y, int w, int h, int srcX, int srcY, int srcW, int srcH) const;
    // As Stretch, leaving out the pixels of one colour of this bitmap.
    void StretchTransparent(cDIB& target, int x, int y, int w, int h, int srcX, int srcY, int srcW, int srcH,
                            Colour transparent) const;

    // The colour of a pixel value of this bitmap.
    Colour ColourOf(std::uint32_t value) const;
    // The pixel value for a colour: itself at 24 bits, the nearest table entry otherwise.
    std::uint32_t ValueOf(Colour colour) const;

private:
    int width_ = 0;
    int height_ = 0;
    int bpp_ = 0;
    int stride_ = 0;
    std::vector<Colour> table_;
    std::vector<std::uint8_t> bits_;
};

// The largest size of the ratio of width by height that fits in the box, and its offset to
// centre it there.
struct BestFit {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
};
BestFit GetBestFitInfo(int width, int height, int boxWidth, int boxHeight);

} // namespace mw
