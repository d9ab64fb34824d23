#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mw {

// A token of C++ source text, enough to find calls in it: comments and preprocessor lines are
// dropped, string literals are decoded and adjacent ones joined, as the compiler joins them.
struct CppToken {
    enum class Kind { Identifier, Number, String, Char, Punctuation };
    Kind Type;
    std::string Text; // a string literal's decoded value; a punctuation is one character
    int Line;         // from 1, where the token starts
};

std::vector<CppToken> CppTokens(std::string_view source);

} // namespace mw
