#include "cli/CliWholeProjectCommands.h"

#include "cli/CliTitleCommands.h"
#include "cli/ConsoleFormHost.h"
#include "core/CommandGuard.h"
#include "document/Project.h"
#include "generators/TitleMenu.h"
#include "generators/WholeProject.h"
#include "media/NewProject.h"

#include <filesystem>
#include <functional>
#include <iostream>
#include <system_error>

namespace fs = std::filesystem;

namespace mw {

bool ExistingMovies(const CliOptions& options, CliContext& context, std::vector<std::string>& movies)
{
    for (const std::string& argument : options.Arguments) {
        std::error_code ec;
        const fs::path movie = fs::absolute(argument, ec);
        if (ec || !fs::is_regular_file(movie, ec)) {
            Refuse(context, options, "cannot find " + argument);
            return false;
        }
        movies.push_back(movie.string());
    }
    return true;
}

int RunOnNewProject(const CliOptions& options, CliContext& context, const std::function<int(Project&)>& command)
{
    context.Forms.DefaultAudio = options.DefaultAudio;
    context.Forms.DefaultSubtitle = options.DefaultSubtitle;
    Project project(context.Program, context.Ask, context.Forms);
    project.ReadMovieFps = ReadMovieFps;
    int status = kExitOk;
    if (!RunCommandCaught(context.Ask, [&] { status = command(project); }))
        return kExitUnexpected;
    if (context.Ask.Cancelled())
        return kExitCancelled;
    return status == kExitOk ? SaveProject(options, project) : status;
}

int RunMovieWithChapters(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.size() != 1 || !options.Output)
        return Refuse(context, options, "expected one movie file and -o PROJECT.xml");
    if (options.ChapCount.has_value() == options.ChapEvery.has_value())
        return Refuse(context, options, "give one of --chapters and --every");
    std::vector<std::string> movies;
    if (!ExistingMovies(options, context, movies))
        return kExitUnreadable;
    return RunOnNewProject(options, context, [&](Project& project) {
        // Chapter values the dialog refuses end the command rather than making a project without.
        int chapters = kExitOk;
        context.Forms.FillChap = [&](ChapForm& form) {
            chapters = FillChapForm(form, options, project, context);
            return chapters == kExitOk;
        };
        // The DivX file is the build command's work, whatever the last question was answered.
        const bool made = mnuMovieWithChaps(project, movies.front()) != MovieWithChapsEnd::Stopped;
        return chapters != kExitOk ? chapters : static_cast<int>(made ? kExitOk : kExitFaults);
    });
}

int RunMoviesWithMenu(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.empty() || !options.Output)
        return Refuse(context, options, "expected movie files and -o PROJECT.xml");
    if (options.ChapCount && options.ChapEvery)
        return Refuse(context, options, "give one of --chapters and --every");
    std::vector<std::string> movies;
    if (!ExistingMovies(options, context, movies))
        return kExitUnreadable;
    std::error_code ec;
    const fs::path projectFile = fs::absolute(*options.Output, ec);
    ManyMoviesForm form;
    form.chkCreateChap = options.ChapCount || options.ChapEvery;
    form.Mode = options.ChapEvery ? ChapMode::PerMinutes : ChapMode::Count;
    form.txtChapters = options.ChapCount.value_or("");
    form.txtMinutes = options.ChapEvery.value_or("");
    return RunOnNewProject(options, context, [&](Project& project) {
        if (!AddMovies(project, form, movies) || form.List1.size() != movies.size())
            return static_cast<int>(kExitFaults);
        MenuPage page;
        if (!OpenManyMoviesPage(project, form, page))
            return static_cast<int>(kExitFaults);
        // The title menu is the top menu: there is no menu above it to lead to.
        page.Design.Main.Visible = false;
        PageMenuRequest request;
        request.FileName = (projectFile.parent_path() / (projectFile.stem().string() + "_menu.avi")).string();
        PageMenuResult result;
        if (!CreateTitleMenu(project, page, request, result))
            return static_cast<int>(kExitFaults);
        for (const std::string& id : result.MenuIDs)
            std::cout << id << '\n';
        return static_cast<int>(kExitOk);
    });
}

} // namespace mw
