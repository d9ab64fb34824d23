// The project file read into the tree, the tree written back, and the round trip of the two.
#include "document/TreeViewToXml.h"
#include "document/XmlToTreeView.h"

#include "TreeTestKit.h"
#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using mw::DocNode;
using mw::DocTree;
using mw::Document;
using mw::Relationship;
using mw::ScriptedPrompt;
using mw::test::ChildTexts;
using mw::test::CrLf;
using mw::test::ReadAll;
using mw::test::ScratchFolder;
using Texts = std::vector<std::string>;

DocNode& Element(DocTree& tree, DocNode* parent, const std::string& key, const std::string& text,
                 const std::string& tag = "")
{
    DocNode& node = tree.Add(parent, Relationship::Child, key, text, "node");
    node.Tag = tag;
    return node;
}

DocNode& Row(DocTree& tree, DocNode& parent, const std::string& text, const std::string& tag = "")
{
    DocNode& row = tree.AddChild(parent, "", text, tag.empty() ? "prop" : "comment");
    row.Tag = tag;
    return row;
}

TEST(SaveTreeToFile, WritesTheTreeByItsRules)
{
    DocTree tree;
    DocNode& root = Element(tree, nullptr, "k1", "DivXMediaManager", "<Menuwright root='1'/>");
    Row(tree, root, "menuVersion = 1");
    Row(tree, root, "objectID = 1");
    Row(tree, root, "my name = 1");
    Row(tree, root, "plain words");
    // The root's own children are written without their extra info.
    DocNode& media = Element(tree, &root, "k2", "Media", "<Menuwright lost='1'/>");
    Row(tree, media, "objectID = 2");
    DocNode& title = Element(tree, &media, "k6", "Title", "-x");
    Row(tree, title, "objectID = 6");
    Row(tree, title, "hand note", "hand note");
    Row(tree, title, "a = b = c");
    Row(tree, title, "w = 1", "w = 1");
    tree.AddChild(title, "t9", "some text", "text");
    DocNode& source = Element(tree, &title, "k7", "MediaSource");
    Row(tree, source, "objectID = 7");
    Row(tree, source, "location = C:\\a=b.avi");
    Row(tree, Element(tree, &title, "k9", "DivXMediaManager"), "objectID = 9"); // named like the root
    Row(tree, title, "value = say \"hi\" & <go>");
    Element(tree, &title, "k8", "Emptied");
    tree.Add(nullptr, Relationship::Last, "c1", "beside", "comment").Tag = "beside";

    const ScratchFolder scratch;
    const fs::path file = scratch.Path() / "p.xml";
    std::string error;
    ASSERT_TRUE(mw::SaveTreeToFile(tree, file.string(), error)) << error;
    EXPECT_EQ(ReadAll(file),
              CrLf({
                  R"(<DivXMediaManager menuVersion="1" objectID="1">)",
                  R"(	<Media objectID="2">)",
                  R"(		<Title objectID="6" a="b = c" w="1" value="say &quot;hi&quot; &amp; &lt;go>">)",
                  R"(			<!-- -x -->)",
                  R"(			<!-- hand note -->)",
                  R"(			<!-- w = 1 -->)",
                  R"(			<MediaSource objectID="7" location="C:\a=b.avi" />)",
                  R"(			<DivXMediaManager objectID="9" />)",
                  R"(		</Title>)",
                  R"(	</Media>)",
                  R"(</DivXMediaManager>)",
              }));
    EXPECT_EQ(title.Tag, " -x ");
    EXPECT_EQ(media.Tag, "<Menuwright lost='1'/>");
    EXPECT_EQ(root.Tag, "<Menuwright root='1'/>");
    EXPECT_EQ(tree.Count(), 21u);
    EXPECT_EQ(fs::directory_iterator(scratch.Path())->path(), file); // no temporary left behind
}

