#pragma once

#include <string>
#include <string_view>

namespace mw {

// Lower and upper case of ASCII letters; names in documents and settings are ASCII.
std::string Lower(std::string_view s);
std::string Upper(std::string_view s);
// Blanks (spaces and tabs) cut from both ends, as the original Trim did.
std::string Trim(std::string_view s);
bool EqualsNoCase(std::string_view a, std::string_view b);
bool StartsWithNoCase(std::string_view s, std::string_view prefix);
bool EndsWithNoCase(std::string_view s, std::string_view suffix);

// The leading number of a text: optional blanks and sign, then digits as far as they go; 0 when
// the text does not begin with a number.
long long LeadingNumber(std::string_view s);

// A number padded with zeros to at least four digits, as identifiers are kept in sets.
std::string Pad4(long long n);

} // namespace mw
