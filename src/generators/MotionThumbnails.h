#pragma once

#include "generators/PageModel.h"

#include <future>
#include <memory>
#include <string>
#include <vector>

namespace mw {

class Prompt;

// The thumbnails of a motion page. Each visible item plays its movie from the item's frame,
// decoded in order by a decoder of its own, so that no frame of a page costs a seek. While the
// caller lays out and encodes one frame, the next is decoded on a thread of its own.
class MotionThumbnails {
public:
    MotionThumbnails();
    ~MotionThumbnails();
    MotionThumbnails(const MotionThumbnails&) = delete;
    MotionThumbnails& operator=(const MotionThumbnails&) = delete;

    // Opens the movie of each visible item of the current page, `movies` holding one per item.
    // False, with the message shown, when one cannot be decoded.
    bool Open(const MenuPage& page, const std::vector<std::string>& movies, Prompt& prompt);

    // Puts frame k of each visible item's play into its picture, at the thumbnail's size; k
    // counts up from 0. An item whose movie ends before keeps its last frame. False, with the
    // message shown, when a frame cannot be had.
    bool Show(MenuPage& page, long k, Prompt& prompt);

private:
    struct Player;
    struct Pictures {
        long K = -1;
        std::vector<QImage> Thumbnails; // one per player
        std::string Failure;            // the message when a frame could not be had
    };
    Pictures Decode(long k);

    std::vector<std::unique_ptr<Player>> players_;
    std::future<Pictures> next_; // ends before the players it uses
};

} // namespace mw
