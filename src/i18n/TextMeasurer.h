#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace mw {

// The font of a piece of formatted text. Font 0 is the font the text starts with; n > 0 is
// entry n of the control's font table.
struct FontState {
    int Font = 0;
    int Size = 8;
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;

    bool operator==(const FontState&) const = default;
};

struct PictureExtent {
    int Width = 0;
    int Height = 0;
};

// Text metrics for the layout of formatted text, so that the core needs no font system. The
// window that paints the text measures with the same fonts it paints with, and reads the
// pictures it paints.
class TextMeasurer {
public:
    virtual ~TextMeasurer() = default;
    virtual int TextWidth(const FontState& font, std::string_view text) const = 0;
    virtual int Height(const FontState& font) const = 0;
    virtual int Ascent(const FontState& font) const = 0;
    // The size in pixels of a picture file; nothing when it cannot be read. A measurer for
    // text alone reads none.
    virtual std::optional<PictureExtent> PictureSize(const std::string& /*file*/) const { return std::nullopt; }
};

// The position behind the character at `i`, so that cutting and hit tests never split a UTF-8
// sequence.
inline std::size_t NextCharacter(std::string_view text, std::size_t i)
{
    ++i;
    while (i < text.size() && (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80)
        ++i;
    return i;
}

} // namespace mw
