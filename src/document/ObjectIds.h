#pragma once

#include "document/DocTree.h"

#include <array>
#include <functional>
#include <string>
#include <string_view>

#include <pugixml.hpp>

namespace mw {

struct Document;

// The next free identifier for a new object; the document's counter moves on by one. Every new
// object takes its identifier here.
long TakeObjectID(Document& doc);

// The identifier that an object's key ("k" + id) holds; "" for the key of any other node.
std::string IdOfKey(std::string_view key);

// Removes the element that the identifier `id` names, when it is an element called `element`
// (case ignored) that neither is nor holds `inUse`, the node the caller still works on. So a
// damaged file whose reference names a node of another kind removes nothing. True when removed.
bool RemoveReferenced(DocTree& tree, const std::string& id, std::string_view element,
                      const DocNode* inUse = nullptr);

// What counts as a reference, decided in one place for every walk. The name is cut at the first
// "=", trimmed and lowered: it refers to an object when it ends in "id" but not in "trackid"
// (track ids name streams), or when it ends in "action". So "objectID" and "valid" count.
bool IsReferenceName(std::string_view name);
// "" and "none", case and blanks ignored, refer to nothing.
bool IsReferenceValue(std::string_view value);
// A row "name = value" whose name and value both make it a reference.
bool IsReferenceRow(std::string_view text);

// Attributes of the first element of extra info that hold identifiers.
inline constexpr std::array<const char*, 2> kExtraInfoReferences = {"rectID", "menuID"};

// Called for each reference found by WalkReferences: a row that holds one, or an element whose
// extra info parses, with the parsed document (changes to it are the caller's to write back).
struct ReferenceVisitor {
    std::function<void(DocNode& row)> Row;
    std::function<void(DocNode& element, pugi::xml_document& extraInfo)> ExtraInfo;
};

// Walks `first` and its following siblings depth first, the element's extra info before its rows.
void WalkReferences(DocNode* first, const ReferenceVisitor& visit);

} // namespace mw
