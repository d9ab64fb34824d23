#include "media/RefreshTitle.h"

#include "core/Text.h"
#include "document/Project.h"
#include "document/SchemaNodes.h"
#include "document/TreeQueries.h"
#include "media/AddTitle.h"
#include "media/ChapForm.h"
#include "media/ChapterNodes.h"
#include "media/Chapters.h"
#include "media/TitleNodes.h"
#include "media/mAVIDecs.h"

#include <algorithm>
#include <optional>

namespace mw {

namespace {

bool RefreshTracks(Project& project, DocNode& title)
{
    Document& doc = project.Doc;
    DocTree& tree = doc.Tree;
    TrackRows rows;
    double fps = project.MovieFps;
    // A movie that cannot be read keeps the tracks the title has.
    if (!LoadStreamsToListView(TitleFile(doc, title), rows, true, fps, project.Ask()))
        return false;
    project.MarkDirty();

    RemoveOwnTracks(tree, title);

    const std::string audio = GetPropertyInNode(title, "defaultAudioTrack");
    const std::string subtitle = GetPropertyInNode(title, "defaultSubtitleTrack");
    DocNode& table = GetOrCreateTransNode(doc);
    const DocNode* source = MediaSourceOf(title);
    AddTitleTracks(doc, title, table, source ? ObjectIdOf(*source) : "", rows, false, project.Values().defLang);
    UpdatePropertyInNode(tree, title, "defaultAudioTrack", audio.empty() ? "none" : audio, true);
    UpdatePropertyInNode(tree, title, "defaultSubtitleTrack", subtitle.empty() ? "none" : subtitle, true);
    return true;
}

// The frames of a chapter: those of its first track that has both.
std::optional<ChapterRange> ChapterFrames(const DocNode& chapter)
{
    for (const auto& track : chapter) {
        if (!EqualsNoCase(track->Text, "MediaTrack"))
            continue;
        const std::string start = GetPropertyInNode(*track, "startframe");
        const std::string end = GetPropertyInNode(*track, "endframe");
        if (!start.empty() && !end.empty())
            return ChapterRange{static_cast<long>(LeadingNumber(start)), static_cast<long>(LeadingNumber(end)), ""};
    }
    return std::nullopt;
}

bool RefreshChapters(Project& project, DocNode& title)
{
    Document& doc = project.Doc;
    Prompt& prompt = project.Ask();
    const FormTexts texts = project.Texts();

    // The movie is read before any chapter goes, so that one that cannot be read keeps them.
    ChapForm form;
    LoadChapForm(form, doc, ChapSettingsFile(project), prompt);
    const std::string titleId = ObjectIdOf(title);
    for (std::size_t i = 0; i < form.Combo1.Items.size(); ++i) {
        if (std::to_string(form.Combo1.Items[i].ItemData) == titleId)
            form.Combo1.ListIndex = static_cast<int>(i);
    }
    if (!Combo1_Click(form, doc, prompt))
        return false;
    project.MarkDirty();

    std::vector<std::string> oldIds;
    std::vector<ChapterRange> ranges;
    for (DocNode* chapter : ChapterNodesOf(title)) {
        oldIds.push_back(ObjectIdOf(*chapter));
        std::optional<ChapterRange> frames = ChapterFrames(*chapter);
        if (!frames) {
            prompt.Message(texts(35, "Error in chapters. Can not found startFrame and endFrame"));
            frames = ChapterRange{};
        }
        ranges.push_back(*frames);
        RemoveChapter(doc.Tree, *chapter);
    }
    form.txtChapters = std::to_string(ranges.size());

    DocNode& table = GetOrCreateTransNode(doc);
    const DocNode* source = MediaSourceOf(title);
    const std::string sourceId = source ? ObjectIdOf(*source) : "";
    SharedLookups shared;
    std::vector<long> newIds;
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        ranges[i].End = std::min(ranges[i].End, form.lblEndFrame);
        newIds.push_back(AddChapterNodes(doc, title, table, sourceId, form.lstTracks, static_cast<int>(i) + 1,
                                         ranges[i], project.Values().defLang, shared, texts, prompt));
    }
    RepairChapterReferences(doc.Tree, oldIds, newIds, texts, prompt);
    return true;
}

} // namespace

bool mnuRefreshTitle(Project& project)
{
    DocNode* title = GetParentNode(project.Doc.Tree);
    if (!IsTitleNode(title))
        return true;
    return ChapterNodesOf(*title).empty() ? RefreshTracks(project, *title) : RefreshChapters(project, *title);
}

} // namespace mw
