#pragma once

#include "document/DocTree.h"

#include <optional>
#include <string>
#include <string_view>

namespace mw {

class Project;

// "Menu <menuname> (<menutype>)": how a menu is named in the simple tree and the status bar.
std::string MenuCaption(const DocNode& menu);

// The nearest element, the node itself included, whose name is `name`.
const DocNode* EnclosingNamed(const DocNode& node, std::string_view name);

// The DivXMediaMenu that holds a node, the node itself when it is one; null outside menus.
const DocNode* MenuOfNode(const DocNode& node);

// Selecting a node of the document tree, apart from the panes: the node becomes the selection
// and the commands that act on one kind of node follow its kind. Returns the text of the status
// panel "menu" when the node lies in a menu; other nodes leave the panel as it is.
// A selected node also enables the steps to its siblings and shows the panes; a node in a menu
// makes that menu the current one.
std::optional<std::string> TreeView1_NodeClick(Project& project, DocNode* node);

// mnuNextNode (F3) / mnuPreviusNode (F2): the selection moves to the next or previous sibling
// and is clicked there. False, with nothing changed, at the end of the siblings or without a
// selection.
bool StepSibling(Project& project, bool forward);

// An edit of a row in the property grid: the row `name` of `node` takes `value` (kNoneMarker
// removes it). A node in a menu keeps an undo step first.
void EditPropertyRow(Project& project, DocNode& node, const std::string& name, const std::string& value);

} // namespace mw
