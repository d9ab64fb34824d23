#pragma once

// Small trees built by hand, and ways to look at them, for the document tests.

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

inline std::vector<std::string> ChildTexts(const DocNode& node)
{
    std::vector<std::string> texts;
    for (const auto& child : node)
        texts.push_back(child->Text);
    return texts;
}

// Lines as the writer ends them.
inline std::string CrLf(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + "\r\n";
    return text;
}

} // namespace mw::test
