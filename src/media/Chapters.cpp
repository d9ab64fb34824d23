#include "media/Chapters.h"

#include "core/Text.h"
#include "core/settings/Settings.h"
#include "document/Project.h"
#include "document/SchemaNodes.h"
#include "document/TreeQueries.h"
#include "media/ChapForm.h"
#include "media/ChapterNodes.h"
#include "media/TitleNodes.h"
#include "media/mAVIDecs.h"

#include <algorithm>

namespace mw {

namespace {

// The ranges of the regular division: each chapter ends one frame before the key frame nearest
// its ideal end, when that key frame lies past its start. Snapping moves boundaries later, so
// the division can reach the end of the movie before the count is made: the chapter that reaches
// it runs to the last frame, and so does one whose next would only hold the last frame. The
// last chapter always runs to the end, so no frame is left without a chapter.
std::vector<ChapterRange> RegularRanges(const ChapForm& form, const std::string& file, Prompt& prompt)
{
    const bool perMinutes = form.Mode == ChapMode::PerMinutes;
    const long long count = LeadingNumber(perMinutes ? form.lblCountChapters.Caption : form.txtChapters);
    const long step = static_cast<long>(LeadingNumber(perMinutes ? form.lblCountChapters.Tag : form.lblCountTime.Tag));
    const long last = form.lblEndFrame;
    std::vector<ChapterRange> ranges;
    long start = 0;
    for (long long i = 0; i < count && start <= last; ++i) {
        long end = start + step - 1;
        const long key = FindNearestKeyFrame(file, end, true, prompt);
        if (key > start)
            end = key - 1;
        if (i == count - 1 || end + 1 >= last)
            end = last;
        ranges.push_back({start, end, ""});
        start = end + 1;
    }
    return ranges;
}

// Each imported frame starts a chapter after the first; the last chapter runs to the end. Frames
// past the end of the movie start nothing, and a frame that does not lie after the chapter before
// (a first line at 0, a repeated or unsorted line) adds no empty chapter.
std::vector<ChapterRange> ImportedRanges(const ChapForm& form)
{
    std::vector<ChapterRange> ranges;
    long start = 0;
    for (const long frame : form.List1) {
        if (frame <= start || frame > form.lblEndFrame)
            continue;
        ranges.push_back({start, frame - 1, ""});
        start = frame;
    }
    ranges.push_back({start, form.lblEndFrame, ""});
    return ranges;
}

std::vector<ChapterRange> ChapterRanges(const ChapForm& form, const std::string& file, Prompt& prompt)
{
    if (form.Mode == ChapMode::Manual) {
        std::vector<ChapterRange> ranges;
        for (const ChapterRow& row : form.ListView1)
            ranges.push_back({row.Start, std::min(row.End, form.lblEndFrame), row.Name});
        return ranges;
    }
    if (form.Imported)
        return ImportedRanges(form);
    return RegularRanges(form, file, prompt);
}

// The chapters of the form's chosen title. False when the run must stop: the user cancelled
// or the title's tracks could not be read.
bool CreateChapsForTitle(Project& project, ChapForm& form)
{
    Document& doc = project.Doc;
    Prompt& prompt = project.Ask();
    DocNode* title = doc.Tree.ObjectNode(ChosenTitleID(form));
    if (!IsTitleNode(title))
        return false;
    const std::string file = ChosenTitleFile(form);
    // The movie may have gone since the dialog read it; its chapters stay then.
    TrackRows rows;
    double fps = form.Fps;
    if (!LoadStreamsToListView(file, rows, false, fps, prompt))
        return false;
    if (form.lstTracks.empty()) {
        prompt.Message("An error occured loading tracks");
        return false;
    }

    std::vector<std::string> oldIds;
    const std::vector<DocNode*> oldChapters = ChapterNodesOf(*title);
    if (!oldChapters.empty()) {
        // Hand-made lists replace what was there without asking.
        PromptAnswer answer = PromptAnswer::Yes;
        if (form.Mode != ChapMode::Manual)
            answer = prompt.Ask("Seems that this title has chapters. Delete them first?\r\n" + file,
                                PromptButtons::YesNoCancel, PromptAnswer::Yes);
        if (answer == PromptAnswer::Cancel)
            return false;
        if (answer == PromptAnswer::Yes) {
            for (DocNode* chapter : oldChapters) {
                oldIds.push_back(ObjectIdOf(*chapter));
                RemoveChapter(doc.Tree, *chapter);
            }
            project.MarkDirty();
        }
    }

    DocNode& table = GetOrCreateTransNode(doc);
    const DocNode* source = MediaSourceOf(*title);
    const std::string sourceId = source ? ObjectIdOf(*source) : "";

    const std::vector<ChapterRange> ranges = ChapterRanges(form, file, prompt);
    const FormTexts texts = project.Texts();
    SharedLookups shared;
    std::vector<long> newIds;
    for (std::size_t i = 0; i < ranges.size(); ++i)
        newIds.push_back(AddChapterNodes(doc, *title, table, sourceId, form.lstTracks, static_cast<int>(i) + 1,
                                         ranges[i], project.Values().defLang, shared, texts, prompt));
    RepairChapterReferences(doc.Tree, oldIds, newIds, texts, prompt);
    project.MarkDirty();
    return true;
}

} // namespace

std::string ChapSettingsFile(const Project& project)
{
    return SettingsFilePath(project.ProgramFolder()).string();
}

bool mnuCreateChapters(Project& project)
{
    ChapForm form;
    LoadChapForm(form, project.Doc, ChapSettingsFile(project), project.Ask());
    return CreateChaps(project, form, true);
}

bool CreateChaps(Project& project, ChapForm& form, bool showForm)
{
    Prompt& prompt = project.Ask();
    if (showForm) {
        form.Combo1.ListIndex = form.Combo1.Items.empty() ? -1 : 0;
        if (form.Combo1.ListIndex == 0)
            Combo1_Click(form, project.Doc, prompt);
        form.chkAll = false;
        form.Accepted = false;
        if (!project.Forms().ShowChap(form))
            return false;
    }
    if (!form.chkAll)
        return CreateChapsForTitle(project, form);
    // Every title is loaded in turn; a regular division is worked out again for its length.
    for (std::size_t i = 0; i < form.Combo1.Items.size(); ++i) {
        form.Combo1.ListIndex = static_cast<int>(i);
        if (!LoadChosenTitle(form, prompt))
            return false;
        if (form.Mode != ChapMode::Manual && !form.Imported)
            CalcChapters(form, prompt);
        if (!CreateChapsForTitle(project, form))
            return false;
    }
    return true;
}

} // namespace mw
