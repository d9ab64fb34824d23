#pragma once

#include "core/ProgramFolder.h"
#include "core/Version.h"
#include "i18n/LangDoc.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace mw {

// The interface language of the running program: the loaded language file and its stem (the
// file name without ".xml"), both found in the program folder.
class Language {
public:
    explicit Language(std::filesystem::path programFolder) : programFolder_(std::move(programFolder)) {}

    // The first language, before any setting is read: the English file, its ".xml.New" version
    // from the language editor first. Without either every text keeps its built-in default.
    void StartLanguage();
    // Loads "<stem>.xml.New" or else "<stem>.xml". False, with nothing changed, when neither
    // exists. Relabelling the windows after a true is the caller's part.
    bool LoadNewLang(const std::string& stem);

    const mw::LangDoc& LangDoc() const { return langDoc_; }
    const std::string& LangFileStem() const { return langFileStem_; }
    const std::filesystem::path& ProgramFolder() const { return programFolder_; }
    // The value of the settings key Lang: the stem before its first ".".
    std::string LangName() const;

private:
    std::filesystem::path programFolder_;
    mw::LangDoc langDoc_;
    std::string langFileStem_ = kDefaultLangFileStem;
};

// One entry of the language menu.
struct LanguageFileEntry {
    std::string Caption; // "German" for "German.Menuwright.exe.xml"
    std::filesystem::path File;
};

// The language files of the program folder, sorted by caption.
std::vector<LanguageFileEntry> ListLanguageFiles(const std::filesystem::path& programFolder);

// The stem of a language by its name, as the menu captions and the settings key Lang give it.
std::string LangFileStemOf(std::string_view languageName);

// What the status panel "last" shows about the loaded language file.
struct LanguagePanel {
    std::string Text;
    bool OldLanguage = false; // the picture "oldlang": the file was made for another version
};

// At start the panel is still blank, so a file with a version but no creator shows " (1.2.3)".
LanguagePanel LastPanelAtStart(const LangDoc& lang, std::string_view runningVersion = kVersionText);
// After the user picked a language, a file without a creator leaves the panel empty.
LanguagePanel LastPanelAfterChange(const LangDoc& lang, std::string_view runningVersion = kVersionText);

} // namespace mw
