#include "document/SimpleTree.h"
#include "document/TreeQueries.h"

#include "TreeTestKit.h"

#include <gtest/gtest.h>

using namespace mw;
using mw::test::ChildTexts;
using mw::test::Element;
using Texts = std::vector<std::string>;

TEST(DocTree, KeysAreUniqueAndFollowTheirNode)
{
    DocTree tree;
    DocNode& root = Element(tree, nullptr, 1, "DivXMediaManager");
    DocNode& media = Element(tree, &root, 2, "Media");
    EXPECT_THROW(tree.AddChild(root, "k2", "Other", "node"), DocTreeError);
    EXPECT_THROW(tree.Item("k99"), DocTreeError);
    EXPECT_THROW(tree.SetKey(media, "k1"), DocTreeError);
    tree.SetKey(media, "nk2");
    EXPECT_EQ(tree.Find("k2"), nullptr);
    EXPECT_EQ(tree.Find("nk2"), &media);

    tree.Remove(media);
    EXPECT_EQ(tree.Find("nk2"), nullptr);
    tree.AddChild(root, "nk2", "Again", "node"); // the removed key is free again
}

TEST(DocTree, IndexIsDepthFirstAndInsertsFollowTheRelationship)
{
    DocTree tree;
    DocNode& root = Element(tree, nullptr, 1, "Root");
    DocNode& a = Element(tree, &root, 2, "A");
    DocNode& b = Element(tree, &root, 3, "B");
    EXPECT_EQ(tree.Index(root), 1u);
    EXPECT_EQ(tree.Index(a), 3u);
    EXPECT_EQ(tree.Index(*a.FirstChild()), 4u);
    EXPECT_EQ(tree.Index(b), 5u);
    EXPECT_EQ(tree.Count(), 6u);

    DocNode& row = *b.FirstChild();
    tree.Add(&row, Relationship::Previous, "", "before", "prop");
    tree.Add(&row, Relationship::Next, "", "after", "prop");
    tree.Add(&row, Relationship::First, "", "first", "prop");
    tree.Add(&row, Relationship::Last, "", "last", "prop");
    EXPECT_EQ(ChildTexts(b), (Texts{"first", "before", "objectID = 3", "after", "last"}));
    EXPECT_EQ(row.Previous()->Text, "before");
    EXPECT_EQ(root.Next(), nullptr);
}

TEST(TreeQueries, GetPropertyMatchesByPrefixFirstRowWins)
{
    DocTree tree;
    DocNode& node = Element(tree, nullptr, 1, "X", {"topMargin = 4", "top = 10", "location = C:\\a=b.avi", "bare"});
    EXPECT_EQ(GetPropertyInNode(node, "TOP"), "4");
    EXPECT_EQ(GetPropertyInNode(node, "location"), "C:\\a=b.avi");
    EXPECT_EQ(GetPropertyInNode(node, "bare"), "bare"); // a row without "=" yields its text
    EXPECT_EQ(GetPropertyInNode(node, "missing"), "");
}

TEST(TreeQueries, UpdatePropertyChangesRemovesAndAddsBehindTheLastLeafBeforeTheFirstElement)
{
    DocTree tree;
    DocNode& node = Element(tree, nullptr, 1, "ButtonMenu", {"OVERLAYID = 5"});
    EXPECT_TRUE(UpdatePropertyInNode(tree, node, "overlayID", "7", false));
    EXPECT_EQ(node.Child(1)->Text, "overlayID = 7"); // written in the caller's case
    EXPECT_TRUE(UpdatePropertyInNode(tree, node, "overlayID", kNoneMarker, true));
    EXPECT_FALSE(UpdatePropertyInNode(tree, node, "overlayID", kNoneMarker, true));
    EXPECT_FALSE(UpdatePropertyInNode(tree, node, "upAction", "3", false));
    EXPECT_EQ(ChildTexts(node), Texts{"objectID = 1"});

    Element(tree, &node, 2, "Child");
    tree.AddChild(node, "", "late = 1", "prop");
    EXPECT_TRUE(UpdatePropertyInNode(tree, node, "new", "v", true));
    EXPECT_EQ(ChildTexts(node), (Texts{"objectID = 1", "new = v", "Child", "late = 1"}));

    // When the first child is an element, the new row goes behind it, as second child.
    DocNode& first = tree.Add(nullptr, Relationship::Last, "k3", "B", "node");
    Element(tree, &first, 4, "Child");
    tree.AddChild(first, "", "objectID = 3", "objectid");
    EXPECT_TRUE(UpdatePropertyInNode(tree, first, "new", "v", true));
    EXPECT_EQ(ChildTexts(first), (Texts{"Child", "new = v", "objectID = 3"}));

    // An element without any children cannot gain a row this way.
    DocNode& bare = tree.Add(nullptr, Relationship::Last, "k5", "C", "node");
    EXPECT_FALSE(UpdatePropertyInNode(tree, bare, "new", "v", true));
    EXPECT_EQ(bare.ChildCount(), 0u);
}

