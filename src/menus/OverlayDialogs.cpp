#include "menus/OverlayDialogs.h"

#include "core/ProgramFolder.h"
#include "core/settings/OptionsModel.h"
#include "document/Project.h"
#include "media/AskForMovies.h"
#include "menus/OverlayAttributes.h"
#include "menus/OverlayMenu.h"
#include "render/OverlayScheme.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace mw {

std::string AskForOverlayPicture(Project& project)
{
    const std::vector<std::string> files =
        AskForFiles(project, "Select picture", "*.bmp;*.jpg;*.gif|*.bmp;*.jpg;*.gif", false);
    return files.empty() ? std::string() : files.front();
}

bool CreateTextOverlay(Project& project)
{
    DocNode* node = nullptr;
    if (!SelectedButton(project, node))
        return false;
    const std::optional<TextOverlayForm> form = TextOverlayFromTag(node->Tag);
    if (!form) {
        project.Ask().Message("Error in Text overlay");
        return false;
    }
    project.UndoAdd();
    OverlayMenus& overlays = project.Overlays;
    overlays.TextPanel = *form;
    overlays.TextPanelVisible = true;
    overlays.Checked = SetOverlayCheckItem(overlays, "*Text");
    project.Canvas.shapeLineWidth = false;
    UpdateTextOverlay(project);
    return true;
}

bool CreateOverlayFromPic(Project& project)
{
    const std::string picture = AskForOverlayPicture(project);
    return !picture.empty() && CreateOverlayFromPic(project, picture);
}

bool CreateOverlayFromPic(Project& project, const std::string& picture)
{
    const std::string name = fs::path(picture).stem().string();
    const fs::path folder = project.ProgramFolder() / kOverlaysFolder;
    const fs::path target = folder / (name + ".bmp");
    std::error_code ec;
    if (fs::exists(target, ec) &&
        project.Ask().Ask("File\r\n\r\n" + target.string() + "\r\n\r\nexist. Replace it?", PromptButtons::YesNo,
                          PromptAnswer::Yes) != PromptAnswer::Yes)
        return false;

    CreateOverFromPicForm form;
    form.Picture = picture;
    form.Target = target.string();
    form.Overlay.LoadPicture(picture);
    if (!project.Forms().ShowCreateOverFromPic(form))
        return false;
    // Without the window nothing was picked: the corner is the background, as on the command line.
    if (!form.Overlay.Transparent())
        form.Overlay.PickTransparent(0, 0);
    form.Overlay.ShowWithDefaultColors();
    if (!form.Overlay.Result().Save(target.string())) {
        project.Ask().Message("Can not write " + target.string());
        return false;
    }

    LoadOverlaysToMenu(folder, project.Overlays, project.Ask());
    const MenuCanvas& canvas = project.Canvas;
    DocNode* node = nullptr;
    if (canvas.Selected >= 0 && !SelectedButton(project, node))
        project.Ask().Message("Error setting overlay from DVDSubEdit");
    SetThisOverlay(project, name);
    return true;
}

bool SelectColor(Project& project)
{
    std::array<std::uint32_t, 3> colors = project.Canvas.Colors;
    if (project.Canvas.CurrentMenuID.empty() || !project.Forms().ShowOverlayColors(colors))
        return false;
    if (std::find(colors.begin(), colors.end(), kOverlayBlue) != colors.end()) {
        project.Ask().Message(kBlueIsReserved);
        return false;
    }
    SelectColor(project, colors);
    return true;
}

} // namespace mw
