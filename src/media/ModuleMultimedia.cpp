#include "media/ModuleMultimedia.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>

namespace mw {

namespace {

constexpr const char* kSuccess = "Success";
constexpr const char* kNotOpen = "The specified device is not open or is not recognized.";
constexpr const char* kAliasInUse = "The specified alias is already being used in this application. Use a unique alias.";
constexpr const char* kFileNotFound = "Cannot find the specified file. Make sure the path and filename are correct.";
constexpr const char* kCannotPlay = "The specified file cannot be played on the specified device. The file may be "
                                    "corrupt, or not in the correct format.";
constexpr const char* kOutOfRange = "The specified parameter is out of range for the specified command.";
constexpr const char* kNotInteger = "The command requires an integer parameter. Please provide one.";

// Aliases and device types are matched ignoring case, as the command texts were.
std::string Lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::optional<long> Integer(const std::string& text)
{
    long value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return value;
}

} // namespace

ModuleMultimedia::ModuleMultimedia(PlayerClock clock, AudioSinkFactory sinks)
    : clock_(std::move(clock)), sinks_(std::move(sinks))
{
}

ModuleMultimedia::~ModuleMultimedia() = default;

ModuleMultimedia::Movie* ModuleMultimedia::Find(const std::string& alias)
{
    const auto found = movies_.find(Lower(alias));
    return found == movies_.end() ? nullptr : &found->second;
}

std::string ModuleMultimedia::MMOpen(const std::string& file, const std::string& type, const std::string& alias)
{
    if (Lower(type) != "mpegvideo")
        return kNotOpen;
    if (Find(alias))
        return kAliasInUse;
    PlayerOpen result = PlayerOpen::NotFound;
    auto player = MoviePlayer::Open(file, clock_, sinks_, result);
    if (!player)
        return result == PlayerOpen::NotFound ? kFileNotFound : kCannotPlay;
    movies_[Lower(alias)].Player = std::move(player);
    return kSuccess;
}

std::string ModuleMultimedia::MMPlay(const std::string& alias, const std::string& from, const std::string& to)
{
    Movie* movie = Find(alias);
    if (!movie)
        return kNotOpen;
    const long length = movie->Player->LengthFrames();
    const auto first = Integer(from.empty() ? "0" : from);
    const auto last = to.empty() ? std::optional<long>(length) : Integer(to);
    if (!first || !last)
        return kNotInteger;
    if (*first < 0 || *first > *last || *last > length)
        return kOutOfRange;
    movie->Player->Play(*first, *last);
    return kSuccess;
}

std::string ModuleMultimedia::MMClose(const std::string& alias)
{
    return movies_.erase(Lower(alias)) ? kSuccess : kNotOpen;
}

std::string ModuleMultimedia::Command(const std::string& alias, void (MoviePlayer::*command)())
{
    Movie* movie = Find(alias);
    if (!movie)
        return kNotOpen;
    (movie->Player.get()->*command)();
    return kSuccess;
}

std::string ModuleMultimedia::MMPause(const std::string& alias)
{
    return Command(alias, &MoviePlayer::Pause);
}

std::string ModuleMultimedia::MMStop(const std::string& alias)
{
    return Command(alias, &MoviePlayer::Stop);
}

std::string ModuleMultimedia::MMResume(const std::string& alias)
{
    return Command(alias, &MoviePlayer::Resume);
}

std::string ModuleMultimedia::MMStatusMode(const std::string& alias)
{
    Movie* movie = Find(alias);
    if (!movie)
        return "ERROR";
    switch (movie->Player->Mode()) {
    case PlayerMode::Playing:
        return "playing";
    case PlayerMode::Paused:
        return "paused";
    case PlayerMode::Stopped:
        break;
    }
    return "stopped";
}

long ModuleMultimedia::MMLengthFrames(const std::string& alias)
{
    Movie* movie = Find(alias);
    return movie ? movie->Player->LengthFrames() : -1;
}

long ModuleMultimedia::MMLengthMs(const std::string& alias)
{
    Movie* movie = Find(alias);
    return movie ? movie->Player->FramesToMs(movie->Player->LengthFrames()) : -1;
}

std::string ModuleMultimedia::MMSeek(const std::string& alias, const std::string& position)
{
    Movie* movie = Find(alias);
    if (!movie)
        return kNotOpen;
    const auto frame = Integer(position);
    if (!frame)
        return kNotInteger;
    if (*frame < 0 || *frame > movie->Player->LengthFrames())
        return kOutOfRange;
    movie->Player->Seek(*frame);
    return kSuccess;
}

long ModuleMultimedia::MMPositionMs(const std::string& alias)
{
    Movie* movie = Find(alias);
    return movie ? movie->Player->FramesToMs(movie->Player->Position()) : -1;
}

long ModuleMultimedia::MMPositionFrames(const std::string& alias)
{
    Movie* movie = Find(alias);
    return movie ? movie->Player->Position() : -1;
}

std::string ModuleMultimedia::MMPut(const std::string& alias, int left, int top, int width, int height)
{
    Movie* movie = Find(alias);
    if (!movie)
        return kNotOpen;
    if (width < 0 || height < 0)
        return kOutOfRange;
    movie->Window = {left, top, width, height};
    return kSuccess;
}

std::shared_ptr<const cDIB> ModuleMultimedia::Picture(const std::string& alias)
{
    Movie* movie = Find(alias);
    return movie ? movie->Player->Picture() : nullptr;
}

PreviewWindow ModuleMultimedia::Window(const std::string& alias) const
{
    const auto found = movies_.find(Lower(alias));
    return found == movies_.end() ? PreviewWindow{} : found->second.Window;
}

bool ModuleMultimedia::Silent(const std::string& alias)
{
    Movie* movie = Find(alias);
    return movie && movie->Player->Silent();
}

} // namespace mw
