#include "document/TreeQueries.h"

#include "core/Text.h"

#include <algorithm>

namespace mw {

bool RowMatches(const DocNode& row, const std::string& name)
{
    // A prefix test by design: the row's text cut to the name's length.
    return StartsWithNoCase(row.Text, name);
}

std::string RowName(const std::string& text)
{
    const auto eq = text.find('=');
    return Trim(eq == std::string::npos ? text : text.substr(0, eq));
}

std::string RowValue(const std::string& text)
{
    const auto eq = text.find('=');
    return Trim(eq == std::string::npos ? text : text.substr(eq + 1));
}

std::string GetPropertyInNode(const DocNode& node, const std::string& name)
{
    for (const auto& row : node) {
        if (RowMatches(*row, name))
            return RowValue(row->Text);
    }
    return "";
}

bool UpdatePropertyInNode(DocTree& tree, DocNode& node, const std::string& name, const std::string& value,
                          bool addIfMissing)
{
    for (const auto& row : node) {
        if (!RowMatches(*row, name))
            continue;
        if (value == kNoneMarker)
            tree.Remove(*row);
        else
            row->Text = name + " = " + value;
        return true;
    }
    if (!addIfMissing || value == kNoneMarker || !node.HasChildren())
        return false;

    // The new row goes behind the last leaf before the first element; when the very first
    // child is an element, behind that element. Callers rely on this order.
    DocNode* last = node.FirstChild();
    for (const auto& child : node) {
        if (child->HasChildren())
            break;
        last = child.get();
    }
    tree.Add(last, Relationship::Next, "", name + " = " + value, "prop");
    return true;
}

namespace {

std::string FirstObjectIdIn(const DocNode& element, bool& found)
{
    found = false;
    for (const auto& row : element) {
        if (Lower(row->Text.substr(0, 8)) == "objectid") {
            found = true;
            return RowValue(row->Text);
        }
    }
    return "";
}

void CollectIds(const DocNode& element, std::optional<IdList>& ids)
{
    for (const auto& row : element) {
        if (Lower(row->Text.substr(0, 8)) != "objectid")
            continue;
        std::string id = RowValue(row->Text);
        if (!ids)
            ids.emplace();
        if (std::find(ids->begin(), ids->end(), id) != ids->end())
            throw DocTreeError("Key is not unique in collection: " + id);
        ids->push_back(std::move(id));
    }
}

} // namespace

std::optional<IdList> GetAllNodesInNode(const DocNode& node, const std::string& name)
{
    std::optional<IdList> ids;
    for (const auto& child : node) {
        if (EqualsNoCase(child->Text, name))
            CollectIds(*child, ids);
    }
    return ids;
}

std::optional<IdList> GetAllNodesInNodeAll(const DocNode& node)
{
    std::optional<IdList> ids;
    for (const auto& child : node) {
        if (child->HasChildren())
            CollectIds(*child, ids);
    }
    return ids;
}

std::string Get1NodeInNode(const DocNode& node, const std::string& name)
{
    // Does not stop at the first match: callers look for singletons and take the last.
    std::string result;
    for (const auto& child : node) {
        if (!EqualsNoCase(child->Text, name))
            continue;
        bool found = false;
        std::string id = FirstObjectIdIn(*child, found);
        if (found)
            result = std::move(id);
    }
    return result;
}

DocNode* ChildNamed(const DocNode* parent, std::string_view name, bool last)
{
    DocNode* found = nullptr;
    if (!parent)
        return found;
    for (const auto& child : *parent) {
        if (!EqualsNoCase(child->Text, name))
            continue;
        found = child.get();
        if (!last)
            break;
    }
    return found;
}

DocNode* GetParentNode(const DocTree& tree)
{
    DocNode* node = tree.Selected();
    while (node && !node->HasChildren())
        node = node->Parent();
    return node;
}

bool FindInTree(const DocNode& node, const std::string& text, DocNode*& found)
{
    bool keepLooking = true;
    return FindInTreeHide(node.FirstChild(), text, keepLooking, found);
}

bool FindInTreeHide(DocNode* node, const std::string& text, bool& keepLooking, DocNode*& found)
{
    for (; node; node = node->Next()) {
        if (!keepLooking)
            return true;
        if (!node->HasChildren()) {
            if (EqualsNoCase(node->Text, text)) {
                found = node;
                keepLooking = false;
                return true;
            }
        } else if (FindInTreeHide(node->FirstChild(), text, keepLooking, found)) {
            keepLooking = false;
            return true;
        }
    }
    return !keepLooking;
}

bool UpDateTree(DocTree& tree, const ButtonShape& shape)
{
    DocNode* button = tree.Find("k" + shape.Tag);
    if (!button)
        return false;
    for (const auto& child : *button) {
        if (Upper(child->Text) != "MENURECTANGLE")
            continue;
        for (const auto& row : *child) {
            const std::string lowered = Lower(row->Text);
            if (lowered.rfind("left", 0) == 0)
                row->Text = "left = " + std::to_string(shape.Left);
            else if (lowered.rfind("top", 0) == 0)
                row->Text = "top = " + std::to_string(shape.Top);
            else if (lowered.rfind("width", 0) == 0)
                row->Text = "width = " + std::to_string(shape.Width);
            else if (lowered.rfind("height", 0) == 0)
                row->Text = "height = " + std::to_string(shape.Height);
        }
        break;
    }
    return true;
}

void UpdateTreeFromProp(DocTree& tree, const std::string& buttonTag, const std::vector<PropGridRow>& grid)
{
    DocNode& button = tree.Item("k" + buttonTag);
    for (std::size_t row = 2; row <= 6 && row < grid.size(); ++row)
        UpdatePropertyInNode(tree, button, grid[row].Name, grid[row].Value, false);
}

} // namespace mw
