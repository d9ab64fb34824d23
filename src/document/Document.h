#pragma once

#include "document/DocTree.h"
#include "document/MenuTrackList.h"

#include <string>

namespace mw {

// The document part of an open project: the tree, the next free object identifier, the file it
// came from (empty for a project never saved) and the list of the menus' tracks.
struct Document {
    DocTree Tree;
    long NextObjectID = 0;
    std::string ProjectFile;
    MenuTrackList MenuTracks;
};

} // namespace mw
