#include "langfile/CppTokens.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>

namespace mw {

namespace {

bool IsIdentifierStart(char c) { return std::isalpha(static_cast<unsigned char>(c)) || c == '_'; }
bool IsIdentifierChar(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }
bool IsOctal(char c) { return c >= '0' && c <= '7'; }

void AppendUtf8(std::string& out, std::uint32_t code)
{
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        out += static_cast<char>(0xE0 | (code >> 12));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (code >> 18));
        out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    }
}

class Lexer {
public:
    explicit Lexer(std::string_view source) : s_(source) {}

    std::vector<CppToken> Run()
    {
        bool lineStart = true;
        while (i_ < s_.size()) {
            const char c = s_[i_];
            if (c == '\n') {
                ++line_;
                ++i_;
                lineStart = true;
                continue;
            }
            if (std::isspace(static_cast<unsigned char>(c))) {
                ++i_;
                continue;
            }
            if (c == '#' && lineStart) {
                SkipDirective();
                continue;
            }
            lineStart = false;
            tokenLine_ = line_;
            if (Starts("//"))
                SkipTo("\n", false);
            else if (Starts("/*"))
                SkipTo("*/", true);
            else if (IsIdentifierStart(c))
                IdentifierOrLiteral();
            else if (std::isdigit(static_cast<unsigned char>(c)) ||
                     (c == '.' && std::isdigit(static_cast<unsigned char>(At(1)))))
                Number();
            else if (c == '"')
                Push(CppToken::Kind::String, QuotedText('"'));
            else if (c == '\'')
                Push(CppToken::Kind::Char, QuotedText('\''));
            else
                Push(CppToken::Kind::Punctuation, std::string(1, s_[i_++]));
        }
        return std::move(tokens_);
    }

private:
    char At(std::size_t ahead) const { return i_ + ahead < s_.size() ? s_[i_ + ahead] : '\0'; }
    bool Starts(std::string_view text) const { return s_.substr(i_).starts_with(text); }

    void Advance()
    {
        if (s_[i_] == '\n')
            ++line_;
        ++i_;
    }

    // A directive ends at the first line end that no backslash continues.
    void SkipDirective()
    {
        while (i_ < s_.size() && s_[i_] != '\n') {
            if (s_[i_] == '\\' && At(1) == '\n')
                Advance();
            Advance();
        }
    }

    void SkipTo(std::string_view end, bool pastEnd)
    {
        while (i_ < s_.size() && !Starts(end))
            Advance();
        if (pastEnd)
            i_ = std::min(s_.size(), i_ + end.size());
    }

    void Push(CppToken::Kind kind, std::string text)
    {
        if (kind == CppToken::Kind::String && !tokens_.empty() && tokens_.back().Type == CppToken::Kind::String)
            tokens_.back().Text += text;
        else
            tokens_.push_back({kind, std::move(text), tokenLine_});
    }

    void IdentifierOrLiteral()
    {
        const std::size_t start = i_;
        while (i_ < s_.size() && IsIdentifierChar(s_[i_]))
            ++i_;
        const std::string_view word = s_.substr(start, i_ - start);
        const char next = At(0);
        const bool prefix = word == "u8" || word == "u" || word == "U" || word == "L";
        const bool rawPrefix = word == "R" || word == "u8R" || word == "uR" || word == "UR" || word == "LR";
        if (next == '"' && rawPrefix)
            Push(CppToken::Kind::String, RawText());
        else if (next == '"' && prefix)
            Push(CppToken::Kind::String, QuotedText('"'));
        else if (next == '\'' && prefix)
            Push(CppToken::Kind::Char, QuotedText('\''));
        else
            Push(CppToken::Kind::Identifier, std::string(word));
    }

    void Number()
    {
        const std::size_t start = i_;
        while (i_ < s_.size()) {
            const char c = s_[i_];
            const char before = i_ > start ? s_[i_ - 1] : '\0';
            const bool exponentSign = (c == '+' || c == '-') && (before == 'e' || before == 'E' || before == 'p' ||
                                                                 before == 'P');
            const bool separator = c == '\'' && IsIdentifierChar(At(1));
            if (!IsIdentifierChar(c) && c != '.' && !exponentSign && !separator)
                break;
            ++i_;
        }
        Push(CppToken::Kind::Number, std::string(s_.substr(start, i_ - start)));
    }

    // R"delim( ... )delim": no escapes, the text as it stands.
    std::string RawText()
    {
        const std::size_t open = s_.find('(', i_);
        if (open == std::string_view::npos) {
            i_ = s_.size();
            return {};
        }
        const std::string close = ")" + std::string(s_.substr(i_ + 1, open - i_ - 1)) + "\"";
        const std::size_t end = s_.find(close, open);
        const std::size_t stop = end == std::string_view::npos ? s_.size() : end;
        std::string text(s_.substr(open + 1, stop - open - 1));
        while (i_ < std::min(s_.size(), stop + close.size()))
            Advance();
        return text;
    }

    std::string QuotedText(char quote)
    {
        std::string text;
        ++i_;
        while (i_ < s_.size() && s_[i_] != quote && s_[i_] != '\n') {
            if (s_[i_] == '\\' && i_ + 1 < s_.size()) {
                ++i_;
                Escape(text);
            } else {
                text += s_[i_++];
            }
        }
        if (i_ < s_.size() && s_[i_] == quote)
            ++i_;
        return text;
    }

    // Decodes the escape after a backslash and moves past it.
    void Escape(std::string& out)
    {
        const char c = s_[i_++];
        switch (c) {
        case 'n': out += '\n'; return;
        case 't': out += '\t'; return;
        case 'r': out += '\r'; return;
        case 'a': out += '\a'; return;
        case 'b': out += '\b'; return;
        case 'f': out += '\f'; return;
        case 'v': out += '\v'; return;
        case 'x': out += static_cast<char>(Digits(16, 8)); return;
        case 'u': AppendUtf8(out, Digits(16, 4)); return;
        case 'U': AppendUtf8(out, Digits(16, 8)); return;
        default: break;
        }
        if (IsOctal(c)) {
            --i_;
            out += static_cast<char>(Digits(8, 3));
            return;
        }
        out += c; // \\ \" \' \? and anything unknown
    }

    std::uint32_t Digits(int base, int most)
    {
        std::uint32_t value = 0;
        for (int n = 0; n < most && i_ < s_.size(); ++n) {
            const char c = static_cast<char>(std::tolower(static_cast<unsigned char>(s_[i_])));
            const int digit = std::isdigit(static_cast<unsigned char>(c)) ? c - '0'
                              : (c >= 'a' && c <= 'f')                    ? c - 'a' + 10
                                                                          : base;
            if (digit >= base)
                break;
            value = value * static_cast<std::uint32_t>(base) + static_cast<std::uint32_t>(digit);
            ++i_;
        }
        return value;
    }

    std::string_view s_;
    std::size_t i_ = 0;
    int line_ = 1;
    int tokenLine_ = 1;
    std::vector<CppToken> tokens_;
};

} // namespace

std::vector<CppToken> CppTokens(std::string_view source)
{
    return Lexer(source).Run();
}

} // namespace mw
