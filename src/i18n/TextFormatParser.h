#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace mw {

// How tags are written: 0 "[b]" with "[[" and "]]" for plain brackets, 1 "/b " with "//" for a
// plain slash.
enum class FormatMethod { Brackets = 0, Slash = 1 };

// One run of marked-up text: the tag in front of it and the positions of its text in the
// source, both ends included. A run whose text is empty has Last == First - 1. The first run of
// a text that does not start with a tag has an empty tag. A closing "/" of a tag is dropped:
// "[/b]" is the tag "b" again.
struct TextRun {
    std::string Tag;
    std::size_t First = 0;
    std::size_t Last = 0;

    std::size_t Length() const { return Last + 1 - First; }
};

// A parsed text. Positions refer to Source, which is the given text with each "\r\n" replaced
// by the line-end tag.
struct ParsedText {
    std::string Source;
    FormatMethod Method = FormatMethod::Brackets;
    std::vector<TextRun> Runs;
};

ParsedText ParseTextFormat(std::string_view text, FormatMethod method);

// Where the tag of run `index` starts in the source: runs and their tags follow each other
// without gaps.
std::size_t TagStart(const ParsedText& text, std::size_t index);

// The plain text of Source[first, end) with its escapes put back. When `positions` is given it
// receives the source position of each byte of the result, and `end` behind them.
std::string Unescape(const ParsedText& text, std::size_t first, std::size_t end,
                     std::vector<std::size_t>* positions = nullptr);

// The text of a run as it shows.
std::string RunText(const ParsedText& text, const TextRun& run);

// "Copy": the shown text of Source[from, to), with "\n" for each line-end tag in it.
std::string CopyText(const ParsedText& text, std::size_t from, std::size_t to);
// "Copy Formated": Source[from, to) as it is, tags and escapes included.
std::string CopyFormated(const ParsedText& text, std::size_t from, std::size_t to);

} // namespace mw
