#pragma once

#include "document/Document.h"

#include <string>

namespace mw {

// Writes the whole tree as a project file: rows become attributes, elements nest, comment rows
// and extra info become comments. The file is replaced in one step, so a failed save leaves the
// old one as it was; `error` then says why. Padded comment texts are stored back into the Tags.
// With locationsFrom, a copy that stands away from the project: relative locations are written
// as absolute ones against that project file; the tree keeps them as they are.
bool SaveTreeToFile(DocTree& tree, const std::string& path, std::string& error, const std::string& locationsFrom = {});

// One subtree as a line of raw XML, which LoadXmlString reads back (undo keeps these). The
// node's own comment rows are not part of it; those of the elements below it are. Empty when an
// element name is not a valid XML name.
std::string NodeToXmlString(DocNode& node);

// Writes a subtree as a template file that stands without its project: a backgroundVideoID row
// is written as the absolute path of the video, with the track's startFrame and endFrame beside it.
// Comment rows are written as by NodeToXmlString.
bool SaveNodeToTemplate(const Document& doc, DocNode& node, const std::string& path, std::string& error);

} // namespace mw
