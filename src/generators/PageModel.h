#pragma once

#include <QImage>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mw {

// The three generators share one page; they differ in their settings section and in a few
// rules of the layout and the navigation.
enum class GeneratorKind { TitleMenu, ChaptersMenu, SetupMenu };

// A font with the colours it prints in. Colours have red in the low byte. A shadow depth of 0
// means no shadow; the thumbnail captions never have one.
struct FontGroup {
    std::string Name = "Arial";
    bool Bold = false;
    bool Italic = false;
    int Size = 12;
    int CharSet = 1;
    std::uint32_t Color = 0;
    std::uint32_t ShadowColor = 0;
    int ShadowDepth = 0;

    bool operator==(const FontGroup&) const = default;
};

// A navigation label or a free item: a caption, or a picture shown instead of it when the path
// names a file; the caption is kept either way.
struct PageLabel {
    std::string Caption{};
    std::string Picture{};
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
    bool Visible = true;

    bool operator==(const PageLabel&) const = default;
};

// A free item added with "Add text/picture" prints in its own font and shadow.
struct FreeItem {
    PageLabel Label{};
    FontGroup Font{};
};

// What a settings section keeps: everything the user designs on the page but the items.
struct PageDesign {
    std::string MenuName{};
    FontGroup Captions;                  // group 1, the thumbnail captions
    FontGroup Labels{.Bold = true, .Size = 18}; // group 2, the navigation labels
    FontGroup Free{.Bold = true, .Size = 18};   // group 3, the free items
    std::string Picture{};                 // background picture; empty paints the gradient
    int WhatOverlay = 0;                 // 0: overlay of the button's shape; 1: over the caption
    std::string UseThisSound{};
    std::string ButtonPicture{};           // border of the thumbnails
    PageLabel Title{};                     // the row title
    PageLabel Main{};
    PageLabel Previous{};
    PageLabel Next{};
    PageLabel Setup{};                     // chapter menus only
    std::string Animation = "0";         // motion seconds as typed; "0" is a still menu
    // The setup menu's columns: where the first stream label of each stands, and the headings.
    int AudioButtonLeft = 0;
    int AudioButtonTop = 0;
    int SubtitleButtonLeft = 0;
    int SubtitleButtonTop = 0;
    PageLabel Audio{};
    PageLabel Subtitle{};

    bool operator==(const PageDesign&) const = default;
};

// The background when there is no picture: four corner colours, or four and the middle.
struct GradientColors {
    std::uint32_t TopLeft = 0;
    std::uint32_t TopRight = 0;
    std::uint32_t BottomLeft = 0;
    std::uint32_t BottomRight = 0;
    std::optional<std::uint32_t> Middle{};
};

// A page without a background picture of its own starts on a pale blue, on which the default
// black captions read well.
inline constexpr GradientColors kPaleGradient{0xF5DCC8, 0xFAEBE1, 0xE6BEA0, 0xF0D2BE, std::nullopt};

// One thumbnail button: its caption, the frame it shows and where it stands. The frame is the
// picture the caller grabbed at `Frame`.
struct PageItem {
    std::string Caption{};
    long Frame = 0;
    float Left = 0;
    float Top = 0;
    bool Visible = false;
    QImage Picture{};
};

inline constexpr int kMinPageSide = 100;
inline constexpr int kRowGap = 35;

// The page of a generator window, without the window.
struct MenuPage {
    GeneratorKind Kind = GeneratorKind::ChaptersMenu;
    int Width = 720;
    int Height = 576;
    PageDesign Design{};
    GradientColors Gradient{};
    bool FitPicture = false; // the page takes the background picture's size when it is chosen
    std::vector<PageItem> Items{};
    float ItemWidth = 120;  // every thumbnail has this size once "Same size" was used
    float ItemHeight = 90;
    int PerPage = 8;        // 6 or 8
    int Page = 1;           // 1-based
    std::vector<FreeItem> FreeItems{};
    // The setup label was hidden by paging, not by the user, and comes back on page 1.
    bool SetupHiddenByPaging = false;
    // Guide lines of the rulers, picked up and dropped as on the canvas (PickGuideLine,
    // DropGuideLine). Nothing snaps to them here and they are never saved.
    std::vector<long> LinesH{};
    std::vector<long> LinesV{};
};

// Pages needed for `count` items at `perPage` a page; a full last page adds none.
int PageCount(int count, int perPage);

// Lays out the current page. With `recalculate` every item gets its computed place; without,
// the places items were dragged to stay. The page is first brought back onto the last one,
// the paging labels follow the page, and the setup label shows on page 1 only.
void PlacePictures(MenuPage& page, bool recalculate);

// A page side must be a multiple of 4 and at least 100; anything else changes nothing.
bool SetPageWidth(MenuPage& page, long width);
bool SetPageHeight(MenuPage& page, long height);
// The page takes a picture's size, each side cut down to a multiple of 4; a side below 100
// keeps the page as it was.
bool FitPageToPicture(MenuPage& page, QSize picture);

} // namespace mw
