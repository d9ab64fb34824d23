#include "core/Text.h"
#include "render/OverlayCanvas.h"
#include "render/OverlayPainters.h"
#include "render/OverlayScheme.h"

namespace mw {

cDIB CreateText(int width, int height, const std::string& text, int outline, const std::string& shadow,
                const FontChoice& font)
{
    OverlayCanvas canvas(width, height);
    canvas.SetFont(font);
    const auto draw = [&](int left, int top, int right, int bottom, Colour outlineColour) {
        canvas.DrawTextOutlined(text, QRect(left, top, right - left, bottom - top), outline, outlineColour,
                                TextAlign::Centre, TextVAlign::Centre, true);
    };
    const int s = int(LeadingNumber(shadow));
    if (s > 0) {
        canvas.SetTextColor(kOverlayWhite);
        const std::string corner = shadow.size() >= 2 ? shadow.substr(shadow.size() - 2) : shadow;
        if (corner == "LT")
            draw(-s, -s, width - s, height - s, kOverlayWhite);
        else if (corner == "RT")
            draw(s, -s, width + s, height - s, kOverlayWhite);
        else if (corner == "RB")
            draw(s, s, width + s, height + s, kOverlayWhite);
        else
            draw(-s, s, width - s, height + s, kOverlayWhite);
    }
    canvas.SetTextColor(kOverlayRed);
    draw(0, 0, width, height, kOverlayYellow);
    return canvas.ToDib();
}

} // namespace mw