TEST(SaveTreeToFile, PadsCommentsAndStoresThePaddingBack)
{
    struct Case {
        std::string Tag;
        std::string Element;
        std::string Row;
        std::string Undo;
    };
    const std::vector<Case> cases{
        {"<x/>", " <x/> ", " <x/> ", " <x/>"},
        {"-x", " -x ", " -x ", " -x"},
        {"abc ", " abc ", " abc  ", " abc "},
        {" abc", " abc ", " abc ", " abc"},
        {" ", " ", " ", " "},
    };
    for (const Case& c : cases) {
        DocTree tree;
        DocNode& root = Element(tree, nullptr, "k1", "DivXMediaManager");
        DocNode& media = Element(tree, &root, "k2", "Media");
        DocNode& title = Element(tree, &media, "k6", "Title", c.Tag);
        DocNode& row = Row(tree, title, "comment", c.Tag);
        DocNode& menu = Element(tree, &root, "k3", "DivXMediaMenu", c.Tag);
        Row(tree, menu, "objectID = 3");

        const ScratchFolder scratch;
        std::string error;
        ASSERT_TRUE(mw::SaveTreeToFile(tree, (scratch.Path() / "p.xml").string(), error)) << error;
        EXPECT_EQ(title.Tag, c.Element) << "'" << c.Tag << "'";
        EXPECT_EQ(row.Tag, c.Row) << "'" << c.Tag << "'";
        mw::NodeToXmlString(menu);
        EXPECT_EQ(menu.Tag, c.Undo) << "'" << c.Tag << "'";
    }
}

TEST(NodeToXmlString, WritesRawXmlWithCommentRowsOnlyBelowTheTop)
{
    DocTree tree;
    DocNode& menu = Element(tree, nullptr, "k20", "DivXMediaMenu", "<Menuwright Color1='1'/>");
    Row(tree, menu, "objectID = 20");
    Row(tree, menu, "a = b", "a = b");
    DocNode& button = Element(tree, &menu, "k21", "buttonmenu", "-y");
    Row(tree, button, "objectID = 21");
    Row(tree, button, "kept", "kept");
    Row(tree, Element(tree, &button, "k22", "action", "z"), "objectID = 22");
    Row(tree, menu, "menuName = x < y");
    EXPECT_EQ(mw::NodeToXmlString(menu), R"(<DivXMediaMenu objectID="20" a="b" menuName="x &lt; y">)"
                                         R"(<!-- <Menuwright Color1='1'/>--><buttonmenu objectID="21"><!-- -y-->)"
                                         R"(<!-- kept --><action objectID="22"><!-- z --></action>)"
                                         R"(</buttonmenu></DivXMediaMenu>)");
    button.Text = "1st";
    EXPECT_EQ(mw::NodeToXmlString(menu), ""); // no XML name
}

