#include "document/XmlToTreeView.h"

#include "TreeTestKit.h"
#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using mw::Document;
using mw::Relationship;
using mw::ScriptedPrompt;
using mw::test::ChildTexts;
using mw::test::ScratchFolder;
using Texts = std::vector<std::string>;

// Every node as "key kind text", depth-first.
Texts Rows(const Document& doc)
{
    Texts rows;
    for (const mw::DocNode* node : doc.Tree.Flat())
        rows.push_back(node->Key() + ' ' + node->Image + ' ' + node->Text);
    return rows;
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
    Document doc;
    ScriptedPrompt prompt;
    ASSERT_TRUE(Load("<DivXMediaManager menuVersion=\"1\" objectID=\"1\">\n<!-- note -->\n<Media objectID=\"2\">hello"
                     "<!-- <Menuwright a='1'/> --><Title objectID=\"6\" x=\"y\"/><Extra/></Media>\n"
                     "</DivXMediaManager>\n<?pi data?><!--  top  -->",
                     doc, prompt));
    EXPECT_EQ(Rows(doc), (Texts{"k1 divx DivXMediaManager", "a1 prop menuVersion = 1", "a2 objectid objectID = 1",
                                "c1 comment note", "k2 media Media", "a3 objectid objectID = 2", "t4 text hello",
                                "k6 movie Title", "a4 objectid objectID = 6", "a5 prop x = y", "n4 node Extra",
                                "n5 procinstr pi", "c3 comment top"}));
    EXPECT_EQ(doc.Tree.Item("k2").Tag, "<Menuwright a='1'/>");
    EXPECT_EQ(doc.Tree.Item("c1").Tag, "note");
    EXPECT_EQ(doc.NextObjectID, 7);
    EXPECT_TRUE(prompt.Log.empty());
}

TEST(LoadXmlFile, ElementsGetTheirKinds)
{
    Document doc;
    ScriptedPrompt prompt;
    ASSERT_TRUE(Load(R"(<DivXMediaManager objectID="1"><Media objectID="2"><Title objectID="6">
      <MediaSource objectID="7"/><MediaTrack objectID="8" type="video"/><MediaTrack objectID="9" type="Audio"/>
      <MediaTrack objectID="10" type="Subtitle"/><MediaTrack objectID="11" type="other"/><Chapter objectID="12"/>
      </Title><MenuTracks objectID="13"/><Gadget objectID="30"/></Media>
      <TranslationTable objectID="3"><TranslationLookup objectID="4"><Translation objectID="5"/></TranslationLookup>
      </TranslationTable><LanguageMenus objectID="14"><DivXMediaMenu objectID="20">
      <buttonmenu objectID="21"><MenuRectangle objectID="22"/></buttonmenu>
      <ACTION objectID="23"><Whatever objectID="25"/></ACTION></DivXMediaMenu></LanguageMenus></DivXMediaManager>)",
                     doc, prompt));
    const std::pair<const char*, const char*> kinds[] = {
        {"k1", "divx"},       {"k2", "media"},      {"k6", "movie"},     {"k7", "movie"},      {"k8", "movielink"},
        {"k9", "audiolink"},  {"k10", "sublink"},   {"k11", "node"},     {"k12", "chapter"},   {"k13", "menutracks"},
        {"k30", "node"},      {"k3", "transtable"}, {"k4", "translookup"}, {"k5", "trans"},    {"k14", "menulang"},
        {"k20", "menu"},      {"k21", "button"},    {"k22", "menurect"}, {"k23", "action"},    {"k25", "action"},
    };
    for (const auto& [key, kind] : kinds)
        EXPECT_EQ(doc.Tree.Item(key).Image, kind) << key;
    EXPECT_EQ(doc.Tree.Item("k21").Text, "buttonmenu");
}

