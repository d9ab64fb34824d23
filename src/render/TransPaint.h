#pragma once

#include "core/Prompt.h"
#include "render/OverlayPainters.h"
#include "render/OverlayStretch.h"
#include "render/cDIB.h"

#include <array>
#include <string>

namespace mw {

class LangDoc;

// The overlay of one button: a 4-bit picture on indexes 0 to 3, either painted by a named
// painter or read from an overlay file and fitted to the size. Entries 1 to 3 of its table
// carry the menu's colours. Every change repaints from scratch.
class TransPaint {
public:
    TransPaint(Prompt& prompt, const LangDoc& lang) : prompt_(prompt), lang_(lang) {}

    // The size of the control in pixels.
    void SetSize(int width, int height);
    int Width() const { return width_; }
    int Height() const { return height_; }

    // Function mode: the painter by name with its parameters.
    void SetDIBFromFunc(const std::string& funcName, int width, const std::string& text, int outline,
                        const std::string& shadow, const FontChoice& font);
    // Index 1 or 2 sets that entry, any other index the third.
    void SetRGBColor(int index, std::uint8_t red, std::uint8_t green, std::uint8_t blue);

    // File mode. The name is trimmed; a non-empty one leaves function mode and takes its stretch
    // mode from the character before the last "."; an empty one clears the picture.
    void SetFilename(const std::string& file);
    const std::string& Filename() const { return filename_; }
    OverlayStretchMode StretchMode() const { return stretchMode_; }

    bool FromFunction() const { return fromFunction_; }
    const std::string& FunctionName() const { return functionName_; }
    const OverlayParams& Params() const { return params_; }
    // Entries 1, 2, 3.
    const std::array<Colour, 3>& Colours() const { return colours_; }

    const cDIB& GetDib() const { return dib_; }
    // Writes the picture as a BMP file; false for a blank name or when it cannot be written, in
    // which case an existing file stays as it was.
    bool SaveFile(const std::string& file) const;

private:
    void Repaint();
    void RepaintFromFile();

    Prompt& prompt_;
    const LangDoc& lang_;
    int width_ = 0;
    int height_ = 0;
    cDIB dib_;
    std::string filename_;
    OverlayStretchMode stretchMode_ = OverlayStretchMode::Whole;
    std::array<Colour, 3> colours_{kDefaultColours};
    bool fromFunction_ = false;
    std::string functionName_;
    OverlayParams params_;

    static constexpr std::array<Colour, 3> kDefaultColours = {Rgb(255, 0, 0), Rgb(255, 255, 0), Rgb(255, 255, 255)};
};

} // namespace mw
