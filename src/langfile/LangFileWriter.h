#pragma once

#include "i18n/FormDesign.h"
#include "langfile/NumberedTexts.h"

#include <map>
#include <string>
#include <vector>

namespace mw {

// What a language file holds: who made it for which version, the windows' texts and the
// numbered texts of each window or module.
struct LangFileContents {
    std::string RootName = "Menuwright";
    std::string Creator{};
    std::string ProgramVersion{};
    std::vector<FormDesign> Designs{};
    std::map<std::string, ModuleTexts> Modules{}; // by form name
};

// The file's XML: "Private", then by form name "<form>_Design" and "<form>_Module" ("s<n>").
// The same contents always give the same bytes. Design texts that collide are added to `errors`.
std::string LangFileText(const LangFileContents& contents, std::vector<std::string>& errors);

// Writes the file in one piece, and only when no texts collide; false with `errors` otherwise.
bool WriteLangFile(const std::string& path, const LangFileContents& contents, std::vector<std::string>& errors);

} // namespace mw
