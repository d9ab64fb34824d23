#pragma once

#include "document/DocTree.h"

#include <optional>
#include <string>

namespace mw {

class Project;

// "Menu <menuname> (<menutype>)": how a menu is named in the simple tree and the status bar.
std::string MenuCaption(const DocNode& menu);

// The DivXMediaMenu that holds a node, the node itself when it is one; null outside menus.
const DocNode* MenuOfNode(const DocNode& node);

// Selecting a node of the document tree, apart from the panes: the node becomes the selection
// and the commands that act on one kind of node follow its kind. Returns the text of the status
// panel "menu" when the node lies in a menu; other nodes leave the panel as it is.
std::optional<std::string> TreeView1_NodeClick(Project& project, DocNode* node);

} // namespace mw
