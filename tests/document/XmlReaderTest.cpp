#include "document/XmlToTreeView.h"

#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using mw::DocNode;
using mw::Document;
using mw::Relationship;
using mw::ScriptedPrompt;
using mw::test::ScratchFolder;

struct Row {
    std::string Key;
    std::string Kind;
    std::string Text;
    bool operator==(const Row&) const = default;
};

std::ostream& operator<<(std::ostream& os, const Row& r)
{
    return os << "{" << r.Key << ", " << r.Kind << ", " << r.Text << "}";
}

std::vector<Row> Rows(const Document& doc)
{
    std::vector<Row> rows;
    for (const DocNode* node : doc.Tree.Flat())
        rows.push_back({node->Key(), node->Image, node->Text});
    return rows;
}

std::vector<std::string> ChildTexts(const DocNode& node)
{
    std::vector<std::string> texts;
    for (const auto& child : node)
        texts.push_back(child->Text);
    return texts;
}

bool Load(const std::string& xml, Document& doc, ScriptedPrompt& prompt)
{
    const ScratchFolder scratch;
    return mw::LoadXmlFile(scratch.Write("p.xml", xml).string(), doc, prompt);
}

TEST(LoadXmlFile, CountersGiveKeysInReadOrder)
{
    // Worked out by hand: the text counter also moves once after each attribute, the comment
    // counter moves for extra info that adds no row.
    const std::string xml = "<DivXMediaManager menuVersion=\"1\" objectID=\"1\">\n"
                            "<!-- note -->\n"
                            "<Media objectID=\"2\">hello<!-- <Menuwright a='1'/> --><Title objectID=\"6\" x=\"y\"/>"
                            "<Extra/></Media>\n"
                            "</DivXMediaManager>\n"
                            "<?pi data?><!--  top  -->";
    Document doc;
    ScriptedPrompt prompt;
    ASSERT_TRUE(Load(xml, doc, prompt));
    const std::vector<Row> expected{
        {"k1", "divx", "DivXMediaManager"}, {"a1", "prop", "menuVersion = 1"}, {"a2", "objectid", "objectID = 1"},
        {"c1", "comment", "note"},          {"k2", "media", "Media"},          {"a3", "objectid", "objectID = 2"},
        {"t4", "text", "hello"},            {"k6", "movie", "Title"},          {"a4", "objectid", "objectID = 6"},
        {"a5", "prop", "x = y"},            {"n4", "node", "Extra"},           {"n5", "procinstr", "pi"},
        {"c3", "comment", "top"},
    };
    EXPECT_EQ(Rows(doc), expected);
    EXPECT_EQ(doc.Tree.Item("k2").Tag, "<Menuwright a='1'/>");
    EXPECT_EQ(doc.Tree.Item("c1").Tag, "note");
    EXPECT_EQ(doc.NextObjectID, 7);
    EXPECT_TRUE(prompt.Log.empty());
}

TEST(LoadXmlFile, ElementsGetTheirKinds)
{
    const std::string xml = R"(<DivXMediaManager objectID="1">
  <TranslationTable objectID="3"><TranslationLookup objectID="4"><Translation objectID="5"/></TranslationLookup></TranslationTable>
  <Media objectID="2">
    <Title objectID="6">
      <MediaSource objectID="7"/>
      <MediaTrack objectID="8" type="video"/><MediaTrack objectID="9" type="Audio"/>
      <MediaTrack objectID="10" type="Subtitle"/><MediaTrack objectID="11" type="other"/>
      <Chapter objectID="12"/>
    </Title>
    <MenuTracks objectID="13"/><Gadget objectID="30"/>
  </Media>
  <LanguageMenus objectID="14"><DivXMediaMenu objectID="20">
    <buttonmenu objectID="21"><MenuRectangle objectID="22"/></buttonmenu>
    <ACTION objectID="23"><PlayAction objectID="24"/><Whatever objectID="25"/></ACTION>
  </DivXMediaMenu></LanguageMenus>
</DivXMediaManager>)";
    Document doc;
    ScriptedPrompt prompt;
    ASSERT_TRUE(Load(xml, doc, prompt));
    const std::vector<std::pair<std::string, std::string>> kinds{
        {"k1", "divx"},        {"k3", "transtable"}, {"k4", "translookup"}, {"k5", "trans"},    {"k2", "media"},
        {"k6", "movie"},       {"k7", "movie"},      {"k8", "movielink"},   {"k9", "audiolink"}, {"k10", "sublink"},
        {"k11", "node"},       {"k12", "chapter"},   {"k13", "menutracks"}, {"k30", "node"},     {"k14", "menulang"},
        {"k20", "menu"},       {"k21", "button"},    {"k22", "menurect"},   {"k23", "action"},   {"k24", "action"},
        {"k25", "action"},
    };
    for (const auto& [key, kind] : kinds)
        EXPECT_EQ(doc.Tree.Item(key).Image, kind) << key;
    EXPECT_EQ(doc.Tree.Item("k21").Text, "buttonmenu");
    EXPECT_EQ(doc.Tree.Item("k10").FirstChild()->Image, "objectid");
    EXPECT_EQ(doc.Tree.Item("k10").LastChild()->Text, "type = Subtitle");
}

