#include "core/settings/clsIniFile.h"

#include "core/Text.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <optional>
#include <string_view>

namespace mw {

namespace fs = std::filesystem;

IniLogicError::IniLogicError() : std::logic_error("[Section] and FileName Not Registered in Private.Ini!") {}

namespace {

constexpr std::string_view kBom = "\xEF\xBB\xBF";

// The file as lines without their ends; a UTF-8 mark at its start is kept aside and written back.
struct IniText {
    bool Bom = false;
    std::vector<std::string> Lines;
};

IniText ReadText(const fs::path& file)
{
    IniText text;
    std::ifstream in(file, std::ios::binary);
    if (!in)
        return text;
    std::string content((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (content.starts_with(kBom)) {
        text.Bom = true;
        content.erase(0, kBom.size());
    }
    std::size_t start = 0;
    while (start < content.size()) {
        std::size_t end = content.find('\n', start);
        if (end == std::string::npos)
            end = content.size();
        std::string line = content.substr(start, end - start);
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        text.Lines.push_back(std::move(line));
        start = end + 1;
    }
    return text;
}

bool WriteText(const fs::path& target, const IniText& text)
{
    std::error_code ec;
    // Replacing a link would cut it; the file it points to is the one to replace.
    fs::path file = target;
    if (fs::is_symlink(fs::symlink_status(target, ec))) {
        file = fs::canonical(target, ec);
        if (ec)
            return false;
    }
    const auto status = fs::status(file, ec);
    const bool existed = fs::exists(status);
    if (existed && (status.permissions() & fs::perms::owner_write) == fs::perms::none)
        return false; // a read-only file stays as it is

    fs::path temp = file;
    temp += ".tmp~";
    {
        std::ofstream out(temp, std::ios::binary | std::ios::trunc);
        if (!out)
            return false;
        if (text.Bom)
            out << kBom;
        for (const auto& line : text.Lines)
            out << line << "\r\n";
        out.close();
        if (!out) {
            fs::remove(temp, ec);
            return false;
        }
    }
    if (existed)
        fs::permissions(temp, status.permissions(), ec);
    fs::rename(temp, file, ec);
    if (ec) {
        fs::remove(temp, ec);
        return false;
    }
    return true;
}

// The name of a "[name]" line. A "[" without its "]" makes no section, and no entry either.
std::optional<std::string> HeaderName(std::string_view line)
{
    const std::string t = Trim(line);
    const auto close = t.rfind(']');
    if (t.empty() || t.front() != '[' || close == std::string::npos)
        return std::nullopt;
    return Trim(std::string_view(t).substr(1, close - 1));
}

// Key and raw value of an entry line; false for blank lines, comments and headers. A line
// without "=" is a key with an empty value.
bool ParseEntry(std::string_view line, std::string& key, std::string& value)
{
    const std::string t = Trim(line);
    if (t.empty() || t.front() == ';' || t.front() == '[')
        return false;
    const auto eq = t.find('=');
    key = Trim(std::string_view(t).substr(0, eq));
    value = eq == std::string::npos ? std::string() : Trim(std::string_view(t).substr(eq + 1));
    return true;
}

bool IsEntryFor(std::string_view line, std::string_view key)
{
    std::string name;
    std::string value;
    return ParseEntry(line, name, value) && EqualsNoCase(name, key);
}

std::string Unquote(const std::string& value)
{
    if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front())
        return value.substr(1, value.size() - 2);
    return value;
}

// Lines of the first section of that name: its header and one past its last line.
struct SectionSpan {
    std::size_t Header = 0;
    std::size_t End = 0;
};

std::optional<SectionSpan> FindSpan(const std::vector<std::string>& lines, std::string_view name)
{
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto header = HeaderName(lines[i]);
        if (!header || !EqualsNoCase(*header, name))
            continue;
        std::size_t end = i + 1;
        while (end < lines.size() && !HeaderName(lines[end]))
            ++end;
        return SectionSpan{i, end};
    }
    return std::nullopt;
}

std::optional<std::size_t> FindKeyLine(const std::vector<std::string>& lines, SectionSpan span, std::string_view key)
{
    for (std::size_t i = span.Header + 1; i < span.End; ++i) {
        if (IsEntryFor(lines[i], key))
            return i;
    }
    return std::nullopt;
}

// The line with its value replaced, keeping the key and the blanks around "=" as they were.
std::string WithValue(const std::string& line, const std::string& value)
{
    const auto eq = line.find('=');
    if (eq == std::string::npos)
        return Trim(line) + "=" + value;
    const auto valueStart = line.find_first_not_of(" \t", eq + 1);
    return line.substr(0, valueStart == std::string::npos ? line.size() : valueStart) + value;
}

void SetEntry(std::vector<std::string>& lines, const std::string& section, const std::string& key,
              const std::string& value)
{
    const auto span = FindSpan(lines, section);
    if (!span) {
        if (!lines.empty() && !Trim(lines.back()).empty())
            lines.emplace_back();
        lines.push_back("[" + section + "]");
        lines.push_back(key + "=" + value);
        return;
    }
    if (const auto at = FindKeyLine(lines, *span, key)) {
        lines[*at] = WithValue(lines[*at], value);
        return;
    }
    // Behind the section's last entry, so that blank lines and comments before the next
    // section stay where they are.
    std::size_t after = span->Header;
    std::string name;
    std::string raw;
    for (std::size_t i = span->Header + 1; i < span->End; ++i) {
        if (ParseEntry(lines[i], name, raw))
            after = i;
    }
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(after + 1), key + "=" + value);
}

} // namespace

