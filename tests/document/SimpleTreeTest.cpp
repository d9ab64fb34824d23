#include "document/SimpleTree.h"

#include "TreeTestKit.h"

#include <gtest/gtest.h>

namespace mw {
namespace {

using test::Element;

std::vector<std::string> Texts(const std::vector<SimpleRow>& rows)
{
    std::vector<std::string> texts;
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
    EXPECT_EQ(Texts(first.Children),
              (std::vector<std::string>{"location = holiday.avi", "description = Holiday", "Chapters", "Audio 1 = 01wb"}));
    const SimpleRow& chapterRow = first.Children[2].Children.at(0);
    EXPECT_EQ(chapterRow.Key, "k9");
    EXPECT_EQ(Texts(chapterRow.Children), (std::vector<std::string>{"startFrame = 0", "endFrame = 99", "Audio 1 = 01wb",
                                                                     "Audio 2 = 02wb", "Subtitle 1 = 03sb"}));
    // A lookup that is not there leaves the name empty, and a title without source no location.
    EXPECT_EQ(rows[0].Children[1].Text, "Title 2");
    EXPECT_EQ(Texts(rows[0].Children[1].Children), (std::vector<std::string>{"description = ", "Chapters"}));
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
    EXPECT_EQ(Texts(rows), (std::vector<std::string>{"Titles", "Menus (de)", "Menus (en)"}));
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

TEST(SimpleTreeTest, EmptyDocumentHasNoRows)
{
    EXPECT_TRUE(LoadToSimple(DocTree{}).empty());
}

} // namespace
} // namespace mw
