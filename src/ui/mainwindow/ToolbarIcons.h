#pragma once

#include <QIcon>

#include <string_view>

namespace mw {

// The picture of a tool bar button by its key (`openXml`, `buttonAdd`, `color1`, ...), and of the
// program itself by "menuwright": the desktop's icon theme where it has one that means the same
// thing, else one of our own drawings. A null icon for a key that has none.
QIcon ToolbarIcon(std::string_view key);

} // namespace mw
