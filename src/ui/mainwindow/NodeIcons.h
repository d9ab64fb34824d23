#pragma once

#include <QIcon>

#include <string>

namespace mw {

// The icon of a node kind: a small square in a colour of its own, the same for every node of
// the kind. Drawn pictures can replace them without changing a caller.
QIcon NodeIcon(const std::string& kind);

} // namespace mw
