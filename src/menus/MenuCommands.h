#pragma once

#include "document/DocTree.h"

#include <string>
#include <vector>

namespace mw {

class Project;

// The first LanguageMenus of the root whose languageCode is the code, case ignored; nullptr
// when there is none or the tree is empty.
DocNode* IsLanguageMenusThere(const DocTree& tree, const std::string& languageCode);

// The objectIDs of the menus of a language, in tree order. The stored code is lower-cased
// before it is compared; no such language gives an empty list.
std::vector<std::string> LoadAllMenus(const DocTree& tree, const std::string& languageCode);

// The line before a menu in its language set: " -> Menu NAME (TYPE)", without the name when
// there is none.
std::string MenuCommentText(const std::string& name, const std::string& type);

// Removes a menu: its comment, its overlay tracks, its background tracks and the sources that no
// other menu of its language still uses. A starting menu hands the start on to the first other
// menu of its language, or to "none". An undo step is recorded first; the canvas forgets the menu.
void DeleteMenu(Project& project, const std::string& menuID);

} // namespace mw