TEST(TreeQueries, IdentifierCollections)
{
    DocTree tree;
    DocNode& media = Element(tree, nullptr, 2, "Media");
    Element(tree, &media, 6, "Title");
    tree.AddChild(tree.AddChild(media, "k9", "title", "node"), "", "ObjectID =  9 ", "objectid");
    Element(tree, &media, 10, "MenuTracks");

    EXPECT_EQ(GetAllNodesInNode(media, "TITLE"), (IdList{"6", "9"}));
    EXPECT_FALSE(GetAllNodesInNode(media, "Chapter").has_value()); // nothing, not an empty list
    EXPECT_EQ(GetAllNodesInNodeAll(media), (IdList{"6", "9", "10"}));
    EXPECT_EQ(Get1NodeInNode(media, "Title"), "9"); // the last match wins
    EXPECT_EQ(Get1NodeInNode(media, "Chapter"), "");
    EXPECT_FALSE(GetAllNodesInNodeAll(*media.Child(1)).has_value());

    tree.AddChild(tree.AddChild(media, "", "Title", "node"), "", "objectID = 6", "objectid");
    EXPECT_THROW(GetAllNodesInNode(media, "Title"), DocTreeError);
}

TEST(TreeQueries, FindInTreeFindsLeavesOnlyAndParentNodeClimbsFromRows)
{
    DocTree tree;
    DocNode& root = Element(tree, nullptr, 1, "Root");
    DocNode& button = Element(tree, &Element(tree, &root, 2, "DivXMediaMenu"), 3, "ButtonMenu", {"Action"});

    DocNode* found = nullptr;
    EXPECT_TRUE(FindInTree(root, "OBJECTID = 3", found));
    EXPECT_EQ(found, button.FirstChild());
    EXPECT_TRUE(FindInTree(root, "action", found));
    EXPECT_EQ(found, button.Child(1));
    found = nullptr;
    EXPECT_FALSE(FindInTree(root, "ButtonMenu", found));
    EXPECT_EQ(found, nullptr);

    EXPECT_EQ(GetParentNode(tree), nullptr);
    tree.Select(button.FirstChild());
    EXPECT_EQ(GetParentNode(tree), &button);
    tree.Select(&root);
    EXPECT_EQ(GetParentNode(tree), &root);
}

TEST(TreeQueries, ButtonRectangleGoesBackToTheTree)
{
    DocTree tree;
    DocNode& button = Element(tree, nullptr, 12, "ButtonMenu");
    DocNode& rect = Element(tree, &button, 13, "menuRectangle", {"LEFT = 1", "Top = 2", "widthX = 3", "height = 4"});

    EXPECT_TRUE(UpDateTree(tree, {"12", 10, 20, 30, 40}));
    EXPECT_EQ(ChildTexts(rect), (Texts{"objectID = 13", "left = 10", "top = 20", "width = 30", "height = 40"}));
    EXPECT_FALSE(UpDateTree(tree, {"99", 0, 0, 0, 0}));

    const std::vector<PropGridRow> grid = {{"", ""}, {"objectID", "12"}, {"upAction", "5"}, {"downAction", "6"},
                                           {"missing", "1"}, {"", ""}, {"", ""}, {"ignored", "x"}};
    tree.AddChild(button, "", "upAction = none", "prop");
    tree.AddChild(button, "", "downAction = none", "prop");
    UpdateTreeFromProp(tree, "12", grid);
    // Rows 2 to 6 only; a name the node lacks is not added; an empty name matches the first row.
    EXPECT_EQ(ChildTexts(button), (Texts{" = ", "menuRectangle", "upAction = 5", "downAction = 6"}));
}

