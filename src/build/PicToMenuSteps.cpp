#include "build/PicToMenuSteps.h"

#include "core/NumberText.h"
#include "core/Text.h"

#include <filesystem>
#include <limits>

namespace mw {

namespace {

constexpr const char* kForm = "frmNewMenu";

bool FileExists(const std::string& path)
{
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

FileDialogRequest PictureDialog(bool multiSelect)
{
    FileDialogRequest request;
    request.Title = "Select a picture";
    request.Filter = "*.bmp;*.jpg;*.gif;*.tiff|*.bmp;*.jpg;*.gif;*.tiff";
    request.MultiSelect = multiSelect;
    return request;
}

} // namespace

std::uint32_t MenuVideoRate(double fps)
{
    const double rate = RoundHalfEven(fps * 1000);
    if (!(rate >= 1) || rate > std::numeric_limits<std::uint32_t>::max())
        return 0;
    return static_cast<std::uint32_t>(rate);
}

long SinglePictureFrames(double fps)
{
    const double frames = RoundHalfEven(fps) * 5;
    if (!(frames >= 0) || frames > std::numeric_limits<long>::max())
        return 0;
    return static_cast<long>(frames);
}

std::optional<std::string> AskAviOutputName(const std::string& output, Prompt& prompt)
{
    std::string name = output;
    if (name.empty()) {
        FileDialogRequest request;
        request.Title = "Select avi file name to create";
        request.Filter = "*.avi|*.avi";
        const std::optional<std::string> chosen = prompt.SaveFile(request);
        if (!chosen || chosen->empty())
            return std::nullopt;
        name = *chosen;
    }
    if (!EndsWithNoCase(name, ".avi"))
        name += ".avi";
    return name;
}

std::optional<std::string> AskPictureName(const std::string& picture, Prompt& prompt)
{
    if (!picture.empty())
        return picture;
    const std::vector<std::string> chosen = prompt.OpenFiles(PictureDialog(false));
    if (chosen.empty() || chosen.front().empty())
        return std::nullopt;
    return chosen.front();
}

std::vector<std::string> AskPictureNames(const std::vector<std::string>& pictures, Prompt& prompt)
{
    return pictures.empty() ? prompt.OpenFiles(PictureDialog(true)) : pictures;
}

bool DeleteOldOutput(const std::string& file, Prompt& prompt)
{
    std::error_code error;
    if (!FileExists(file) || (std::filesystem::remove(file, error) && !error))
        return true;
    prompt.Message("Can not delete file " + file, {}, PromptIcon::Critical);
    return false;
}

bool CheckPictureExists(const std::string& picture, const LangDoc& lang, Prompt& prompt)
{
    if (FileExists(picture))
        return true;
    prompt.Message(FormTexts(lang, kForm)(1, "Image not found"), {}, PromptIcon::Critical);
    return false;
}

bool CheckMenuPictureSize(const cDIB& picture, const LangDoc& lang, Prompt& prompt)
{
    if (picture.Width() <= kMenuPictureMaxWidth && picture.Height() <= kMenuPictureMaxHeight)
        return true;
    const FormTexts text(lang, kForm);
    prompt.Message(text(8, "Be sure that image size is not more than 720x576 pixels"), {}, PromptIcon::Warning);
    return false;
}

bool LoadMenuPicture(const std::string& file, cDIB& picture, std::string& error)
{
    if (picture.CreateFromPicture(file))
        return true;
    error = FileExists(file) ? "Invalid picture" : "File not found";
    return false;
}

void ShowAviCreationError(const std::string& text, Prompt& prompt)
{
    prompt.Message("An error occurred whilst creating the AVI: " + text, {}, PromptIcon::Critical);
}

} // namespace mw
