#include "menuplayer/ButtonOverlay.h"

#include "core/ScriptedPrompt.h"
#include "document/Project.h"
#include "menuplayer/MenuGraph.h"
#include "menus/CanvasCommands.h"

#include <filesystem>

namespace mw {

bool PaintButtonOverlay(const Project& project, const std::string& menuID, const std::string& buttonID,
                        PlayerOverlay& overlay)
{
    const MenuGraph graph(project.Doc);
    const DocNode* menu = graph.Menu(menuID);
    const DocNode* button = menu ? graph.Button(*menu, buttonID) : nullptr;
    std::error_code ec;
    if (!button || !std::filesystem::is_regular_file(graph.BackgroundFile(*menu), ec))
        return false;
    // A player shows less where an overlay file is missing; it does not stop to say so.
    ScriptedPrompt quiet;
    const CanvasButton read = ReadCanvasButton(project, *button);
    overlay.Picture = ButtonOverlayPicture(project, quiet, read, MenuOverlayColors(project, *menu));
    overlay.Where = read.Overlay;
    return true;
}

} // namespace mw
