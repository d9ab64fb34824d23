#include "langfile/NumberedTexts.h"

#include "langfile/CppTokens.h"

#include <charconv>
#include <cstddef>
#include <optional>
#include <string_view>

namespace mw {

namespace {

using Kind = CppToken::Kind;
using Tokens = std::vector<CppToken>;

constexpr std::string_view kTextsClass = "FormTexts";
constexpr std::string_view kFormConstant = "kForm";

bool Is(const Tokens& t, std::size_t i, Kind kind) { return i < t.size() && t[i].Type == kind; }
bool IsMark(const Tokens& t, std::size_t i, char mark) { return Is(t, i, Kind::Punctuation) && t[i].Text[0] == mark; }
bool IsWord(const Tokens& t, std::size_t i, std::string_view word)
{
    return Is(t, i, Kind::Identifier) && t[i].Text == word;
}

// The bracket that closes the one at `open`; t.size() when there is none.
std::size_t Closing(const Tokens& t, std::size_t open)
{
    const char o = t[open].Text[0];
    const char c = o == '(' ? ')' : '}';
    int depth = 0;
    for (std::size_t i = open; i < t.size(); ++i) {
        if (IsMark(t, i, o))
            ++depth;
        else if (IsMark(t, i, c) && --depth == 0)
            return i;
    }
    return t.size();
}

// The "(" that the ")" at `close` closes; t.size() when there is none.
std::size_t Opening(const Tokens& t, std::size_t close)
{
    int depth = 0;
    for (std::size_t i = close + 1; i-- > 0;) {
        if (IsMark(t, i, ')'))
            ++depth;
        else if (IsMark(t, i, '(') && --depth == 0)
            return i;
    }
    return t.size();
}

// The last of two or more arguments between `open` and `close`, when it is a single token.
std::optional<std::size_t> LastArgument(const Tokens& t, std::size_t open, std::size_t close)
{
    int depth = 0;
    std::optional<std::size_t> comma;
    for (std::size_t i = open + 1; i < close; ++i) {
        if (IsMark(t, i, '(') || IsMark(t, i, '{'))
            ++depth;
        else if (IsMark(t, i, ')') || IsMark(t, i, '}'))
            --depth;
        else if (depth == 0 && IsMark(t, i, ','))
            comma = i;
    }
    if (!comma || *comma + 2 != close)
        return std::nullopt;
    return *comma + 1;
}

std::string Where(const SourceFile& file, int line) { return file.Name + ":" + std::to_string(line); }

struct Found {
    std::string Text;
    std::string Where;
};

class Scanner {
public:
    Scanner(const std::vector<SourceFile>& sources, std::string defaultForm) : defaultForm_(std::move(defaultForm))
    {
        for (const SourceFile& source : sources)
            files_.push_back({&source, CppTokens(source.Text), {}});
        for (File& file : files_)
            FindConstants(file);
        for (File& file : files_)
            FindTextFunctions(file);
    }

    NumberedTextScan Run()
    {
        for (File& file : files_)
            FindTexts(file);
        for (const auto& [form, texts] : found_) {
            for (const auto& [number, text] : texts)
                result_.Forms[form][number] = text.Text;
        }
        return std::move(result_);
    }

private:
    struct File {
        const SourceFile* Source;
        Tokens T;
        std::map<std::string, std::string> Constants; // name = "literal";
    };

    // Names bound to a literal, such as the file's kForm.
    static void FindConstants(File& file)
    {
        const Tokens& t = file.T;
        for (std::size_t i = 0; i + 3 < t.size(); ++i) {
            if (Is(t, i, Kind::Identifier) && IsMark(t, i + 1, '=') && Is(t, i + 2, Kind::String) &&
                IsMark(t, i + 3, ';'))
                file.Constants[t[i].Text] = t[i + 2].Text;
        }
    }

    // The name after FormTexts, past a qualification ("Project::Texts"), and where it ends.
    static std::optional<std::size_t> DeclaredName(const Tokens& t, std::size_t i)
    {
        std::size_t j = i + 1;
        while (IsMark(t, j, '&') || IsMark(t, j, '*'))
            ++j;
        if (!Is(t, j, Kind::Identifier))
            return std::nullopt;
        while (IsMark(t, j + 1, ':') && IsMark(t, j + 2, ':') && Is(t, j + 3, Kind::Identifier))
            j += 3;
        return j;
    }

    // Functions like `FormTexts Texts() const { return FormTexts(lang, "Form1"); }`.
    void FindTextFunctions(const File& file)
    {
        const Tokens& t = file.T;
        for (std::size_t i = 0; i < t.size(); ++i) {
            if (!IsWord(t, i, kTextsClass))
                continue;
            const auto name = DeclaredName(t, i);
            if (!name || !IsMark(t, *name + 1, '(') || !IsMark(t, *name + 2, ')'))
                continue;
            std::size_t j = *name + 3;
            while (IsWord(t, j, "const") || IsWord(t, j, "noexcept") || IsWord(t, j, "override"))
                ++j;
            if (IsMark(t, j, '{') && IsWord(t, j + 1, "return") && IsWord(t, j + 2, kTextsClass) &&
                IsMark(t, j + 3, '(')) {
                if (const auto form = FormOfArgument(file, j + 3, Closing(t, j + 3)))
                    functions_[t[*name].Text] = *form;
            }
        }
    }

