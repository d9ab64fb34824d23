#pragma once

#include "document/DocTree.h"

#include <optional>
#include <string>
#include <vector>

namespace mw {

// The value that removes a row in UpdatePropertyInNode.
inline constexpr const char* kNoneMarker = "<none>";

// Identifiers found among a node's children. "Nothing" (no match at all) is std::nullopt,
// which callers must tell apart from an empty list.
using IdList = std::vector<std::string>;

// Does a row's text start with the property name, case ignored? "id" matches "idx = 3" too.
bool RowMatches(const DocNode& row, const std::string& name);
// Name and value of a row "name = value", cut at the first "=" and trimmed.
std::string RowName(const std::string& text);
std::string RowValue(const std::string& text);

std::string GetPropertyInNode(const DocNode& node, const std::string& name);
bool UpdatePropertyInNode(DocTree& tree, DocNode& node, const std::string& name, const std::string& value,
                          bool addIfMissing);
std::optional<IdList> GetAllNodesInNode(const DocNode& node, const std::string& name);
std::optional<IdList> GetAllNodesInNodeAll(const DocNode& node);
std::string Get1NodeInNode(const DocNode& node, const std::string& name);
// The first direct child whose text is name, case ignored (the last one with `last`); nullptr
// when there is none or no parent.
DocNode* ChildNamed(const DocNode* parent, std::string_view name, bool last = false);
DocNode* GetParentNode(const DocTree& tree);
bool FindInTree(const DocNode& node, const std::string& text, DocNode*& found);
bool FindInTreeHide(DocNode* node, const std::string& text, bool& keepLooking, DocNode*& found);

// A button's rectangle as the canvas holds it; Tag is the button's object identifier.
struct ButtonShape {
    std::string Tag;
    long Left = 0;
    long Top = 0;
    long Width = 0;
    long Height = 0;
};

// Writes a moved or resized button back into its MenuRectangle rows. Returns false when the
// button is not in the tree. Refreshing the panels and the canvas is the caller's part.
bool UpDateTree(DocTree& tree, const ButtonShape& shape);

// A row of the button property grid: name in column 1, value in column 2.
struct PropGridRow {
    std::string Name;
    std::string Value;
};
// Writes grid rows 2 to 6 (the button's geometry) into the button's node, without adding rows.
void UpdateTreeFromProp(DocTree& tree, const std::string& buttonTag, const std::vector<PropGridRow>& grid);

} // namespace mw
