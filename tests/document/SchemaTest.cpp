#include "document/NewProjectTree.h"
#include "document/SchemaNodes.h"
#include "document/TreeQueries.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using mw::DocNode;
using mw::Document;

// One node as a depth-first walk meets it.
struct NodeLine {
    int Depth;
    std::string Key;
    std::string Kind;
    std::string Text;
    bool operator==(const NodeLine&) const = default;
};

std::ostream& operator<<(std::ostream& os, const NodeLine& n)
{
    return os << n.Depth << " '" << n.Key << "' " << n.Kind << " '" << n.Text << "'";
}

int DepthOf(const DocNode& node)
{
    int depth = 0;
    for (const DocNode* p = node.Parent(); p; p = p->Parent())
        ++depth;
    return depth;
}

std::vector<NodeLine> Lines(const Document& doc)
{
    std::vector<NodeLine> lines;
    for (const DocNode* n : doc.Tree.Flat())
        lines.push_back({DepthOf(*n), n->Key(), n->Image, n->Text});
    return lines;
}

std::size_t ElementCount(const Document& doc)
{
    std::size_t count = 0;
    for (const DocNode* n : doc.Tree.Flat())
        count += n->HasChildren() ? 1 : 0;
    return count;
}

const mw::TrackRows kStreams = {
    {"Video", "Video - en-US;MO", "720 x 576", "00dc", "0", "1499"},
    {"Audio", "Audio - en-US;02", "", "01wb", "0", "1499"},
    {"Audio", "Audio - eng;02", "", "02wb", "0", "1499"},
    {"Subtitle", "Subtitle - ro-RO;02", "", "03sb", "0", "1499"},
    {"Unknown", "", "", "04??", "", ""},
};

Document NewProject(const mw::TrackRows& rows = kStreams, int audio = 2, int subtitle = 3)
{
    Document doc;
    mw::BuildNewProjectTree(doc, "/movies/feature.avi", rows, "de", audio, subtitle);
    return doc;
}

TEST(Schema, NewProjectHasTheSkeletonAndOneTrackPerStream)
{
    // Audio and subtitle streams take two more identifiers each for their translation.
    const std::vector<NodeLine> expected = {
        {0, "k1", "divx", "DivXMediaManager"},
        {1, "", "prop", "menuVersion = 1"},
        {1, "", "objectid", "objectID = 1"},
        {1, "", "prop", "defaultMenuLanguage = de"},
        {1, "", "prop", "version = 1.0"},
        {1, "k3", "transtable", "TranslationTable"},
        {2, "", "objectid", "objectID = 3"},
        {2, "k4", "translookup", "TranslationLookup"},
        {3, "", "objectid", "objectID = 4"},
        {3, "k5", "trans", "Translation"},
        {4, "", "objectid", "objectID = 5"},
        {4, "", "prop", "languageCode = de"},
        {4, "", "prop", "value = Main Feature"},
        {2, "k10", "translookup", "TranslationLookup"},
        {3, "", "objectid", "objectID = 10"},
        {3, "k11", "trans", "Translation"},
        {4, "", "objectid", "objectID = 11"},
        {4, "", "prop", "languageCode = en"},
        {4, "", "prop", "value = Audio - en-US;02"},
        {2, "k13", "translookup", "TranslationLookup"},
        {3, "", "objectid", "objectID = 13"},
        {3, "k14", "trans", "Translation"},
        {4, "", "objectid", "objectID = 14"},
        {4, "", "prop", "languageCode = de"},
        {4, "", "prop", "value = Audio - eng;02"},
        {2, "k16", "translookup", "TranslationLookup"},
        {3, "", "objectid", "objectID = 16"},
        {3, "k17", "trans", "Translation"},
        {4, "", "objectid", "objectID = 17"},
        {4, "", "prop", "languageCode = ro"},
        {4, "", "prop", "value = Subtitle - ro-RO;02"},
        {1, "k2", "media", "Media"},
        {2, "", "objectid", "objectID = 2"},
        {2, "k6", "movie", "Title"},
        {3, "", "objectid", "objectID = 6"},
        {3, "", "prop", "translationLookupID = 4"},
        {3, "", "prop", "defaultAudioTrack = 02wb"},
        {3, "", "prop", "defaultSubtitleTrack = 03sb"},
        {3, "k7", "movie", "MediaSource"},
        {4, "", "objectid", "objectID = 7"},
        {4, "", "prop", "mediaType = featureAvi"},
        {4, "", "prop", "location = /movies/feature.avi"},
        {3, "k8", "movielink", "MediaTrack"},
        {4, "", "objectid", "objectID = 8"},
        {4, "", "prop", "mediaSourceID = 7"},
        {4, "", "prop", "trackID = 00dc"},
        {4, "", "prop", "startFrame = 0"},
        {4, "", "prop", "endFrame = 1499"},
        {4, "", "prop", "type = video"},
        {3, "k9", "audiolink", "MediaTrack"},
        {4, "", "objectid", "objectID = 9"},
        {4, "", "prop", "mediaSourceID = 7"},
        {4, "", "prop", "trackID = 01wb"},
        {4, "", "prop", "languageCode = en"},
        {4, "", "prop", "strn = Audio - en-US;02"},
        {4, "", "prop", "translationLookupID = 10"},
        {4, "", "prop", "type = audio"},
        {3, "k12", "audiolink", "MediaTrack"},
        {4, "", "objectid", "objectID = 12"},
        {4, "", "prop", "mediaSourceID = 7"},
        {4, "", "prop", "trackID = 02wb"},
        {4, "", "prop", "strn = Audio - eng;02"},
        {4, "", "prop", "translationLookupID = 13"},
        {4, "", "prop", "type = audio"},
        {3, "k15", "sublink", "MediaTrack"},
        {4, "", "objectid", "objectID = 15"},
        {4, "", "prop", "mediaSourceID = 7"},
        {4, "", "prop", "trackID = 03sb"},
        {4, "", "prop", "languageCode = ro"},
        {4, "", "prop", "strn = Subtitle - ro-RO;02"},
        {4, "", "prop", "translationLookupID = 16"},
        {4, "", "prop", "type = subtitle"},
        {3, "k18", "node", "MediaTrack"},
        {4, "", "objectid", "objectID = 18"},
        {4, "", "prop", "mediaSourceID = 7"},
        {4, "", "prop", "trackID = 04??"},
        {4, "", "prop", "type = unknown"},
    };
    const Document doc = NewProject();
    EXPECT_EQ(Lines(doc), expected);
    EXPECT_EQ(ElementCount(doc), 7u + 5u + 2u * 3u);
    EXPECT_EQ(doc.NextObjectID, 19);
    EXPECT_EQ(mw::GetPropertyInNode(*doc.Tree.Root(), "startingMenuID"), "");
}

