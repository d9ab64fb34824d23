#pragma once

#include <string>

namespace mw {

// The help text of the node kinds, one block per element in the help pane's markup.
const char* NodeKindsHelpText();

} // namespace mw
