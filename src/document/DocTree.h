#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

namespace mw {

// Raised for the tree's own faults: a key that stands twice, a key that does not exist.
class DocTreeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class DocTree;

// One node of the open project. A node with children is an element, one without is a row.
class DocNode {
public:
    const std::string& Key() const { return key_; }
    std::string Text;
    std::string Image; // the node kind, which is also its icon key
    std::string Tag;   // extra info on an element, the comment text on a comment row
    bool Expanded = false;

    DocNode* Parent() const { return parent_; }
    std::size_t ChildCount() const { return children_.size(); }
    bool HasChildren() const { return !children_.empty(); }
    DocNode* Child(std::size_t i) const { return children_[i].get(); }
    DocNode* FirstChild() const { return children_.empty() ? nullptr : children_.front().get(); }
    DocNode* LastChild() const { return children_.empty() ? nullptr : children_.back().get(); }
    DocNode* Next() const;
    DocNode* Previous() const;
    std::size_t PositionInParent() const;

    // Iteration over direct children, in file order.
    auto begin() const { return children_.begin(); }
    auto end() const { return children_.end(); }

private:
    friend class DocTree;
    std::string key_;
    DocNode* parent_ = nullptr;
    DocTree* owner_ = nullptr;
    std::vector<std::unique_ptr<DocNode>> children_;
};

// Where a node goes relative to another, as the tree control's insert numbers them.
enum class Relationship { First = 0, Last = 1, Next = 2, Previous = 3, Child = 4 };

// The document tree: top-level nodes in order (the first is the root), with a key index.
class DocTree {
public:
    DocTree() = default;
    DocTree(const DocTree&) = delete;
    DocTree& operator=(const DocTree&) = delete;
    DocTree(DocTree&& other) noexcept;
    DocTree& operator=(DocTree&& other) noexcept;

    // Adds a node. Without a relative it becomes the last top-level node. A non-empty key
    // that already stands raises DocTreeError.
    DocNode& Add(DocNode* relative, Relationship how, const std::string& key, const std::string& text,
                 const std::string& image);
    DocNode& AddChild(DocNode& parent, const std::string& key, const std::string& text, const std::string& image)
    {
        return Add(&parent, Relationship::Child, key, text, image);
    }

    void Remove(DocNode& node);
    void Clear();

    // Changes a node's key; raises DocTreeError when the new key already stands elsewhere.
    void SetKey(DocNode& node, const std::string& key);

    DocNode* Find(const std::string& key) const;
    // As Find, but a missing key is an error of the tree.
    DocNode& Item(const std::string& key) const;
    DocNode* ObjectNode(const std::string& id) const { return Find("k" + id); }

    bool Empty() const { return roots_.empty(); }
    std::size_t TopLevelCount() const { return roots_.size(); }
    DocNode* TopLevel(std::size_t i) const { return roots_[i].get(); }
    // Node 1, the root of the document.
    DocNode* Root() const { return roots_.empty() ? nullptr : roots_.front().get(); }

    // Position of a node in a depth-first walk of the whole tree, from 1.
    std::size_t Index(const DocNode& node) const;
    // All nodes in depth-first order; element [0] has Index 1.
    std::vector<DocNode*> Flat() const;
    std::size_t Count() const;

    void ForEach(const std::function<void(DocNode&)>& visit) const;

    DocNode* Selected() const { return selected_; }
    void Select(DocNode* node) { selected_ = node; }

private:
    friend class DocNode;
    std::vector<std::unique_ptr<DocNode>>& SiblingsOf(DocNode* parent);
    void Unindex(DocNode& node);

    std::vector<std::unique_ptr<DocNode>> roots_;
    std::unordered_map<std::string, DocNode*> keys_;
    DocNode* selected_ = nullptr;
};

} // namespace mw
