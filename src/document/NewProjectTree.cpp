#include "document/NewProjectTree.h"

#include "core/Text.h"
#include "document/SchemaNodes.h"
#include "media/StreamLanguage.h"

namespace mw {

namespace {

// Fixed identifiers of the skeleton.
constexpr long kRootID = 1;
constexpr long kMediaID = 2;
constexpr long kTableID = 3;
constexpr long kTitleLookupID = 4;
constexpr long kTitleID = 6;
constexpr long kSourceID = 7;

// "01wb" for audio stream 1; "none" when no stream was chosen.
std::string DefaultTrack(int stream, const char* suffix)
{
    if (stream < 0)
        return "none";
    return (stream < 10 ? "0" : "") + std::to_string(stream) + suffix;
}

std::string TrackKind(const std::string& kindWord)
{
    if (kindWord == "video")
        return "movielink";
    if (kindWord == "audio")
        return "audiolink";
    if (kindWord == "subtitle")
        return "sublink";
    return "node"; // what reading the file back gives a MediaTrack of another type
}

} // namespace

void BuildNewProjectTree(Document& doc, const std::string& moviePath, const TrackRows& rows,
                         const std::string& defLang, int defaultAudioStream, int defaultSubtitleStream)
{
    DocTree& tree = doc.Tree;
    tree.Clear();

    // The root's rows stand in this order in every file the program has made; keep it.
    DocNode& root = tree.Add(nullptr, Relationship::Last, "k" + std::to_string(kRootID), "DivXMediaManager", "divx");
    AddPropRow(tree, root, "menuVersion", "1");
    tree.AddChild(root, "", "objectID = " + std::to_string(kRootID), "objectid");
    AddPropRow(tree, root, "defaultMenuLanguage", defLang);
    AddPropRow(tree, root, "version", "1.0");

    DocNode& table = AddObjectNode(tree, root, kTableID, "TranslationTable", "transtable");
    AddTranslationLookup(tree, table, kTitleLookupID, defLang, "Main Feature");

    DocNode& media = AddObjectNode(tree, root, kMediaID, "Media", "media");
    DocNode& title = AddObjectNode(tree, media, kTitleID, "Title", "movie");
    AddPropRow(tree, title, "translationLookupID", std::to_string(kTitleLookupID));
    AddPropRow(tree, title, "defaultAudioTrack", DefaultTrack(defaultAudioStream, "wb"));
    AddPropRow(tree, title, "defaultSubtitleTrack", DefaultTrack(defaultSubtitleStream, "sb"));
    DocNode& source = AddObjectNode(tree, title, kSourceID, "MediaSource", "movie");
    AddPropRow(tree, source, "mediaType", "featureAvi");
    AddPropRow(tree, source, "location", moviePath);

    long id = kSourceID;
    for (const TrackRow& row : rows) {
        ++id;
        const std::string kindWord = Lower(row.Kind);
        DocNode& track = AddObjectNode(tree, title, id, "MediaTrack", TrackKind(kindWord));
        AddPropRow(tree, track, "mediaSourceID", std::to_string(kSourceID));
        AddPropRow(tree, track, "trackID", row.TrackID);
        if (kindWord == "video") {
            AddPropRow(tree, track, "startFrame", row.StartFrame);
            AddPropRow(tree, track, "endFrame", row.EndFrame);
        } else if (kindWord == "audio" || kindWord == "subtitle") {
            const std::string code = StreamLanguageCode(row.NameLanguage);
            if (!code.empty())
                AddPropRow(tree, track, "languageCode", code);
            AddPropRow(tree, track, "strn", row.NameLanguage);
            AddPropRow(tree, track, "translationLookupID", std::to_string(id + 1));
            // The translation needs a language even when the stream names none; titles added
            // later fall back the same way.
            AddTranslationLookup(tree, table, id + 1, code.empty() ? defLang : code, row.NameLanguage);
            id += 2;
        }
        AddPropRow(tree, track, "type", kindWord);
    }
    doc.NextObjectID = id + 1;
}

} // namespace mw