TEST(LoadXmlFile, NextObjectIDRisesAboveTheGreatestIdentifier)
{
    for (const auto& [before, after] : {std::pair{0L, 13L}, std::pair{13L, 13L}, std::pair{50L, 50L}}) {
        Document doc;
        doc.NextObjectID = before;
        ScriptedPrompt prompt;
        ASSERT_TRUE(Load(R"(<DivXMediaManager objectID="1"><Media objectID="12"/><X objectID="3"/></DivXMediaManager>)",
                         doc, prompt));
        EXPECT_EQ(doc.NextObjectID, after) << "before " << before;
    }
}

TEST(LoadXmlFile, ExtraInfoGoesToTheTagAndOrdinaryCommentsBecomeRows)
{
    Document doc;
    ScriptedPrompt prompt;
    ASSERT_TRUE(Load("<DivXMediaManager objectID=\"1\"><Media objectID=\"2\"><!-- a = b --><!-- <x y=\"1\"/> -->"
                     "<!--<Menuwright second='2'/>--><!-- <a><b></a> --></Media></DivXMediaManager>",
                     doc, prompt));
    const mw::DocNode& media = doc.Tree.Item("k2");
    EXPECT_EQ(media.Tag, "<Menuwright second='2'/>"); // the last one counts
    EXPECT_EQ(ChildTexts(media), (Texts{"objectID = 2", "a = b", "<a><b></a>"}));
    EXPECT_EQ(media.Child(1)->Key(), "c1");
    EXPECT_EQ(media.Child(2)->Key(), "c4");
    EXPECT_EQ(media.Child(2)->Tag, "<a><b></a>");
}

