#include "document/TreeQueries.h"

#include <gtest/gtest.h>

using namespace mw;

namespace {

// An element with the given rows, under parent (or at top level).
DocNode& Element(DocTree& tree, DocNode* parent, const std::string& key, const std::string& text,
                 std::initializer_list<std::string> rows)
{
    DocNode& node = parent ? tree.AddChild(*parent, key, text, "node") : tree.Add(nullptr, Relationship::Last, key, text, "divx");
    for (const auto& row : rows)
        tree.AddChild(node, "", row, "prop");
    return node;
}

std::vector<std::string> ChildTexts(const DocNode& node)
{
    std::vector<std::string> texts;
    for (const auto& child : node)
        texts.push_back(child->Text);
    return texts;
}

} // namespace

TEST(DocTree, KeysAreUniqueAndFollowTheirNode)
{
    DocTree tree;
    DocNode& root = Element(tree, nullptr, "k1", "DivXMediaManager", {"objectID = 1"});
    Element(tree, &root, "k2", "Media", {"objectID = 2"});
    EXPECT_THROW(tree.AddChild(root, "k2", "Other", "node"), DocTreeError);
    EXPECT_THROW(tree.Item("k99"), DocTreeError);
    EXPECT_EQ(tree.Find("k99"), nullptr);

    DocNode& media = tree.Item("k2");
    EXPECT_THROW(tree.SetKey(media, "k1"), DocTreeError);
    tree.SetKey(media, "nk2");
    EXPECT_EQ(tree.Find("k2"), nullptr);
    EXPECT_EQ(tree.Find("nk2"), &media);

    tree.Remove(media);
    EXPECT_EQ(tree.Find("nk2"), nullptr);
    tree.AddChild(root, "nk2", "Again", "node"); // the removed key is free again
}

TEST(DocTree, IndexIsDepthFirstFromOne)
{
    DocTree tree;
    DocNode& root = Element(tree, nullptr, "k1", "Root", {"objectID = 1"});
    DocNode& a = Element(tree, &root, "k2", "A", {"objectID = 2"});
    DocNode& b = Element(tree, &root, "k3", "B", {"objectID = 3"});
    EXPECT_EQ(tree.Index(root), 1u);
    EXPECT_EQ(tree.Index(*root.FirstChild()), 2u);
    EXPECT_EQ(tree.Index(a), 3u);
    EXPECT_EQ(tree.Index(*a.FirstChild()), 4u);
    EXPECT_EQ(tree.Index(b), 5u);
    EXPECT_EQ(tree.Count(), 6u);
}

TEST(DocTree, InsertPlacesFollowTheRelationship)
{
    DocTree tree;
    DocNode& root = Element(tree, nullptr, "k1", "Root", {"b"});
    DocNode& b = *root.FirstChild();
    tree.Add(&b, Relationship::Previous, "", "a", "prop");
    tree.Add(&b, Relationship::Next, "", "c", "prop");
    tree.Add(&b, Relationship::First, "", "first", "prop");
    tree.Add(&b, Relationship::Last, "", "last", "prop");
    EXPECT_EQ(ChildTexts(root), (std::vector<std::string>{"first", "a", "b", "c", "last"}));
    EXPECT_EQ(b.Previous()->Text, "a");
    EXPECT_EQ(b.Next()->Text, "c");
    EXPECT_EQ(root.Next(), nullptr);
}

TEST(DocTree, MovedTreeKeepsWorking)
{
    DocTree tree;
    DocNode& root = Element(tree, nullptr, "k1", "Root", {"objectID = 1"});
    DocTree moved = std::move(tree);
    EXPECT_TRUE(tree.Empty());
    EXPECT_EQ(moved.Find("k1"), &root);
    EXPECT_EQ(root.FirstChild()->Next(), nullptr); // sibling walks reach the new owner
    moved.Add(nullptr, Relationship::Last, "c1", "top comment", "comment");
    EXPECT_EQ(root.Next()->Text, "top comment");
}

TEST(TreeQueries, GetPropertyMatchesByPrefixFirstRowWins)
{
    DocTree tree;
    DocNode& node = Element(tree, nullptr, "k1", "X",
                            {"topMargin = 4", "top = 10", "location = C:\\a=b.avi", "bare", "empty ="});
    EXPECT_EQ(GetPropertyInNode(node, "top"), "4");
    EXPECT_EQ(GetPropertyInNode(node, "TOP"), "4");
    EXPECT_EQ(GetPropertyInNode(node, "location"), "C:\\a=b.avi");
    EXPECT_EQ(GetPropertyInNode(node, "bare"), "bare"); // a row without "=" yields its text
    EXPECT_EQ(GetPropertyInNode(node, "empty"), "");
    EXPECT_EQ(GetPropertyInNode(node, "missing"), "");
}

TEST(TreeQueries, UpdatePropertyChangesRemovesAndAdds)
{
    DocTree tree;
    DocNode& node = Element(tree, nullptr, "k1", "ButtonMenu", {"objectID = 1", "OVERLAYID = 5"});

    EXPECT_TRUE(UpdatePropertyInNode(tree, node, "overlayID", "7", false));
    EXPECT_EQ(node.Child(1)->Text, "overlayID = 7"); // written in the caller's case

    EXPECT_TRUE(UpdatePropertyInNode(tree, node, "overlayID", kNoneMarker, true));
    EXPECT_EQ(ChildTexts(node), (std::vector<std::string>{"objectID = 1"}));
    EXPECT_FALSE(UpdatePropertyInNode(tree, node, "overlayID", kNoneMarker, true));
    EXPECT_FALSE(UpdatePropertyInNode(tree, node, "upAction", "3", false));
    EXPECT_EQ(node.ChildCount(), 1u);
}

