#include "media/ChapterNodes.h"

#include "core/Prompt.h"
#include "core/Text.h"
#include "document/CheckForErrors.h"
#include "document/ObjectIds.h"
#include "document/SchemaNodes.h"
#include "document/TreeQueries.h"
#include "i18n/LangDoc.h"
#include "media/StreamTexts.h"
#include "media/TitleNodes.h"

namespace mw {

namespace {

void AddChapterTrack(Document& doc, DocNode& chapter, DocNode& table, const std::string& sourceId,
                     const TrackRow& row, std::size_t index, const ChapterRange& range, const std::string& defLang,
                     SharedLookups& shared, const FormTexts& texts, Prompt& prompt)
{
    DocTree& tree = doc.Tree;
    const std::string kind = Lower(row.Kind);
    DocNode& track = AddNextObjectNode(doc, chapter, "MediaTrack", TrackNodeKind(kind));
    AddPropRow(tree, track, "mediaSourceID", sourceId);
    AddPropRow(tree, track, "sourceTrackID", "none");

    if (kind == "video") {
        AddPropRow(tree, track, "trackID", TrackID(index, StreamKind::Video));
        AddPropRow(tree, track, "startFrame", std::to_string(range.Start));
        AddPropRow(tree, track, "endFrame", std::to_string(range.End));
        AddPropRow(tree, track, "type", "video");
        return;
    }
    if (kind != "audio" && kind != "subtitle") {
        prompt.Message(texts(5, "Can not detect type for stream number ") + std::to_string(index + 1));
        return;
    }
    const std::string code = TrackLanguage(row.NameLanguage, defLang);
    AddPropRow(tree, track, "trackID", TrackID(index, kind == "audio" ? StreamKind::Audio : StreamKind::Subtitle));
    AddPropRow(tree, track, "languageCode", code);
    if (shared[index] == 0) {
        AddPropRow(tree, track, "strn", row.NameLanguage);
        shared[index] = AddTranslationLookup(doc, table, code, row.NameLanguage);
    }
    AddPropRow(tree, track, "translationLookupID", std::to_string(shared[index]));
    AddPropRow(tree, track, "type", kind);
}

} // namespace

long AddChapterNodes(Document& doc, DocNode& title, DocNode& table, const std::string& sourceId,
                     const TrackRows& tracks, int number, const ChapterRange& chapter, const std::string& defLang,
                     SharedLookups& shared, const FormTexts& texts, Prompt& prompt)
{
    DocTree& tree = doc.Tree;
    const std::string name = chapter.Name.empty() ? std::to_string(number) : chapter.Name;
    DocNode& comment = tree.AddChild(title, "", " -> Chapter " + name, "comment");
    comment.Tag = comment.Text;

    const long id = TakeObjectID(doc);
    DocNode& node = AddObjectNode(tree, title, id, "Chapter", "chapter");
    const long lookup = AddTranslationLookup(doc, table, defLang, name);
    AddPropRow(tree, node, "translationLookupID", std::to_string(lookup));

    shared.resize(tracks.size(), 0);
    for (std::size_t j = 0; j < tracks.size(); ++j)
        AddChapterTrack(doc, node, table, sourceId, tracks[j], j, chapter, defLang, shared, texts, prompt);
    return id;
}

std::vector<DocNode*> ChapterNodesOf(const DocNode& title)
{
    std::vector<DocNode*> chapters;
    for (const auto& child : title) {
        if (child->HasChildren() && EqualsNoCase(child->Text, "Chapter"))
            chapters.push_back(child.get());
    }
    return chapters;
}

void RemoveChapter(DocTree& tree, DocNode& chapter)
{
    std::vector<std::string> lookups{GetPropertyInNode(chapter, "translationlookupid")};
    for (const auto& child : chapter) {
        if (EqualsNoCase(child->Text, "MediaTrack"))
            lookups.push_back(GetPropertyInNode(*child, "translationlookupid"));
    }
    const DocNode* title = chapter.Parent();
    if (DocNode* before = chapter.Previous(); before && before->Image == "comment")
        tree.Remove(*before);
    tree.Remove(chapter);
    RemoveLookups(tree, lookups, title);
}

void RepairChapterReferences(DocTree& tree, const std::vector<std::string>& oldIds, const std::vector<long>& newIds,
                             const FormTexts& texts, Prompt& prompt)
{
    const DocNode* root = tree.Root();
    if (!root)
        return;
    for (std::size_t i = 0; i < oldIds.size(); ++i) {
        DocNode* row = nullptr;
        if (!FindInTree(*root, "mediaobjectid = " + oldIds[i], row))
            continue;
        if (i < newIds.size()) {
            row->Text = "mediaObjectID = " + std::to_string(newIds[i]);
            continue;
        }
        // Row, play action, action list, button, menu.
        DocNode* button = row->Parent() && row->Parent()->Parent() ? row->Parent()->Parent()->Parent() : nullptr;
        DocNode* menu = button ? button->Parent() : nullptr;
        if (!menu || Lower(menu->Text) != "divxmediamenu")
            continue;
        std::string menuName = GetPropertyInNode(*menu, "menuname");
        if (menuName.empty())
            menuName = ObjectIdOf(*menu);
        prompt.Message(texts(6, "Chapter with ID ") + oldIds[i] +
                       texts(7, " deleted, but was in use at action in button ") + ObjectIdOf(*button) +
                       texts(8, " in menu ") + menuName);
        EnsureVisible(*row);
        tree.Select(row);
    }
}

} // namespace mw
