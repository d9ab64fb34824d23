#pragma once

#include "i18n/TextFormatParser.h"
#include "i18n/TextMeasurer.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace mw {

// Colours are 0x00BBGGRR, red in the low byte.
inline constexpr std::uint32_t kLinkColor = 0xFF0000;

struct TextRect {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;

    int Right() const { return Left + Width; }
    int Bottom() const { return Top + Height; }
    bool Contains(int x, int y) const { return x >= Left && x < Right() && y >= Top && y < Bottom(); }
    bool operator==(const TextRect&) const = default;
};

// A piece of text on one line, all in one font and colour, from one run.
struct TextPiece {
    TextRect Box; // the line's height, so that pieces of one line share a base line
    int Y = 0;    // top of the text itself
    std::string Text;
    FontState Font;
    std::uint32_t Color = 0;
    std::size_t Run = 0;
    int Link = -1; // index into TextLayout::Links
    // Source position of each byte of Text, and the position behind the last one.
    std::vector<std::size_t> Positions;
};

struct FilledShape {
    TextRect Box;
    std::uint32_t Color = 0;
    bool Round = false; // a bullet "t" is round, "t2" and border lines are square
};

// A link's target is its shown text; it has one rectangle per line it covers.
struct TextLink {
    std::string Target;
    std::vector<TextRect> Rects;
};

struct TableCell {
    TextRect Box;
    bool Border = true;
};

// A picture of a "g" tag, drawn scaled into its box.
struct TextPicture {
    TextRect Box;
    std::string File;
};

struct TextFormatOptions {
    int Width = 0;       // of the surface
    int RightMargin = 0; // text wraps this far from the right side
    FontState Font;      // the starting font
    std::uint32_t Color = 0;
    int FontCount = 0; // entries of the font table that "f<n>" can name
    std::string ProgramFolder; // what a picture source "<APP.PATH>" stands for
};

// What the painter draws, in surface coordinates.
struct TextLayout {
    std::vector<TextPiece> Pieces;
    std::vector<FilledShape> Shapes; // bullets and table borders
    std::vector<TextLink> Links;
    std::vector<TableCell> Cells; // of the rows that "a0" ended
    std::vector<TextPicture> Pictures;
    int Height = 0; // of everything laid out, for the scroll range
    // Tags that had no effect: unknown ones, and pictures that could not be read.
    std::vector<std::string> UnknownTags;
};

// Picture tags: "g<source>|<w>x<h>" puts a picture at this place. The source is a file, or
// "<APP.PATH>" and a path below the program folder; either size may be left out and follows
// the other in proportion, and an "r" or "c" at the end puts the picture at the right or in
// the middle of a line of its own. After "ga" pictures float at the left (or right) of the text
// that follows, which wraps beside them; "gn" ends that, and "gr" goes on below the last picture.
// Resource pictures ("<R>") do not exist here and are left out like unreadable files.
//
// One walk over the runs. Drawing ("d", "e") and printing ("p", "z") tags are not supported:
// like any unknown tag they are listed in UnknownTags and have no effect.
TextLayout LayoutTextFormat(const ParsedText& text, const TextFormatOptions& options, const TextMeasurer& measurer);

} // namespace mw
