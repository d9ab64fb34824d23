#include "render/TransPaint.h"

#include "core/Text.h"
#include "i18n/LangDoc.h"
#include "render/BmpFile.h"
#include "render/OverlayScheme.h"

#include <filesystem>

namespace mw {

namespace {

constexpr const char* kForm = "TransPaint";

} // namespace

void TransPaint::SetSize(int width, int height)
{
    width_ = width;
    height_ = height;
    Repaint();
}

void TransPaint::SetDIBFromFunc(const std::string& funcName, int width, const std::string& text, int outline,
                                const std::string& shadow, const FontChoice& font)
{
    functionName_ = funcName;
    params_ = OverlayParams{width, text, outline, shadow, font};
    fromFunction_ = true;
    Repaint();
}

void TransPaint::SetRGBColor(int index, std::uint8_t red, std::uint8_t green, std::uint8_t blue)
{
    colours_[index == 1 || index == 2 ? index - 1 : 2] = Rgb(red, green, blue);
    Repaint();
}

void TransPaint::SetFilename(const std::string& file)
{
    filename_ = Trim(file);
    if (filename_.empty()) {
        dib_.Destroy();
        return;
    }
    fromFunction_ = false;
    stretchMode_ = StretchModeOfFile(filename_);
    Repaint();
}

bool TransPaint::SaveFile(const std::string& file) const
{
    // Save replaces the file in one step, so a failed save keeps the old one.
    return !Trim(file).empty() && dib_.Save(file);
}

void TransPaint::Repaint()
{
    if (filename_.empty() && !fromFunction_)
        return;
    dib_.Destroy();
    if (!fromFunction_) {
        RepaintFromFile();
        return;
    }
    dib_ = PaintByFunctionName(functionName_, width_, height_, params_);
    std::vector<Colour> table = dib_.GetColorTable();
    if (table.size() == 16) {
        std::copy(colours_.begin(), colours_.end(), table.begin() + 1);
        dib_.SetColorTable(table);
    }
}

void TransPaint::RepaintFromFile()
{
    const FormTexts text(lang_, kForm);
    std::error_code ec;
    if (!std::filesystem::is_regular_file(filename_, ec)) {
        prompt_.Message(text(1, "File '") + filename_ + text(2, "' not found"));
        return;
    }
    cDIB source;
    if (!source.CreateFromBitmapFile(filename_) || source.BPP() != 4) {
        prompt_.Message(text(3, "Not valid (4 bits per pixel) file") + "\r\n" + filename_);
        filename_.clear();
        return;
    }
    std::vector<Colour> table = source.GetColorTable();
    std::copy(colours_.begin(), colours_.end(), table.begin() + 1);
    cDIB target;
    if (!target.Create(width_, height_, 4))
        return;
    target.SetColorTable(table);
    StretchOverlay(source, target, stretchMode_);
    dib_ = std::move(target);
}

} // namespace mw
