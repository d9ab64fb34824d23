#pragma once

#include "document/DocTree.h"

#include <optional>
#include <string>

namespace mw {

class Project;

// Writes one menu as a template file that stands without its project: the menu with its extra
// info, buttons and actions, the path of its background video and the video's frames in place of
// its track. An existing file is replaced. False, said through the prompt, when the menu is not in
// the project or the file cannot be written.
bool mnuExportToTemplate(Project& project, const std::string& menuID, const std::string& path);

// The language set a template goes into: the one that holds the selected node, else the first;
// nullptr when the project has none.
DocNode* TemplateLanguageSet(const DocTree& tree);

// Reads a template into a language set as a new menu, as one undo step. The menu, its buttons
// and their actions get fresh identifiers; the four navigation links and the action lists follow
// them, what an action leads to stays as written (check reports what dangles), and the new menu
// starts on its first button. The canvas shows
// the new menu. Returns its identifier; empty when the file is missing, does not parse or is no
// menu template (said through the prompt), and then the project is as it was.
std::string LoadXmlTemplate(Project& project, const std::string& path, DocNode& languageMenus);

// The commands of the Tools menu: the same, with the file asked for in the program folder's
// Templates. Export takes the menu on the canvas; insert goes into the language set of the
// selection. A cancelled dialog changes nothing.
std::optional<std::string> AskTemplateFile(Project& project, bool forSaving);
bool mnuExportToTemplate(Project& project);
std::string mnuInsertTemplate(Project& project);

} // namespace mw
