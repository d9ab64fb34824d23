#include "document/NodeSelection.h"

#include "core/Text.h"
#include "document/Project.h"
#include "document/TreeQueries.h"

namespace mw {

namespace {

// The nearest element, the node itself included, whose name is `name`.
const DocNode* EnclosingNamed(const DocNode& node, std::string_view name)
{
    for (const DocNode* at = &node; at; at = at->Parent()) {
        if (at->HasChildren() && EqualsNoCase(at->Text, name))
            return at;
    }
    return nullptr;
}

} // namespace

std::string MenuCaption(const DocNode& menu)
{
    return "Menu " + GetPropertyInNode(menu, "menuname") + " (" + GetPropertyInNode(menu, "menutype") + ")";
}

const DocNode* MenuOfNode(const DocNode& node)
{
    return EnclosingNamed(node, "DivXMediaMenu");
}

std::optional<std::string> TreeView1_NodeClick(Project& project, DocNode* node)
{
    project.Doc.Tree.Select(node);
    CommandStates& commands = project.Commands;
    const std::string kind = node && node->HasChildren() ? Lower(node->Text) : std::string();
    commands.mnuRemoveTitle = kind == "title";
    commands.mnuRefreshTitle = kind == "title";
    commands.mnuRemoveLang = kind == "languagemenus";
    commands.mnuRemoveButton = node && EnclosingNamed(*node, "ButtonMenu");
    const DocNode* menu = node ? MenuOfNode(*node) : nullptr;
    commands.mnuRemoveMenu = menu != nullptr;
    if (!menu)
        return std::nullopt;
    return MenuCaption(*menu);
}

} // namespace mw
