#include "generators/SubEditButtons.h"

#include "build/BuiltInMenuVideo.h"
#include "core/ProgramFolder.h"
#include "core/settings/clsIniFile.h"
#include "document/NodeSelection.h"
#include "menus/AddNewMenu.h"
#include "menus/MenuForms.h"
#include "core/Prompt.h"
#include "core/settings/Settings.h"
#include "document/Project.h"
#include "menus/Buttons.h"
#include "menus/CanvasCommands.h"
#include "menus/OverlayAttributes.h"
#include "menus/OverlayMenu.h"
#include "render/BmpFile.h"
#include "render/OverlayScheme.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <unordered_map>

namespace fs = std::filesystem;

namespace mw {

namespace {

// Extent of the pixels of one colour that touch the start pixel, side by side.
QRect FollowColour(const QImage& picture, QPoint start, std::vector<bool>& seen)
{
    const int width = picture.width();
    const QRgb colour = picture.pixel(start);
    QRect extent(start, start);
    std::vector<QPoint> open{start};
    seen[static_cast<std::size_t>(start.y() * width + start.x())] = true;
    while (!open.empty()) {
        const QPoint p = open.back();
        open.pop_back();
        extent |= QRect(p, p);
        for (const QPoint step : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
            const QPoint next = p + step;
            if (!picture.valid(next))
                continue;
            const auto at = static_cast<std::size_t>(next.y() * width + next.x());
            if (seen[at] || picture.pixel(next) != colour)
                continue;
            seen[at] = true;
            open.push_back(next);
        }
    }
    return extent;
}

void Take(std::vector<bool>& taken, int width, const QRect& rect)
{
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        std::fill_n(taken.begin() + y * width + rect.left(), rect.width(), true);
}

// Keeps the flag for the length of a bulk command, also when it throws.
class NoUndoScope {
public:
    explicit NoUndoScope(bool& flag) : flag_(flag) { flag_ = true; }
    ~NoUndoScope() { flag_ = false; }
    NoUndoScope(const NoUndoScope&) = delete;
    NoUndoScope& operator=(const NoUndoScope&) = delete;

private:
    bool& flag_;
};

// Files written next to their targets first, put in place together once all are written.
class StagedFiles {
public:
    ~StagedFiles()
    {
        std::error_code ignored;
        for (const auto& [part, target] : files_)
            fs::remove(part, ignored);
    }
    bool Write(const fs::path& target, const std::string& bytes)
    {
        fs::path part = target;
        part += ".part";
        files_.emplace_back(part, target);
        std::ofstream out(part, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        out.close();
        return !bytes.empty() && out.good();
    }
    bool PutInPlace()
    {
        std::error_code ec;
        for (const auto& [part, target] : files_) {
            fs::rename(part, target, ec);
            if (ec)
                return false;
        }
        files_.clear();
        return true;
    }

private:
    std::vector<std::pair<fs::path, fs::path>> files_;
};

// The colour most pixels of the picture have.
QRgb SubEditBackground(const QImage& picture)
{
    std::unordered_map<QRgb, long> counts;
    QRgb most = 0;
    long best = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb colour = picture.pixel(x, y);
            if (const long n = ++counts[colour]; n > best) {
                best = n;
                most = colour;
            }
        }
    }
    return most;
}

} // namespace

SubEditScan FindSubEditButtons(const QImage& picture, int skipped)
{
    SubEditScan scan;
    if (picture.isNull())
        return scan;
    const QRgb background = scan.Background = SubEditBackground(picture);
    const int width = picture.width();
    std::vector<bool> seen(static_cast<std::size_t>(width) * static_cast<std::size_t>(picture.height()));
    std::vector<bool> taken(seen.size());
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < width; ++x) {
            const auto at = static_cast<std::size_t>(y * width + x);
            if (taken[at] || picture.pixel(x, y) == background)
                continue;
            const QRect rect = FollowColour(picture, {x, y}, seen);
            Take(taken, width, rect);
            if (rect.width() < kSubEditMinSide || rect.height() < kSubEditMinSide || skipped-- > 0)
                continue;
            if (scan.Buttons.size() == kSubEditSetSize) {
                scan.TooMany = true;
                return scan;
            }
            scan.Buttons.push_back({rect, picture.pixel(x, y)});
        }
    }
    return scan;
}

