#include "document/TreeViewToXml.h"
#include "document/XmlToTreeView.h"

#include "TreeTestKit.h"
#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using mw::Document;
using mw::ScriptedPrompt;
using mw::test::CrLf;
using mw::test::ReadAll;

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

} // namespace
