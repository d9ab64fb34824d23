#pragma once

#include "core/Prompt.h"
#include "document/Document.h"
#include "document/IdSet.h"
#include "i18n/LangDoc.h"

#include <map>

namespace mw {

// Rewrites every reference below `first` and its following siblings to the position of its
// identifier in `ids` plus 1. A reference not in the set gets a number of its own beyond the
// set (ids.Count() + missingCount) and one message each.
void ParceToUpdate(DocNode* first, const IdSet& ids, const LangDoc& lang, Prompt& prompt, long& missingCount);

// What the window still has to do after renumbering.
struct NormalizeResult {
    bool Changed = false;                // the project is dirty; undo snapshots hold old keys
    long MissingCount = 0;               // dangling references, each given its own number
    std::map<long long, long> NewNumber; // old identifier to new, to find the menu on the canvas
};

// Renumbers all objects to 1..N in the text order of their padded identifiers, renames the keys,
// reloads the list of menu tracks and sets the next free identifier. Marking the project dirty,
// refreshing the display, re-reading the menu on the canvas and clearing the undo history are
// the caller's, with the result.
NormalizeResult NormalizeFile(Document& doc, const LangDoc& lang, Prompt& prompt);

} // namespace mw
