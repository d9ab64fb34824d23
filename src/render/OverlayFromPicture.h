#pragma once

#include "render/cDIB.h"

#include <optional>
#include <string>

namespace mw {

// The picture in 16 colours, each pixel on the nearest colour (in RGB) of the standard 16-colour
// table, with the transparent colour made entry 0 exactly. It takes the place of the standard
// colour it equals, or else of the nearest one but black and white; black, entry 0 before,
// moves to the index that colour leaves.
cDIB ReduceTo16Colours(const cDIB& picture, Colour transparent);

// The first four entries become the overlay painting colours (blue, red, yellow, white); the
// indexes stay. Shows a reduced picture as an overlay and is what the saved file holds.
void ShowWithDefaultColors(cDIB& overlay);

// What the window that turns a picture into an overlay holds, without the window: the picture,
// the colour chosen as transparent and the 16-colour result.
class OverlayFromPicture {
public:
    // A new picture: the result and the transparent colour are cleared. False, with the
    // picture empty, when it cannot be read.
    bool LoadPicture(const std::string& file);
    // The pixel becomes the transparent colour and the picture is reduced. False, and nothing
    // changes, without a picture or outside it.
    bool PickTransparent(int x, int y);
    // Entry 0 becomes the transparent colour again ("Set from pic").
    void SetFromPic();
    // See the free function; no effect without a result. The result is saved after this.
    void ShowWithDefaultColors();

    const cDIB& Picture() const { return picture_; }
    const cDIB& Result() const { return result_; }
    // Unset ("none") until a pixel is picked.
    std::optional<Colour> Transparent() const { return transparent_; }
    std::optional<Colour> ResultEntry0() const;

private:
    cDIB picture_;
    cDIB result_;
    std::optional<Colour> transparent_;
};

} // namespace mw
