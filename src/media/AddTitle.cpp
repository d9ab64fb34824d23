#include "media/AddTitle.h"

#include "core/NumberText.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "document/ObjectIds.h"
#include "document/Project.h"
#include "document/SchemaNodes.h"
#include "document/TreeQueries.h"
#include "media/AskForMovies.h"
#include "media/NewTitleForm.h"
#include "media/TitleNodes.h"

namespace mw {

namespace {

// "01wb" for the stream a default-track combo stands at, "none" for "<none>".
std::string DefaultTrack(const ComboList& combo, const char* suffix)
{
    const int stream = ChosenStream(combo);
    return stream < 0 ? "none" : PadZeros(stream, 2) + suffix;
}

} // namespace

void mnuAddTitle(Project& project)
{
    for (const std::string& file : AskForMovies(project, "Select new titles/movies", true))
        AddTitle(project, file);
}

bool AddTitle(Project& project, const std::string& fileName)
{
    NewTitleForm form;
    double fps = project.MovieFps;
    // A movie that cannot be read (or has gone) adds nothing: a title without tracks is no use.
    if (!FillNewTitleForm(form, fileName, fps, project.Ask()) || !project.Forms().ShowNewTitle(form))
        return false;

    project.MarkDirty();
    Document& doc = project.Doc;
    DocTree& tree = doc.Tree;
    DocNode* media = FindMediaNode(doc);
    if (!media)
        return true;
    const std::string& defLang = project.Values().defLang;
    const long titleId = TakeObjectID(doc);
    DocNode& title = AddObjectNode(tree, *media, titleId, "Title", "movie");
    // The name lookup is the next object made, even when the table is missing.
    AddPropRow(tree, title, "translationLookupID", std::to_string(doc.NextObjectID));
    AddPropRow(tree, title, "defaultAudioTrack", "none");
    AddPropRow(tree, title, "defaultSubtitleTrack", "none");

    // A project without a translation table keeps the title as far as it got.
    DocNode* table = tree.ObjectNode(Get1NodeInNode(*tree.Root(), "translationtable"));
    if (!table)
        return true;
    AddTranslationLookup(doc, *table, defLang, "<an other title " + std::to_string(titleId) + ">");
    const long sourceId = TakeObjectID(doc);
    DocNode& source = AddObjectNode(tree, title, sourceId, "MediaSource", "movie");
    AddPropRow(tree, source, "mediaType", "featureAvi");
    AddPropRow(tree, source, "location", fileName);

    AddTitleTracks(doc, title, *table, std::to_string(sourceId), form.Tracks, true, defLang);
    UpdatePropertyInNode(tree, title, "defaultAudioTrack", DefaultTrack(form.Combo1, "wb"), false);
    UpdatePropertyInNode(tree, title, "defaultSubtitleTrack", DefaultTrack(form.Combo2, "sb"), false);
    return true;
}

void AddTitleTracks(Document& doc, DocNode& title, DocNode& table, const std::string& sourceId,
                    const TrackRows& rows, bool languageFromName, const std::string& defLang)
{
    DocTree& tree = doc.Tree;
    for (const TrackRow& row : rows) {
        const std::string kind = Lower(row.Kind);
        DocNode& track = AddNextObjectNode(doc, title, "MediaTrack", TrackNodeKind(kind));
        AddPropRow(tree, track, "mediaSourceID", sourceId);
        AddPropRow(tree, track, "trackID", row.TrackID);
        if (kind == "video") {
            AddPropRow(tree, track, "startFrame", row.StartFrame);
            AddPropRow(tree, track, "endFrame", row.EndFrame);
        } else {
            const std::string code = languageFromName ? TrackLanguage(row.NameLanguage, defLang) : defLang;
            AddPropRow(tree, track, "languageCode", code);
            AddPropRow(tree, track, "strn", row.NameLanguage);
            const long lookup = AddTranslationLookup(doc, table, code, row.NameLanguage);
            AddPropRow(tree, track, "translationLookupID", std::to_string(lookup));
        }
        AddPropRow(tree, track, "type", kind);
    }
}

} // namespace mw