TEST(LoadXmlFile, NextObjectIDRisesAboveTheGreatestIdentifier)
{
    struct Case {
        long Before;
        long After;
    };
    for (const Case c : {Case{0, 13}, Case{12, 13}, Case{13, 13}, Case{50, 50}}) {
        Document doc;
        doc.NextObjectID = c.Before;
        ScriptedPrompt prompt;
        ASSERT_TRUE(Load(R"(<DivXMediaManager objectID="1"><Media objectID="12"/><X objectID="3"/></DivXMediaManager>)",
                         doc, prompt));
        EXPECT_EQ(doc.NextObjectID, c.After) << "before " << c.Before;
    }
}

TEST(LoadXmlFile, ExtraInfoGoesToTheTagAndOrdinaryCommentsBecomeRows)
{
    const std::string xml = "<DivXMediaManager objectID=\"1\"><Media objectID=\"2\">"
                            "<!-- a = b --><!-- <x y=\"1\"/> --><!--<Menuwright second='2'/>--><!-- <a><b></a> -->"
                            "</Media></DivXMediaManager>";
    Document doc;
    ScriptedPrompt prompt;
    ASSERT_TRUE(Load(xml, doc, prompt));
    const DocNode& media = doc.Tree.Item("k2");
    EXPECT_EQ(media.Tag, "<Menuwright second='2'/>");
    EXPECT_EQ(ChildTexts(media), (std::vector<std::string>{"objectID = 2", "a = b", "<a><b></a>"}));
    EXPECT_EQ(media.Child(1)->Key(), "c1");
    EXPECT_EQ(media.Child(1)->Image, "comment");
    EXPECT_EQ(media.Child(2)->Key(), "c4");
    EXPECT_EQ(media.Child(2)->Tag, "<a><b></a>");
}

struct Refusal {
    const char* Name;
    std::string Content;
    std::string Text;
    std::string Title;
};

TEST(LoadXmlFile, RefusedFilesLeaveTheDocumentAsItWas)
{
    const std::string notDivX = "Seems that this xml file is not a valid DivX xml file";
    const std::vector<Refusal> cases{
        {"declaration", "<?xml version=\"1.0\"?>\n<DivXMediaManager objectID=\"12\"/>", notDivX, ""},
        {"leading comment", "<!-- hi --><DivXMediaManager objectID=\"12\"/>", notDivX, ""},
        {"other root", "<Project objectID=\"12\"/>", notDivX, ""},
        {"duplicate objectID",
         "<DivXMediaManager objectID=\"1\"><Media objectID=\"12\"/><Title objectID=\"12\"/></DivXMediaManager>",
         "The file holds two elements with the objectID 12, so it cannot be opened.", ""},
        {"tag mismatch", "<DivXMediaManager objectID=\"12\">\r\n\t<Media objectID=\"2\">\r\n\t\t</DivXMediaManager>",
         "Error occured when parsing the XML file\n\nError Code: 14\nLine Number: 3\nLine Position: 5\n"
         "Reason: Start-end tags mismatch\n",
         "XML Parse Error"},
        {"empty file", " ",
         "Error occured when parsing the XML file\n\nError Code: 16\nLine Number: 1\nLine Position: 2\n"
         "Reason: No document element found\n",
         "XML Parse Error"},
    };
    for (const Refusal& c : cases) {
        Document doc;
        doc.Tree.Add(nullptr, Relationship::Last, "k99", "Before", "divx");
        doc.NextObjectID = 5;
        ScriptedPrompt prompt;
        EXPECT_FALSE(Load(c.Content, doc, prompt)) << c.Name;
        ASSERT_EQ(prompt.Log.size(), 1u) << c.Name;
        EXPECT_EQ(prompt.Log[0].Text, c.Text) << c.Name;
        EXPECT_EQ(prompt.Log[0].Title, c.Title) << c.Name;
        EXPECT_EQ(Rows(doc), (std::vector<Row>{{"k99", "divx", "Before"}})) << c.Name;
        EXPECT_EQ(doc.NextObjectID, 5) << c.Name;
    }
}

