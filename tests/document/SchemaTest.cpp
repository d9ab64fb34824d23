#include "media/NewProject.h"
#include "document/SchemaNodes.h"
#include "document/TreeQueries.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using mw::DocNode;
using mw::Document;
using Texts = std::vector<std::string>;

// Each element as one line, indented by its depth: "key kind Text: row | row".
Texts Outline(const Document& doc)
{
    Texts lines;
    for (const DocNode* n : doc.Tree.Flat()) {
        if (!n->HasChildren())
            continue;
        std::string line = n->Key() + ' ' + n->Image + ' ' + n->Text + ':';
        for (const DocNode* p = n->Parent(); p; p = p->Parent())
            line.insert(0, "  ");
        for (const auto& row : *n) {
            if (!row->HasChildren())
                line += (line.back() == ':' ? " " : " | ") + row->Text;
        }
        lines.push_back(line);
    }
    return lines;
}

const mw::TrackRows kStreams = {
    {"Video", "Video - en-US;MO", "720 x 576", "00dc", "0", "1499"},
    {"Audio", "Audio - en-US;02", "", "01wb", "0", "1499"},
    {"Audio", "Audio - eng;02", "", "02wb", "0", "1499"},
    {"Subtitle", "Subtitle - ro;02", "", "03sb", "0", "1499"},
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
    // Audio and subtitle streams take two more identifiers each for their translation; a stream
    // name without a two-letter language before its ";" ("en-US" has a country too) gives no
    // languageCode row and the menu's language.
    const Texts expected = {
        "k1 divx DivXMediaManager: menuVersion = 1 | objectID = 1 | defaultMenuLanguage = de | version = 1.0",
        "  k3 transtable TranslationTable: objectID = 3",
        "    k4 translookup TranslationLookup: objectID = 4",
        "      k5 trans Translation: objectID = 5 | languageCode = de | value = Main Feature",
        "    k10 translookup TranslationLookup: objectID = 10",
        "      k11 trans Translation: objectID = 11 | languageCode = de | value = Audio - en-US;02",
        "    k13 translookup TranslationLookup: objectID = 13",
        "      k14 trans Translation: objectID = 14 | languageCode = de | value = Audio - eng;02",
        "    k16 translookup TranslationLookup: objectID = 16",
        "      k17 trans Translation: objectID = 17 | languageCode = ro | value = Subtitle - ro;02",
        "  k2 media Media: objectID = 2",
        "    k6 movie Title: objectID = 6 | translationLookupID = 4 | defaultAudioTrack = 02wb | "
        "defaultSubtitleTrack = 03sb",
        "      k7 movie MediaSource: objectID = 7 | mediaType = featureAvi | location = /movies/feature.avi",
        "      k8 movielink MediaTrack: objectID = 8 | mediaSourceID = 7 | trackID = 00dc | startFrame = 0 | "
        "endFrame = 1499 | type = video",
        "      k9 audiolink MediaTrack: objectID = 9 | mediaSourceID = 7 | trackID = 01wb | "
        "strn = Audio - en-US;02 | translationLookupID = 10 | type = audio",
        "      k12 audiolink MediaTrack: objectID = 12 | mediaSourceID = 7 | trackID = 02wb | "
        "strn = Audio - eng;02 | translationLookupID = 13 | type = audio",
        "      k15 sublink MediaTrack: objectID = 15 | mediaSourceID = 7 | trackID = 03sb | languageCode = ro | "
        "strn = Subtitle - ro;02 | translationLookupID = 16 | type = subtitle",
        "      k18 node MediaTrack: objectID = 18 | mediaSourceID = 7 | trackID = 04?? | type = unknown",
    };
    const Document doc = NewProject();
    EXPECT_EQ(Outline(doc), expected);
    for (const DocNode* n : doc.Tree.Flat()) {
        if (!n->HasChildren()) {
            EXPECT_EQ(n->Key(), "");
            EXPECT_EQ(n->Image, n->Text.starts_with("objectID = ") ? "objectid" : "prop") << n->Text;
        }
    }
    EXPECT_EQ(doc.NextObjectID, 19);
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
        EXPECT_EQ(Outline(doc).size(), c.Elements);
        EXPECT_EQ(doc.NextObjectID, c.Next);
    }
    EXPECT_EQ(NewProject({audio}, -1, -1).Tree.Item("k8").Image, "audiolink");
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

TEST(Schema, MissingPartsAreMadeOnceBehindTheOthers)
{
    Document doc = NewProject();
    doc.Tree.Item("k3").Text = "translationTABLE"; // found in any case
    EXPECT_EQ(&mw::GetOrCreateTransNode(doc), &doc.Tree.Item("k3"));
    doc.Tree.Remove(doc.Tree.Item("k3"));
    const DocNode& en = mw::CreateLanguageMenusNode(doc, "en");
    DocNode& table = mw::GetOrCreateTransNode(doc);
    DocNode& tracks = mw::GetMenuTracksOrCreate(doc);
    const DocNode& fr = mw::CreateLanguageMenusNode(doc, "fr");
    EXPECT_EQ(&mw::GetOrCreateTransNode(doc), &table);
    EXPECT_EQ(&mw::GetMenuTracksOrCreate(doc), &tracks);
    const Texts outline = Outline(doc);
    EXPECT_EQ(outline.at(9), "    k21 menutracks MenuTracks: objectID = 21"); // the last child of Media
    EXPECT_EQ(Texts(outline.end() - 3, outline.end()),
              (Texts{"  k19 menulang LanguageMenus: objectID = 19 | languageCode = en | startingMenuID = none | "
                     "rootMenuID = none",
                     "  k20 transtable TranslationTable: objectID = 20",
                     "  k22 menulang LanguageMenus: objectID = 22 | languageCode = fr | startingMenuID = none | "
                     "rootMenuID = none"}));
    EXPECT_EQ(en.Next(), &table);
    EXPECT_EQ(doc.Tree.Root()->LastChild(), &fr);
    EXPECT_EQ(doc.NextObjectID, 23);

    // Without Media, both are made, each with its own identifier.
    doc.Tree.Remove(doc.Tree.Item("k2"));
    EXPECT_EQ(mw::GetMenuTracksOrCreate(doc).Key(), "k24");
    const Texts without = Outline(doc);
    EXPECT_EQ(Texts(without.end() - 2, without.end()),
              (Texts{"  k23 media Media: objectID = 23", "    k24 menutracks MenuTracks: objectID = 24"}));
}

} // namespace
