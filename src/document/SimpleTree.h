#pragma once

#include "document/DocTree.h"

#include <string>
#include <vector>

namespace mw {

// One row of the simple tree: a short view of titles, chapters, menus and buttons.
struct SimpleRow {
    std::string Key; // the key of the document node the row stands for; empty for detail rows
    std::string Text;
    std::string Icon;
    std::vector<SimpleRow> Children;

    bool operator==(const SimpleRow&) const = default;
};

// The value of the first translation behind a lookup identifier; empty when there is none.
std::string TranslationOf(const DocTree& tree, const std::string& lookupId);

// The simple tree of a document: "Titles" with the titles of the media branch, then one
// "Menus (code)" row per language set.
std::vector<SimpleRow> LoadToSimple(const DocTree& tree);

// The key of the document node a click on a simple row selects: menu and set rows by their own
// key, button rows by the number in their text. Empty for rows that only select themselves.
std::string SimpleRowTarget(const SimpleRow& row);

} // namespace mw
