#include "menuplayer/ButtonOverlay.h"

#include "document/Project.h"
#include "menuplayer/MenuGraph.h"
#include "menus/CanvasCommands.h"

#include <filesystem>

namespace mw {

bool PaintButtonOverlay(Project& project, const std::string& menuID, const std::string& buttonID, PlayerOverlay& overlay)
{
    const MenuGraph graph(project.Doc);
    const DocNode* menu = graph.Menu(menuID);
    std::error_code ec;
    if (!menu || !graph.Button(*menu, buttonID) || !std::filesystem::is_regular_file(graph.BackgroundFile(*menu), ec))
        return false;
    const MenuCanvas shown = project.Canvas;
    ParceMenu(project, *project.Doc.Tree.ObjectNode(menuID));
    bool found = false;
    for (std::size_t i = 0; i < project.Canvas.Buttons.size() && !found; ++i) {
        if (project.Canvas.Buttons[i].Label.Tag != buttonID)
            continue;
        overlay.Picture = ButtonOverlayPicture(project, int(i));
        overlay.Where = project.Canvas.Buttons[i].Overlay;
        found = true;
    }
    project.Canvas = shown;
    return found;
}

} // namespace mw
