#pragma once

#include <string>

namespace mw {

// Font size of the block headings in the help text: "[b][s12]Name[s8][/b]".
inline constexpr int kHelpHeadingSize = 12;

// The help text of the node kinds, one block per element in the help pane's markup.
const char* NodeKindsHelpText();

// The help block of an element name, case ignored, ready for the help pane: its heading and
// text up to the next heading, behind the pane's table settings. "none" when there is none.
std::string HelpBlockFor(const std::string& nodeName);

} // namespace mw
