#include "build/MenuFromPictures.h"

#include "build/PicToMenuSteps.h"
#include "build/PicturesToMenuVideo.h"
#include "document/Project.h"
#include "menus/MenuForms.h"

#include <cstdlib>

namespace mw {

bool MenuVideoFromPictures(Project& project, NewMenuForm& form, MenuVideoTools* tools)
{
    const std::vector<std::string> pictures = AskPictureNames({}, project.Ask());
    if (pictures.empty())
        return false;
    const std::optional<std::string> output = AskAviOutputName("", project.Ask());
    if (!output)
        return false;
    const double fps = std::strtod(form.cmbfpsText.c_str(), nullptr);
    const Settings& settings = project.Values();
    const int method = settings.MethodForPicToMenu;
    const bool made =
        pictures.size() == 1
            ? CreateAviFromaPic(pictures.front(), *output, fps, "", method, settings, project.Lang(), project.Ask(), tools)
            : CreateAviFromPics(pictures, *output, fps, "", method, settings, project.Lang(), project.Ask(), tools);
    return made && LoadMovieForMenu(project, form, *output);
}

} // namespace mw
