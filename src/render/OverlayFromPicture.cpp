#include "render/OverlayFromPicture.h"

#include "render/OverlayScheme.h"

#include <algorithm>

namespace mw {

cDIB ReduceTo16Colours(const cDIB& picture, Colour transparent)
{
    cDIB result;
    if (picture.Empty() || !result.Create(picture.Width(), picture.Height(), 4))
        return result;
    std::vector<Colour> table = result.GetColorTable();
    transparent &= 0xFFFFFF;
    // Black (entry 0) and white (15) carry text and outlines in most pictures: the transparent
    // colour only replaces them when it is one of them.
    std::size_t replaced = result.ValueOf(transparent);
    if (table[replaced] != transparent) {
        const auto distance = [transparent](Colour c) {
            const auto d = [&](int shift) { return int(c >> shift & 0xFF) - int(transparent >> shift & 0xFF); };
            return d(0) * d(0) + d(8) * d(8) + d(16) * d(16);
        };
        replaced = 1;
        for (std::size_t i = 2; i + 1 < table.size(); ++i) {
            if (distance(table[i]) < distance(table[replaced]))
                replaced = i;
        }
    }
    std::swap(table[0], table[replaced]);
    table[0] = transparent;
    result.SetColorTable(table);
    picture.Stretch(result, 0, 0, result.Width(), result.Height(), 0, 0, picture.Width(), picture.Height());
    return result;
}

void ShowWithDefaultColors(cDIB& overlay)
{
    if (overlay.BPP() != 4)
        return;
    overlay.SetColorTable({kOverlayPaintColours.begin(), kOverlayPaintColours.end()});
}

bool OverlayFromPicture::LoadPicture(const std::string& file)
{
    result_.Destroy();
    transparent_.reset();
    return picture_.CreateFromPicture(file);
}

bool OverlayFromPicture::PickTransparent(int x, int y)
{
    if (picture_.Empty() || x < 0 || y < 0 || x >= picture_.Width() || y >= picture_.Height())
        return false;
    transparent_ = picture_.Pixel(x, y);
    result_ = ReduceTo16Colours(picture_, *transparent_);
    return true;
}

void OverlayFromPicture::SetFromPic()
{
    if (result_.Empty() || !transparent_)
        return;
    result_.SetColorTable({*transparent_});
}

void OverlayFromPicture::ShowWithDefaultColors() { mw::ShowWithDefaultColors(result_); }

std::optional<Colour> OverlayFromPicture::ResultEntry0() const
{
    if (result_.Empty())
        return std::nullopt;
    return result_.GetColorTable()[0];
}

} // namespace mw
