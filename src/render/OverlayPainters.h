#pragma once

#include "core/Prompt.h"
#include "render/cDIB.h"

#include <string>

namespace mw {

// The painters of the special overlays. Each returns a new 4-bit picture of width by height
// on indexes 0 to 3 with the scheme's table (see OverlayScheme.h); empty for an empty size.

// A rectangle of the line width in index 1 inside a one-pixel frame in index 2.
cDIB CreateRect(int lineWidth, int width, int height);
// An ellipse of the line width in index 1, touching the edges.
cDIB CreateOval(int lineWidth, int width, int height);
// A rectangle in the middle with bracket lines out to the sides, in index 1.
cDIB CreateShape1(int lineWidth, int width, int height);
// The text centred as a block, body in index 1 with an outline of `outline` pixels in index 2,
// and, when the shadow ("4RB": distance and corner LT, RT, RB or LB) has a distance above 0,
// the same text shifted towards that corner in index 3 beneath.
cDIB CreateText(int width, int height, const std::string& text, int outline, const std::string& shadow,
                const FontChoice& font);

// What a painter needs besides the size; the painter picks what it uses.
struct OverlayParams {
    int LineWidth = 3;
    std::string Text;
    int Outline = 0;
    std::string Shadow = "4RB";
    FontChoice Font{"Arial", 18};
};

// The painter by its name ("CreateRect", "CreateOval", "CreateShape1", "CreateText"); an
// empty picture for any other name.
cDIB PaintByFunctionName(const std::string& functionName, int width, int height, const OverlayParams& params);

// The painter's name of a special overlay: one leading "*" and one trailing ".bmp" removed,
// then "Shape1", "Oval", "Rect" or "Text", case sensitive; empty for a file overlay.
std::string GetFuncToCallFromSpecialOverlay(const std::string& name);

} // namespace mw
