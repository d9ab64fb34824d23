#include "cli/CliWizardCommands.h"

#include "cli/CliTitleCommands.h"
#include "cli/CliWholeProjectCommands.h"
#include "cli/ConsoleFormHost.h"
#include "document/Project.h"
#include "generators/Wizard.h"

#include <cmath>
#include <iostream>

namespace mw {

int RunWizard(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.empty() || !options.Output)
        return Refuse(context, options, "expected movie files and -o PROJECT.xml");
    CliOptions chapters = options;
    chapters.ChapEvery = options.Menu.ChaptersEvery;
    if (chapters.ChapCount && chapters.ChapEvery)
        return Refuse(context, options, "give one of --chapters and --chapters-every");
    std::optional<double> motion;
    if (options.Menu.Motion && !(motion = MotionSeconds(*options.Menu.Motion)))
        return Refuse(context, options, "--motion takes a number of seconds");
    std::vector<std::string> movies;
    if (!ExistingMovies(options, context, movies))
        return kExitUnreadable;
    return RunOnNewProject(options, context, [&](Project& project) {
        int refused = kExitOk;
        context.Forms.FillChap = [&](ChapForm& form) {
            refused = FillChapForm(form, chapters, project, context);
            return refused == kExitOk;
        };
        Wizard wizard;
        if (!WizardAddTitles(project, wizard, movies) || wizard.List1.size() != movies.size())
            return static_cast<int>(kExitFaults);
        for (std::size_t i = 0; (chapters.ChapCount || chapters.ChapEvery) && i < wizard.List1.size(); ++i) {
            WizardSelectTitle(project, wizard, static_cast<int>(i));
            if (!WizardCreateChapters(project, wizard))
                return refused != kExitOk ? refused : static_cast<int>(kExitFaults);
        }

        // Without a menu named the wizard's own choice stands.
        WizardShowMenus(wizard);
        const MenuCliOptions& menus = options.Menu;
        if (menus.TitleMenu || menus.ChapterMenus || menus.SetupMenus) {
            wizard.chkCreateTitleMenu = menus.TitleMenu;
            wizard.chkCreateSetupMenu = false;
            SetChapterMenuBox(project, wizard, menus.ChapterMenus);
            SetSetupMenuBox(wizard, menus.SetupMenus);
        }
        if (!WizardShowPreview(project, wizard))
            return static_cast<int>(kExitFaults);
        // As typed in the window's box: whole seconds.
        const std::string seconds = std::to_string(std::lround(motion.value_or(0)));
        if (wizard.TitlePage)
            wizard.TitlePage->Design.Animation = seconds;
        for (WizardTitle& title : wizard.List1) {
            if (title.Chapters)
                title.Chapters->Design.Animation = seconds;
        }
        if (!WizardCreate(project, wizard))
            return static_cast<int>(kExitFaults);
        for (const std::string& file : wizard.List3)
            std::cout << file << '\n';
        return static_cast<int>(kExitOk);
    });
}

} // namespace mw
