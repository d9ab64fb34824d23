#include "media/MoviePlayer.h"

#include "media/AviCache.h"
#include "media/FrameGrabber.h"
#include "render/cDIB.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace mw {

namespace {

// Pictures decoded ahead of the clock: enough to ride out a slow frame, few enough that a
// 720x576 movie keeps under 10 MB.
constexpr std::size_t kAhead = 8;

} // namespace

std::unique_ptr<MoviePlayer> MoviePlayer::Open(const std::string& path, PlayerClock clock, const AudioSinkFactory& sinks,
                                               PlayerOpen& result)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        result = PlayerOpen::NotFound;
        return nullptr;
    }
    result = PlayerOpen::NotPlayable;
    auto avi = OpenAvi(path, AviRead::HeadersAndIndex);
    const auto video = avi ? FirstVideoStream(*avi) : std::nullopt;
    if (!video)
        return nullptr;
    const AviStreamInfo& info = avi->Stream(*video).Info;
    if (info.dwRate == 0 || info.dwScale == 0 || info.dwLength == 0 || avi->Stream(*video).Chunks.empty())
        return nullptr;
    if (!clock)
        clock = [] { return std::chrono::steady_clock::now(); };
    std::unique_ptr<MoviePlayer> player(new MoviePlayer(std::move(avi), *video, std::move(clock)));
    if (!player->decoder_.Open(path, *video))
        return nullptr;
    MovieSound::Opened sound = MovieSound::Opened::NoSound;
    player->sound_ = MovieSound::Open(path, sinks, sound);
    player->silent_ = sound == MovieSound::Opened::NoDevice;
    player->worker_ = std::thread([p = player.get()] { p->Work(); });
    player->Seek(0);
    if (!player->picture_)
        return nullptr;
    result = PlayerOpen::Opened;
    return player;
}

MoviePlayer::MoviePlayer(std::shared_ptr<const AviFile> avi, std::size_t stream, PlayerClock clock)
    : avi_(std::move(avi)), stream_(stream), clock_(std::move(clock))
{
    const AviStreamInfo& info = avi_->Stream(stream_).Info;
    length_ = static_cast<long>(info.dwLength);
    fps_ = static_cast<double>(info.dwRate) / info.dwScale;
}

MoviePlayer::~MoviePlayer()
{
    {
        const std::lock_guard lock(mutex_);
        quit_ = true;
    }
    work_.notify_all();
    if (worker_.joinable())
        worker_.join();
}

long MoviePlayer::FramesToMs(long frames) const
{
    return std::lround(frames * 1000.0 / fps_);
}

std::shared_ptr<const cDIB> MoviePlayer::DecodeFrame(long frame)
{
    const AviStream& stream = avi_->Stream(stream_);
    const long start = static_cast<long>(stream.Info.dwStart);
    const long chunk = std::clamp(frame, 0L, static_cast<long>(stream.Chunks.size()) - 1);
    const long key = avi_->FindSample(stream_, chunk + start, KeySearch::PreviousKey);
    auto picture = std::make_shared<cDIB>();
    int decoded = 0;
    if (!decoder_.Decode(stream, chunk, key < 0 ? 0 : key - start, *picture, decoded))
        return nullptr;
    return picture;
}

void MoviePlayer::Work()
{
    std::unique_lock lock(mutex_);
    for (;;) {
        work_.wait(lock, [&] { return quit_ || next_ <= last_; });
        if (quit_)
            return;
        const long frame = next_;
        const std::uint64_t job = job_;
        lock.unlock();
        auto picture = DecodeFrame(frame);
        lock.lock();
        if (job != job_)
            continue;
        ahead_.push_back({frame, std::move(picture)});
        ++next_;
        ready_.notify_all();
        work_.wait(lock, [&] { return quit_ || job != job_ || ahead_.size() < kAhead; });
    }
}

void MoviePlayer::StartJob(long first, long last)
{
    {
        const std::lock_guard lock(mutex_);
        ++job_;
        ahead_.clear();
        next_ = first;
        last_ = last;
    }
    work_.notify_all();
}

void MoviePlayer::Take(Decoded& decoded)
{
    shown_ = decoded.Frame;
    // A frame that would not decode keeps the picture before it.
    if (decoded.Picture)
        picture_ = std::move(decoded.Picture);
}

void MoviePlayer::CatchUp()
{
    if (mode_ != PlayerMode::Playing)
        return;
    const long due = DueFrame();
    {
        const std::lock_guard lock(mutex_);
        while (!ahead_.empty() && ahead_.front().Frame <= due) {
            Take(ahead_.front());
            ahead_.pop_front();
        }
    }
    work_.notify_all();
    if (shown_ >= to_) {
        mode_ = PlayerMode::Stopped;
        StopSound();
    }
}

long MoviePlayer::DueFrame()
{
    if (soundPlaying_) {
        if (const auto seconds = sound_->Seconds())
            return static_cast<long>(std::floor(*seconds * fps_ + 1e-9));
        // The sound ended before the picture: the clock goes on from here.
        soundPlaying_ = false;
        anchor_ = clock_();
        anchorFrame_ = shown_;
    }
    const double seconds = std::chrono::duration<double>(clock_() - anchor_).count();
    return anchorFrame_ + static_cast<long>(std::floor(seconds * fps_ + 1e-9));
}

void MoviePlayer::StopSound()
{
    if (soundPlaying_)
        sound_->Stop();
    soundPlaying_ = false;
}

void MoviePlayer::ShowFirst(long first, long last)
{
    StartJob(first, last);
    {
        std::unique_lock lock(mutex_);
        ready_.wait(lock, [&] { return !ahead_.empty(); });
        Take(ahead_.front());
        ahead_.pop_front();
    }
    work_.notify_all();
}

void MoviePlayer::Play(long from, long to)
{
    // The clock starts with the first picture, not while the decoder seeks to it.
    StopSound();
    ShowFirst(from, to);
    mode_ = PlayerMode::Playing;
    to_ = to;
    anchor_ = clock_();
    anchorFrame_ = shown_;
    if (sound_) {
        sound_->Start(FramesToMs(shown_));
        soundPlaying_ = true;
    }
}

void MoviePlayer::Pause()
{
    CatchUp();
    if (mode_ != PlayerMode::Playing)
        return;
    mode_ = PlayerMode::Paused;
    if (soundPlaying_)
        sound_->Pause();
}

void MoviePlayer::Resume()
{
    if (mode_ != PlayerMode::Paused)
        return;
    mode_ = PlayerMode::Playing;
    anchor_ = clock_();
    anchorFrame_ = shown_;
    if (soundPlaying_)
        sound_->Resume();
}

void MoviePlayer::Stop()
{
    CatchUp();
    StopSound();
    mode_ = PlayerMode::Stopped;
    StartJob(1, 0);
}

void MoviePlayer::Seek(long frame)
{
    StopSound();
    mode_ = PlayerMode::Stopped;
    ShowFirst(frame, frame);
}

PlayerMode MoviePlayer::Mode()
{
    CatchUp();
    return mode_;
}

long MoviePlayer::Position()
{
    CatchUp();
    return shown_;
}

std::shared_ptr<const cDIB> MoviePlayer::Picture()
{
    CatchUp();
    return picture_;
}

} // namespace mw