bool SubEditSets::Full() const
{
    return std::none_of(sets_.begin(), sets_.end(), [](const SubEditSet& set) { return set.Empty(); });
}

std::optional<int> SubEditSets::Capture(const QImage& picture, Prompt& prompt, std::string& status, int skipped)
{
    if (Full()) {
        prompt.Message(kSubEditSetsFull);
        return std::nullopt;
    }
    const QImage rgb = picture.convertToFormat(QImage::Format_RGB32);
    SubEditScan scan = FindSubEditButtons(rgb, skipped);
    if (scan.TooMany)
        prompt.Message(kSubEditTooMany);
    if (scan.Buttons.empty()) {
        prompt.Message(kSubEditNoButtons);
        return std::nullopt;
    }
    status = std::to_string(scan.Buttons.size()) + kSubEditFound;
    const auto free = std::find_if(sets_.begin(), sets_.end(), [](const SubEditSet& set) { return set.Empty(); });
    *free = {rgb, std::move(scan.Buttons), scan.Background};
    active_ = static_cast<int>(free - sets_.begin());
    return active_;
}

void SubEditSets::Activate(int index)
{
    if (!Set(index).Empty())
        active_ = index;
}

const SubEditSet* SubEditSets::Active() const
{
    return active_ < 0 ? nullptr : &sets_[static_cast<std::size_t>(active_)];
}

SubEditSet* SubEditSets::ActiveSet()
{
    return active_ < 0 ? nullptr : &sets_[static_cast<std::size_t>(active_)];
}

void SubEditSets::Clear(int index)
{
    sets_.at(static_cast<std::size_t>(index)) = {};
    if (index == active_)
        active_ = -1;
}

void SubEditSets::ClearAll()
{
    sets_ = {};
    active_ = -1;
}

void SubEditSets::MoveActive(int dx, int dy)
{
    if (SubEditSet* set = ActiveSet()) {
        for (SubEditButton& button : set->Buttons)
            button.Rect.translate(dx, dy);
    }
}

void SubEditSets::ResizeActive(int dw, int dh)
{
    if (SubEditSet* set = ActiveSet()) {
        for (SubEditButton& button : set->Buttons)
            button.Rect.setSize({std::max(1, button.Rect.width() + dw), std::max(1, button.Rect.height() + dh)});
    }
}

cDIB SubEditOverlay(const SubEditSet& set, const SubEditButton& button)
{
    const QRect rect = button.Rect;
    const QImage& picture = set.Picture;
    cDIB overlay = NewOverlayDib(rect.width(), rect.height());
    for (int y = 0; y < rect.height() && !overlay.Empty(); ++y) {
        for (int x = 0; x < rect.width(); ++x) {
            const QPoint at = rect.topLeft() + QPoint(x, y);
            if (!picture.valid(at))
                continue;
            const QRgb colour = picture.pixel(at);
            if (colour != set.Background)
                overlay.SetPixel(x, y, colour == button.Colour ? 1 : 2);
        }
    }
    return overlay;
}

fs::path SubEditOverlayFile(const fs::path& programFolder, const std::string& menuID, int n)
{
    return programFolder / kOverlaysFolder / kSubEditFolder / (menuID + "_" + std::to_string(n) + ".bmp");
}

std::string SubEditOverlayNaming(const fs::path& programFolder)
{
    const std::string folder = (programFolder / kOverlaysFolder / kSubEditFolder).string() + "/";
    return "Overlays are saved in folder \"" + folder + "\".\n"
           "The name is \"<objectID for active menu>_<a number>.bmp\" and if the name exist program will replace it,\n"
           "so be carefull if you are working with many menu files.";
}

