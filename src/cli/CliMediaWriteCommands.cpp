#include "cli/CliCommands.h"

#include "build/PicturesToMenuVideo.h"
#include "document/ProgramStart.h"
#include "i18n/LanguageFiles.h"

#include <ostream>

namespace mw {

namespace {

// Beyond this no menu video makes sense, and frame counts stay small.
constexpr double kMaxFps = 1000;

} // namespace

int RunPic2Avi(const CliOptions& options, CliContext& context)
{
    const Settings& settings = context.Program.Values;
    const char* problem = nullptr;
    if (options.Arguments.empty())
        problem = "expected one or more pictures";
    else if (!options.Output)
        problem = "expected -o OUT.avi";
    else if (!options.Fps)
        problem = "expected --fps F";
    else if (!(*options.Fps > 0 && *options.Fps <= kMaxFps))
        problem = "--fps must be above 0 and at most 1000";
    if (problem) {
        context.Err << "menuwright-cli " << options.Command << ": " << problem << '\n';
        return kExitUnreadable;
    }
    const std::string audio = options.Audio.value_or("");
    const bool made =
        options.Arguments.size() == 1
            ? CreateAviFromaPic(options.Arguments.front(), *options.Output, *options.Fps, audio, kPicToMenuBuiltIn,
                                settings, context.Lang.LangDoc(), context.Ask)
            : CreateAviFromPics(options.Arguments, *options.Output, *options.Fps, audio, kPicToMenuBuiltIn, settings,
                                context.Lang.LangDoc(), context.Ask);
    return made ? kExitOk : kExitFaults;
}

} // namespace mw
