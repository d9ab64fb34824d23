#pragma once

#include <compare>
#include <map>
#include <optional>

namespace mw {

// A button of a generated page: a thumbnail by its number over all pages, or one of the
// page's own buttons.
struct NavButton {
    enum class Kind { Item, Previous, Next, Main, Setup };
    Kind What = Kind::Item;
    int Number = 0; // the item's number; unused for the page's own buttons

    auto operator<=>(const NavButton&) const = default;
};

// Where the remote's keys lead from one button; unset keys are not written.
struct NavLinks {
    std::optional<NavButton> Left;
    std::optional<NavButton> Right;
    std::optional<NavButton> Down;

    bool operator==(const NavLinks&) const = default;
};

// The buttons of one page that exist besides the thumbnails. Previous and next follow from the
// page number; the main and setup labels can be hidden by the user.
struct NavPage {
    int Page = 1;
    bool HasMain = true;
    bool HasSetup = false;
};

// The left, right and down keys of every button of page `page.Page`, for `count` items at
// `perPage` a page. The thumbnails make a ring through left and right, the page buttons join
// it, and the last thumbnail steps down to the main button. Links to or from a button that is
// not on the page are left out.
std::map<NavButton, NavLinks> NavigationRule(int count, int perPage, const NavPage& page);

} // namespace mw
