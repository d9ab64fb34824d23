#pragma once

#include "i18n/TextFormatLayout.h"

#include <cstddef>
#include <optional>

namespace mw {

// A character of the source: the run it belongs to and its position in ParsedText::Source.
struct TextHit {
    std::size_t Run = 0;
    std::size_t Position = 0;

    bool operator==(const TextHit&) const = default;
};

// The character under a point, or the nearest one: a point beside a line gives the line's first
// character or the position behind its last. Nothing when no text was laid out.
std::optional<TextHit> LocateTextAtXY(const TextLayout& layout, const TextMeasurer& measurer, int x, int y);

// The link under a point, or nullptr.
const TextLink* LinkAtXY(const TextLayout& layout, int x, int y);

} // namespace mw
