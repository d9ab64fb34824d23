#pragma once

#include <QIcon>

#include <string_view>

class QStyle;

namespace mw {

// The picture of a tool bar button by its key: the style's own icon where one means the same
// thing, else a small drawn badge with a letter or two.
QIcon ToolbarIcon(const QStyle& style, std::string_view key);

} // namespace mw
