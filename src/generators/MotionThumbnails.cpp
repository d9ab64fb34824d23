#include "generators/MotionThumbnails.h"

#include "core/Prompt.h"
#include "media/AviCache.h"
#include "media/FrameGrabber.h"
#include "media/VideoDecoder.h"
#include "render/cDIB.h"

#include <algorithm>

namespace mw {

struct MotionThumbnails::Player {
    std::size_t Item = 0;
    std::string Movie;
    std::shared_ptr<const AviFile> Avi;
    std::size_t Stream = 0;
    VideoDecoder Decoder;
    cDIB Frame;
};

MotionThumbnails::MotionThumbnails() = default;
MotionThumbnails::~MotionThumbnails() = default;

bool MotionThumbnails::Open(const MenuPage& page, const std::vector<std::string>& movies, Prompt& prompt)
{
    players_.clear();
    for (std::size_t i = 0; i < page.Items.size() && i < movies.size(); ++i) {
        if (!page.Items[i].Visible)
            continue;
        auto player = std::make_unique<Player>();
        player->Item = i;
        player->Movie = movies[i];
        player->Avi = OpenAvi(movies[i], AviRead::HeadersAndIndex);
        const auto video = player->Avi ? FirstVideoStream(*player->Avi) : std::nullopt;
        if (!video) {
            prompt.Message("There was an error working with the file:\n" + movies[i]);
            return false;
        }
        player->Stream = *video;
        if (!player->Decoder.Open(movies[i], *video)) {
            prompt.Message("No suitable decompressor found for this video stream!");
            return false;
        }
        players_.push_back(std::move(player));
    }
    return true;
}

bool MotionThumbnails::Show(MenuPage& page, long k, Prompt& prompt)
{
    for (const std::unique_ptr<Player>& player : players_) {
        const AviStream& stream = player->Avi->Stream(player->Stream);
        const long start = static_cast<long>(stream.Info.dwStart);
        const long last = start + static_cast<long>(stream.Info.dwLength) - 1;
        const long frame = std::max(page.Items[player->Item].Frame, start) + k;
        if (frame > last && !player->Frame.Empty())
            continue;
        // Asked in order, the decoder goes on from the frame before instead of the key frame.
        const long wanted = std::min(frame, last);
        const long key = player->Avi->FindSample(player->Stream, wanted, KeySearch::PreviousKey);
        int decoded = 0;
        if (!player->Decoder.Decode(stream, wanted - start, key < 0 ? 0 : key - start, player->Frame, decoded)) {
            prompt.Message("Can not get frame of file '" + player->Movie + "' (" + std::to_string(wanted) + ")");
            return false;
        }
        page.Items[player->Item].Picture = player->Frame.ToImage();
    }
    return true;
}

} // namespace mw
