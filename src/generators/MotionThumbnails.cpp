#include "generators/MotionThumbnails.h"

#include "core/Prompt.h"
#include "generators/PageComposer.h"
#include "media/AviCache.h"
#include "media/FrameGrabber.h"
#include "media/VideoDecoder.h"
#include "render/cDIB.h"

#include <algorithm>

namespace mw {

struct MotionThumbnails::Player {
    std::size_t Item = 0;
    std::string Movie;
    long First = 0; // the item's frame, counted from the stream's start
    QSize Size;     // the thumbnail's
    std::shared_ptr<const AviFile> Avi;
    std::size_t Stream = 0;
    VideoDecoder Decoder;
    cDIB Frame;
    QImage Last;
};

MotionThumbnails::MotionThumbnails() = default;

MotionThumbnails::~MotionThumbnails()
{
    if (next_.valid())
        next_.wait();
}

bool MotionThumbnails::Open(const MenuPage& page, const std::vector<std::string>& movies, Prompt& prompt)
{
    if (next_.valid())
        next_.wait();
    next_ = {};
    players_.clear();
    for (std::size_t i = 0; i < page.Items.size() && i < movies.size(); ++i) {
        const PageItem& item = page.Items[i];
        if (!item.Visible)
            continue;
        auto player = std::make_unique<Player>();
        player->Item = i;
        player->Movie = movies[i];
        player->Size = ItemRect(page, item).size();
        player->Avi = OpenAvi(movies[i], AviRead::HeadersAndIndex);
        const auto video = player->Avi ? FirstVideoStream(*player->Avi) : std::nullopt;
        if (!video) {
            prompt.Message("There was an error working with the file:\n" + movies[i]);
            return false;
        }
        player->Stream = *video;
        player->First = std::max(item.Frame, static_cast<long>(player->Avi->Stream(*video).Info.dwStart));
        if (!player->Decoder.Open(movies[i], *video)) {
            prompt.Message("No suitable decompressor found for this video stream!");
            return false;
        }
        player->Decoder.SetPictureSize(player->Size.width(), player->Size.height());
        players_.push_back(std::move(player));
    }
    return true;
}

MotionThumbnails::Pictures MotionThumbnails::Decode(long k)
{
    Pictures pictures;
    pictures.K = k;
    for (const std::unique_ptr<Player>& player : players_) {
        const AviStream& stream = player->Avi->Stream(player->Stream);
        const long start = static_cast<long>(stream.Info.dwStart);
        const long last = start + static_cast<long>(stream.Info.dwLength) - 1;
        const long frame = player->First + k;
        if (frame <= last || player->Last.isNull()) {
            // Asked in order, the decoder goes on from the frame before instead of the key frame.
            const long wanted = std::min(frame, last);
            const long key = player->Avi->FindSample(player->Stream, wanted, KeySearch::PreviousKey);
            int decoded = 0;
            if (!player->Decoder.Decode(stream, wanted - start, key < 0 ? 0 : key - start, player->Frame, decoded)) {
                pictures.Failure = "Can not get frame of file '" + player->Movie + "' (" + std::to_string(wanted) + ")";
                return pictures;
            }
            player->Last = player->Frame.ToImage();
        }
        pictures.Thumbnails.push_back(player->Last);
    }
    return pictures;
}

bool MotionThumbnails::Show(MenuPage& page, long k, Prompt& prompt)
{
    Pictures pictures = next_.valid() ? next_.get() : Pictures{};
    if (pictures.K != k)
        pictures = Decode(k);
    if (!pictures.Failure.empty()) {
        prompt.Message(pictures.Failure);
        return false;
    }
    next_ = std::async(std::launch::async, [this, k] { return Decode(k + 1); });
    for (std::size_t i = 0; i < players_.size(); ++i)
        page.Items[players_[i]->Item].Picture = pictures.Thumbnails[i];
    return true;
}

} // namespace mw
