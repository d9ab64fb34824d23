#pragma once

#include <string>

namespace mw {

// A number as texts and project files have always shown a double: at most 15 significant digits,
// the shortest form without trailing zeros, never an exponent ("23.976", "44100", "0.5",
// "41.6666666666667", "-2.5"). Very large and very small numbers keep the plain form too: 1e20
// prints 21 digits, zeros standing for those past the fifteenth, and 1e-20 prints 20 decimals.
// Negative zero prints "0"; NaN and infinities print "NaN", "Infinity" and "-Infinity".
std::string NumberText(double value);

// Rounds to `digits` decimals (0 to 15), halves to the even neighbour: 2.5 gives 2, 0.125 to
// two decimals gives 0.12. The halves are those of the binary value times 10^digits.
double RoundHalfEven(double value, int digits = 0);

// A whole number with at least `digits` digits, padded with zeros, the sign in front: the
// "00" and "000" formats (7 gives "07", -5 gives "-05", 123 gives "123").
std::string PadZeros(long long value, int digits);

} // namespace mw
