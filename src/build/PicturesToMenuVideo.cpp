#include "build/PicturesToMenuVideo.h"

#include "build/BuiltInMenuVideo.h"
#include "build/OutsideMenuVideo.h"
#include "build/PicToMenuSteps.h"

namespace mw {

bool CreateAviFromPics(const std::vector<std::string>& pictures, const std::string& output, double fps,
                       const std::string& audio, int method, const Settings& settings, const LangDoc& lang,
                       Prompt& prompt, MenuVideoTools* tools)
{
    const std::vector<std::string> chosen = AskPictureNames(pictures, prompt);
    if (chosen.empty())
        return false;
    const std::optional<std::string> target = AskAviOutputName(output, prompt);
    if (!target || !DeleteOldOutput(*target, prompt))
        return false;
    if (method == kPicToMenuBuiltIn)
        return BuiltInAviFromPics(chosen, *target, fps, audio, settings, lang, prompt);
    return tools && OutsideAviFromPics(chosen, *target, fps, audio, method, settings, lang, prompt, *tools);
}

bool CreateAviFromaPic(const std::string& picture, const std::string& output, double fps, const std::string& audio,
                       int method, const Settings& settings, const LangDoc& lang, Prompt& prompt,
                       MenuVideoTools* tools)
{
    const std::optional<std::string> chosen = AskPictureName(picture, prompt);
    if (!chosen)
        return false;
    const std::optional<std::string> target = AskAviOutputName(output, prompt);
    if (!target || !DeleteOldOutput(*target, prompt))
        return false;
    if (!CheckPictureExists(*chosen, lang, prompt))
        return false;
    if (method == kPicToMenuBuiltIn)
        return BuiltInAviFromaPic(*chosen, *target, fps, audio, settings, lang, prompt);
    return tools && OutsideAviFromaPic(*chosen, *target, fps, audio, method, settings, lang, prompt, *tools);
}

} // namespace mw