fs::path clsIniFile::Target() const
{
    if (!useWinIni_)
        return fullPath_;
    return fs::path(fullPath_).parent_path() / "win.ini";
}

void clsIniFile::RequireTarget() const
{
    if (sectionName_.empty() && fullPath_.empty())
        throw IniLogicError();
}

std::vector<IniSection> clsIniFile::ReadSections() const
{
    RequireTarget();
    std::vector<IniSection> sections;
    if (fullPath_.empty())
        return sections;
    IniEntry entry;
    for (const auto& line : ReadText(Target()).Lines) {
        if (auto header = HeaderName(line))
            sections.push_back({std::move(*header), {}});
        else if (!sections.empty() && ParseEntry(line, entry.Key, entry.Value))
            sections.back().Entries.push_back({entry.Key, Unquote(entry.Value)});
    }
    return sections;
}

const IniSection* clsIniFile::FindSection(const std::vector<IniSection>& sections) const
{
    const auto it = std::find_if(sections.begin(), sections.end(),
                                 [this](const IniSection& s) { return EqualsNoCase(s.Name, sectionName_); });
    return it == sections.end() ? nullptr : &*it;
}

std::optional<std::string> clsIniFile::Lookup(const std::string& key) const
{
    const auto sections = ReadSections();
    const IniSection* section = FindSection(sections);
    if (!section)
        return std::nullopt;
    for (const auto& entry : section->Entries) {
        if (EqualsNoCase(entry.Key, key))
            return entry.Value.substr(0, entry.Value.find('\0'));
    }
    return std::nullopt;
}

std::string clsIniFile::GetString(const std::string& key, const std::string& defaultValue) const
{
    return Lookup(key).value_or(defaultValue);
}

long clsIniFile::GetInt(const std::string& key, long defaultValue) const
{
    const auto value = Lookup(key);
    return value ? static_cast<long>(LeadingNumber(*value)) : defaultValue;
}

bool clsIniFile::GetTF(const std::string& key, bool defaultValue) const
{
    static constexpr std::array<std::string_view, 7> kTrue = {"YES", "Y", "TRUE", "T", "ON", "1", "-1"};
    const std::string value = Upper(Trim(GetString(key, defaultValue ? "True" : "False")));
    return std::find(kTrue.begin(), kTrue.end(), value) != kTrue.end();
}

std::vector<std::string> clsIniFile::GetSections() const
{
    std::vector<std::string> names;
    for (const auto& section : ReadSections())
        names.push_back(section.Name);
    return names;
}

std::vector<IniSection> clsIniFile::GetSectionsEx() const { return ReadSections(); }

std::vector<std::string> clsIniFile::GetSectEntries() const
{
    std::vector<std::string> keys;
    for (const auto& entry : GetSectEntriesEx())
        keys.push_back(entry.Key);
    return keys;
}

std::vector<IniEntry> clsIniFile::GetSectEntriesEx() const
{
    const auto sections = ReadSections();
    const IniSection* section = FindSection(sections);
    return section ? section->Entries : std::vector<IniEntry>{};
}

bool clsIniFile::SectExist() const
{
    const auto sections = ReadSections();
    return FindSection(sections) != nullptr;
}

bool clsIniFile::Exists() const
{
    RequireTarget();
    std::error_code ec;
    return !fullPath_.empty() && fs::is_regular_file(Target(), ec);
}

bool clsIniFile::PutString(const std::string& key, const std::string& value)
{
    if (fullPath_.empty() || key.empty())
        return false;
    IniText text = ReadText(Target());
    // A line break in a value would make lines of its own: only the first line is kept.
    SetEntry(text.Lines, sectionName_, key, value.substr(0, value.find_first_of("\r\n")));
    return WriteText(Target(), text);
}

bool clsIniFile::PutInt(const std::string& key, long value) { return PutString(key, std::to_string(value)); }

bool clsIniFile::PutTF(const std::string& key, bool value) { return PutString(key, value ? "True" : "False"); }

bool clsIniFile::DeleteStrEntry(const std::string& key)
{
    if (fullPath_.empty())
        return false;
    IniText text = ReadText(Target());
    const auto span = FindSpan(text.Lines, sectionName_);
    const auto at = span ? FindKeyLine(text.Lines, *span, key) : std::nullopt;
    if (!at)
        return true; // nothing to remove, and the file is not touched
    text.Lines.erase(text.Lines.begin() + static_cast<std::ptrdiff_t>(*at));
    return WriteText(Target(), text);
}

bool clsIniFile::DeleteSection()
{
    if (fullPath_.empty())
        return false;
    IniText text = ReadText(Target());
    const auto span = FindSpan(text.Lines, sectionName_);
    if (!span)
        return true;
    text.Lines.erase(text.Lines.begin() + static_cast<std::ptrdiff_t>(span->Header),
                     text.Lines.begin() + static_cast<std::ptrdiff_t>(span->End));
    return WriteText(Target(), text);
}

} // namespace mw
