#pragma once

#include "document/DocTree.h"

#include <string>

namespace mw {

// The document part of an open project: the tree, the next free object identifier and the
// file it came from (empty for a project never saved).
struct Document {
    DocTree Tree;
    long NextObjectID = 0;
    std::string ProjectFile;
};

} // namespace mw
