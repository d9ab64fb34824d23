#include "document/CheckForErrors.h"
#include "document/IdSet.h"
#include "document/NormalizeFile.h"
#include "document/ObjectIds.h"

#include "TreeTestKit.h"
#include "core/ScriptedPrompt.h"

#include <gtest/gtest.h>

namespace {

using mw::test::Element;
using mw::test::RowOf;
using Texts = std::vector<std::string>;

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

TEST(ReferenceText, ReferencesAreFoundByTheirWholeNumber)
{
    EXPECT_EQ(mw::IdSet::EntryOf(" 007 "), "0007");
    EXPECT_EQ(mw::IdSet::EntryOf("7x"), "7x");
    EXPECT_EQ(mw::IdSet::EntryOf("-7"), "-7");

    mw::Document doc;
    auto& root = Element(doc.Tree, nullptr, 1, "DivXMediaManager");
    auto& button = Element(doc.Tree, &root, 7, "ButtonMenu", {"upAction = 7x", "downAction = 007"});
    mw::LangDoc lang;
    mw::ScriptedPrompt prompt;
    EXPECT_FALSE(mw::CheckForErrors(doc, lang, prompt, false));
    EXPECT_EQ(prompt.Texts(), Texts{"Error while checking at node ButtonMenu (7). ID not found 7"});

    prompt.Log.clear();
    EXPECT_EQ(mw::NormalizeFile(doc, lang, prompt).MissingCount, 1);
    EXPECT_EQ(prompt.Texts(), (Texts{"Error while normalize at ID 7. New ID for this will be 3", "Normalize complete"}));
    EXPECT_EQ(RowOf(button, "upAction")->Text, "upAction = 3");
    EXPECT_EQ(RowOf(button, "downAction")->Text, "downAction = 2");
}

// Two elements hold one objectID after a hand edit: the number counts twice, so the numbers
// after it move on by one more and the next identifier is one higher.
TEST(ReferenceText, AnIdentifierHeldTwiceTakesTwoPlaces)
{
    mw::Document doc;
    auto& root = Element(doc.Tree, nullptr, 1, "DivXMediaManager");
    auto& first = Element(doc.Tree, &root, 4, "Title");
    auto& twin = Element(doc.Tree, &root, 50, "Chapter");
    RowOf(twin, "objectID")->Text = "objectID = 4";
    auto& last = Element(doc.Tree, &root, 9, "Chapter", {"titleID = 4"});
    mw::LangDoc lang;
    mw::ScriptedPrompt prompt;

    const auto result = mw::NormalizeFile(doc, lang, prompt);
    EXPECT_EQ(prompt.Texts(), Texts{"Normalize complete"});
    EXPECT_EQ(doc.NextObjectID, 5);
    EXPECT_EQ(&doc.Tree.Item("k2"), &first);
    EXPECT_EQ(&doc.Tree.Item("k4"), &last);
    EXPECT_EQ(RowOf(twin, "objectID")->Text, "objectID = 2");
    EXPECT_EQ(RowOf(last, "titleID")->Text, "titleID = 2");
    EXPECT_EQ(result.NewNumber.at(4), 2);
}

TEST(ReferenceText, RenumberingThatWouldMeetAKeptKeyChangesNothing)
{
    mw::Document doc;
    auto& root = Element(doc.Tree, nullptr, 1, "DivXMediaManager");
    Element(doc.Tree, &root, 5, "Title");
    auto& edited = Element(doc.Tree, &root, 2, "Chapter");
    RowOf(edited, "objectID")->Text = "objectID = 9";
    doc.NextObjectID = 10;
    mw::LangDoc lang;
    mw::ScriptedPrompt prompt;

    EXPECT_FALSE(mw::NormalizeFile(doc, lang, prompt).Changed);
    EXPECT_EQ(prompt.Texts(),
              Texts{"The objects cannot be renumbered: Chapter 2 has the objectID 9. Nothing was changed."});
    EXPECT_EQ(&doc.Tree.Item("k2"), &edited);
    EXPECT_EQ(RowOf(edited, "objectID")->Text, "objectID = 9");
    EXPECT_NE(doc.Tree.Find("k5"), nullptr);
    EXPECT_EQ(doc.NextObjectID, 10);
}

} // namespace
