#pragma once

#include "core/Prompt.h"
#include "document/Document.h"
#include "document/IdSet.h"
#include "i18n/LangDoc.h"

namespace mw {

// Unfolds the ancestors of a node so that a fault in it can be seen.
void EnsureVisible(DocNode& node);

// Adds the objectID of `first`, its following siblings and everything below them to the set.
void LoadIDs(const DocNode* first, IdSet& ids);

// Reports every reference below `first` and its following siblings that is not in `ids`, one
// message each; sets hasError when there is any.
void ParceForErrors(DocNode* first, const IdSet& ids, const LangDoc& lang, Prompt& prompt, bool& hasError);

// Reports the media files of titles and menus that cannot be found.
void CheckMediaForErrors(const Document& doc, const LangDoc& lang, Prompt& prompt, bool& hasError);

// Reports language sets without a valid starting menu, menus without an exit action and
// buttons without a select action.
void CheckMenusForErrors(Document& doc, const LangDoc& lang, Prompt& prompt, bool& hasError);

// Runs all the checks, one message per fault, then (when showMessage) the summary. True when
// there was no fault. The tree is left as it was, except that faults are unfolded.
bool CheckForErrors(Document& doc, const LangDoc& lang, Prompt& prompt, bool showMessage);

} // namespace mw
