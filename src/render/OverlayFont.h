#pragma once

#include "core/Prompt.h"

#include <QFont>

#include <string_view>

namespace mw {

// The font of a text overlay from its attributes: "Family", "Family,B", "Family,I" or
// "Family,B,I" and a point size. The family is what stands before the first comma.
FontChoice FontFromAttribute(std::string_view font, double pointSize);

// The font for painting an overlay: found by family through fontconfig, which gives a
// metric-compatible family for the usual Windows names; sized in pixels at 96 dots per inch,
// as the Windows program measured it; glyphs without anti-aliasing, so that they stay on the
// overlay's indexes. Makes the application object fonts need when there is none yet.
QFont OverlayFont(const FontChoice& font);

// Fonts need an application object. Programs without a window (the command line, the build
// tools, tests) get an offscreen one here, kept until the process ends; with one running
// already, nothing happens.
void NeedFontApplication();

} // namespace mw
