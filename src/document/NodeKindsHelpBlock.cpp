#include "document/NodeKindsHelp.h"

#include "core/Text.h"

#include <algorithm>

namespace mw {

namespace {

constexpr const char* kHeadingStart = "[b][s";
// Margins and border of the tables, which the blocks themselves leave out.
constexpr const char* kPaneSettings = "[am2][amt2][ab3x1][abc16744576]";

// Line breaks in the help source are for editing only; the text marks its own line ends.
std::string WithoutLineBreaks(std::string text)
{
    text.erase(std::remove_if(text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }),
               text.end());
    return text;
}

} // namespace

std::string HelpBlockFor(const std::string& nodeName)
{
    // The whole heading is searched, so that "Action" does not find "AudioSelectAction".
    const std::string heading =
        Lower(kHeadingStart + std::to_string(kHelpHeadingSize) + "]" + nodeName + "[s8][/b]");
    const std::string text = NodeKindsHelpText();
    const std::string lowered = Lower(text);
    const auto start = lowered.find(heading);
    if (start == std::string::npos)
        return "none";
    const auto end = lowered.find(kHeadingStart, start + heading.size());
    return kPaneSettings + WithoutLineBreaks(text.substr(start, end == std::string::npos ? end : end - start));
}

} // namespace mw
