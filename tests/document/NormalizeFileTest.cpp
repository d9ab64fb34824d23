#include "document/NormalizeFile.h"

#include "TreeTestKit.h"
#include "core/ScriptedPrompt.h"
#include "document/CheckForErrors.h"
#include "document/IdSet.h"
#include "document/ObjectIds.h"

#include <gtest/gtest.h>

namespace {

using mw::test::Element;
using mw::test::RowOf;
using Texts = std::vector<std::string>;

const char* kDone = "Normalize complete";

class NormalizeFileTest : public ::testing::Test {
protected:
    mw::NormalizeResult Normalize() { return mw::NormalizeFile(doc_, lang_, prompt_); }
    mw::DocNode& Node(long id) { return doc_.Tree.Item("k" + std::to_string(id)); }
    Texts Rows(const mw::DocNode& element)
    {
        Texts rows;
        for (const auto& row : element) {
            if (!row->HasChildren())
                rows.push_back(row->Text);
        }
        return rows;
    }

    mw::Document doc_;
    mw::LangDoc lang_;
    mw::ScriptedPrompt prompt_;
    mw::DocNode& root_ = Element(doc_.Tree, nullptr, 1, "DivXMediaManager");
};

TEST_F(NormalizeFileTest, GapsCloseAndTheNextIdentifierFollows)
{
    Element(doc_.Tree, &root_, 2, "Media");
    auto& language = Element(doc_.Tree, &root_, 5, "LanguageMenus", {"startingMenuID = 9", "rootMenuID = none"});
    // Only the value of a reference row changes, and its blanks before the value shrink to one.
    auto& menu = Element(doc_.Tree, &language, 9, "DivXMediaMenu",
                         {"exitAction =", "OverlayID=   5", "upAction  = 0009", "trackID = 0009", "left = 9"});
    menu.Child(0)->Text = "objectID = 0009";

    const auto result = Normalize();

    EXPECT_EQ(prompt_.Texts(), Texts{kDone});
    EXPECT_EQ(result.MissingCount, 0);
    EXPECT_EQ(doc_.NextObjectID, 5);
    EXPECT_EQ(result.NewNumber, (std::map<long long, long>{{1, 1}, {2, 2}, {5, 3}, {9, 4}}));
    EXPECT_EQ(&Node(3), &language);
    EXPECT_EQ(&Node(4), &menu);
    EXPECT_EQ(doc_.Tree.Find("k9"), nullptr);
    EXPECT_EQ(Rows(language), (Texts{"objectID = 3", "startingMenuID = 4", "rootMenuID = none"}));
    EXPECT_EQ(Rows(menu), (Texts{"objectID = 4", "exitAction =", "OverlayID= 3", "upAction  = 4", "trackID = 0009",
                                 "left = 9"}));
}

TEST_F(NormalizeFileTest, NumbersFollowTheTextOrderAndKeysNeverCollide)
{
    // 1..1001 and 10000: "10000" sorts between "1000" and "1001", so object 10000 takes the
    // number 1001 while object 1001 still holds that key.
    for (long id = 2; id <= 1001; ++id)
        Element(doc_.Tree, &root_, id, "Chapter");
    auto& big = Element(doc_.Tree, &root_, 10000, "Title", {"mediaObjectID = 1001"});
    mw::DocNode& last = Node(1001);

    Normalize();

    EXPECT_EQ(&Node(1001), &big);
    EXPECT_EQ(&Node(1002), &last);
    EXPECT_EQ(Rows(big), (Texts{"objectID = 1001", "mediaObjectID = 1002"}));
    EXPECT_EQ(doc_.NextObjectID, 1003);
}

TEST_F(NormalizeFileTest, DanglingReferencesGetNumbersBeyondTheObjects)
{
    auto& menu = Element(doc_.Tree, &root_, 4, "DivXMediaMenu");
    auto& button = Element(doc_.Tree, &menu, 7, "ButtonMenu", {"overlayID = 40"});

    EXPECT_EQ(Normalize().MissingCount, 1);
    EXPECT_EQ(prompt_.Texts(), (Texts{"Error while normalize at ID 40. New ID for this will be 4", kDone}));
    EXPECT_EQ(RowOf(button, "overlayID")->Text, "overlayID = 4");
    EXPECT_EQ(doc_.NextObjectID, 5);
    EXPECT_TRUE(button.Expanded);

    // Two references to one missing object get a number each.
    prompt_.Log.clear();
    doc_.Tree.AddChild(button, "", "selectAction = 41", "prop");
    doc_.Tree.AddChild(button, "", "upAction = 41", "prop");
    EXPECT_EQ(Normalize().MissingCount, 3);
    EXPECT_EQ(Rows(button), (Texts{"objectID = 3", "overlayID = 4", "selectAction = 5", "upAction = 6"}));
    EXPECT_EQ(doc_.NextObjectID, 7);
}

TEST_F(NormalizeFileTest, ExtraInfoIsRenumberedAndWrittenBack)
{
    auto& tracks = Element(doc_.Tree, &root_, 20, "MenuTracks");
    auto& video = Element(doc_.Tree, &tracks, 30, "MediaTrack");
    video.Tag = "<Menuwright Buttons=\"1\" menuID=\"50\"/>";
    auto& overlay = Element(doc_.Tree, &tracks, 40, "MediaTrack");
    overlay.Tag = "<Menuwright rectID='77'/>";
    auto& menu = Element(doc_.Tree, &root_, 50, "DivXMediaMenu");
    menu.Tag = "not xml, menuID = 50";

    Normalize();

    EXPECT_EQ(video.Tag, "<Menuwright Buttons='1' menuID='5'/>");
    EXPECT_EQ(overlay.Tag, "<Menuwright rectID='6'/>");
    EXPECT_EQ(menu.Tag, "not xml, menuID = 50");
    EXPECT_EQ(prompt_.Texts(),
              (Texts{"Error while normalize at ID 77 in extra info used by MediaTrack. New ID for this will be 6", kDone}));
    EXPECT_EQ(doc_.NextObjectID, 7);
}

TEST_F(NormalizeFileTest, MenuTrackListIsReloadedWithTheNewNumbers)
{
    auto& tracks = Element(doc_.Tree, &Element(doc_.Tree, &root_, 20, "Media"), 30, "MenuTracks");
    Element(doc_.Tree, &tracks, 40, "MediaSource", {"location = C:\\menus\\intro.avi"});
    Element(doc_.Tree, &tracks, 50, "MediaTrack",
            {"mediaSourceID = 40", "sourceTrackID = none", "trackID = 00dc", "type = video"});
    Element(doc_.Tree, &tracks, 60, "mediatrack", {"MediaSourceID = 70", "TrackID = 01sb", "Type = subtitle"});
    Element(doc_.Tree, &tracks, 70, "MediaSource", {"location = /home/a/menu.divx"});
    doc_.MenuTracks.Add("99", "stale");

    Normalize();

    ASSERT_EQ(doc_.MenuTracks.Count(), 2u);
    EXPECT_EQ(doc_.MenuTracks.Entry(0).Key, "5");
    EXPECT_EQ(doc_.MenuTracks.Entry(0).Text, "5|4(intro.avi)-video 00dc");
    EXPECT_EQ(doc_.MenuTracks.Entry(1).Text, "6|7(menu.divx)-subtitle 01sb");
    EXPECT_FALSE(doc_.MenuTracks.Add("6", "twice"));
}

TEST_F(NormalizeFileTest, EmptyTreeIsLeftAlone)
{
    doc_.Tree.Clear();
    doc_.NextObjectID = 12;
    EXPECT_FALSE(Normalize().Changed);
    EXPECT_TRUE(prompt_.Texts().empty());
    EXPECT_EQ(doc_.NextObjectID, 12);
}

TEST(IdSet, PaddedEntriesSortAsTextAndAreFoundByExactText)
{
    mw::IdSet ids;
    for (long long id : {2000LL, 10000LL, 1LL, 12LL, 12LL})
        ids.Add(id);

    ASSERT_EQ(ids.Count(), 5u); // an identifier held twice stands twice
    EXPECT_EQ(ids.Entry(3), "10000"); // five digits stand before "2000"
    const std::pair<long long, long> positions[] = {{1, 0}, {12, 1}, {10000, 3}, {2000, 4}, {7, -1}, {1000, -1}};
    for (const auto& [id, position] : positions)
        EXPECT_EQ(ids.Find(id), position) << id;
    EXPECT_EQ(ids.Find(std::string("0012")), 1);
    EXPECT_EQ(ids.Find(std::string("12")), -1);

    ids.Clear();
    EXPECT_EQ(ids.Find(1), -1);
}

TEST(ObjectIds, WhichRowsAreReferences)
{
    const std::pair<const char*, bool> cases[] = {
        {"objectID = 12", true},         {"  SelectACTION   = 3", true},  {"translationLookupID = 4", true},
        {"valid = 1", true},             {"trackID = 00dc", false},       {"sourceTrackID = 5", false},
        {"leftAction = NONE ", false},   {"leftAction =", false},         {"objectID", false},
        {"location = C:\\id=5", false},  {"defaultAudioTrack = 01wb", false},
    };
    for (const auto& [row, reference] : cases)
        EXPECT_EQ(mw::IsReferenceRow(row), reference) << row;
}

TEST_F(NormalizeFileTest, ReferencesAreFoundByTheirWholeNumber)
{
    EXPECT_EQ(mw::IdSet::EntryOf(" 007 "), "0007");
    EXPECT_EQ(mw::IdSet::EntryOf("7x"), "7x");
    EXPECT_EQ(mw::IdSet::EntryOf("-7"), "-7");

    auto& button = Element(doc_.Tree, &root_, 7, "ButtonMenu", {"upAction = 7x", "downAction = 007"});
    EXPECT_FALSE(mw::CheckForErrors(doc_, lang_, prompt_, false));
    EXPECT_EQ(prompt_.Texts(), Texts{"Error while checking at node ButtonMenu (7). ID not found 7"});
    prompt_.Log.clear();
    EXPECT_EQ(Normalize().MissingCount, 1);
    EXPECT_EQ(prompt_.Texts(), (Texts{"Error while normalize at ID 7. New ID for this will be 3", kDone}));
    EXPECT_EQ(RowOf(button, "upAction")->Text, "upAction = 3");
    EXPECT_EQ(RowOf(button, "downAction")->Text, "downAction = 2");
}

// Two elements hold one objectID after a hand edit: the number counts twice, so the numbers
// after it move on by one more and the next identifier is one higher.
TEST_F(NormalizeFileTest, AnIdentifierHeldTwiceTakesTwoPlaces)
{
    auto& first = Element(doc_.Tree, &root_, 4, "Title");
    auto& twin = Element(doc_.Tree, &root_, 50, "Chapter");
    RowOf(twin, "objectID")->Text = "objectID = 4";
    auto& last = Element(doc_.Tree, &root_, 9, "Chapter", {"titleID = 4"});
    const auto result = Normalize();
    EXPECT_EQ(prompt_.Texts(), Texts{"Normalize complete"});
    EXPECT_EQ(doc_.NextObjectID, 5);
    EXPECT_EQ(&doc_.Tree.Item("k2"), &first);
    EXPECT_EQ(&doc_.Tree.Item("k4"), &last);
    EXPECT_EQ(RowOf(twin, "objectID")->Text, "objectID = 2");
    EXPECT_EQ(RowOf(last, "titleID")->Text, "titleID = 2");
    EXPECT_EQ(result.NewNumber.at(4), 2);
}

TEST_F(NormalizeFileTest, RenumberingThatWouldMeetAKeptKeyChangesNothing)
{
    Element(doc_.Tree, &root_, 5, "Title");
    auto& edited = Element(doc_.Tree, &root_, 2, "Chapter");
    RowOf(edited, "objectID")->Text = "objectID = 9";
    doc_.NextObjectID = 10;

    EXPECT_FALSE(Normalize().Changed);
    EXPECT_EQ(prompt_.Texts(),
              Texts{"The objects cannot be renumbered: Chapter 2 has the objectID 9. Nothing was changed."});
    EXPECT_EQ(&doc_.Tree.Item("k2"), &edited);
    EXPECT_EQ(RowOf(edited, "objectID")->Text, "objectID = 9");
    EXPECT_NE(doc_.Tree.Find("k5"), nullptr);
    EXPECT_EQ(doc_.NextObjectID, 10);
}

} // namespace
