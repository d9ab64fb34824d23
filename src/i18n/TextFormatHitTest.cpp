#include "i18n/TextFormatHitTest.h"

#include <algorithm>
#include <utility>

namespace mw {

namespace {

int Distance(int value, int from, int to)
{
    return value < from ? from - value : value >= to ? value - to + 1 : 0;
}

} // namespace

std::optional<TextHit> LocateTextAtXY(const TextLayout& layout, const TextMeasurer& measurer, int x, int y)
{
    // The nearest piece, rows before columns, so that a point right of a line finds that line.
    const TextPiece* best = nullptr;
    std::pair<int, int> bestDistance;
    for (const TextPiece& piece : layout.Pieces) {
        const std::pair<int, int> distance{Distance(y, piece.Box.Top, piece.Box.Bottom()),
                                           Distance(x, piece.Box.Left, piece.Box.Right())};
        if (!best || distance < bestDistance) {
            best = &piece;
            bestDistance = distance;
        }
    }
    if (!best)
        return std::nullopt;

    const std::string_view text = best->Text;
    if (x >= best->Box.Left) {
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t next = NextCharacter(text, at);
            if (x - best->Box.Left < measurer.TextWidth(best->Font, text.substr(0, next)))
                return TextHit{best->Run, best->Positions[at]};
            at = next;
        }
    }
    return TextHit{best->Run, x < best->Box.Left ? best->Positions.front() : best->Positions.back()};
}

const TextLink* LinkAtXY(const TextLayout& layout, int x, int y)
{
    for (const TextLink& link : layout.Links) {
        if (std::any_of(link.Rects.begin(), link.Rects.end(), [&](const TextRect& r) { return r.Contains(x, y); }))
            return &link;
    }
    return nullptr;
}

} // namespace mw
