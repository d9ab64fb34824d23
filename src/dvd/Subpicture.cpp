#include "dvd/Subpicture.h"

#include <QImage>

#include <algorithm>

namespace mw {

namespace {

QRgb Opaque(Colour colour)
{
    return qRgb(int(colour & 0xFF), int(colour >> 8 & 0xFF), int(colour >> 16 & 0xFF));
}

// Four palette entries only, since spumux refuses pictures of more colours.
QList<QRgb> Palette(const SubpictureColours& colours)
{
    return {qRgba(0, 0, 0, 0), Opaque(colours[0]), Opaque(colours[1]), Opaque(colours[2])};
}

// A clear frame with every button's overlay in its rectangle; the colours come later.
QImage Compose(const std::vector<SubpictureButton>& buttons, int frameWidth, int frameHeight)
{
    QImage picture(frameWidth, frameHeight, QImage::Format_Indexed8);
    picture.setColorTable(Palette({}));
    picture.fill(0);
    for (const SubpictureButton& button : buttons) {
        const cDIB& overlay = button.Overlay;
        if (overlay.Empty() || overlay.BPP() > 8 || button.Width <= 0 || button.Height <= 0)
            continue;
        for (int y = std::max(0, button.Top); y < std::min(frameHeight, button.Top + button.Height); ++y) {
            const int sourceY = int(std::int64_t(y - button.Top) * overlay.Height() / button.Height);
            uchar* row = picture.scanLine(y);
            for (int x = std::max(0, button.Left); x < std::min(frameWidth, button.Left + button.Width); ++x) {
                const int sourceX = int(std::int64_t(x - button.Left) * overlay.Width() / button.Width);
                const std::uint32_t index = overlay.Pixel(sourceX, sourceY);
                if (index >= 1 && index <= 3)
                    row[x] = uchar(index);
            }
        }
    }
    return picture;
}

bool Save(const QImage& picture, const std::filesystem::path& file, std::string& error)
{
    if (picture.save(QString::fromStdString(file.string()), "PNG"))
        return true;
    error = "Could not write " + file.string();
    return false;
}

} // namespace

bool WriteSubpictures(const std::vector<SubpictureButton>& buttons, int frameWidth, int frameHeight,
                      const SubpictureColours& highlight, const SubpictureColours& select,
                      const std::filesystem::path& highlightPng, const std::filesystem::path& selectPng,
                      std::string& error)
{
    QImage picture = Compose(buttons, frameWidth, frameHeight);
    picture.setColorTable(Palette(highlight));
    if (Save(picture, highlightPng, error)) {
        picture.setColorTable(Palette(select));
        if (Save(picture, selectPng, error))
            return true;
    }
    std::error_code ignored;
    std::filesystem::remove(highlightPng, ignored);
    std::filesystem::remove(selectPng, ignored);
    return false;
}

} // namespace mw
