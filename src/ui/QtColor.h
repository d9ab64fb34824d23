#pragma once

#include <QColor>

#include <cstdint>

namespace mw {

// The program keeps colours with red in the low byte: red + 256 * green + 65536 * blue.
inline QColor ToQColor(std::uint32_t color)
{
    return QColor(static_cast<int>(color & 0xFF), static_cast<int>((color >> 8) & 0xFF),
                  static_cast<int>((color >> 16) & 0xFF));
}

inline std::uint32_t FromQColor(const QColor& color)
{
    return static_cast<std::uint32_t>(color.red()) | static_cast<std::uint32_t>(color.green()) << 8 |
           static_cast<std::uint32_t>(color.blue()) << 16;
}

} // namespace mw