TEST(TreeQueries, NewRowStandsBehindLastLeafBeforeFirstElement)
{
    DocTree tree;
    DocNode& plain = Element(tree, nullptr, "k1", "A", {"objectID = 1", "x = 1"});
    Element(tree, &plain, "k2", "Child", {"objectID = 2"});
    tree.AddChild(plain, "", "late = 1", "prop");
    EXPECT_TRUE(UpdatePropertyInNode(tree, plain, "new", "v", true));
    EXPECT_EQ(ChildTexts(plain), (std::vector<std::string>{"objectID = 1", "x = 1", "new = v", "Child", "late = 1"}));

    // When the first child is an element, the new row goes behind it, as second child.
    DocNode& first = Element(tree, nullptr, "k3", "B", {});
    Element(tree, &first, "k4", "Child", {"objectID = 4"});
    tree.AddChild(first, "", "objectID = 3", "objectid");
    EXPECT_TRUE(UpdatePropertyInNode(tree, first, "new", "v", true));
    EXPECT_EQ(ChildTexts(first), (std::vector<std::string>{"Child", "new = v", "objectID = 3"}));

    // An element without any children cannot gain a row this way.
    DocNode& bare = Element(tree, nullptr, "k5", "C", {});
    EXPECT_FALSE(UpdatePropertyInNode(tree, bare, "new", "v", true));
    EXPECT_EQ(bare.ChildCount(), 0u);
}

TEST(TreeQueries, IdentifierCollections)
{
    DocTree tree;
    DocNode& media = Element(tree, nullptr, "k2", "Media", {"objectID = 2"});
    Element(tree, &media, "k6", "Title", {"objectID = 6"});
    Element(tree, &media, "k9", "title", {"ObjectID =  9 "});
    Element(tree, &media, "k10", "MenuTracks", {"objectID = 10"});

    EXPECT_EQ(GetAllNodesInNode(media, "TITLE"), (IdList{"6", "9"}));
    EXPECT_FALSE(GetAllNodesInNode(media, "Chapter").has_value()); // nothing, not an empty list
    EXPECT_EQ(GetAllNodesInNodeAll(media), (IdList{"6", "9", "10"}));
    EXPECT_EQ(Get1NodeInNode(media, "Title"), "9"); // the last match wins
    EXPECT_EQ(Get1NodeInNode(media, "Chapter"), "");

    DocNode& leafOnly = Element(tree, nullptr, "k20", "Leafy", {"objectID = 20"});
    EXPECT_FALSE(GetAllNodesInNodeAll(leafOnly).has_value());

    Element(tree, &media, "", "Title", {"objectID = 6"});
    EXPECT_THROW(GetAllNodesInNode(media, "Title"), DocTreeError);
}

TEST(TreeQueries, FindInTreeFindsLeavesOnlyDepthFirst)
{
    DocTree tree;
    DocNode& root = Element(tree, nullptr, "k1", "Root", {"objectID = 1"});
    DocNode& menu = Element(tree, &root, "k2", "DivXMediaMenu", {"objectID = 2"});
    Element(tree, &menu, "k3", "ButtonMenu", {"objectID = 3", "Action"});

    DocNode* found = nullptr;
    EXPECT_TRUE(FindInTree(root, "OBJECTID = 3", found));
    EXPECT_EQ(found, tree.Item("k3").FirstChild());
    found = nullptr;
    EXPECT_TRUE(FindInTree(root, "action", found));
    EXPECT_EQ(found->Parent(), &tree.Item("k3"));
    found = nullptr;
    EXPECT_FALSE(FindInTree(root, "ButtonMenu", found));
    EXPECT_EQ(found, nullptr);
}

TEST(TreeQueries, GetParentNodeClimbsFromRows)
{
    DocTree tree;
    DocNode& root = Element(tree, nullptr, "k1", "Root", {"objectID = 1"});
    EXPECT_EQ(GetParentNode(tree), nullptr);
    tree.Select(root.FirstChild());
    EXPECT_EQ(GetParentNode(tree), &root);
    tree.Select(&root);
    EXPECT_EQ(GetParentNode(tree), &root);
}

TEST(TreeQueries, ButtonRectangleGoesBackToTheTree)
{
    DocTree tree;
    DocNode& button = Element(tree, nullptr, "k12", "ButtonMenu", {"objectID = 12"});
    Element(tree, &button, "k13", "menuRectangle",
            {"objectID = 13", "LEFT = 1", "Top = 2", "widthX = 3", "height = 4"});

    EXPECT_TRUE(UpDateTree(tree, {"12", 10, 20, 30, 40}));
    EXPECT_EQ(ChildTexts(tree.Item("k13")),
              (std::vector<std::string>{"objectID = 13", "left = 10", "top = 20", "width = 30", "height = 40"}));
    EXPECT_FALSE(UpDateTree(tree, {"99", 0, 0, 0, 0}));

    std::vector<PropGridRow> grid = {{"", ""},           {"objectID", "12"}, {"upAction", "5"},
                                     {"downAction", "6"}, {"missing", "1"},   {"", ""},
                                     {"", ""},           {"ignored", "x"}};
    tree.AddChild(button, "", "upAction = none", "prop");
    tree.AddChild(button, "", "downAction = none", "prop");
    UpdateTreeFromProp(tree, "12", grid);
    // Rows 2 to 6 only; a name the node lacks is not added; an empty name matches the first row.
    EXPECT_EQ(ChildTexts(button),
              (std::vector<std::string>{" = ", "menuRectangle", "upAction = 5", "downAction = 6"}));
}
