#include "core/NumberText.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace mw {

std::string NumberText(double value)
{
    if (std::isnan(value))
        return "NaN";
    if (std::isinf(value))
        return value < 0 ? "-Infinity" : "Infinity";
    if (value == 0)
        return "0";

    // printf rounds the binary value correctly to 15 significant digits; we only lay them out.
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.14e", value);
    const bool negative = buf[0] == '-';
    const char* p = buf + (negative ? 1 : 0);
    std::string digits{p[0]};
    digits.append(p + 2, 14);
    const int exponent = std::atoi(p + 17);
    while (digits.size() > 1 && digits.back() == '0')
        digits.pop_back();

    std::string out = negative ? "-" : "";
    if (exponent < 0) {
        out += "0.";
        out.append(static_cast<std::size_t>(-exponent - 1), '0');
        out += digits;
        return out;
    }
    const auto whole = static_cast<std::size_t>(exponent) + 1;
    if (digits.size() <= whole) {
        out += digits;
        out.append(whole - digits.size(), '0');
    } else {
        out += digits.substr(0, whole);
        out += '.';
        out += digits.substr(whole);
    }
    return out;
}

double RoundHalfEven(double value, int digits)
{
    const double scale = std::pow(10.0, digits);
    const double scaled = value * scale;
    // Past 2^52 every double is already whole; scaling back would only add error.
    if (!std::isfinite(scaled) || std::fabs(scaled) >= 4503599627370496.0)
        return value;
    return std::nearbyint(scaled) / scale; // the default rounding mode ties to even
}

std::string PadZeros(long long value, int digits)
{
    const unsigned long long magnitude =
        value < 0 ? 0ULL - static_cast<unsigned long long>(value) : static_cast<unsigned long long>(value);
    std::string text = std::to_string(magnitude);
    if (text.size() < static_cast<std::size_t>(digits))
        text.insert(0, static_cast<std::size_t>(digits) - text.size(), '0');
    return value < 0 ? "-" + text : text;
}

} // namespace mw
