#include "core/Text.h"

#include <algorithm>
#include <cstdio>

namespace mw {

namespace {

char LowerChar(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }
char UpperChar(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }
bool IsBlank(char c) { return c == ' ' || c == '\t'; }

} // namespace

std::string Lower(std::string_view s)
{
    std::string out(s);
    std::transform(out.begin(), out.end(), out.begin(), LowerChar);
    return out;
}

std::string Upper(std::string_view s)
{
    std::string out(s);
    std::transform(out.begin(), out.end(), out.begin(), UpperChar);
    return out;
}

std::string Trim(std::string_view s)
{
    std::size_t b = 0;
    std::size_t e = s.size();
    while (b < e && IsBlank(s[b]))
        ++b;
    while (e > b && IsBlank(s[e - 1]))
        --e;
    return std::string(s.substr(b, e - b));
}

bool EqualsNoCase(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return LowerChar(x) == LowerChar(y);
           });
}

bool StartsWithNoCase(std::string_view s, std::string_view prefix)
{
    return s.size() >= prefix.size() && EqualsNoCase(s.substr(0, prefix.size()), prefix);
}

bool EndsWithNoCase(std::string_view s, std::string_view suffix)
{
    return s.size() >= suffix.size() && EqualsNoCase(s.substr(s.size() - suffix.size()), suffix);
}

long long LeadingNumber(std::string_view s)
{
    std::size_t i = 0;
    while (i < s.size() && IsBlank(s[i]))
        ++i;
    bool negative = false;
    if (i < s.size() && (s[i] == '-' || s[i] == '+')) {
        negative = s[i] == '-';
        ++i;
    }
    long long value = 0;
    for (; i < s.size() && s[i] >= '0' && s[i] <= '9'; ++i) {
        if (value > 100000000000000000LL)
            break; // stays far from overflow; such numbers are nonsense in a document anyway
        value = value * 10 + (s[i] - '0');
    }
    return negative ? -value : value;
}

std::string Pad4(long long n)
{
    char buf[32];
    std::snprintf(buf, sizeof buf, "%04lld", n);
    return buf;
}

} // namespace mw
