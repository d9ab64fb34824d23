#include "media/NewProject.h"

#include "core/Paths.h"
#include "core/Text.h"
#include "document/MenuTrackList.h"
#include "document/Project.h"
#include "document/SchemaNodes.h"
#include "media/AskForMovies.h"
#include "media/NewTitleForm.h"
#include "media/StreamLanguage.h"
#include "media/StreamTexts.h"
#include "media/mAVIDecs.h"

namespace mw {

namespace {

// Fixed identifiers of the skeleton.
constexpr long kRootID = 1;
constexpr long kMediaID = 2;
constexpr long kTableID = 3;
constexpr long kTitleLookupID = 4; // and its Translation 5
constexpr long kTitleID = 6;
constexpr long kSourceID = 7;

// "01wb" for audio stream 1; "none" when no stream was chosen.
std::string DefaultTrack(int stream, StreamKind kind)
{
    return stream < 0 ? "none" : TrackID(static_cast<std::size_t>(stream), kind);
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
    doc.NextObjectID = kTitleLookupID;
    AddTranslationLookup(doc, table, defLang, "Main Feature");

    DocNode& media = AddObjectNode(tree, root, kMediaID, "Media", "media");
    DocNode& title = AddObjectNode(tree, media, kTitleID, "Title", "movie");
    AddPropRow(tree, title, "translationLookupID", std::to_string(kTitleLookupID));
    AddPropRow(tree, title, "defaultAudioTrack", DefaultTrack(defaultAudioStream, StreamKind::Audio));
    AddPropRow(tree, title, "defaultSubtitleTrack", DefaultTrack(defaultSubtitleStream, StreamKind::Subtitle));
    DocNode& source = AddObjectNode(tree, title, kSourceID, "MediaSource", "movie");
    AddPropRow(tree, source, "mediaType", "featureAvi");
    AddPropRow(tree, source, "location", moviePath);

    doc.NextObjectID = kSourceID + 1;
    for (const TrackRow& row : rows) {
        const std::string kindWord = Lower(row.Kind);
        DocNode& track = AddNextObjectNode(doc, title, "MediaTrack", TrackNodeKind(kindWord));
        AddPropRow(tree, track, "mediaSourceID", std::to_string(kSourceID));
        AddPropRow(tree, track, "trackID", row.TrackID);
        if (kindWord == "video") {
            AddPropRow(tree, track, "startFrame", row.StartFrame);
            AddPropRow(tree, track, "endFrame", row.EndFrame);
        } else if (kindWord == "audio" || kindWord == "subtitle") {
            const std::string code = StreamLanguageCode(row.NameLanguage, CodeEnd::Semicolon);
            if (!code.empty())
                AddPropRow(tree, track, "languageCode", code);
            AddPropRow(tree, track, "strn", row.NameLanguage);
            // The translation needs a language even when the stream names none; titles added
            // later fall back the same way.
            const long lookup = AddTranslationLookup(doc, table, code.empty() ? defLang : code, row.NameLanguage);
            AddPropRow(tree, track, "translationLookupID", std::to_string(lookup));
        }
        AddPropRow(tree, track, "type", kindWord);
    }
}

void ReadMovieFps(const std::string& movie, double& fps, Prompt& prompt)
{
    TrackRows rows;
    LoadStreamsToListView(movie, rows, false, fps, prompt);
}

bool CreateNewFile(Project& project, const std::string& preset, const std::string& dialogTitle)
{
    if (!project.AskToSave())
        return false;
    std::string movie = preset;
    if (movie.empty()) {
        const std::vector<std::string> files = AskForMovies(project, dialogTitle, false);
        if (files.empty())
            return false;
        movie = files.front();
    }

    NewTitleForm form;
    double fps = project.MovieFps;
    FillNewTitleForm(form, movie, fps, project.Ask());
    if (!project.Forms().ShowNewTitle(form))
        return false;

    project.ForgetCanvas();
    project.EnableItems(true);
    Document& doc = project.Doc;
    doc.ProjectFile = (project.ProgramFolder() / "Untitled.xml").string();
    project.FileIsNew = true;
    project.WindowTitle = WindowTitleFor(doc.ProjectFile);

    BuildNewProjectTree(doc, movie, form.Tracks, project.Values().defLang, ChosenStream(form.Combo1),
                        ChosenStream(form.Combo2));
    doc.Tree.Root()->Expanded = true;
    doc.Tree.Select(doc.Tree.Root());
    LoadMediaTracsFromMenuTracs(doc, doc.MenuTracks);
    project.MovieFps = fps;
    project.FileIsDirty = true;
    project.ClearUndo();
    project.RestartAutoSave();
    return true;
}

} // namespace mw
