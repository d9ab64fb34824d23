#pragma once

#include <map>
#include <string>
#include <vector>

namespace mw {

// A source file to scan: its name, for the messages, and its text.
struct SourceFile {
    std::string Name;
    std::string Text;
};

// The numbered texts of one window: the number and its English default.
using ModuleTexts = std::map<int, std::string>;

struct NumberedTextScan {
    std::map<std::string, ModuleTexts> Forms; // by form name
    std::vector<std::string> Errors;          // "file:line: what"
};

// Finds every numbered text of the sources with its English default: the calls `t(26, "...")`
// of a FormTexts object, of a function returning one (`project.Texts()(1, "...")`) and of a
// temporary one (`FormTexts(lang, "frmChap")(9, "...")`). The window is the one the object was
// made for: a literal, a constant of the file (`kForm`), or the window of such a function. An
// object handed in as a parameter belongs to the file's `kForm`, else to `defaultForm`.
// A text whose window cannot be told, one without a literal default, and two different defaults
// for the same window and number are errors.
NumberedTextScan ScanNumberedTexts(const std::vector<SourceFile>& sources, const std::string& defaultForm);

} // namespace mw
