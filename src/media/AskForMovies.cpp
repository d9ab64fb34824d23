#include "media/AskForMovies.h"

#include "core/Paths.h"
#include "core/Prompt.h"
#include "document/Project.h"

#include <algorithm>

namespace mw {

std::vector<std::string> AskForFiles(Project& project, const std::string& title, const std::string& filter,
                                     bool several)
{
    FileDialogRequest request;
    request.Title = title;
    request.Filter = filter;
    request.InitialDir = project.Values().LastFolderUsed;
    request.MultiSelect = several;
    std::vector<std::string> files = project.Ask().OpenFiles(request);
    files.erase(std::find(files.begin(), files.end(), std::string()), files.end());
    if (!files.empty())
        project.Values().LastFolderUsed = FolderOf(files.front());
    return files;
}

std::vector<std::string> AskForMovies(Project& project, const std::string& title, bool several)
{
    return AskForFiles(project, title, "*.avi;*.divx|*.avi;*.divx", several);
}

} // namespace mw
