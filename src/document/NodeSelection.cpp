#include "document/NodeSelection.h"

#include "core/Text.h"
#include "document/Project.h"
#include "document/ObjectIds.h"
#include "document/TreeQueries.h"

namespace mw {

const DocNode* EnclosingNamed(const DocNode& node, std::string_view name)
{
    for (const DocNode* at = &node; at; at = at->Parent()) {
        if (at->HasChildren() && EqualsNoCase(at->Text, name))
            return at;
    }
    return nullptr;
}

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
    commands.mnuNextNode = node != nullptr;
    commands.mnuPreviusNode = node != nullptr;
    if (node)
        project.PanesShown = true;
    const DocNode* menu = node ? MenuOfNode(*node) : nullptr;
    commands.mnuRemoveMenu = menu != nullptr;
    if (!menu)
        return std::nullopt;
    project.Canvas.CurrentMenuID = IdOfKey(menu->Key());
    return MenuCaption(*menu);
}

bool StepSibling(Project& project, bool forward)
{
    const DocNode* current = project.Doc.Tree.Selected();
    DocNode* sibling = !current ? nullptr : forward ? current->Next() : current->Previous();
    if (!sibling)
        return false;
    TreeView1_NodeClick(project, sibling);
    return true;
}

void EditPropertyRow(Project& project, DocNode& node, const std::string& name, const std::string& value)
{
    // The grid shows the selected node, so a node in a menu lies in the current menu.
    if (MenuOfNode(node))
        project.UndoAdd();
    UpdatePropertyInNode(project.Doc.Tree, node, name, value, false);
    project.MarkDirty();
}

} // namespace mw
