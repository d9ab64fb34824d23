#include "menus/CommandRules.h"

#include "core/Text.h"
#include "document/Project.h"

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
           (canvas.Selected >= 0 ||
            std::any_of(canvas.Buttons.begin(), canvas.Buttons.end(), [](const CanvasButton& b) { return b.Selected; }));
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

} // namespace mw