TEST(Schema, NewProjectDefaultsAndIdentifiers)
{
    struct Case {
        const char* Name;
        mw::TrackRows Rows;
        int Audio;
        int Subtitle;
        const char* DefaultAudio;
        const char* DefaultSubtitle;
        std::size_t Elements;
        long Next;
    };
    const mw::TrackRow audio{"AUDIO", "Audio - fr-FR;02", "", "01wb", "", ""};
    const std::vector<Case> cases = {
        {"no streams", {}, -1, -1, "none", "none", 7, 8},
        {"no defaults chosen", kStreams, -1, -1, "none", "none", 18, 19},
        {"stream numbers of two digits and more", kStreams, 12, 103, "12wb", "103sb", 18, 19},
        {"kind word in any case", {audio}, 1, -1, "01wb", "none", 10, 11},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Name);
        const Document doc = NewProject(c.Rows, c.Audio, c.Subtitle);
        const DocNode& title = doc.Tree.Item("k6");
        EXPECT_EQ(mw::GetPropertyInNode(title, "defaultAudioTrack"), c.DefaultAudio);
        EXPECT_EQ(mw::GetPropertyInNode(title, "defaultSubtitleTrack"), c.DefaultSubtitle);
        EXPECT_EQ(ElementCount(doc), c.Elements);
        EXPECT_EQ(doc.NextObjectID, c.Next);
    }
    const Document doc = NewProject({audio}, -1, -1);
    EXPECT_EQ(doc.Tree.Item("k8").Image, "audiolink");
    EXPECT_EQ(mw::GetPropertyInNode(doc.Tree.Item("k8"), "type"), "audio");
}

TEST(Schema, NewProjectReplacesTheOpenTree)
{
    Document doc = NewProject();
    mw::CreateLanguageMenusNode(doc, "en");
    mw::BuildNewProjectTree(doc, "b.avi", {}, "en", -1, -1);
    EXPECT_EQ(doc.Tree.Find("k19"), nullptr);
    EXPECT_EQ(doc.Tree.Find("k8"), nullptr);
    EXPECT_EQ(doc.Tree.TopLevelCount(), 1u);
    EXPECT_EQ(mw::GetPropertyInNode(doc.Tree.Item("k7"), "location"), "b.avi");
}

