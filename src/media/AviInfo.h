#pragma once

#include <cstdint>
#include <string>

namespace mw {

// The file record of an AVI as the rest of the program reads it.
struct AviFileInfo {
    std::uint32_t dwMaxBytesPerSecond = 0;
    std::uint32_t dwFlags = 0;
    std::uint32_t dwCaps = 0;
    std::uint32_t dwStreams = 0;
    std::uint32_t dwSuggestedBufferSize = 0;
    std::uint32_t dwWidth = 0;
    std::uint32_t dwHeight = 0;
    std::uint32_t dwScale = 0; // those of stream 0
    std::uint32_t dwRate = 0;
    std::uint32_t dwLength = 0;
    std::uint32_t dwEditCount = 0;
    std::string szFileType;
};

struct AviRect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
};

// The stream record of one stream.
struct AviStreamInfo {
    std::uint32_t fccType = 0;
    std::uint32_t fccHandler = 0;
    std::uint32_t dwFlags = 0;
    std::uint32_t dwCaps = 0;
    std::uint16_t wPriority = 0;
    std::uint16_t wLanguage = 0;
    std::uint32_t dwScale = 0;
    std::uint32_t dwRate = 0;
    std::uint32_t dwStart = 0;
    std::uint32_t dwLength = 0;
    std::uint32_t dwInitialFrames = 0;
    std::uint32_t dwSuggestedBufferSize = 0;
    std::uint32_t dwQuality = 0;
    std::uint32_t dwSampleSize = 0;
    AviRect rcFrame;
    std::uint32_t dwEditCount = 0;
    std::uint32_t dwFormatChangeCount = 0;
    std::string szName; // the strn text up to its first NUL, at most 64 characters
};

// Four characters packed first-lowest: FourCC("vids").
constexpr std::uint32_t FourCC(const char (&s)[5])
{
    return static_cast<std::uint32_t>(static_cast<unsigned char>(s[0])) |
           static_cast<std::uint32_t>(static_cast<unsigned char>(s[1])) << 8 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(s[2])) << 16 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(s[3])) << 24;
}

std::uint32_t FourCCFromString(const std::string& text);
std::string FourCCToString(std::uint32_t value);

} // namespace mw
