#pragma once

#include "document/Document.h"

#include <string>
#include <vector>

namespace mw::test {

// An element keyed "k<id>" with its objectID row first, then the given rows.
inline DocNode& Element(DocTree& tree, DocNode* parent, long id, const std::string& text,
                        const std::vector<std::string>& rows = {})
{
    const std::string number = std::to_string(id);
    DocNode& node = parent ? tree.AddChild(*parent, "k" + number, text, "node")
                           : tree.Add(nullptr, Relationship::Last, "k" + number, text, "divx");
    tree.AddChild(node, "", "objectID = " + number, "objectid");
    for (const std::string& row : rows)
        tree.AddChild(node, "", row, "prop");
    return node;
}

// The first row of an element whose text starts with `prefix`.
inline DocNode* RowOf(const DocNode& element, const std::string& prefix)
{
    for (const auto& row : element) {
        if (row->Text.rfind(prefix, 0) == 0)
            return row.get();
    }
    return nullptr;
}

} // namespace mw::test
