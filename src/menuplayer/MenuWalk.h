#pragma once

#include "document/Document.h"

#include <string>
#include <vector>

namespace mw {

// Everything a remote can reach in one language set, from its starting menu and from the menu
// and title keys, and what it cannot.
struct WalkReport {
    std::string LanguageCode;
    std::vector<std::string> Reached; // menu identifiers in the order they were first reached
    std::vector<std::string> DeadEnds;
    std::vector<std::string> UnreachedMenus;   // of the set, as "menu 9 "Main""
    std::vector<std::string> UnreachedButtons; // of reached menus: no arrow or action selects them
};

// False, with the reason in error, when the document has no such language set.
bool WalkMenus(const Document& doc, const std::string& languageCode, WalkReport& report, std::string& error);
// The report as the command line prints it.
std::string WalkText(const WalkReport& report);

// The menus of every language set as a Graphviz graph: a box per menu, an arrow per button or
// exit that leads to another menu or to a title; menus with a dead end are drawn red.
std::string MenuMapDot(const Document& doc);

// The Debian package that brings Graphviz's `dot`.
inline constexpr const char* kGraphvizPackage = "graphviz";

// Draws the graph with `dot -Tsvg` into the file, which is replaced only once dot has
// succeeded. `dot` is looked up on PATH when it has no "/". False, with the reason in error.
bool WriteMenuMap(const Document& doc, const std::string& svgFile, std::string& error, const std::string& dot = "dot");

} // namespace mw
