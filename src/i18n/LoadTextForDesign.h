#pragma once

#include "i18n/DesignTarget.h"
#include "i18n/LangDoc.h"

namespace mw {

// Labels a window from the "<form>_Design" section of the language file. A text the file does
// not hold keeps the window's own English one; an empty value empties it.
void LoadTextForDesign(const LangDoc& lang, DesignTarget& target);

} // namespace mw
