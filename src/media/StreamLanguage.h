#pragma once

#include <string>
#include <string_view>

namespace mw {

// The two-letter language of a stream, read from its strn text ("Audio - en-US;02" gives "en"):
// the text behind the first "-", up to the next ";" or "-", trimmed. Empty when there is no
// "-" or the result is not exactly two characters; callers choose their own fallback.
std::string StreamLanguageCode(std::string_view strn);

} // namespace mw
