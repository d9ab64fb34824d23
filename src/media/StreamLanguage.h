#pragma once

#include <string>
#include <string_view>

namespace mw {

// Where the code in a stream name ends: titles stop at the next ";" or "-", so "en-US" gives
// "en"; a new project stops only at ";", so a name with a country gives no code.
enum class CodeEnd { SemicolonOrDash, Semicolon };

// The two-letter language of a stream, read from its strn text: the text behind the first "-",
// up to the end, trimmed. Empty when there is no "-" or the result is not exactly two
// characters; callers choose their own fallback.
std::string StreamLanguageCode(std::string_view strn, CodeEnd end = CodeEnd::SemicolonOrDash);

} // namespace mw
