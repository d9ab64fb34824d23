#include "media/AviInfo.h"

namespace mw {

// A text shorter than four characters is padded with blanks, as mmioFOURCC users write "MP3 ";
// a longer one gives its first four.
std::uint32_t FourCCFromString(const std::string& text)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        const unsigned char c = i < text.size() ? static_cast<unsigned char>(text[i]) : ' ';
        value |= static_cast<std::uint32_t>(c) << (8 * i);
    }
    return value;
}

// The four characters, blanks kept; a NUL byte ends the text, so a handler of 0 gives "".
std::string FourCCToString(std::uint32_t value)
{
    std::string text;
    for (int i = 0; i < 4; ++i) {
        const char c = static_cast<char>((value >> (8 * i)) & 0xFF);
        if (c == '\0')
            break;
        text += c;
    }
    return text;
}

} // namespace mw