TEST(Schema, CreateLanguageMenusNodeAddsASetBehindTheOthers)
{
    Document doc = NewProject();
    const DocNode& first = mw::CreateLanguageMenusNode(doc, "en");
    const DocNode& second = mw::CreateLanguageMenusNode(doc, "fr");
    const std::vector<NodeLine> expected = {
        {1, "k20", "menulang", "LanguageMenus"},
        {2, "", "objectid", "objectID = 20"},
        {2, "", "prop", "languageCode = fr"},
        {2, "", "prop", "startingMenuID = none"},
        {2, "", "prop", "rootMenuID = none"},
    };
    const auto lines = Lines(doc);
    EXPECT_EQ(std::vector<NodeLine>(lines.end() - 5, lines.end()), expected);
    EXPECT_EQ(first.Key(), "k19");
    EXPECT_EQ(doc.Tree.Root()->LastChild(), &second);
    EXPECT_EQ(first.Next(), &second);
    EXPECT_EQ(doc.NextObjectID, 21);
}

TEST(Schema, SchemaNodesNeedARoot)
{
    Document doc;
    EXPECT_THROW(mw::CreateLanguageMenusNode(doc, "en"), mw::DocTreeError);
    EXPECT_THROW(mw::GetOrCreateTransNode(doc), mw::DocTreeError);
    EXPECT_THROW(mw::GetMenuTracksOrCreate(doc), mw::DocTreeError);
}

TEST(Schema, GetOrCreateTransNodeFindsTheTableInAnyCase)
{
    Document doc = NewProject();
    doc.Tree.Item("k3").Text = "translationTABLE";
    EXPECT_EQ(&mw::GetOrCreateTransNode(doc), &doc.Tree.Item("k3"));
    EXPECT_EQ(doc.NextObjectID, 19);
}

TEST(Schema, GetOrCreateTransNodeMakesAMissingTable)
{
    Document doc = NewProject();
    doc.Tree.Remove(doc.Tree.Item("k3"));
    DocNode& table = mw::GetOrCreateTransNode(doc);
    EXPECT_EQ(table.Key(), "k19");
    EXPECT_EQ(table.Image, "transtable");
    EXPECT_EQ(table.Text, "TranslationTable");
    ASSERT_EQ(table.ChildCount(), 1u);
    EXPECT_EQ(table.FirstChild()->Text, "objectID = 19");
    EXPECT_EQ(doc.Tree.Root()->LastChild(), &table);
    EXPECT_EQ(doc.NextObjectID, 20);
    EXPECT_EQ(&mw::GetOrCreateTransNode(doc), &table);
}

TEST(Schema, GetMenuTracksOrCreateMakesItOnce)
{
    Document doc = NewProject();
    DocNode& tracks = mw::GetMenuTracksOrCreate(doc);
    EXPECT_EQ(tracks.Key(), "k19");
    EXPECT_EQ(tracks.Image, "menutracks");
    EXPECT_EQ(tracks.Text, "MenuTracks");
    EXPECT_EQ(tracks.FirstChild()->Text, "objectID = 19");
    EXPECT_EQ(doc.Tree.Item("k2").LastChild(), &tracks);
    EXPECT_EQ(doc.NextObjectID, 20);

    const std::size_t count = doc.Tree.Count();
    EXPECT_EQ(&mw::GetMenuTracksOrCreate(doc), &tracks);
    EXPECT_EQ(doc.Tree.Count(), count);
    EXPECT_EQ(doc.NextObjectID, 20);
}

TEST(Schema, GetMenuTracksOrCreateMakesAMissingMediaWithDistinctIdentifiers)
{
    Document doc = NewProject();
    doc.Tree.Remove(doc.Tree.Item("k2"));
    DocNode& tracks = mw::GetMenuTracksOrCreate(doc);
    const DocNode& media = doc.Tree.Item("k19");
    EXPECT_EQ(media.Text, "Media");
    EXPECT_EQ(media.Image, "media");
    EXPECT_EQ(mw::GetPropertyInNode(media, "objectID"), "19");
    EXPECT_EQ(doc.Tree.Root()->LastChild(), &media);
    EXPECT_EQ(tracks.Key(), "k20");
    EXPECT_EQ(tracks.Parent(), &media);
    EXPECT_EQ(mw::GetPropertyInNode(tracks, "objectID"), "20");
    EXPECT_EQ(doc.NextObjectID, 21);
}

} // namespace
