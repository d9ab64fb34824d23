#include "render/OverlayStretch.h"

namespace mw {

namespace {

constexpr int kBorder = 15;

} // namespace

OverlayStretchMode StretchModeOfFile(const std::string& file)
{
    const auto dot = file.rfind('.');
    if (dot == std::string::npos || dot == 0)
        return OverlayStretchMode::Whole;
    switch (file[dot - 1]) {
    case '_':
        return OverlayStretchMode::NineSlice;
    case '}':
        return OverlayStretchMode::LowerCorners;
    default:
        return OverlayStretchMode::Whole;
    }
}

void StretchOverlay(const cDIB& source, cDIB& target, OverlayStretchMode mode)
{
    const int sw = source.Width();
    const int sh = source.Height();
    const int w = target.Width();
    const int h = target.Height();
    const int b = kBorder;
    switch (mode) {
    case OverlayStretchMode::Whole:
        source.Stretch(target, 0, 0, w, h, 0, 0, sw, sh);
        break;
    case OverlayStretchMode::NineSlice:
        source.Stretch(target, b, 0, w - 2 * b, b, b, 0, sw - 2 * b, b);
        source.Stretch(target, b, h - b, w - 2 * b, b, b, sh - b, sw - 2 * b, b);
        source.Stretch(target, 0, b, b, h - 2 * b, 0, b, b, sh - 2 * b);
        source.Stretch(target, w - b, b, b, h - 2 * b, sw - b, b, b, sh - 2 * b);
        source.Stretch(target, 0, 0, b, b, 0, 0, b, b);
        source.Stretch(target, w - b, 0, b, b, sw - b, 0, b, b);
        source.Stretch(target, 0, h - b, b, b, 0, sh - b, b, b);
        source.Stretch(target, w - b, h - b, b, b, sw - b, sh - b, b, b);
        break;
    case OverlayStretchMode::LowerCorners:
        source.Stretch(target, 0, h - b, b, b, 0, sh - b, b, b);
        source.Stretch(target, w - b, h - b, b, b, sw - b, sh - b, b, b);
        break;
    }
}

} // namespace mw
