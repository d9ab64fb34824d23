#pragma once

#include "document/Document.h"

#include <string>

namespace mw {

// An element with an identifier: key "k" + id and, as its first row, "objectID = " id.
DocNode& AddObjectNode(DocTree& tree, DocNode& parent, long id, const std::string& text, const std::string& kind);
// The same with the document's next identifier (TakeObjectID).
DocNode& AddNextObjectNode(Document& doc, DocNode& parent, const std::string& text, const std::string& kind);
// A property row made by code: "name = value", no key, kind "prop".
DocNode& AddPropRow(DocTree& tree, DocNode& element, const std::string& name, const std::string& value);
// A TranslationLookup under the table holding one Translation, each with the document's next
// identifier. Returns the lookup's identifier.
long AddTranslationLookup(Document& doc, DocNode& table, const std::string& languageCode, const std::string& value);

// The node kind of a MediaTrack by its type ("video", "audio", "subtitle", any case):
// movielink, audiolink, sublink; "node" for any other type.
std::string TrackNodeKind(const std::string& type);

// A new menu set as the last child of the root, with no starting and no root menu yet.
DocNode& CreateLanguageMenusNode(Document& doc, const std::string& languageCode);
// The root's TranslationTable, made as its last child when there is none.
DocNode& GetOrCreateTransNode(Document& doc);
// The MenuTracks of the root's Media; either is made when missing.
DocNode& GetMenuTracksOrCreate(Document& doc);

} // namespace mw
