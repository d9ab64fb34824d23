#include "cli/CliGeneratorCommands.h"

#include "core/Text.h"
#include "document/Project.h"
#include "generators/ChapterMenu.h"
#include "generators/SetupMenu.h"
#include "generators/TitleMenu.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <iostream>

namespace mw {

namespace {

// Runs a generator on the project with the options the commands share: -o names the page 1
// video (the project is saved where it was read), --per-page 6 or 8, --motion and --lang, all
// put into the request. `make` opens the page at the number a page and makes the menus, or
// refuses with an exit status of its own.
int RunPageMenus(const CliOptions& options, CliContext& context, std::size_t arguments, const char* usage,
                 PageMenuRequest& request,
                 const std::function<int(Project&, int perPage, PageMenuResult&)>& make)
{
    if (options.Arguments.size() != arguments || !options.Output)
        return Refuse(context, options, usage);
    const std::string perPageText = options.Menu.PerPage.value_or("8");
    if (perPageText != "6" && perPageText != "8")
        return Refuse(context, options, "--per-page takes 6 or 8");
    if (options.Menu.Motion) {
        const std::optional<double> seconds = MotionSeconds(*options.Menu.Motion);
        if (!seconds)
            return Refuse(context, options, "--motion takes a number of seconds");
        request.MotionSeconds = *seconds;
    }
    request.Language = options.DefLang.value_or("");
    std::error_code ec;
    request.FileName = std::filesystem::absolute(*options.Output, ec).string();
    CliOptions inPlace = options;
    inPlace.Output.reset();
    return RunOnProject(inPlace, context, [&](Project& project) {
        PageMenuResult result;
        const int status = make(project, std::stoi(perPageText), result);
        if (status != static_cast<int>(kExitOk))
            return status;
        for (const std::string& id : result.MenuIDs)
            std::cout << id << '\n';
        return static_cast<int>(kExitOk);
    });
}

// --main must name a menu of the project; an empty one is no menu to lead to.
bool IsMenuOrEmpty(const Project& project, const std::string& menuID)
{
    const DocNode* menu = project.Doc.Tree.ObjectNode(menuID);
    return menuID.empty() || (menu && EqualsNoCase(menu->Text, "DivXMediaMenu"));
}

} // namespace

int RunChapterMenu(const CliOptions& options, CliContext& context)
{
    ChapterMenuRequest request;
    request.TitleID = options.Arguments.size() > 1 ? options.Arguments[1] : "";
    request.Menus.MainMenuID = options.Menu.Main.value_or("");
    return RunPageMenus(options, context, 2, "expected a project file, a title id and -o MENU.avi", request.Menus,
                        [&](Project& project, int perPage, PageMenuResult& result) {
        const std::string& mainMenu = request.Menus.MainMenuID;
        if (!IsMenuOrEmpty(project, mainMenu))
            return Refuse(context, options, mainMenu + " is not a menu of the project");
        MenuPage page;
        if (!OpenChapterPage(project, request.TitleID, perPage, page))
            return Refuse(context, options, request.TitleID + " is not a title of the project");
        // Without a menu to lead to, the main and setup buttons would be dead ends. The setup
        // menu is made by a command of its own, so the setup button is left out here.
        page.Design.Main.Visible = !mainMenu.empty();
        page.Design.Setup.Visible = false;
        return CreateChapterMenu(project, page, request, result) ? static_cast<int>(kExitOk)
                                                                 : static_cast<int>(kExitFaults);
    });
}

int RunTitleMenu(const CliOptions& options, CliContext& context)
{
    PageMenuRequest request;
    return RunPageMenus(options, context, 1, "expected a project file and -o MENU.avi", request,
                        [&](Project& project, int perPage, PageMenuResult& result) {
        MenuPage page;
        if (!OpenTitlePage(project, perPage, page))
            return Refuse(context, options, "the project has no title");
        // The title menu is the top menu: there is no menu above it to lead to.
        page.Design.Main.Visible = false;
        return CreateTitleMenu(project, page, request, result) ? static_cast<int>(kExitOk)
                                                               : static_cast<int>(kExitFaults);
    });
}

int RunSetupMenu(const CliOptions& options, CliContext& context)
{
    const std::string titleID = options.Arguments.size() > 1 ? options.Arguments[1] : "";
    SetupMenuRequest request;
    request.Menus.MainMenuID = options.Menu.Main.value_or("");
    return RunPageMenus(options, context, 2, "expected a project file, a title id and -o MENU.avi", request.Menus,
                        [&](Project& project, int, PageMenuResult& result) {
        const std::string& mainMenu = request.Menus.MainMenuID;
        if (!IsMenuOrEmpty(project, mainMenu))
            return Refuse(context, options, mainMenu + " is not a menu of the project");
        SetupPage setup;
        if (!OpenSetupPage(project, titleID, setup))
            return Refuse(context, options, titleID + " is not a title of the project");
        // Without a menu to lead to, the main button would be a dead end.
        setup.Page.Design.Main.Visible = !mainMenu.empty();
        SetupMenuResult made;
        if (!CreateSetupMenu(project, setup, request, made))
            return static_cast<int>(kExitFaults);
        result.MenuIDs = {made.MenuID};
        return static_cast<int>(kExitOk);
    });
}

} // namespace mw
