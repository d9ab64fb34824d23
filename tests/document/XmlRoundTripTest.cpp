#include "document/TreeViewToXml.h"
#include "document/XmlToTreeView.h"

#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "core/Text.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using mw::DocNode;
using mw::Document;
using mw::Relationship;
using mw::ScriptedPrompt;
using mw::test::ReadAll;
using mw::test::ScratchFolder;

std::string CrLf(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + "\r\n";
    return text;
}

const std::string kChapterWithText = R"(			<Chapter objectID="12" translationLookupID="4">chapter one</Chapter>)";
const std::string kChapterSaved = R"(			<Chapter objectID="12" translationLookupID="4" />)";

std::vector<std::string> SampleLines(const std::string& chapter)
{
    return {
        R"(<DivXMediaManager menuVersion="1" objectID="1" defaultMenuLanguage="en" version="1.0" startingMenuID="20">)",
        R"(	<TranslationTable objectID="3">)",
        R"(		<TranslationLookup objectID="4">)",
        R"(			<Translation objectID="5" languageCode="en" value="Main Feature" />)",
        R"(		</TranslationLookup>)",
        R"(	</TranslationTable>)",
        R"(	<Media objectID="2">)",
        R"(		<Title objectID="6" translationLookupID="4" defaultAudioTrack="01wb" defaultSubtitleTrack="none">)",
        R"(			<MediaSource objectID="7" mediaType="featureAvi" location="film.avi">)",
        R"(				<!-- made by hand -->)",
        R"(			</MediaSource>)",
        R"(			<MediaTrack objectID="8" mediaSourceID="7" trackID="00dc" startFrame="0" endFrame="2499" type="video" />)",
        R"(			<MediaTrack objectID="9" mediaSourceID="7" trackID="01wb" strn="it's &quot;English&quot;" type="audio" />)",
        chapter,
        R"(		</Title>)",
        R"(		<MenuTracks objectID="13">)",
        R"(			<MediaSource objectID="15" mediaType="menuAvi" location="menus\main.avi" />)",
        R"(			<MediaTrack objectID="16" mediaSourceID="15" trackID="00dc" startFrame="0" endFrame="99" type="video">)",
        R"(				<!-- <Menuwright Buttons='1' menuID='20'/> -->)",
        R"(			</MediaTrack>)",
        R"(		</MenuTracks>)",
        R"(	</Media>)",
        R"(	<LanguageMenus objectID="14" languageCode="en" startingMenuID="20" rootMenuID="20">)",
        R"(		<DivXMediaMenu objectID="20" backgroundVideoID="16" exitAction="23" menuName="Main &amp; only">)",
        R"(			<!-- <Menuwright Color1='255' Color2='0' Color3='65280' frame='12'/> -->)",
        R"(			<buttonmenu objectID="21" selectAction="24">)",
        R"(				<!-- <Menuwright Shape='*Rect' width='3' Position='10 20 100 40'/> -->)",
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

class RoundTrip : public testing::Test {
protected:
    void SetUp() override
    {
        input = scratch.Write("input.xml", CrLf(SampleLines(kChapterWithText))).string();
        ASSERT_TRUE(mw::LoadXmlFile(input, doc, prompt));
    }
    std::string Path(const char* name) const { return (scratch.Path() / name).string(); }

    ScratchFolder scratch;
    std::string input;
    Document doc;
    ScriptedPrompt prompt;
};

TEST_F(RoundTrip, SavedFileIsTheInputButForTextAndSavesAlike)
{
    std::string error;
    ASSERT_TRUE(mw::SaveTreeToFile(doc.Tree, Path("first.xml"), error)) << error;
    EXPECT_EQ(ReadAll(Path("first.xml")), CrLf(SampleLines(kChapterSaved)));
    EXPECT_EQ(doc.Tree.Item("k21").Text, "buttonmenu");
    EXPECT_EQ(doc.Tree.Item("k21").Image, "button");

    Document again;
    ASSERT_TRUE(mw::LoadXmlFile(Path("first.xml"), again, prompt));
    ASSERT_TRUE(mw::SaveTreeToFile(again.Tree, Path("second.xml"), error)) << error;
    EXPECT_EQ(ReadAll(Path("second.xml")), ReadAll(Path("first.xml")));
    EXPECT_EQ(again.NextObjectID, 26);
    EXPECT_TRUE(prompt.Log.empty());
}

TEST_F(RoundTrip, FailedSaveKeepsTheOldFile)
{
    const std::string before = ReadAll(input);
    std::string error;
    doc.Tree.Item("k22").Text = "Menu Rectangle";
    EXPECT_FALSE(mw::SaveTreeToFile(doc.Tree, input, error));
    EXPECT_EQ(error, "The element name \"Menu Rectangle\" is not a valid XML name, so the file cannot be saved.");
    EXPECT_EQ(ReadAll(input), before);

    if (::geteuid() == 0)
        GTEST_SKIP() << "a read-only folder does not stop root";
    doc.Tree.Item("k22").Text = "MenuRectangle";
    fs::permissions(scratch.Path(), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_FALSE(mw::SaveTreeToFile(doc.Tree, input, error));
    EXPECT_EQ(error, "Could not save " + input + ": Permission denied.");
    EXPECT_EQ(ReadAll(input), before);
}

struct Line {
    std::string Key; // element keys only; row keys are given afresh
    std::string Kind;
    std::string Text;
    std::string Tag;
    bool operator==(const Line&) const = default;
};

std::ostream& operator<<(std::ostream& os, const Line& l)
{
    return os << "{" << l.Key << ", " << l.Kind << ", " << l.Text << ", " << l.Tag << "}";
}

void Collect(const DocNode& node, std::vector<Line>& lines)
{
    lines.push_back({node.HasChildren() ? node.Key() : "", node.Image, node.Text, mw::Trim(node.Tag)});
    for (const auto& child : node)
        Collect(*child, lines);
}

TEST_F(RoundTrip, SubtreeStringRestoresTheSubtree)
{
    DocNode& menu = doc.Tree.Item("k20");
    std::vector<Line> before;
    Collect(menu, before);
    DocNode* list = menu.Parent();

    const std::string xml = mw::NodeToXmlString(menu);
    doc.Tree.Remove(menu);
    ASSERT_TRUE(mw::LoadXmlString(xml, doc, list, Relationship::Child, prompt));

    std::vector<Line> after;
    Collect(doc.Tree.Item("k20"), after);
    EXPECT_EQ(after, before);
    EXPECT_EQ(doc.Tree.Item("k20").Parent(), list);
    EXPECT_EQ(doc.NextObjectID, 26);
    EXPECT_TRUE(prompt.Log.empty());
}

} // namespace
