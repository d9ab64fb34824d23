#include "build/CreateOverlays.h"

#include "build/ToolFiles.h"
#include "core/Paths.h"
#include "core/ProgramFolder.h"
#include "core/Text.h"
#include "document/ObjectIds.h"
#include "document/TreeQueries.h"
#include "media/mAVIDecs.h"
#include "menus/Buttons.h"
#include "menus/OverlayAttributes.h"
#include "render/BmpFile.h"
#include "render/OverlayFont.h"
#include "render/OverlayPainters.h"
#include "render/TransPaint.h"

#include <QImageReader>

#include <algorithm>
#include <charconv>
#include <map>
#include <set>

namespace mw {

namespace fs = std::filesystem;

namespace {

struct FrameSize {
    int Width = 0;
    int Height = 0;
};

// The size of a menu: a picture's own, else that of the movie's first video stream. Each file
// is read once per run.
class MenuSizes {
public:
    explicit MenuSizes(Prompt& prompt) : prompt_(prompt) {}
    FrameSize Of(const std::string& file)
    {
        const auto known = sizes_.find(file);
        if (known != sizes_.end())
            return known->second;
        FrameSize size;
        if (IsPictureMenu(file)) {
            const QSize picture = QImageReader(QString::fromStdString(file)).size();
            size = {std::max(0, picture.width()), std::max(0, picture.height())};
        } else {
            long start = 0, length = 0, width = 0, height = 0;
            float fps = 0;
            if (GetStreamByType(file, "video", start, length, fps, width, height, prompt_) >= 0)
                size = {static_cast<int>(width), static_cast<int>(height)};
        }
        return sizes_[file] = size;
    }

private:
    Prompt& prompt_;
    std::map<std::string, FrameSize> sizes_;
};

// The track's node of a list entry "id|...".
const DocNode* TrackOfEntry(const DocTree& tree, const MenuTrackEntry& entry)
{
    return tree.ObjectNode(entry.Text.substr(0, entry.Text.find('|')));
}

bool IsSubtitleTrack(const DocNode* track)
{
    return track && Lower(GetPropertyInNode(*track, "type")) == "subtitle";
}

// The button's overlay painted at its own size, as the canvas shows it.
cDIB PaintOverlay(const OverlayAttributes& a, const ButtonShape& place, const std::array<Colour, 3>& colours,
                  const fs::path& programFolder, const LangDoc& lang, Prompt& prompt)
{
    TransPaint paint(prompt, lang);
    for (int i = 0; i < 3; ++i)
        paint.SetRGBColor(i + 1, std::uint8_t(colours[i]), std::uint8_t(colours[i] >> 8), std::uint8_t(colours[i] >> 16));
    paint.SetSize(static_cast<int>(place.Width), static_cast<int>(place.Height));
    if (a.Shape.starts_with('*')) {
        double points = 18;
        std::from_chars(a.FontSize.data(), a.FontSize.data() + a.FontSize.size(), points);
        FontChoice font = FontFromAttribute(a.Font, points);
        paint.SetDIBFromFunc(GetFuncToCallFromSpecialOverlay(a.Shape), static_cast<int>(a.Width), a.Text,
                             static_cast<int>(a.Outline), a.Shadow, font);
    } else {
        paint.SetFilename(OverlayFileFor(programFolder, a.Shape));
    }
    return paint.GetDib();
}

} // namespace

bool CreateOverlays(const Document& doc, const fs::path& programFolder, const std::array<Colour, 3>& colours,
                    const LangDoc& lang, Prompt& prompt, BuildLog& log, const ToolRunner& runner, OverlayRects& rects)
{
    rects.clear();
    if (doc.Tree.Empty())
        return true;
    const DocTree& tree = doc.Tree;
    const fs::path tmp = BuildFolder(programFolder);
    std::array<Colour, 3> current = colours;
    MenuSizes sizes(prompt);

    // The progress bar moves on at each menu video.
    std::set<std::string> menus;
    for (const MenuTrackEntry& entry : doc.MenuTracks) {
        if (const DocNode* track = TrackOfEntry(tree, entry); IsSubtitleTrack(track))
            menus.insert(GetPropertyInNode(*track, "mediasourceid"));
    }
    std::set<std::string> menusDone;
    log.Step("Painting the overlays");

    for (const MenuTrackEntry& entry : doc.MenuTracks) {
        if (runner.Cancelled())
            return false;
        const DocNode* track = TrackOfEntry(tree, entry);
        if (!IsSubtitleTrack(track))
            continue;
        const std::string sourceID = GetPropertyInNode(*track, "mediasourceid");
        const DocNode* source = sourceID.empty() ? nullptr : tree.ObjectNode(sourceID);
        if (!source)
            continue;
        if (menusDone.insert(sourceID).second)
            log.Progress(static_cast<int>(menusDone.size()), static_cast<int>(menus.size()));
        const std::string startFrame = GetPropertyInNode(*track, "startframe");
        const std::string location = GetPropertyInNode(*source, "location");
        const FrameSize frame = sizes.Of(ResolveLocation(doc.ProjectFile, location));
        if (frame.Width == 0 || frame.Height == 0) {
            prompt.Message(location + ": the size of the menu cannot be read", {}, PromptIcon::Critical);
            return false;
        }

        const ExtraInfoElement trackInfo(track->Tag);
        if (!trackInfo.Parsed() || !trackInfo.Get("rectID"))
            continue;
        const DocNode* rect = FindRectForOverlayID(tree, GetPropertyInNode(*track, "objectid"));
        const DocNode* button = rect ? rect->Parent() : nullptr;
        const DocNode* menu = button ? button->Parent() : nullptr;
        const std::string menuID = menu ? IdOfKey(menu->Key()) : "";
        if (menuID.empty())
            continue;

        CanvasButton place;
        place.Label = {"", static_cast<long>(LeadingNumber(GetPropertyInNode(*rect, "left"))),
                       static_cast<long>(LeadingNumber(GetPropertyInNode(*rect, "top"))),
                       static_cast<long>(LeadingNumber(GetPropertyInNode(*rect, "width"))),
                       static_cast<long>(LeadingNumber(GetPropertyInNode(*rect, "height")))};
        const OverlayAttributes attributes = ReadOverlayAttributes(button->Tag);
        // Without a Position the overlay covers the rectangle itself.
        place.Position = button->Tag.empty() ? attributes.Position
                                             : ExtraInfoElement(button->Tag).Get("Position").value_or(kSameOverlayPosition);
        PlaceShapeFromTag(place);
        ButtonShape& overlay = place.Overlay;
        overlay.Width = std::max(0L, overlay.Width);
        overlay.Height = std::max(0L, overlay.Height);

        // Colours taken from one menu carry on to the next menus that have none of their own.
        TakeMenuColours(menu, current);
        const cDIB painted = PaintOverlay(attributes, overlay, current, programFolder, lang, prompt);
        const std::string size = std::to_string(frame.Width) + " " + std::to_string(frame.Height);
        rects[menuID + "_" + sourceID + "_" + startFrame] = "(0 0 " + size + ")";

        cDIB whole;
        whole.Create(frame.Width, frame.Height, 4);
        if (!painted.Empty()) {
            whole.SetColorTable(painted.GetColorTable());
            painted.Paint(whole, static_cast<int>(overlay.Left), static_cast<int>(overlay.Top));
        }
        const fs::path file = tmp / OverlayBitmapName(LocationFileName(location), menuID, sourceID, startFrame);
        std::string error;
        if (!WriteToolFile(file, BmpFileBytes(whole), error)) {
            prompt.Message(error, {}, PromptIcon::Critical);
            return false;
        }
    }
    return true;
}

} // namespace mw
