#pragma once

#include "core/Prompt.h"

#include <array>
#include <optional>
#include <string>

namespace mw {

// The text overlay panel (frmPropText) without its window: what it shows of a button's text
// overlay and what it writes back into the button's extra info.
struct TextOverlayForm {
    // Choices of the outline list, widths 0 to kOutlineChoices - 1.
    static constexpr int kOutlineChoices = 11;

    std::string Text;                                  // Text1
    int Outline = 0;                                   // Combo1, the width in pixels
    std::string ShadowDistance = "4";                  // txt3D
    std::array<bool, 4> Corners{false, false, true, false}; // Check1: LT, RT, RB, LB
    FontChoice Font{"Arial", 18};                      // lblFont
    int Charset = 0;

    // Val of the distance, then the corner of the first checked box ("LB" with none): "4RB".
    std::string Shadow() const;
};

// The panel filled from a button's extra info, each missing attribute taking its default;
// std::nullopt when the tag does not parse, where the caller says "Error in Text overlay".
// An outline outside the list becomes 1.
std::optional<TextOverlayForm> TextOverlayFromTag(const std::string& tag);

// The button's extra info with Shape set to "*Text" and the panel's Text, Outline, Shadow,
// Font ("family" with ",B" and ",I" as they apply), FontSize (with a point) and FontCharset,
// each created where missing and appended in this order. A tag that does not parse starts
// again from an empty element.
std::string UpdateTextOverlayTag(const std::string& tag, const TextOverlayForm& form);

} // namespace mw
