#pragma once

#include <QIcon>

#include <string>

namespace mw {

// The icon of a node kind ("menu", "button", "prop", ...) and of the simple tree's rows
// ("titles", "title", ...); a kind without a picture of its own gets the plain node's.
QIcon NodeIcon(const std::string& kind);

} // namespace mw
