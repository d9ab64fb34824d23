#pragma once

#include "core/Prompt.h"
#include "document/Document.h"

#include <string>
#include <vector>

namespace mw {

// Reads a project file into the document: the tree and NextObjectID are replaced only when the
// whole file has been read. A file that cannot be read, does not parse, does not begin with the
// DivXMediaManager element or holds one objectID twice is reported through the prompt and leaves
// the document as it was. The project's file name is the caller's to set.
bool LoadXmlFile(const std::string& path, Document& doc, Prompt& prompt);

// Adds the nodes of a piece of XML at a place in the open tree (undo puts subtrees back this
// way). Elements with an objectID get their "k" keys back and NextObjectID is raised. Nothing is
// added when the XML does not parse or an objectID in it is already taken.
bool LoadXmlString(const std::string& xml, Document& doc, DocNode* relative, Relationship how, Prompt& prompt);

// A piece of XML and the place it goes to.
struct XmlPiece {
    std::string Xml;
    DocNode* Relative = nullptr;
    Relationship How = Relationship::Last;
};

// As LoadXmlString for several pieces read in one pass, each to its own place: all are added, or
// none when one does not parse or an objectID stands twice among them or in the tree.
bool LoadXmlStrings(const std::vector<XmlPiece>& pieces, Document& doc, Prompt& prompt);

} // namespace mw
