#pragma once

#include "render/cDIB.h"

#include <QImage>
#include <QRect>

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace mw {

class Project;
class Prompt;

// Buttons read from the picture of a subtitle editor's menu window: each highlight area, a run
// of one colour other than the background, becomes a button rectangle. Up to ten captures are
// kept as sets of up to twenty buttons; one of them is active and is what gets pasted.

inline constexpr int kSubEditSetCount = 10;
inline constexpr int kSubEditSetSize = 20;
// Areas narrower or lower than this are specks, not buttons.
inline constexpr int kSubEditMinSide = 5;
// Where a pasted overlay stands against its button.
inline constexpr const char* kSubEditOverlayPosition = "3 4 0 0";
inline constexpr const char* kSubEditFolder = "DVDSubEdit";

inline constexpr const char* kSubEditTooMany = "More than 20 buttons found. These buttons will be ignored";
inline constexpr const char* kSubEditNoButtons = "No buttons found";
inline constexpr const char* kSubEditFound = " buttons found";
inline constexpr const char* kSubEditSetsFull = "Maximum buttons loaded. Please right click on a number to clear";
inline constexpr const char* kSubEditNoActive =
    "Active buttons not found. Just click a number above to select the buttons to paste";

struct SubEditButton {
    QRect Rect;
    QRgb Colour = 0;

    bool operator==(const SubEditButton&) const = default;
};

struct SubEditScan {
    std::vector<SubEditButton> Buttons; // at most kSubEditSetSize
    QRgb Background = 0;                // the colour most pixels have
    bool TooMany = false;
};

// Goes through the picture row by row: a pixel that is not background and not yet taken starts
// an area, which grows over the touching pixels of its colour; the rectangle around it is taken
// whole, so that text or a border of another colour inside a highlight makes no button of its own.
// `skipped` areas, in that order, are passed over first: the later groups of twenty of a picture
// that holds more.
SubEditScan FindSubEditButtons(const QImage& picture, int skipped = 0);

// One capture: the picture (in RGB32) and the buttons found in it. Empty when the slot is free.
struct SubEditSet {
    QImage Picture;
    std::vector<SubEditButton> Buttons;
    QRgb Background = 0;

    bool Empty() const { return Buttons.empty(); }
};

class SubEditSets {
public:
    // Scans a captured picture into the first free set, which becomes the active one, and returns
    // its index. The user is told when all sets are taken (nothing is scanned), when too many areas
    // were found, and when none was. `status` gets the count found.
    std::optional<int> Capture(const QImage& picture, Prompt& prompt, std::string& status, int skipped = 0);
    bool Full() const;

    const SubEditSet& Set(int index) const { return sets_.at(static_cast<std::size_t>(index)); }
    // A click on a set's number; a free set cannot be made active.
    void Activate(int index);
    // The active set; nullptr when none is.
    const SubEditSet* Active() const;
    int ActiveIndex() const { return active_; }

    void Clear(int index);
    void ClearAll();

    // The arrows: every button of the active set one pixel at a time. A button keeps at least
    // one pixel of width and height.
    void MoveActive(int dx, int dy);
    void ResizeActive(int dw, int dh);

private:
    SubEditSet* ActiveSet();

    std::array<SubEditSet, kSubEditSetCount> sets_;
    int active_ = -1;
};

// The area of a button as a 4-bit overlay: its colour on entry 1, other colours but the
// background on entry 2, the rest transparent.
cDIB SubEditOverlay(const SubEditSet& set, const SubEditButton& button);

// The file of the overlay of button number n (from 1) pasted into a menu.
std::filesystem::path SubEditOverlayFile(const std::filesystem::path& programFolder, const std::string& menuID, int n);

// The three lines that explain where pasted overlays go.
std::string SubEditOverlayNaming(const std::filesystem::path& programFolder);

struct SubEditPaste {
    std::optional<int> ForceSide; // each button forced to this square size
    bool Overlays = true;         // the areas written as the buttons' overlays
};

// "Create new menu": asks where to keep a still black menu video of the captured size, makes it
// with the program's own encoder and opens the new-menu dialog on it; the new menu is then shown.
// Returns its identifier, empty when cancelled or the video could not be made (the user was told).
std::string NewMenuOfSize(Project& project, QSize size);

// Adds the set's buttons to the menu on the canvas as one undo step, each with its area as its
// overlay when asked. The overlay files are all written before the menu changes; when one cannot
// be written the user is told and neither the project nor the files change. Returns the new
// buttons' identifiers, none when nothing was pasted.
std::vector<std::string> PasteSubEditButtons(Project& project, const SubEditSet* set, const SubEditPaste& options);

} // namespace mw
