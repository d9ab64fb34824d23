#include "document/DocTree.h"

#include <algorithm>

namespace mw {

namespace {

std::size_t PositionIn(const std::vector<std::unique_ptr<DocNode>>& list, const DocNode* node)
{
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (list[i].get() == node)
            return i;
    }
    throw DocTreeError("node is not in its parent's list");
}

} // namespace

DocNode* DocNode::Next() const
{
    const auto& list = parent_ ? parent_->children_ : owner_->roots_;
    const std::size_t i = PositionInParent();
    return i + 1 < list.size() ? list[i + 1].get() : nullptr;
}

DocNode* DocNode::Previous() const
{
    const auto& list = parent_ ? parent_->children_ : owner_->roots_;
    const std::size_t i = PositionInParent();
    return i > 0 ? list[i - 1].get() : nullptr;
}

std::size_t DocNode::PositionInParent() const
{
    return PositionIn(parent_ ? parent_->children_ : owner_->roots_, this);
}

DocTree::DocTree(DocTree&& other) noexcept { *this = std::move(other); }

DocTree& DocTree::operator=(DocTree&& other) noexcept
{
    roots_ = std::move(other.roots_);
    keys_ = std::move(other.keys_);
    selected_ = other.selected_;
    other.roots_.clear();
    other.keys_.clear();
    other.selected_ = nullptr;
    ForEach([this](DocNode& n) { n.owner_ = this; });
    return *this;
}

std::vector<std::unique_ptr<DocNode>>& DocTree::SiblingsOf(DocNode* parent)
{
    return parent ? parent->children_ : roots_;
}

DocNode& DocTree::Add(DocNode* relative, Relationship how, const std::string& key, const std::string& text,
                      const std::string& image)
{
    if (!key.empty() && keys_.count(key))
        throw DocTreeError("Key is not unique in collection: " + key);

    auto node = std::make_unique<DocNode>();
    node->key_ = key;
    node->Text = text;
    node->Image = image;
    node->owner_ = this;

    DocNode* parent = nullptr;
    std::size_t at = 0;
    if (!relative) {
        at = roots_.size();
    } else if (how == Relationship::Child) {
        parent = relative;
        at = relative->children_.size();
    } else {
        parent = relative->parent_;
        auto& list = SiblingsOf(parent);
        const std::size_t pos = PositionIn(list, relative);
        switch (how) {
        case Relationship::First: at = 0; break;
        case Relationship::Last: at = list.size(); break;
        case Relationship::Next: at = pos + 1; break;
        case Relationship::Previous: at = pos; break;
        case Relationship::Child: break;
        }
    }
    node->parent_ = parent;
    auto& list = SiblingsOf(parent);
    DocNode& added = *node;
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(at), std::move(node));
    if (!key.empty())
        keys_[key] = &added;
    return added;
}

void DocTree::Unindex(DocNode& node)
{
    if (!node.key_.empty())
        keys_.erase(node.key_);
    if (selected_ == &node)
        selected_ = nullptr;
    for (auto& child : node.children_)
        Unindex(*child);
}

void DocTree::Remove(DocNode& node)
{
    Unindex(node);
    auto& list = SiblingsOf(node.parent_);
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(PositionIn(list, &node)));
}

void DocTree::Clear()
{
    roots_.clear();
    keys_.clear();
    selected_ = nullptr;
}

void DocTree::SetKey(DocNode& node, const std::string& key)
{
    if (key == node.key_)
        return;
    if (!key.empty() && keys_.count(key))
        throw DocTreeError("Key is not unique in collection: " + key);
    if (!node.key_.empty())
        keys_.erase(node.key_);
    node.key_ = key;
    if (!key.empty())
        keys_[key] = &node;
}

DocNode* DocTree::Find(const std::string& key) const
{
    const auto it = keys_.find(key);
    return it == keys_.end() ? nullptr : it->second;
}

DocNode& DocTree::Item(const std::string& key) const
{
    DocNode* node = Find(key);
    if (!node)
        throw DocTreeError("Element not found: " + key);
    return *node;
}

void DocTree::ForEach(const std::function<void(DocNode&)>& visit) const
{
    std::vector<DocNode*> stack;
    for (auto it = roots_.rbegin(); it != roots_.rend(); ++it)
        stack.push_back(it->get());
    while (!stack.empty()) {
        DocNode* n = stack.back();
        stack.pop_back();
        visit(*n);
        for (auto it = n->children_.rbegin(); it != n->children_.rend(); ++it)
            stack.push_back(it->get());
    }
}

std::vector<DocNode*> DocTree::Flat() const
{
    std::vector<DocNode*> all;
    ForEach([&all](DocNode& n) { all.push_back(&n); });
    return all;
}

std::size_t DocTree::Count() const
{
    std::size_t count = 0;
    ForEach([&count](DocNode&) { ++count; });
    return count;
}

std::size_t DocTree::Index(const DocNode& node) const
{
    const auto all = Flat();
    const auto it = std::find(all.begin(), all.end(), &node);
    if (it == all.end())
        throw DocTreeError("node is not in this tree");
    return static_cast<std::size_t>(it - all.begin()) + 1;
}

} // namespace mw
