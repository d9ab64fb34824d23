#pragma once

#include "document/Document.h"

#include <string>
#include <vector>

namespace mw {

// The root's child whose text is "media" in any case; null when the document has none.
DocNode* FindMediaNode(const Document& doc);
// The Title nodes of the Media node, in order.
std::vector<DocNode*> TitleNodes(const Document& doc);
bool IsTitleNode(const DocNode* node);
// The title's MediaSource; null when it has none.
DocNode* MediaSourceOf(const DocNode& title);
// The movie file of a title: its source's location, made absolute against the project file.
// Empty when the title has no source.
std::string TitleFile(const Document& doc, const DocNode& title);
// The identifier a node carries in its objectID row.
std::string ObjectIdOf(const DocNode& node);

// A stream's language from its strn text, the default menu language when it names none.
std::string TrackLanguage(const std::string& strn, const std::string& defLang);
// Removes the TranslationLookup nodes of these identifiers that are still there. An identifier
// of any other node, or of one that holds `inUse`, is passed over, so that a damaged file cannot
// make a title remove itself.
void RemoveLookups(DocTree& tree, const std::vector<std::string>& ids, const DocNode* inUse);
// Removes the title's own MediaTrack nodes and the lookups their rows name.
void RemoveOwnTracks(DocTree& tree, DocNode& title);

} // namespace mw
