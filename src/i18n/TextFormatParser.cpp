#include "i18n/TextFormatParser.h"

#include "core/Text.h"

#include <algorithm>

namespace mw {

namespace {

constexpr auto npos = std::string::npos;

char Opener(FormatMethod method) { return method == FormatMethod::Brackets ? '[' : '/'; }

bool IsEscaped(FormatMethod method, char c)
{
    return method == FormatMethod::Brackets ? (c == '[' || c == ']') : c == '/';
}

// Texts written on Linux end their lines in a bare "\n"; both kinds become the line-end tag.
std::string WithLineEndTags(std::string_view text, FormatMethod method)
{
    const char* lineEnd = method == FormatMethod::Brackets ? "[l]" : "/l ";
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
            continue;
        if (text[i] == '\n')
            out += lineEnd;
        else
            out += text[i];
    }
    return out;
}

// The next opener at or after `from` that is not doubled.
std::size_t NextOpener(const std::string& s, char opener, std::size_t from)
{
    for (auto at = s.find(opener, from); at != npos; at = s.find(opener, at + 2)) {
        if (at + 1 >= s.size() || s[at + 1] != opener)
            return at;
    }
    return npos;
}

// Where the tag opened at `open` ends: the next "]" that is not doubled, or the next blank.
std::size_t TagEnd(const std::string& s, FormatMethod method, std::size_t open)
{
    if (method == FormatMethod::Slash)
        return std::min(s.find(' ', open + 1), s.size());
    for (auto at = s.find(']', open + 1); at != npos; at = s.find(']', at + 2)) {
        if (at + 1 >= s.size() || s[at + 1] != ']')
            return at;
    }
    return npos;
}

} // namespace

ParsedText ParseTextFormat(std::string_view text, FormatMethod method)
{
    ParsedText parsed;
    parsed.Method = method;
    parsed.Source = WithLineEndTags(text, method);
    const std::string& s = parsed.Source;

    std::string tag;
    bool tagged = false;
    std::size_t pos = 0;
    for (;;) {
        std::size_t open = NextOpener(s, Opener(method), pos);
        const std::size_t close = open == npos ? npos : TagEnd(s, method, open);
        if (close == npos)
            open = npos; // a "[" that nothing closes is text
        const std::size_t textEnd = open == npos ? s.size() : open;
        if (tagged || textEnd > 0)
            parsed.Runs.push_back({tag, pos, textEnd - 1});
        if (open == npos)
            break;
        tag = s.substr(open + 1, close - open - 1);
        if (!tag.empty() && tag.front() == '/')
            tag.erase(0, 1);
        tagged = true;
        pos = std::min(close + 1, s.size());
    }
    return parsed;
}

std::size_t TagStart(const ParsedText& text, std::size_t index)
{
    return index == 0 ? 0 : text.Runs[index - 1].Last + 1;
}

std::string Unescape(const ParsedText& text, std::size_t first, std::size_t end, std::vector<std::size_t>* positions)
{
    const std::string& s = text.Source;
    std::string out;
    for (std::size_t i = first; i < end; ++i) {
        out += s[i];
        if (positions)
            positions->push_back(i);
        if (IsEscaped(text.Method, s[i]) && i + 1 < end && s[i + 1] == s[i])
            ++i;
    }
    if (positions)
        positions->push_back(end);
    return out;
}

std::string RunText(const ParsedText& text, const TextRun& run)
{
    return Unescape(text, run.First, run.Last + 1);
}

std::string CopyText(const ParsedText& text, std::size_t from, std::size_t to)
{
    to = std::min(to, text.Source.size());
    std::string out;
    for (std::size_t i = 0; i < text.Runs.size() && from < to; ++i) {
        const TextRun& run = text.Runs[i];
        const std::size_t tagAt = TagStart(text, i);
        if (tagAt >= from && tagAt < to && EqualsNoCase(run.Tag, "l"))
            out += '\n';
        const std::size_t first = std::max(from, run.First);
        const std::size_t end = std::min(to, run.Last + 1);
        if (first < end)
            out += Unescape(text, first, end);
    }
    return out;
}

std::string CopyFormated(const ParsedText& text, std::size_t from, std::size_t to)
{
    to = std::min(to, text.Source.size());
    return from < to ? text.Source.substr(from, to - from) : std::string();
}

} // namespace mw
