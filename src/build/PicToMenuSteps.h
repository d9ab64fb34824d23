#pragma once

#include "core/Prompt.h"
#include "i18n/LangDoc.h"
#include "render/cDIB.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mw {

// The steps that every route from pictures to a menu video shares.

// Pictures larger than this are reported, and used all the same.
inline constexpr int kMenuPictureMaxWidth = 720;
inline constexpr int kMenuPictureMaxHeight = 576;

// dwRate of a menu video of fps frames per second, with dwScale 1000: Round(fps * 1000).
// 0 for a rate that no stream can have.
std::uint32_t MenuVideoRate(double fps);
// One picture makes five seconds of video: Round(fps) * 5 frames.
long SinglePictureFrames(double fps);

// The output name, asked for when empty, with ".avi" added when it has another ending.
// Nothing when the user cancels.
std::optional<std::string> AskAviOutputName(const std::string& output, Prompt& prompt);
// The picture, asked for when empty; nothing when the user cancels.
std::optional<std::string> AskPictureName(const std::string& picture, Prompt& prompt);
// The pictures, asked for when the list is empty; an empty list when the user cancels.
std::vector<std::string> AskPictureNames(const std::vector<std::string>& pictures, Prompt& prompt);

// Deletes an existing output first; false, after "Can not delete file " + name, when it stays.
bool DeleteOldOutput(const std::string& file, Prompt& prompt);

// Shows text 1 of frmNewMenu, "Image not found", when the picture is missing; false then.
bool CheckPictureExists(const std::string& picture, const LangDoc& lang, Prompt& prompt);

// Shows text 8 of frmNewMenu when the picture is over 720x576; false then.
bool CheckMenuPictureSize(const cDIB& picture, const LangDoc& lang, Prompt& prompt);

// Reads a picture as 24 bits per pixel; false with the reason in error.
bool LoadMenuPicture(const std::string& file, cDIB& picture, std::string& error);

// "An error occurred whilst creating the AVI: " and the error's text.
void ShowAviCreationError(const std::string& text, Prompt& prompt);

} // namespace mw
