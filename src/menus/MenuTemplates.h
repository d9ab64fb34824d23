#pragma once

#include "document/DocTree.h"

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
// and their actions get fresh identifiers; navigation, the starting button and actions that point
// inside the template follow them, and every other reference stays as written. The canvas shows
// the new menu. Returns its identifier; empty when the file is missing, does not parse or is no
// menu template (said through the prompt), and then the project is as it was.
std::string LoadXmlTemplate(Project& project, const std::string& path, DocNode& languageMenus);

} // namespace mw
