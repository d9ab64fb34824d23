#include "render/OverlayScheme.h"

namespace mw {

std::vector<Colour> OverlayColorTable()
{
    std::vector<Colour> table(16, Rgb(0, 0, 0));
    std::copy(kOverlayPaintColours.begin(), kOverlayPaintColours.end(), table.begin());
    return table;
}

cDIB NewOverlayDib(int width, int height)
{
    cDIB dib;
    if (dib.Create(width, height, 4))
        dib.SetColorTable(OverlayColorTable());
    return dib;
}

} // namespace mw
