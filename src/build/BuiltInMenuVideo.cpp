#include "build/BuiltInMenuVideo.h"

#include "build/AudioMux.h"
#include "build/DebugCheckpoint.h"
#include "build/PicToMenuSteps.h"
#include "build/cAVICreator.h"
#include "core/NumberText.h"
#include "core/Version.h"

#include <algorithm>
#include <filesystem>

namespace mw {

namespace {

// The writer behind every built-in route: frame 0 opens the stream, the others follow it.
bool WriteFrames(const MenuVideoJob& job, long count, const MenuFrameSource& source, const Settings& settings,
                 const LangDoc& lang, Prompt& prompt)
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
    if (count < 1 || !source(0, picture, error)) {
        if (!error.empty())
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
        for (long k = 1; k < count && !failed; ++k)
            failed = !source(k, picture, error) || !avi.StreamAdd(picture);
        if (failed && error.empty() && avi.LastError())
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
        if (!error.empty())
            ShowAviCreationError(error, prompt);
        std::filesystem::remove(job.Output, ignored);
    }
    return !failed;
}

} // namespace

bool WriteMenuVideo(const MenuVideoJob& job, const Settings& settings, const LangDoc& lang, Prompt& prompt)
{
    // The first picture stands for Repeat frames, then each further picture for one.
    const auto pictures = [&](long index, cDIB& frame, std::string& error) {
        if (index > 0 && index < job.Repeat)
            return true;
        const std::size_t i = index == 0 ? 0 : static_cast<std::size_t>(index - job.Repeat + 1);
        if (!LoadMenuPicture(job.Pictures[i], frame, error))
            return false;
        if (index > 0)
            CheckMenuPictureSize(frame, lang, prompt);
        return true;
    };
    const long count = std::max(job.Repeat, 1L) + static_cast<long>(job.Pictures.size()) - 1;
    return WriteFrames(job, count, pictures, settings, lang, prompt);
}

bool BuiltInAviFromFrames(long count, const MenuFrameSource& source, const std::string& output, double fps,
                          const std::string& audio, const Settings& settings, const LangDoc& lang, Prompt& prompt)
{
    static const std::vector<std::string> kNoPictures;
    return WriteFrames({kNoPictures, 1, false, output, fps, audio, FourCC("divx")}, count, source, settings, lang,
                       prompt);
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
