#pragma once

#include <array>
#include <string_view>

namespace mw {

// The languages a menu set can be made for, as the language combo lists them: "cc NAME", of
// which only the two-letter code reaches the document.
extern const std::array<std::string_view, 136> kLanguageRows;

} // namespace mw
