#include "i18n/LanguageFiles.h"

#include <algorithm>
#include <system_error>

namespace fs = std::filesystem;

namespace mw {

namespace {

// Language files are named after the executable, which is named after the title.
constexpr std::string_view kLangFileSuffix = ".Menuwright.exe.xml";

bool Exists(const fs::path& file)
{
    std::error_code ec;
    return fs::is_regular_file(file, ec);
}

// The file of a stem: the ".xml.New" the language editor leaves comes before the ".xml".
fs::path LangFileOf(const fs::path& folder, const std::string& stem)
{
    const fs::path fresh = folder / (stem + ".xml.New");
    return Exists(fresh) ? fresh : folder / (stem + ".xml");
}

} // namespace

void Language::StartLanguage()
{
    langFileStem_ = kDefaultLangFileStem;
    // A missing or broken file leaves the document empty, which is no error.
    langDoc_.LoadFile(LangFileOf(programFolder_, langFileStem_));
}

bool Language::LoadNewLang(const std::string& stem)
{
    const fs::path file = LangFileOf(programFolder_, stem);
    if (!Exists(file))
        return false;
    langFileStem_ = stem;
    langDoc_.LoadFile(file);
    return true;
}

std::string Language::LangName() const { return langFileStem_.substr(0, langFileStem_.find('.')); }

std::vector<LanguageFileEntry> ListLanguageFiles(const fs::path& programFolder)
{
    std::vector<LanguageFileEntry> entries;
    std::error_code ec;
    for (fs::directory_iterator it(programFolder, ec), end; !ec && it != end; it.increment(ec)) {
        // Matched with case, unlike Windows: the stem built back from the caption must find
        // the same file on a case-sensitive file system. A name without the dot before
        // "Menuwright" would give a caption that names no file, so it is left out.
        const std::string name = it->path().filename().string();
        std::error_code ignored;
        if (!it->is_regular_file(ignored) || name.size() <= kLangFileSuffix.size() ||
            !name.ends_with(kLangFileSuffix))
            continue;
        entries.push_back({name.substr(0, name.size() - kLangFileSuffix.size()), it->path()});
    }
    // The folder's order is whatever the file system gives; users expect the names sorted.
    std::sort(entries.begin(), entries.end(),
              [](const LanguageFileEntry& a, const LanguageFileEntry& b) { return a.Caption < b.Caption; });
    return entries;
}

std::string LangFileStemOf(std::string_view languageName)
{
    return std::string(languageName) + "." + kAppTitle + ".exe";
}

LanguagePanel LastPanelAtStart(const LangDoc& lang, std::string_view runningVersion)
{
    LanguagePanel panel;
    if (const auto creator = lang.PrivateAttribute("Creator"))
        panel.Text = "Language by " + *creator;
    if (const auto version = lang.PrivateAttribute("ProgramVersion")) {
        panel.Text += " (" + *version + ")";
        panel.OldLanguage = *version != runningVersion;
    }
    return panel;
}

LanguagePanel LastPanelAfterChange(const LangDoc& lang, std::string_view runningVersion)
{
    if (!lang.PrivateAttribute("Creator"))
        return {};
    return LastPanelAtStart(lang, runningVersion);
}

} // namespace mw
