#include "menus/MenuBarCommands.h"

#include "core/Text.h"
#include "core/Paths.h"
#include "core/settings/clsIniFile.h"
#include "document/NodeSelection.h"
#include "document/Project.h"
#include "media/TitleNodes.h"
#include "menus/AddNewMenu.h"
#include "menus/Buttons.h"
#include "menus/MenuCommands.h"
#include "menus/MenuForms.h"

#include <algorithm>

namespace mw {

bool MenuOnCanvas(const Project& project)
{
    return project.ItemsEnabled && !project.Canvas.CurrentMenuID.empty();
}

bool CanCopyButtons(const Project& project)
{
    const MenuCanvas& canvas = project.Canvas;
    return MenuOnCanvas(project) &&
           std::any_of(canvas.Buttons.begin(), canvas.Buttons.end(), [](const CanvasButton& b) { return b.Selected; });
}

bool CanPasteButtons(const Project& project)
{
    return MenuOnCanvas(project) && !project.Canvas.CopiedButtons.empty();
}

bool CanCopySize(const Project& project)
{
    return MenuOnCanvas(project) && project.Canvas.Selected >= 0;
}

bool CanPasteSize(const Project& project)
{
    return CanCopySize(project) && project.Canvas.CopiedSize.has_value();
}

bool CanInsertTemplate(const Project& project)
{
    const DocNode* root = project.Doc.Tree.Root();
    return project.ItemsEnabled && root &&
           std::any_of(root->begin(), root->end(),
                       [](const auto& child) { return EqualsNoCase(child->Text, "LanguageMenus"); });
}

bool HasTitles(const Project& project)
{
    return project.ItemsEnabled && !TitleNodes(project.Doc).empty();
}

std::string mnuAddMenu(Project& project)
{
    NewMenuForm form;
    LoadNewMenuForm(form, clsIniFile(SettingsFilePath(project.ProgramFolder()).string()));
    const std::string id = AddNewMenu(project, form, true);
    if (DocNode* menu = project.Doc.Tree.ObjectNode(id))
        TreeView1_NodeClick(project, menu);
    return id;
}

void mnuRemoveMenu(Project& project)
{
    const DocNode* selected = project.Doc.Tree.Selected();
    const DocNode* menu = selected ? MenuOfNode(*selected) : nullptr;
    if (menu)
        DeleteMenu(project, GetPropertyInNode(*menu, "objectid"));
}

void mnuAddButton(Project& project)
{
    project.Canvas.AddMode = MenuOnCanvas(project);
}

void mnuRemoveButton(Project& project)
{
    const MenuCanvas& canvas = project.Canvas;
    if (std::any_of(canvas.Buttons.begin(), canvas.Buttons.end(), [](const CanvasButton& b) { return b.Selected; })) {
        DeleteButton(project, kSelectedButtons);
        return;
    }
    // The button of the tree's selection, which the canvas shows when it holds its menu.
    const DocNode* node = project.Doc.Tree.Selected();
    for (; node && !EqualsNoCase(node->Text, "ButtonMenu"); node = node->Parent()) {
    }
    const std::string id = node ? GetPropertyInNode(*node, "objectid") : "";
    for (std::size_t i = 0; i < canvas.Buttons.size(); ++i) {
        if (canvas.Buttons[i].Label.Tag == id || (id.empty() && static_cast<int>(i) == canvas.Selected)) {
            DeleteButton(project, static_cast<int>(i));
            return;
        }
    }
}

} // namespace mw
