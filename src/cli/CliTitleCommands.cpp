#include "cli/CliTitleCommands.h"

#include "core/Text.h"
#include "document/Project.h"
#include "media/AddTitle.h"
#include "media/ChapForm.h"
#include "media/Chapters.h"
#include "media/RefreshTitle.h"
#include "menus/RemoveTitle.h"
#include "media/TitleNodes.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <optional>
#include <ostream>
#include <system_error>

namespace fs = std::filesystem;

namespace mw {

namespace {

// Selects the title as a click in the tree would; false when the identifier is no title.
bool SelectTitle(Project& project, const std::string& titleId)
{
    DocNode* title = project.Doc.Tree.ObjectNode(titleId);
    if (!IsTitleNode(title))
        return false;
    project.Doc.Tree.Select(title);
    return true;
}

// Runs a menu command on the title named by the second argument; exit 1 when it fails.
int RunOnTitle(const CliOptions& options, CliContext& context, const std::function<bool(Project&)>& command)
{
    if (options.Arguments.size() != 2)
        return Refuse(context, options, "expected a project file and a title id");
    const std::string& titleId = options.Arguments[1];
    return RunOnProject(options, context, [&](Project& project) {
        if (!SelectTitle(project, titleId))
            return Refuse(context, options, titleId + " is not a title of the project");
        return static_cast<int>(command(project) ? kExitOk : kExitFaults);
    });
}

// "START-END[:NAME],..." as the rows a user would type; nullopt when the text is not of that form.
std::optional<std::vector<ChapterRow>> ManualRows(const std::string& list)
{
    std::vector<ChapterRow> rows;
    std::size_t from = 0;
    while (from <= list.size()) {
        const std::size_t comma = std::min(list.find(',', from), list.size());
        const std::string item = list.substr(from, comma - from);
        const std::size_t colon = std::min(item.find(':'), item.size());
        const std::size_t dash = item.find('-');
        const std::string start = item.substr(0, std::min(dash, colon));
        const std::string end = dash < colon ? item.substr(dash + 1, colon - dash - 1) : "";
        const std::optional<long> first = DigitsNumber(start, 9);
        const std::optional<long> last = DigitsNumber(end, 9);
        if (!first || !last)
            return std::nullopt;
        rows.push_back({0, *first, *last, colon < item.size() ? item.substr(colon + 1) : ""});
        from = comma + 1;
    }
    return rows;
}

} // namespace

int FillChapForm(ChapForm& form, const CliOptions& options, Project& project, CliContext& context)
{
    Prompt& prompt = project.Ask();
    form.chkAll = options.AllTitles;
    if (options.ChapCount || options.ChapEvery) {
        if (options.ChapCount) {
            form.Mode = ChapMode::Count;
            form.txtChapters = *options.ChapCount;
        } else {
            form.Mode = ChapMode::PerMinutes;
            form.txtMinutes = *options.ChapEvery;
        }
        CalcChapters(form, prompt);
        const TaggedLabel& label = options.ChapCount ? form.lblCountTime : form.lblCountChapters;
        if (label.Tag.empty())
            return Refuse(context, options, "the count and the minutes must be greater than 0");
    } else if (options.ChapImport) {
        form.Mode = ChapMode::Count;
        if (!ImportChapterFile(form, *options.ChapImport, project.Lang(), prompt))
            return kExitFaults;
    } else {
        form.Mode = ChapMode::Manual;
        const std::optional<std::vector<ChapterRow>> rows = ManualRows(*options.ChapManual);
        if (!rows)
            return Refuse(context, options, "--manual takes START-END[:NAME],...");
        // The title's own chapters, which the list shows first, are deleted; the new rows are
        // then typed in one after the other, with the checks of the "Add" button.
        form.ListView1.clear();
        form.txtStartFrame = "0";
        for (const ChapterRow& row : *rows) {
            form.txtStartFrame = std::to_string(row.Start);
            form.txtEndFrame = std::to_string(row.End);
            if (!AddChapterRow(form, prompt))
                return kExitFaults;
            form.ListView1.back().Name = row.Name;
        }
    }
    return AcceptChapForm(form, ChapSettingsFile(project), project.Lang(), prompt) ? kExitOk : kExitFaults;
}

int RunAddTitle(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.size() < 2)
        return Refuse(context, options, "expected a project file and at least one movie");
    std::vector<std::string> movies;
    for (std::size_t i = 1; i < options.Arguments.size(); ++i) {
        std::error_code ec;
        const fs::path movie = fs::absolute(options.Arguments[i], ec);
        if (ec || !fs::is_regular_file(movie, ec))
            return Refuse(context, options, "cannot find " + options.Arguments[i]);
        movies.push_back(movie.string());
    }
    return RunOnProject(options, context, [&](Project& project) {
        for (const std::string& movie : movies) {
            if (!AddTitle(project, movie))
                return static_cast<int>(kExitFaults);
        }
        return static_cast<int>(kExitOk);
    });
}

int RunChapters(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.size() != 2)
        return Refuse(context, options, "expected a project file and a title id");
    const int modes = int(options.ChapCount.has_value()) + int(options.ChapEvery.has_value()) +
                      int(options.ChapImport.has_value()) + int(options.ChapManual.has_value());
    if (modes != 1)
        return Refuse(context, options, "give one of --count, --every, --import and --manual");
    const std::string& titleId = options.Arguments[1];
    return RunOnProject(options, context, [&](Project& project) {
        ChapForm form;
        LoadChapForm(form, project.Doc, ChapSettingsFile(project), project.Ask());
        for (std::size_t i = 0; i < form.Combo1.Items.size(); ++i) {
            if (std::to_string(form.Combo1.Items[i].ItemData) == titleId)
                form.Combo1.ListIndex = static_cast<int>(i);
        }
        if (form.Combo1.ListIndex < 0)
            return Refuse(context, options, titleId + " is not a title of the project");
        if (!Combo1_Click(form, project.Doc, project.Ask()))
            return static_cast<int>(kExitFaults);
        if (const int status = FillChapForm(form, options, project, context); status != kExitOk)
            return status;
        return static_cast<int>(CreateChaps(project, form, false) ? kExitOk : kExitFaults);
    });
}

int RunRefreshTitle(const CliOptions& options, CliContext& context)
{
    return RunOnTitle(options, context, mnuRefreshTitle);
}

int RunRemoveTitle(const CliOptions& options, CliContext& context)
{
    return RunOnTitle(options, context, [](Project& project) {
        mnuRemoveTitle(project);
        return true;
    });
}

} // namespace mw