TEST(LoadXmlFile, RefusedFilesLeaveTheDocumentAsItWas)
{
    using testing::StartsWith;
    const std::string notDivX = "Seems that this xml file is not a valid DivX xml file";
    const std::string parse = "Error occured when parsing the XML file\n\nError Code: ";
    const struct {
        std::string Content;
        testing::Matcher<std::string> Text;
        std::string Title;
    } cases[] = {
        {"<?xml version=\"1.0\"?>\n<DivXMediaManager objectID=\"12\"/>", notDivX, ""},
        {"<!-- hi --><DivXMediaManager objectID=\"12\"/>", notDivX, ""},
        {"<Project objectID=\"12\"/>", notDivX, ""},
        {"<!DOCTYPE DivXMediaManager>\n<DivXMediaManager objectID=\"1\"/>", notDivX, ""},
        {"<DivXMediaManager objectID=\"1\"><Media objectID=\"12\"/><Title objectID=\"12\"/></DivXMediaManager>",
         "The file holds two elements with the objectID 12, so it cannot be opened.", ""},
        // Two spellings on one element: every walk expects one identifier per element.
        {"<DivXMediaManager objectID=\"1\"><Title objectID=\"12\" objectid=\"12\"/></DivXMediaManager>",
         "The file holds two elements with the objectID 12, so it cannot be opened.", ""},
        // Lines are counted over CR LF ends.
        {"<DivXMediaManager objectID=\"12\">\r\n\t<Media objectID=\"2\">\r\n\t\t</DivXMediaManager>",
         testing::AllOf(StartsWith(parse), testing::HasSubstr("\nLine Number: 3\n")), "XML Parse Error"},
        {" ", StartsWith(parse), "XML Parse Error"},
        {"<DivXMediaManager objectID=\"1\"/>\n <Media objectID=\"2\" a=\"b\"/>",
         parse + "11\nLine Number: 2\nLine Position: 2\nReason: Only one top level element is allowed\n",
         "XML Parse Error"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Content);
        Document doc;
        doc.Tree.Add(nullptr, Relationship::Last, "k99", "Before", "divx");
        doc.NextObjectID = 5;
        ScriptedPrompt prompt;
        EXPECT_FALSE(Load(c.Content, doc, prompt));
        ASSERT_EQ(prompt.Log.size(), 1u);
        EXPECT_THAT(prompt.Log[0].Text, c.Text);
        EXPECT_EQ(prompt.Log[0].Title, c.Title);
        EXPECT_EQ(Rows(doc), Texts{"k99 divx Before"});
        EXPECT_EQ(doc.NextObjectID, 5);
    }
    // A piece of a project may hold a document type, but never a second root.
    const std::pair<const char*, bool> pieces[] = {
        {"<!DOCTYPE DivXMediaManager>\n<DivXMediaManager objectID=\"1\"/>", true},
        {"<DivXMediaManager objectID=\"1\"/>\n <Media objectID=\"2\" a=\"b\"/>", false}};
    for (const auto& [content, read] : pieces) {
        Document piece;
        ScriptedPrompt quiet;
        EXPECT_EQ(mw::LoadXmlString(content, piece, nullptr, Relationship::Last, quiet), read) << content;
    }
    const ScratchFolder scratch;
    const std::string gone = (scratch.Path() / "gone.xml").string();
    Document doc;
    ScriptedPrompt prompt;
    EXPECT_FALSE(mw::LoadXmlFile(gone, doc, prompt));
    EXPECT_EQ(prompt.Texts(), Texts{"Cannot open the file " + gone + ": No such file or directory."});
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

TEST_F(LoadXmlStringTest, AddsAtTheGivenPlaceAndKeepsTheOrderOfTheFirstLevel)
{
    const struct {
        Relationship How;
        const char* Relative;
        const char* Parent;
        Texts Children;
    } cases[] = {
        {Relationship::Next, "k6", "k2", {"objectID = 2", "Title", "note", "Chapter", "Chapter"}},
        {Relationship::Previous, "k6", "k2", {"objectID = 2", "note", "Chapter", "Title", "Chapter"}},
        {Relationship::Child, "k14", "k14", {"objectID = 14", "note", "Chapter"}},
    };
    for (const auto& c : cases) {
        SetUp();
        ASSERT_TRUE(mw::LoadXmlString("<!-- note --><Chapter objectID=\"40\"><!-- <Menuwright x='1'/> -->"
                                      "<PlayAction objectID=\"41\"/></Chapter>",
                                      doc, doc.Tree.Find(c.Relative), c.How, prompt));
        const mw::DocNode& added = doc.Tree.Item("k40");
        EXPECT_EQ(added.Parent(), doc.Tree.Find(c.Parent));
        EXPECT_EQ(ChildTexts(*added.Parent()), c.Children);
        EXPECT_EQ(added.Image, "chapter"); // also under the Action: no parent rule on the first level
        EXPECT_EQ(added.Tag, "<Menuwright x='1'/>");
        EXPECT_EQ(doc.NextObjectID, 42);
        EXPECT_TRUE(prompt.Log.empty());
    }
}

TEST_F(LoadXmlStringTest, RefusedPiecesAddNothing)
{
    const std::pair<const char*, const char*> cases[] = {
        {"<Chapter objectID=\"40\"><X objectID=\"6\"/></Chapter>",
         "The objectID 6 is already used in the project, so the XML cannot be added."},
        {"<Chapter objectID=\"40\"><X objectID=\"40\"/></Chapter>",
         "The XML holds two elements with the objectID 40, so it cannot be added."},
        {"<Chapter objectID=\"40\"></Title>", "Error occured when parsing the XML file\n\nError Code: "},
    };
    const Texts before = Rows(doc);
    for (const auto& [xml, message] : cases) {
        ScriptedPrompt refused;
        EXPECT_FALSE(mw::LoadXmlString(xml, doc, doc.Tree.Find("k6"), Relationship::Next, refused)) << xml;
        ASSERT_EQ(refused.Texts().size(), 1u);
        EXPECT_THAT(refused.Texts()[0], testing::StartsWith(message));
        EXPECT_EQ(Rows(doc), before) << xml;
        EXPECT_EQ(doc.NextObjectID, 15) << xml;
    }
}

} // namespace
