#include "document/IdSet.h"
#include "document/ObjectIds.h"

#include <gtest/gtest.h>

namespace {

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

} // namespace