std::string NewMenuOfSize(Project& project, QSize size)
{
    if (size.isEmpty())
        return "";
    FileDialogRequest request;
    request.Filter = "*.avi|*.avi";
    request.DefaultExt = "avi";
    request.OverwritePrompt = true;
    request.FileName = "DVDSubEdit_" + std::to_string(size.width()) + "x" + std::to_string(size.height()) + ".avi";
    const std::optional<std::string> video = project.Ask().SaveFile(request);
    if (!video)
        return "";

    NewMenuForm form;
    LoadNewMenuForm(form, clsIniFile(SettingsFilePath(project.ProgramFolder()).string()));
    char* end = nullptr;
    const double fps = std::strtod(form.cmbfpsText.c_str(), &end);
    // Made beside the target and put in place only when whole, so a failure keeps the user's file.
    const fs::path target(*video);
    fs::path work = target;
    work += ".part.avi";
    fs::path picture = target;
    picture += ".part.bmp";
    cDIB black;
    std::error_code ec;
    const bool drawn = black.Create(size.width(), size.height(), 24) && black.Save(picture.string());
    const bool made = drawn && BuiltInAviFromaPic(picture.string(), work.string(), fps > 0 ? fps : 25.0, "",
                                                  project.Values(), project.Lang(), project.Ask());
    fs::remove(picture, ec);
    if (made)
        fs::rename(work, target, ec);
    if (!made || ec) {
        fs::remove(work, ec);
        if (!drawn || made)
            project.Ask().Message("Can not write " + target.string(), {}, PromptIcon::Critical);
        return "";
    }
    if (!LoadMovieForMenu(project, form, target.string()))
        return "";
    const std::string id = AddNewMenu(project, form, true);
    if (DocNode* menu = project.Doc.Tree.ObjectNode(id)) {
        TreeView1_NodeClick(project, menu);
        ParceMenu(project, *menu);
    }
    return id;
}

std::vector<std::string> PasteSubEditButtons(Project& project, const SubEditSet* set, const SubEditPaste& options)
{
    if (!set || set->Empty()) {
        project.Ask().Message(kSubEditNoActive);
        return {};
    }
    MenuCanvas& canvas = project.Canvas;
    const std::string menuID = canvas.CurrentMenuID;
    if (!project.Doc.Tree.ObjectNode(menuID)) {
        project.Ask().Message("Show a menu first: the buttons are pasted into the menu on the canvas.");
        return {};
    }

    const fs::path folder = project.ProgramFolder() / kOverlaysFolder / kSubEditFolder;
    StagedFiles files;
    if (options.Overlays) {
        std::error_code ec;
        fs::create_directories(folder, ec);
        for (std::size_t i = 0; !ec && i < set->Buttons.size(); ++i) {
            const fs::path file = SubEditOverlayFile(project.ProgramFolder(), menuID, static_cast<int>(i) + 1);
            if (!files.Write(file, BmpFileBytes(SubEditOverlay(*set, set->Buttons[i]))))
                ec = std::make_error_code(std::errc::io_error);
        }
        if (ec || !files.PutInPlace()) {
            project.Ask().Message("Can not write the overlays in " + folder.string(), {}, PromptIcon::Critical);
            return {};
        }
        LoadOverlaysToMenu(project.ProgramFolder() / kOverlaysFolder, project.Overlays, project.Ask());
    }

    project.UndoAdd();
    NoUndoScope bulk(canvas.NoUndo);
    std::vector<std::string> added;
    for (std::size_t i = 0; i < set->Buttons.size(); ++i) {
        const QRect r = set->Buttons[i].Rect;
        const long width = options.ForceSide.value_or(r.width());
        const long height = options.ForceSide.value_or(r.height());
        const std::string overlay = options.Overlays ? std::string(kSubEditFolder) + "\\" + menuID + "_" +
                                                           std::to_string(i + 1)
                                                     : project.Values().DefOverlay;
        const std::string id = AddButtonToMenu(project, {"", r.left(), r.top(), width, height}, overlay);
        added.push_back(id);
        if (!options.Overlays)
            continue;
        DocNode& node = project.Doc.Tree.Item("k" + id);
        ExtraInfoElement info(node.Tag);
        info.Set("Position", kSubEditOverlayPosition);
        node.Tag = info.Text();
        CanvasButton& shown = canvas.Buttons.back();
        shown.Position = kSubEditOverlayPosition;
        PlaceShapeFromTag(shown);
    }
    return added;
}

} // namespace mw