    // The window named by the last argument of FormTexts(...): a literal or a constant.
    static std::optional<std::string> FormOfArgument(const File& file, std::size_t open, std::size_t close)
    {
        const Tokens& t = file.T;
        const auto argument = LastArgument(t, open, close);
        if (!argument)
            return std::nullopt;
        if (Is(t, *argument, Kind::String))
            return t[*argument].Text;
        const auto constant = file.Constants.find(t[*argument].Text);
        if (constant != file.Constants.end())
            return constant->second;
        return std::nullopt;
    }

    void Error(const File& file, std::size_t i, const std::string& what)
    {
        result_.Errors.push_back(Where(*file.Source, file.T[i].Line) + ": " + what);
    }

    // The window of an object declared at `i` (the word FormTexts), when this is a declaration.
    void Declaration(const File& file, std::size_t i, const std::string& fileForm,
                     std::map<std::string, std::string>& objects)
    {
        const Tokens& t = file.T;
        const auto nameAt = DeclaredName(t, i);
        if (!nameAt)
            return;
        const std::string& name = t[*nameAt].Text;
        const std::size_t next = *nameAt + 1;
        if (IsMark(t, next, ',') || IsMark(t, next, ')')) {
            objects[name] = fileForm; // a parameter
        } else if (IsMark(t, next, '(') || IsMark(t, next, '{')) {
            const std::size_t close = Closing(t, next);
            const auto argument = LastArgument(t, next, close);
            if (!argument || !(Is(t, *argument, Kind::String) || Is(t, *argument, Kind::Identifier)))
                return; // a function with parameters
            if (const auto form = FormOfArgument(file, next, close))
                objects[name] = *form;
            else
                Error(file, i, "can not tell the window of " + name);
        } else if (IsMark(t, next, '=')) {
            if (const auto form = FormOfExpression(file, next + 1))
                objects[name] = *form;
            else
                Error(file, i, "can not tell the window of " + name);
        }
    }

    // The window of `= project.Texts();` or `= FormTexts(lang, kForm);`.
    std::optional<std::string> FormOfExpression(const File& file, std::size_t from) const
    {
        const Tokens& t = file.T;
        for (std::size_t j = from; j < t.size() && !IsMark(t, j, ';'); ++j) {
            if (IsWord(t, j, kTextsClass) && IsMark(t, j + 1, '('))
                return FormOfArgument(file, j + 1, Closing(t, j + 1));
            if (Is(t, j, Kind::Identifier) && IsMark(t, j + 1, '(') && IsMark(t, j + 2, ')') &&
                functions_.contains(t[j].Text))
                return functions_.at(t[j].Text);
        }
        return std::nullopt;
    }

    // The window of the texts object that the call at `open` goes to; "" when the call is no
    // numbered text, nullopt when its window cannot be told.
    std::optional<std::string> Receiver(const File& file, std::size_t open,
                                        const std::map<std::string, std::string>& objects) const
    {
        const Tokens& t = file.T;
        if (open == 0)
            return "";
        const std::size_t before = open - 1;
        if (Is(t, before, Kind::Identifier)) {
            const auto object = objects.find(t[before].Text);
            return object == objects.end() ? "" : object->second;
        }
        if (!IsMark(t, before, ')'))
            return "";
        const std::size_t inner = Opening(t, before);
        if (inner == t.size() || inner == 0)
            return "";
        if (IsWord(t, inner - 1, kTextsClass))
            return FormOfArgument(file, inner, before);
        const auto function = functions_.find(t[inner - 1].Text);
        if (inner + 1 == before && Is(t, inner - 1, Kind::Identifier) && function != functions_.end())
            return function->second;
        return "";
    }

    void FindTexts(const File& file)
    {
        const Tokens& t = file.T;
        const auto constant = file.Constants.find(std::string(kFormConstant));
        const std::string fileForm = constant == file.Constants.end() ? defaultForm_ : constant->second;
        std::map<std::string, std::string> objects; // texts objects by name, as declared so far
        for (std::size_t i = 0; i < t.size(); ++i) {
            if (IsWord(t, i, kTextsClass) && !IsMark(t, i + 1, '(')) {
                Declaration(file, i, fileForm, objects);
                continue;
            }
            int number = 0;
            if (!IsMark(t, i, '(') || !Is(t, i + 1, Kind::Number) || !IsMark(t, i + 2, ','))
                continue;
            const std::string& digits = t[i + 1].Text;
            const char* end = digits.data() + digits.size();
            if (std::from_chars(digits.data(), end, number).ptr != end)
                continue;
            const auto form = Receiver(file, i, objects);
            if (form && form->empty())
                continue;
            const std::string what = "text " + std::to_string(number);
            if (!form)
                Error(file, i, "can not tell the window of " + what);
            else if (!Is(t, i + 3, Kind::String) || !IsMark(t, i + 4, ')'))
                Error(file, i, what + " of " + *form + " has no literal default");
            else
                Add(*form, number, t[i + 3].Text, Where(*file.Source, t[i].Line));
        }
    }

    void Add(const std::string& form, int number, const std::string& text, const std::string& where)
    {
        const auto [it, added] = found_[form].try_emplace(number, Found{text, where});
        if (!added && it->second.Text != text)
            result_.Errors.push_back(where + ": " + form + " text " + std::to_string(number) + " has two defaults: \"" +
                                     it->second.Text + "\" (" + it->second.Where + ") and \"" + text + "\"");
    }

    std::string defaultForm_;
    std::vector<File> files_;
    std::map<std::string, std::string> functions_; // functions returning a window's texts
    std::map<std::string, std::map<int, Found>> found_;
    NumberedTextScan result_;
};

} // namespace

NumberedTextScan ScanNumberedTexts(const std::vector<SourceFile>& sources, const std::string& defaultForm)
{
    return Scanner(sources, defaultForm).Run();
}

} // namespace mw
