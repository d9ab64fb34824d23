#include "media/FrameGrabber.h"

#include "core/Prompt.h"
#include "i18n/LangDoc.h"
#include "media/AviCache.h"
#include "media/VideoDecoder.h"
#include "render/cDIB.h"

namespace mw {

namespace {

// mAVIDecs is a module, not a window; its texts are kept under that name.
constexpr const char* kForm = "mAVIDecs";

} // namespace

std::optional<std::size_t> FirstVideoStream(const AviFile& avi)
{
    for (std::size_t i = 0; i < avi.StreamCount(); ++i) {
        if (avi.Stream(i).Info.fccType == FourCC("vids"))
            return i;
    }
    return std::nullopt;
}

bool GrabFrameToPicture(const std::string& fileName, cDIB& picture, long& frame, bool fitPictureToFrame,
                        Prompt& prompt, const LangDoc& lang, GrabStatistics* statistics)
{
    const FormTexts text(lang, kForm);
    const auto avi = OpenAvi(fileName, AviRead::HeadersAndIndex);
    const auto video = avi ? FirstVideoStream(*avi) : std::nullopt;
    if (!video) {
        prompt.Message(text(6, "There was an error working with the file:") + "\r\n" + fileName);
        return false;
    }
    const AviStream& stream = avi->Stream(*video);
    const AviStreamInfo& info = stream.Info;

    VideoDecoder decoder;
    if (!decoder.Open(fileName, *video)) {
        prompt.Message(text(3, "No suitable decompressor found for this video stream!"));
        return false;
    }
    if (frame > static_cast<long>(info.dwLength)) {
        prompt.Message(text(4, "Frame not found"));
        return false;
    }
    if (frame == -1)
        frame = static_cast<long>(info.dwStart);

    // Frames count from the stream's start; the decoder counts the stream's chunks. The header
    // rectangle only describes the picture: a wrong one must not size the bitmap.
    const long start = static_cast<long>(info.dwStart);
    const long key = avi->FindSample(*video, frame, KeySearch::PreviousKey);
    cDIB bitmap;
    int decoded = 0;
    const bool ok = decoder.Decode(stream, frame - start, key < 0 ? 0 : key - start, bitmap, decoded);
    if (statistics)
        *statistics = {key, decoded};
    if (!ok) {
        prompt.Message(text(5, "Can not get frame of file '") + fileName + "' (" + std::to_string(frame) + ")");
        return false;
    }
    if (fitPictureToFrame || picture.Empty())
        picture = std::move(bitmap);
    else
        bitmap.Stretch(picture, 0, 0, picture.Width(), picture.Height(), 0, 0, bitmap.Width(), bitmap.Height());
    return true;
}

} // namespace mw
