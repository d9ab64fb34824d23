#pragma once

#include "i18n/FormDesign.h"

#include <vector>

namespace mw {

// The texts of every window of the program as they stand before any language file relabels
// them. Needs a QApplication.
std::vector<FormDesign> ProgramWindowDesigns();

} // namespace mw