TEST(LoadXmlFile, MissingFileIsNamed)
{
    const ScratchFolder scratch;
    const std::string path = (scratch.Path() / "gone.xml").string();
    Document doc;
    ScriptedPrompt prompt;
    EXPECT_FALSE(mw::LoadXmlFile(path, doc, prompt));
    EXPECT_EQ(prompt.Texts(), std::vector<std::string>{"Cannot open the file " + path + ": No such file or directory."});
}

class LoadXmlStringTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(Load("<DivXMediaManager objectID=\"1\"><Media objectID=\"2\"><Title objectID=\"6\"/>"
                         "<Chapter objectID=\"7\"/></Media><Action objectID=\"14\"/></DivXMediaManager>",
                         doc, prompt));
    }
    Document doc;
    ScriptedPrompt prompt;
};

TEST_F(LoadXmlStringTest, AddsAtTheGivenPlace)
{
    struct Case {
        Relationship How;
        const char* Relative;
        const char* Parent;
        std::vector<std::string> Children;
    };
    const std::vector<Case> cases{
        {Relationship::Next, "k6", "k2", {"objectID = 2", "Title", "Chapter", "Chapter"}},
        {Relationship::Previous, "k6", "k2", {"objectID = 2", "Chapter", "Title", "Chapter"}},
        {Relationship::Child, "k14", "k14", {"objectID = 14", "Chapter"}},
    };
    for (const Case& c : cases) {
        SetUp();
        const std::string xml = "<Chapter objectID=\"40\" translationLookupID=\"4\"><!-- <Menuwright x='1'/> -->"
                                "<PlayAction objectID=\"41\"/></Chapter>";
        ASSERT_TRUE(mw::LoadXmlString(xml, doc, doc.Tree.Find(c.Relative), c.How, prompt));
        const DocNode& added = doc.Tree.Item("k40");
        EXPECT_EQ(added.Parent(), doc.Tree.Find(c.Parent));
        EXPECT_EQ(ChildTexts(*added.Parent()), c.Children);
        EXPECT_EQ(added.Image, "chapter");
        EXPECT_EQ(added.Tag, "<Menuwright x='1'/>");
        EXPECT_EQ(doc.Tree.Item("k41").Image, "node");
        EXPECT_EQ(doc.NextObjectID, 42);
        EXPECT_TRUE(prompt.Log.empty());
    }
}

TEST_F(LoadXmlStringTest, FirstLevelHasNoParentRuleAndKeepsItsOrder)
{
    ASSERT_TRUE(mw::LoadXmlString("<!-- note --><PlayAction objectID=\"42\"/>", doc, doc.Tree.Find("k14"),
                                  Relationship::Child, prompt));
    EXPECT_EQ(ChildTexts(doc.Tree.Item("k14")), (std::vector<std::string>{"objectID = 14", "note", "PlayAction"}));
    EXPECT_EQ(doc.Tree.Item("k42").Image, "node");
    ASSERT_TRUE(mw::LoadXmlString("<!-- a --><Chapter objectID=\"43\"/>", doc, doc.Tree.Find("k6"),
                                  Relationship::Next, prompt));
    EXPECT_EQ(ChildTexts(doc.Tree.Item("k2")),
              (std::vector<std::string>{"objectID = 2", "Title", "a", "Chapter", "Chapter"}));
}

TEST_F(LoadXmlStringTest, RefusedPiecesAddNothing)
{
    const std::vector<std::pair<std::string, std::string>> cases{
        {"<Chapter objectID=\"40\"><X objectID=\"6\"/></Chapter>",
         "The objectID 6 is already used in the project, so the XML cannot be added."},
        {"<Chapter objectID=\"40\"><X objectID=\"40\"/></Chapter>",
         "The XML holds two elements with the objectID 40, so it cannot be added."},
        {"<Chapter objectID=\"40\"></Title>", "Error occured when parsing the XML file\n\nError Code: 14\n"
                                              "Line Number: 1\nLine Position: 26\nReason: Start-end tags mismatch\n"},
    };
    const std::vector<Row> before = Rows(doc);
    for (const auto& [xml, message] : cases) {
        ScriptedPrompt refused;
        EXPECT_FALSE(mw::LoadXmlString(xml, doc, doc.Tree.Find("k6"), Relationship::Next, refused)) << xml;
        EXPECT_EQ(refused.Texts(), std::vector<std::string>{message});
        EXPECT_EQ(Rows(doc), before) << xml;
        EXPECT_EQ(doc.NextObjectID, 15) << xml;
    }
}

} // namespace