TEST(SaveTreeToFile, AFailedSaveKeepsTheOldFile)
{
    const ScratchFolder scratch;
    const fs::path file = scratch.Write("p.xml", "old contents");
    DocTree tree;
    DocNode& root = Element(tree, nullptr, "k1", "DivXMediaManager");
    Row(tree, root, "objectID = 1");
    DocNode& menu = Element(tree, &root, "k2", "DivXMediaMenu");
    Row(tree, menu, "objectID = 2");
    const auto refused = [&](const fs::path& target, const std::string& message) {
        std::string error;
        EXPECT_FALSE(mw::SaveTreeToFile(tree, target.string(), error));
        EXPECT_EQ(error, message);
        EXPECT_EQ(ReadAll(file), "old contents");
        EXPECT_EQ(std::distance(fs::directory_iterator(scratch.Path()), {}), 1); // no temporary left behind
    };
    menu.Text = "Menu Rectangle";
    refused(file, "The element name \"Menu Rectangle\" is not a valid XML name, so the file cannot be saved.");
    menu.Text = "DivXMediaMenu";
    const fs::path elsewhere = scratch.Path() / "missing" / "p.xml";
    refused(elsewhere, "Could not save " + elsewhere.string() + ": No such file or directory.");
    fs::permissions(file, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    refused(file, "Could not save " + file.string() + ": the file is read-only.");
    fs::permissions(file, fs::perms::owner_all);
    if (::geteuid() == 0)
        return; // a read-only folder does not stop root
    fs::permissions(scratch.Path(), fs::perms::owner_read | fs::perms::owner_exec);
    refused(file, "Could not save " + file.string() + ": Permission denied.");
}

TEST(SaveNodeToTemplate, BackgroundVideoBecomesThePathOfItsFile)
{
    Document doc;
    doc.ProjectFile = "/home/u/proj/p.xml";
    DocTree& tree = doc.Tree;
    DocNode& tracks = Element(tree, nullptr, "k13", "MenuTracks");
    DocNode& source = Element(tree, &tracks, "k19", "MediaSource");
    Row(tree, source, "objectID = 19");
    Row(tree, source, "location = menus\\bg.avi");
    DocNode& track = Element(tree, &tracks, "k16", "MediaTrack");
    for (const char* row : {"objectID = 16", "mediaSourceID = 19", "startFrame = 0", "endFrame = 99"})
        Row(tree, track, row);
    DocNode& menu = Element(tree, nullptr, "k30", "DivXMediaMenu", "<Menuwright frame='3'/>");
    Row(tree, menu, "objectID = 30");
    Row(tree, menu, "backgroundVideoID = 16");
    Row(tree, menu, "menuType = title");
    Row(tree, menu, "by hand", "by hand");
    DocNode& button = Element(tree, &menu, "k31", "ButtonMenu");
    Row(tree, button, "objectID = 31");
    Row(tree, button, "note", "note");

    const ScratchFolder scratch;
    const fs::path file = scratch.Path() / "t.xml";
    std::string error;
    ASSERT_TRUE(mw::SaveNodeToTemplate(doc, menu, file.string(), error)) << error;
    EXPECT_EQ(ReadAll(file), CrLf({
                                 R"(<DivXMediaMenu objectID="30" startFrame="0" endFrame="99" )"
                                 R"(backgroundVideoID="/home/u/proj/menus/bg.avi" menuType="title">)",
                                 R"(	<!-- <Menuwright frame='3'/> -->)",
                                 R"(	<ButtonMenu objectID="31">)",
                                 R"(		<!-- note -->)",
                                 R"(	</ButtonMenu>)",
                                 R"(</DivXMediaMenu>)",
                             }));

    tree.Remove(source);
    EXPECT_FALSE(mw::SaveNodeToTemplate(doc, menu, file.string(), error));
    EXPECT_NE(error.find("background video 16"), std::string::npos) << error;
}

// A project with what a writer may lose: another case, entities, extra info, comments, text.
std::vector<std::string> SampleLines(const std::string& chapter)
{
    return {
        R"(<DivXMediaManager menuVersion="1" objectID="1" defaultMenuLanguage="en">)",
        R"(	<Media objectID="2">)",
        R"(		<Title objectID="6" defaultAudioTrack="01wb">)",
        R"(			<MediaSource objectID="7" location="film.avi">)",
        R"(				<!-- made by hand -->)",
        R"(			</MediaSource>)",
        R"(			<MediaTrack objectID="9" mediaSourceID="7" strn="it's &quot;English&quot;" type="audio" />)",
        chapter,
        R"(		</Title>)",
        R"(		<MenuTracks objectID="13">)",
        R"(			<MediaTrack objectID="16" trackID="00dc" type="video">)",
        R"(				<!-- <Menuwright Buttons='1' menuID='20'/> -->)",
        R"(			</MediaTrack>)",
        R"(		</MenuTracks>)",
        R"(	</Media>)",
        R"(	<LanguageMenus objectID="14" languageCode="en" startingMenuID="20">)",
        R"(		<DivXMediaMenu objectID="20" exitAction="23" menuName="Main &amp; only">)",
        R"(			<!-- <Menuwright Color1='255' frame='12'/> -->)",
        R"(			<buttonmenu objectID="21" selectAction="24">)",
        R"(				<!-- <Menuwright Shape='*Rect' Position='10 20 100 40'/> -->)",
        R"(				<MenuRectangle objectID="22" left="10" top="20" width="100" height="40" />)",
        R"(				<Action objectID="24">)",
        R"(					<PlayAction objectID="25" titleID="6" mediaObjectID="12" />)",
        R"(				</Action>)",
        R"(			</buttonmenu>)",
        R"(			<Action objectID="23" />)",
        R"(		</DivXMediaMenu>)",
        R"(	</LanguageMenus>)",
        R"(</DivXMediaManager>)",
    };
}

TEST(RoundTrip, SavedFileIsTheInputButForTextAndSavesAlike)
{
    const mw::test::ScratchFolder scratch;
    const auto path = [&](const char* name) { return (scratch.Path() / name).string(); };
    Document doc;
    ScriptedPrompt prompt;
    const std::string text = R"(			<Chapter objectID="12">chapter one</Chapter>)";
    ASSERT_TRUE(mw::LoadXmlFile(scratch.Write("input.xml", CrLf(SampleLines(text))).string(), doc, prompt));
    std::string error;
    ASSERT_TRUE(mw::SaveTreeToFile(doc.Tree, path("first.xml"), error)) << error;
    EXPECT_EQ(ReadAll(path("first.xml")), CrLf(SampleLines(R"(			<Chapter objectID="12" />)")));

    Document again;
    ASSERT_TRUE(mw::LoadXmlFile(path("first.xml"), again, prompt));
    ASSERT_TRUE(mw::SaveTreeToFile(again.Tree, path("second.xml"), error)) << error;
    EXPECT_EQ(ReadAll(path("second.xml")), ReadAll(path("first.xml")));
    EXPECT_EQ(again.NextObjectID, 26);
    EXPECT_TRUE(prompt.Log.empty());
}

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
