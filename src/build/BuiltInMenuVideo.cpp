#include "build/BuiltInMenuVideo.h"

#include "build/AudioMux.h"
#include "build/DebugCheckpoint.h"
#include "build/PicToMenuSteps.h"
#include "build/cAVICreator.h"
#include "core/NumberText.h"
#include "core/Version.h"

#include <filesystem>

namespace mw {

bool WriteMenuVideo(const MenuVideoJob& job, const Settings& settings, const LangDoc& lang, Prompt& prompt)
{
    DebugCheckpoint(settings, prompt, "Before create avi");
    cAVICreator avi(settings, prompt);
    avi.Filename = job.Output;
    DebugCheckpoint(settings, prompt, "After create");
    avi.VideoTypeFourCC = FourCC("vids");
    avi.VideoHandlerFourCC = job.Handler;
    avi.bitsPerPixel = 24;
    avi.FrameDuration = 1;
    avi.dwRate = MenuVideoRate(job.Fps);
    avi.name = std::string("video from ") + kAppTitle; // the executable's base name
    DebugCheckpoint(settings, prompt, "After load");

    std::string error;
    AudioMux audio;
    std::error_code ignored;
    if (!job.Audio.empty() && std::filesystem::exists(job.Audio, ignored)) {
        if (!audio.Open(job.Audio, error)) {
            ShowAviCreationError(error, prompt);
            return false;
        }
        avi.SetAudio(&audio);
    }
    cDIB picture;
    if (!LoadMenuPicture(job.Pictures.front(), picture, error)) {
        ShowAviCreationError(error, prompt);
        return false;
    }

    // StreamCreate writes the first frame, so the loop adds the frames after it.
    DebugCheckpoint(settings, prompt, "Before stream create");
    CheckMenuPictureSize(picture, lang, prompt);
    bool failed = false;
    if (avi.StreamCreate(picture)) {
        if (job.SinglePicture)
            DebugCheckpoint(settings, prompt, "FPS " + NumberText(job.Fps));
        for (long k = 1; k < job.Repeat && !failed; ++k)
            failed = !avi.StreamAdd(picture);
        for (std::size_t i = 1; i < job.Pictures.size() && !failed; ++i) {
            if (!LoadMenuPicture(job.Pictures[i], picture, error)) {
                failed = true;
                break;
            }
            CheckMenuPictureSize(picture, lang, prompt);
            failed = !avi.StreamAdd(picture);
        }
        if (failed && avi.LastError())
            error = avi.LastError()->Description();
    } else {
        DebugCheckpoint(settings, prompt, "Stream create error");
        failed = true;
        error = avi.LastError()->Description();
    }
    if (!avi.StreamClose() && !failed) {
        failed = true;
        error = avi.LastError()->Description();
    }
    DebugCheckpoint(settings, prompt, "After stream close");
    if (failed) {
        ShowAviCreationError(error, prompt);
        std::filesystem::remove(job.Output, ignored);
    }
    return !failed;
}

bool BuiltInAviFromPics(const std::vector<std::string>& pictures, const std::string& output, double fps,
                        const std::string& audio, const Settings& settings, const LangDoc& lang, Prompt& prompt)
{
    if (pictures.empty())
        return false;
    return WriteMenuVideo({pictures, 1, false, output, fps, audio, FourCC("divx")}, settings, lang, prompt);
}

bool BuiltInAviFromaPic(const std::string& picture, const std::string& output, double fps, const std::string& audio,
                        const Settings& settings, const LangDoc& lang, Prompt& prompt)
{
    const std::vector<std::string> pictures{picture};
    return WriteMenuVideo({pictures, SinglePictureFrames(fps), true, output, fps, audio, FourCC("divx")}, settings,
                          lang, prompt);
}

} // namespace mw
