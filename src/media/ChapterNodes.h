#pragma once

#include "document/Document.h"
#include "media/TrackRow.h"

#include <string>
#include <vector>

namespace mw {

class FormTexts;
class Prompt;

// One chapter to be made: its frames and its name (empty for none).
struct ChapterRange {
    long Start = 0;
    long End = 0;
    std::string Name;
};

// The translation made for each audio and subtitle track row by the first chapter, shared by
// the later ones; 0 while none is made.
using SharedLookups = std::vector<long>;

// Adds chapter `number` as the last children of the title: its comment, the Chapter with its
// translation, and one MediaTrack per track row, every object taking the document's next
// identifier. Returns the chapter's identifier. `texts` are those of the main window.
long AddChapterNodes(Document& doc, DocNode& title, DocNode& table, const std::string& sourceId,
                     const TrackRows& tracks, int number, const ChapterRange& chapter, const std::string& defLang,
                     SharedLookups& shared, const FormTexts& texts, Prompt& prompt);

// The Chapter nodes of a title, in order.
std::vector<DocNode*> ChapterNodesOf(const DocNode& title);

// Removes a chapter with the comment before it, its translation and those of its tracks.
void RemoveChapter(DocTree& tree, DocNode& chapter);

// Points the actions that played old chapter i at new chapter i (the first such action only).
// An action that plays an old chapter beyond the new ones is shown, selected, with a message
// naming its button and menu.
void RepairChapterReferences(DocTree& tree, const std::vector<std::string>& oldIds, const std::vector<long>& newIds,
                             const FormTexts& texts, Prompt& prompt);

} // namespace mw
