#include "cli/CliGeneratorCommands.h"

#include "core/Text.h"
#include "document/Project.h"
#include "generators/ChapterMenu.h"

#include <filesystem>
#include <iostream>

namespace mw {

int RunChapterMenu(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.size() != 2 || !options.Output)
        return Refuse(context, options, "expected a project file, a title id and -o MENU.avi");
    const std::string perPageText = options.Menu.PerPage.value_or("8");
    if (perPageText != "6" && perPageText != "8")
        return Refuse(context, options, "--per-page takes 6 or 8");
    ChapterMenuRequest request;
    request.TitleID = options.Arguments[1];
    std::error_code ec;
    request.FileName = std::filesystem::absolute(*options.Output, ec).string();
    request.MainMenuID = options.Menu.Main.value_or("");
    request.Language = options.DefLang.value_or("");

    // -o names the menu's video here; the project is saved where it was read.
    CliOptions inPlace = options;
    inPlace.Output.reset();
    return RunOnProject(inPlace, context, [&](Project& project) {
        if (!request.MainMenuID.empty()) {
            const DocNode* menu = project.Doc.Tree.ObjectNode(request.MainMenuID);
            if (!menu || !EqualsNoCase(menu->Text, "DivXMediaMenu"))
                return Refuse(context, options, request.MainMenuID + " is not a menu of the project");
        }
        MenuPage page;
        if (!OpenChapterPage(project, request.TitleID, std::stoi(perPageText), page))
            return Refuse(context, options, request.TitleID + " is not a title of the project");
        // Without a menu to lead to, the main and setup buttons would be dead ends. The setup
        // menu is made by a command of its own, so the setup button is left out here.
        page.Design.Main.Visible = !request.MainMenuID.empty();
        page.Design.Setup.Visible = false;
        ChapterMenuResult result;
        if (!CreateChapterMenu(project, page, request, result))
            return static_cast<int>(kExitFaults);
        for (const std::string& id : result.MenuIDs)
            std::cout << id << '\n';
        return static_cast<int>(kExitOk);
    });
}

} // namespace mw
