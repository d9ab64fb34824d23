#pragma once

#include "core/Prompt.h"
#include "document/TreeQueries.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace mw {

// One button on the canvas: its rectangle (Tag is the button's identifier) and its overlay.
struct CanvasButton {
    ButtonShape Label;
    ButtonShape Overlay;    // where the overlay picture stands
    std::string Position;   // the overlay's offset against the rectangle, "a b c d"
    std::string Shape;      // the overlay's Shape value
    std::string OverlayFile; // the picture a file overlay shows
    long LineWidth = 3;     // the width of a special shape
    bool Selected = false;  // member of the multi-selection
};

// The rows of the shown menu that the canvas and its panels read.
struct CanvasMenuRows {
    std::string BackgroundVideoID, MediaSourceID, Location, StartFrame, EndFrame, BackgroundAudioID,
        StartingMenuItemID, EnterAction, ExitAction, MenuType, MenuName;
};

// A button as copied: its rectangle and its extra info.
struct CopiedButton {
    ButtonShape Rect;
    std::string Tag;
};

// The state of the menu canvas, which the window only paints: the menu shown, its buttons in
// the order of the menu's children, the selection, the guide lines and the menu's own settings.
struct MenuCanvas {
    std::string CurrentMenuID; // empty when no menu is shown
    std::vector<CanvasButton> Buttons;
    int Selected = -1;     // the button the handles are on
    int LastSelected = -1; // the button selected before, kept while nothing is
    std::vector<long> LinesH; // guide lines: tops of horizontal lines
    std::vector<long> LinesV; //              lefts of vertical lines
    bool Lock = false;     // no button of the menu may move
    long Frame = -1;       // the frame stored for the menu, -1 for none
    std::array<std::uint32_t, 3> Colors{};
    bool AddMode = false;
    bool NoUndo = false; // a bulk command has recorded its one undo step
    int OverlayStream = 0; // where the menu's first overlay stream stands in its file
    CanvasMenuRows Menu;

    // The tools that need a selected button.
    bool shapeSelect = false;
    bool shapeName = false;
    bool buttonDel = false;
    bool shapeLineWidth = false;

    // What was copied; it outlives the menu, so that it can be pasted into another.
    std::vector<CopiedButton> CopiedButtons;
    std::optional<std::pair<long, long>> CopiedSize;

    // No menu shown. The guide lines stay with the rulers, and what was copied stays too.
    void Forget()
    {
        MenuCanvas kept;
        kept.LinesH = std::move(LinesH);
        kept.LinesV = std::move(LinesV);
        kept.CopiedButtons = std::move(CopiedButtons);
        kept.CopiedSize = CopiedSize;
        *this = std::move(kept);
    }
};

// One item of the overlay menus.
struct OverlayMenuItem {
    std::string Caption;
    bool Enabled = true;
};

// A folder of the overlays folder as its submenu (mnuoverlaysFolderN with its item array).
struct OverlayFolderMenu {
    std::string Caption;
    bool Visible = false;
    std::vector<OverlayMenuItem> Items;
};

inline constexpr int kOverlayFolderMenus = 7;
// The special items of the overlay menu, in this order: Text, Shape1, Oval, Rectangle.
inline constexpr std::array<const char*, 4> kSpecialOverlays = {"*Text", "*Shape1", "*Oval", "*Rect"};
// The line widths that the width menu offers, one item each.
inline constexpr std::array<long, 7> kOverlayWidths = {1, 2, 3, 4, 5, 6, 7};

// Which item of the overlay menus carries the check mark.
struct OverlayCheck {
    enum class In { Nothing, Special, Top, Folder };
    In Where = In::Nothing;
    int Folder = -1; // 0 to 6 for a folder item
    int Item = -1;
    bool operator==(const OverlayCheck&) const = default;
};

// The text overlay panel (frmPropText) without its window: what it shows of a button's text
// overlay and what it writes back into the button's extra info.
struct TextOverlayForm {
    // Choices of the outline list, widths 0 to kOutlineChoices - 1.
    static constexpr int kOutlineChoices = 11;

    std::string Text;                                       // Text1
    int Outline = 0;                                        // Combo1, the width in pixels
    std::string ShadowDistance = "4";                       // txt3D
    std::array<bool, 4> Corners{false, false, true, false}; // Check1: LT, RT, RB, LB
    FontChoice Font{"Arial", 18};                           // lblFont
    int Charset = 0;
};

// The overlay menus of the window and the check marks on them.
struct OverlayMenus {
    std::vector<OverlayMenuItem> Top; // the bitmaps of the overlays folder itself
    std::array<OverlayFolderMenu, kOverlayFolderMenus> Folders;
    OverlayCheck Checked;
    long CheckedWidth = 0; // the width item with the check mark, 0 for none
    TextOverlayForm TextPanel;
    bool TextPanelVisible = false;
};

} // namespace mw
