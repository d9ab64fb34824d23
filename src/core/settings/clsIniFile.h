#pragma once

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace mw {

// A read with neither a section nor a file named: a fault of the caller, not of the file.
class IniLogicError : public std::logic_error {
public:
    IniLogicError();
    const char* Source() const noexcept { return "IniFile Logic Error"; }
};

struct IniEntry {
    std::string Key;
    std::string Value;
};

struct IniSection {
    std::string Name;
    std::vector<IniEntry> Entries;
};

// A Windows profile file: "[Section]" headers, "key=value" lines, ";" comment lines, names
// matched ignoring case. Every call reads or rewrites the file itself, as the platform's profile
// calls do, so two objects on one file always agree and nothing is cached.
//
// Reading trims blanks around keys and values and strips quotes around a whole value. Writing
// keeps every other line of the file as it was, writes CR LF line ends, and replaces the file
// through a new file beside it, so a crash never leaves half a file. A write that cannot be done
// (read-only file or folder, missing folder) returns false and changes nothing.
class clsIniFile {
public:
    clsIniFile() = default;
    explicit clsIniFile(std::string fullPath, std::string sectionName = "General")
        : fullPath_(std::move(fullPath)), sectionName_(std::move(sectionName))
    {
    }

    const std::string& FullPath() const { return fullPath_; }
    void SetFullPath(std::string path) { fullPath_ = std::move(path); }
    const std::string& SectionName() const { return sectionName_; }
    void SetSectionName(std::string name) { sectionName_ = std::move(name); }
    // Sends the calls to the system's profile file instead. On Linux there is none, so it is a
    // "win.ini" in the folder of FullPath.
    bool UseWinINI() const { return useWinIni_; }
    void SetUseWinINI(bool on) { useWinIni_ = on; }

    // Every read raises IniLogicError when neither a section nor a file is set.
    std::string GetString(const std::string& key, const std::string& defaultValue) const;
    // The numeric prefix of the value; a value that does not begin with a number is 0.
    long GetInt(const std::string& key, long defaultValue) const;
    // "YES", "Y", "TRUE", "T", "ON", "1" and "-1" are true, ignoring case; anything else false.
    bool GetTF(const std::string& key, bool defaultValue) const;
    std::vector<std::string> GetSections() const;
    // Every section with its entries, values as GetString reads them.
    std::vector<IniSection> GetSectionsEx() const;
    std::vector<std::string> GetSectEntries() const;
    std::vector<IniEntry> GetSectEntriesEx() const;
    bool SectExist() const;
    bool Exists() const;

    bool PutString(const std::string& key, const std::string& value);
    bool PutInt(const std::string& key, long value);
    // Writes "True" or "False".
    bool PutTF(const std::string& key, bool value);
    bool DeleteStrEntry(const std::string& key);
    // Numbers are stored as text as well, so this removes the key just alike.
    bool DeleteNumEntry(const std::string& key) { return DeleteStrEntry(key); }
    bool DeleteSection();

private:
    std::filesystem::path Target() const;
    void RequireTarget() const;
    std::vector<IniSection> ReadSections() const;
    const IniSection* FindSection(const std::vector<IniSection>& sections) const;
    std::optional<std::string> Lookup(const std::string& key) const;

    std::string fullPath_;
    std::string sectionName_;
    bool useWinIni_ = false;
};

} // namespace mw
