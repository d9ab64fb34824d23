#pragma once

#include <QImage>

#include <string>

namespace mw {

// A picture as a one-frame GIF file, by FFmpeg's GIF encoder (Qt only reads GIF). The picture
// is taken to at most 256 colours without dithering, so a picture of flat colours keeps them
// exactly. False, with the reason in error, when the file cannot be written.
bool WriteGifFile(const QImage& image, const std::string& file, std::string& error);

} // namespace mw