namespace {

// The texts of rows of the simple tree.
Texts RowTexts(const std::vector<SimpleRow>& rows)
{
    Texts texts;
    for (const SimpleRow& row : rows)
        texts.push_back(row.Text);
    return texts;
}

void Track(DocTree& tree, DocNode& owner, long id, const std::vector<std::string>& rows)
{
    Element(tree, &owner, id, "MediaTrack", rows);
}

TEST(SimpleTreeTest, TitlesWithChaptersAndTracks)
{
    EXPECT_TRUE(LoadToSimple(DocTree{}).empty());
    DocTree tree;
    DocNode& root = Element(tree, nullptr, 1, "DivXMedia");
    DocNode& table = Element(tree, &root, 2, "TranslationTable");
    DocNode& lookup = Element(tree, &table, 3, "TranslationLookup");
    Element(tree, &lookup, 4, "Translation", {"languageCode = en", "value = Holiday"});
    DocNode& media = Element(tree, &root, 5, "Media");
    DocNode& title = Element(tree, &media, 6, "Title", {"translationLookupID = 3"});
    Element(tree, &title, 7, "MediaSource", {"location = holiday.avi"});
    Track(tree, title, 8, {"trackID = 01wb", "type = audio"});
    DocNode& chapter = Element(tree, &title, 9, "Chapter");
    Track(tree, chapter, 10, {"trackID = 00dc", "startFrame = 0", "endFrame = 99", "type = video"});
    Track(tree, chapter, 11, {"trackID = 01wb", "type = audio"});
    Track(tree, chapter, 12, {"trackID = 02wb", "type = Audio"});
    Track(tree, chapter, 13, {"trackID = 03sb", "type = subtitle"});
    Element(tree, &media, 14, "Title", {"translationLookupID = 99"});

    const std::vector<SimpleRow> rows = LoadToSimple(tree);
    ASSERT_EQ(rows.size(), 1u);
    ASSERT_EQ(rows[0].Children.size(), 2u);
    const SimpleRow& first = rows[0].Children[0];
    EXPECT_EQ(first.Key, "k6");
    EXPECT_EQ(first.Text, "Title 1Holiday");
    EXPECT_EQ(RowTexts(first.Children),
              (Texts{"location = holiday.avi", "description = Holiday", "Chapters", "Audio 1 = 01wb"}));
    const SimpleRow& chapterRow = first.Children[2].Children.at(0);
    EXPECT_EQ(chapterRow.Key, "k9");
    EXPECT_EQ(RowTexts(chapterRow.Children), (Texts{"startFrame = 0", "endFrame = 99", "Audio 1 = 01wb",
                                                                     "Audio 2 = 02wb", "Subtitle 1 = 03sb"}));
    // A lookup that is not there leaves the name empty, and a title without source no location.
    EXPECT_EQ(rows[0].Children[1].Text, "Title 2");
    EXPECT_EQ(RowTexts(rows[0].Children[1].Children), (Texts{"description = ", "Chapters"}));
}

TEST(SimpleTreeTest, LanguageSetsMenusAndButtonsLeadBackToTheirNodes)
{
    DocTree tree;
    DocNode& root = Element(tree, nullptr, 1, "DivXMedia");
    DocNode& empty = Element(tree, &root, 2, "LanguageMenus", {"languageCode = de"});
    empty.Image = "menulang";
    DocNode& set = Element(tree, &root, 3, "LanguageMenus", {"languageCode = en"});
    DocNode& menu = Element(tree, &set, 4, "DivXMediaMenu", {"menuName = Main", "menuType = root"});
    Element(tree, &menu, 17, "ButtonMenu");

    const std::vector<SimpleRow> rows = LoadToSimple(tree);
    EXPECT_EQ(RowTexts(rows), (Texts{"Titles", "Menus (de)", "Menus (en)"}));
    EXPECT_TRUE(rows[0].Children.empty());
    EXPECT_EQ(rows[1].Icon, "menulang");
    EXPECT_TRUE(rows[1].Children.empty());
    const SimpleRow& menuRow = rows[2].Children.at(0);
    EXPECT_EQ(menuRow.Text, "Menu Main (root)");
    EXPECT_EQ(menuRow.Children.at(0).Text, "Button 17");

    EXPECT_EQ(SimpleRowTarget(rows[1]), "k2");
    EXPECT_EQ(SimpleRowTarget(menuRow), "k4");
    EXPECT_EQ(SimpleRowTarget(menuRow.Children[0]), "k17");
    EXPECT_EQ(SimpleRowTarget(rows[0]), "");
    EXPECT_EQ(SimpleRowTarget({"k9", "Chapter 1", "chapter", {}}), "");
}

} // namespace
