#pragma once

#include "document/MenuCanvas.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include <pugixml.hpp>

namespace mw {

class Project;
class DocNode;

inline constexpr const char* kDefaultOverlayPosition = "6 6 -12 -12";
inline constexpr const char* kSameOverlayPosition = "0 0 0 0";
inline constexpr const char* kShadowCorners[] = {"LT", "RT", "RB", "LB"};

// A node's extra info as one element with attributes in single quotes. A tag that does not
// parse has no attributes; setting one on it starts a new element named after the program.
class ExtraInfoElement {
public:
    explicit ExtraInfoElement(const std::string& tag);
    bool Parsed() const { return parsed_; }
    std::optional<std::string> Get(const char* name) const;
    // Sets an attribute; a new one goes after those already there.
    void Set(const char* name, const std::string& value);
    std::string Text() const;

private:
    pugi::xml_document doc_;
    bool parsed_ = false;
};

// The overlay attributes of a button, each missing one at its default.
struct OverlayAttributes {
    std::string Shape; // "*Rect" when the whole tag is empty
    std::string Position = kDefaultOverlayPosition;
    long Width = 3;
    std::string Text;  // the program's name by default
    long Outline = 0;
    std::string Shadow = "4RB";
    std::string Font = "Arial";
    std::string FontSize = "18";
    long FontCharset = 0;
};
OverlayAttributes ReadOverlayAttributes(const std::string& tag);

// The text panel's shadow: Val of the distance, then the corner of the first checked box ("LB"
// with none), as in "4RB".
std::string TextOverlayShadow(const TextOverlayForm& form);
// A Shadow value into the panel: its distance, and the box of its corner checked; an unknown
// corner checks none.
void SetTextOverlayShadow(TextOverlayForm& form, const std::string& shadow);

// The panel filled from a button's extra info, each missing attribute taking its default;
// std::nullopt when the tag does not parse, where the caller says "Error in Text overlay".
// An outline outside the list becomes 1.
std::optional<TextOverlayForm> TextOverlayFromTag(const std::string& tag);

// The button's extra info with Shape set to "*Text" and the panel's Text, Outline, Shadow,
// Font ("family" with ",B" and ",I" as they apply), FontSize (with a point) and FontCharset,
// each created where missing and appended in this order. A tag that does not parse starts
// again from an empty element.
std::string UpdateTextOverlayTag(const std::string& tag, const TextOverlayForm& form);

// The picture a button's overlay shows: "*Rect" the program's rectangle_.bmp, "*Text" the
// stored name with ".bmp", any other name the bitmap of that name in the overlays folder.
std::string OverlayFileFor(const std::filesystem::path& programFolder, const std::string& shape);

// Places a button's overlay by its position string "a b c d" against the rectangle.
void PlaceShapeFromTag(CanvasButton& button);

// The selected button and its node; nullptr when no button is selected or its node is gone.
CanvasButton* SelectedButton(Project& project, DocNode*& node);

// The overlay commands act on the canvas selection: the multi-selection, else the selected
// button, else the last selected one. Each records one undo step first.

// A bitmap overlay by its Shape value ("name" or "folder\name"), with the check mark.
void SetThisOverlay(Project& project, const std::string& name);
// A click on an item of the top overlay menu, or of a folder's submenu: its bitmap.
void mnuOverlay_Click(Project& project, int index);
void SetOverlayInFolder(Project& project, int folder, int index);
// One of the special overlays "*Rect", "*Oval", "*Shape1", "*Text".
void SetSpecialOverlay(Project& project, const std::string& name);
// The text panel's values into the selected button's text overlay.
void UpdateTextOverlay(Project& project);
// The line width of the width menu's item index.
void mnuOverlayWidthValue_Click(Project& project, int index);
// The selected button's overlay back to the default position of the settings.
void ResetOverlayPos(Project& project);
// The overlay of the button at index moved or resized on the canvas: its Position becomes the
// difference to the button's rectangle. The button itself stays. One undo step.
void PlaceShapeToPos(Project& project, int index, const ButtonShape& overlay);

// The three colours chosen for the menu's overlay palette: the current colours, and the menu's
// Color1, Color2, Color3.
void SelectColor(Project& project, const std::array<std::uint32_t, 3>& colors);
// The tool tip of colour button 0, 1 or 2: "2nd color in palette RGB = (r, g, b)" and so on.
std::string ColorButtonToolTip(int index, std::uint32_t color);
// The lock button of the canvas: the menu's lock flips, and is stored as 1 or 0.
void ToggleLock(Project& project);

} // namespace mw
