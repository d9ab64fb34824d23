#include "generators/Navigation.h"

#include "generators/PageModel.h"

#include <algorithm>

namespace mw {

namespace {

enum class Key { Left, Right, Down };

// Writes links in the order the rule gives them, a later one replacing an earlier one.
class Wiring {
public:
    Wiring(const NavPage& page, int pages) : page_(page), pages_(pages) {}

    void Set(NavButton from, Key key, NavButton to)
    {
        if (!Exists(from) || !Exists(to))
            return;
        NavLinks& links = links_[from];
        std::optional<NavButton>& slot = key == Key::Left ? links.Left : key == Key::Right ? links.Right : links.Down;
        slot = to;
    }

    std::map<NavButton, NavLinks> Take() { return std::move(links_); }

private:
    bool Exists(NavButton b) const
    {
        switch (b.What) {
        case NavButton::Kind::Item:
            return true;
        case NavButton::Kind::Previous:
            return page_.Page > 1;
        case NavButton::Kind::Next:
            return page_.Page < pages_;
        case NavButton::Kind::Main:
            return page_.HasMain;
        case NavButton::Kind::Setup:
            return page_.HasSetup;
        }
        return false;
    }

    const NavPage& page_;
    int pages_;
    std::map<NavButton, NavLinks> links_;
};

NavButton Item(int number) { return NavButton{NavButton::Kind::Item, number}; }

} // namespace

std::map<NavButton, NavLinks> NavigationRule(int count, int perPage, const NavPage& nav)
{
    const int P = PageCount(count, perPage);
    const int p = nav.Page;
    const int N = count;
    Wiring w(nav, P);
    if (p < 1 || p > P)
        return w.Take();

    const NavButton prev{NavButton::Kind::Previous};
    const NavButton next{NavButton::Kind::Next};
    const NavButton main{NavButton::Kind::Main};
    const NavButton setup{NavButton::Kind::Setup};
    const int firstNumber = (p - 1) * perPage + 1;
    const NavButton first = Item(firstNumber);
    const NavButton last = Item(std::min(p * perPage, N));
    const auto L = Key::Left;
    const auto R = Key::Right;
    const auto D = Key::Down;

    for (int i = firstNumber; i <= std::min(p * perPage, N); ++i) {
        const NavButton b = Item(i);
        const int pos = i - firstNumber + 1;
        const int g = i; // items are handled in number order over all pages
        if (pos == 1) {
            if (p > 1 && p < P) {
                w.Set(b, L, next);
                w.Set(prev, R, next);
                w.Set(next, L, prev);
            } else if (p == P && p > 1) {
                w.Set(b, L, prev);
                w.Set(prev, R, b);
            } else if (p == 1 && p < P) {
                w.Set(b, L, next);
                w.Set(next, R, b);
            } else {
                w.Set(b, L, Item(N));
                w.Set(Item(N), R, b);
            }
            if (i < N) {
                w.Set(b, R, Item(i + 1));
            } else {
                if (P > 1) {
                    w.Set(b, R, prev);
                    w.Set(prev, L, b);
                }
                if (p == P && g == N) {
                    if (P > 1)
                        w.Set(b, R, prev);
                    w.Set(first, L, main);
                    w.Set(main, R, first);
                    w.Set(b, D, main);
                }
            }
        } else if (g < N && pos < perPage) {
            w.Set(b, L, Item(i - 1));
            w.Set(b, R, Item(i + 1));
        } else {
            if (p < P && p == 1) {
                w.Set(b, R, main);
                w.Set(main, L, b);
                w.Set(next, L, b);
                w.Set(b, D, main);
            } else if (p < P) {
                w.Set(b, R, prev);
                w.Set(next, R, first);
                w.Set(prev, L, b);
                w.Set(b, D, main);
            } else if (P > 1) {
                w.Set(b, R, prev);
                w.Set(prev, L, b);
                if (g == N) {
                    w.Set(main, R, first);
                    w.Set(main, L, prev);
                    w.Set(first, L, main);
                    w.Set(b, D, main);
                }
            } else {
                w.Set(b, R, first);
                w.Set(last, L, b);
                if (g == N && p == 1) {
                    w.Set(first, L, main);
                    w.Set(b, R, main);
                    w.Set(main, L, b);
                    w.Set(main, R, first);
                    w.Set(b, D, main);
                }
            }
            w.Set(b, L, Item(i - 1));
        }
    }

    // The page's own buttons join the ring.
    if (p == 1 && P == 1 && N == 1) {
        if (nav.HasSetup) {
            w.Set(first, R, setup);
            w.Set(setup, L, first);
        } else {
            w.Set(first, R, main);
        }
    }
    if (p > 1) {
        w.Set(main, L, prev);
        w.Set(prev, R, main);
    }
    if (p < P) {
        w.Set(main, R, next);
        w.Set(next, L, main);
    }
    if (p == 1 && nav.HasSetup) {
        w.Set(main, R, setup);
        w.Set(setup, L, main);
        if (P > 1) {
            w.Set(setup, R, next);
        } else {
            w.Set(setup, R, first);
            w.Set(first, L, setup);
        }
    }
    if (p < P) {
        w.Set(first, L, next);
        if (p == 1 && !nav.HasSetup)
            w.Set(last, R, next);
    }
    if (p == P && P > 1) {
        if (nav.HasSetup) {
            w.Set(first, L, setup);
            w.Set(setup, L, prev);
        } else {
            w.Set(first, L, prev);
        }
    }
    if (p == P && P == 1) {
        if (nav.HasSetup) {
            w.Set(first, L, setup);
            w.Set(last, R, setup);
        } else {
            w.Set(first, L, last);
            w.Set(last, R, first);
        }
    }
    return w.Take();
}

} // namespace mw
