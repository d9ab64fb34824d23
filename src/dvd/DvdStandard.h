#pragma once

#include <cmath>
#include <optional>
#include <string_view>

namespace mw {

// The two television systems a DVD-Video is made for. Both use a 4:3 frame 720 pixels wide.
enum class TvStandard { Pal, Ntsc };

inline constexpr int kDvdFrameWidth = 720;

constexpr int DvdFrameHeight(TvStandard standard)
{
    return standard == TvStandard::Pal ? 576 : 480;
}

// Frames per second as an exact fraction: 25/1, or 30000/1001.
struct FrameRate {
    int Num = 25;
    int Den = 1;

    constexpr double Fps() const { return double(Num) / Den; }
    bool operator==(const FrameRate&) const = default;
};

constexpr FrameRate DvdFrameRate(TvStandard standard)
{
    return standard == TvStandard::Pal ? FrameRate{25, 1} : FrameRate{30000, 1001};
}

// Film rate, which NTSC carries by telecine.
inline constexpr FrameRate kFilmRate{24000, 1001};

// The standard a movie of this rate plays in with the least change: rates from the 25 and 50
// family are PAL, everything else (23.976, 29.97, 24, 30, 59.94, ...) NTSC. An unknown rate (0)
// gives PAL.
inline TvStandard StandardForRate(double fps)
{
    if (fps <= 0)
        return TvStandard::Pal;
    const auto near = [fps](double rate) { return std::abs(fps - rate) < 0.5; };
    return near(25) || near(50) || near(12.5) ? TvStandard::Pal : TvStandard::Ntsc;
}

constexpr const char* StandardName(TvStandard standard)
{
    return standard == TvStandard::Pal ? "pal" : "ntsc";
}

inline std::optional<TvStandard> ParseStandard(std::string_view name)
{
    if (name == "pal" || name == "PAL")
        return TvStandard::Pal;
    if (name == "ntsc" || name == "NTSC")
        return TvStandard::Ntsc;
    return std::nullopt;
}

} // namespace mw
