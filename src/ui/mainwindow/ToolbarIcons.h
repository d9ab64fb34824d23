#pragma once

#include <QIcon>
#include <QStyle>

#include <optional>
#include <string_view>

namespace mw {

// Where a picture comes from, in order: the desktop's icon theme by its freedesktop name, our own
// drawing `:/icons/<Drawing>.svg`, the style's standard picture. Any of them may be missing.
struct IconSource {
    const char* ThemeName;
    const char* Drawing;
    std::optional<QStyle::StandardPixmap> Standard;
};

QIcon LoadIcon(const IconSource& source);

// The picture of a tool bar button by its key (`openXml`, `buttonAdd`, `color1`, ...), and of the
// program itself by "menuwright". A null icon for a key that has none.
QIcon ToolbarIcon(std::string_view key);

} // namespace mw
