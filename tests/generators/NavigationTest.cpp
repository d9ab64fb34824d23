// The remote's keys on generated chapter and title pages, checked against tables worked out by
// hand from the rule for every page of 1, 8, 9, 16 and 17 items at 8 a page.
#include "generators/Navigation.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace mw {
namespace {

std::string Name(const NavButton& b)
{
    constexpr const char* kPageButtons[] = {"", "Prev", "Next", "Main", "Setup"};
    return b.What == NavButton::Kind::Item ? std::to_string(b.Number) : kPageButtons[static_cast<int>(b.What)];
}

// One line per button that has links: "name L=.. R=.. D=..", in the map's order (items by
// number, then Prev, Next, Main, Setup).
std::vector<std::string> Describe(const std::map<NavButton, NavLinks>& links)
{
    std::vector<std::string> lines;
    for (const auto& [button, l] : links) {
        std::string line = Name(button);
        if (l.Left)
            line += " L=" + Name(*l.Left);
        if (l.Right)
            line += " R=" + Name(*l.Right);
        if (l.Down)
            line += " D=" + Name(*l.Down);
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> Wired(int count, int page, bool main = true, bool setup = false)
{
    return Describe(NavigationRule(count, 8, NavPage{.Page = page, .HasMain = main, .HasSetup = setup}));
}

// The expected table: the given lines with the middle items from..to stepping both ways put in
// their place.
std::vector<std::string> Table(std::vector<std::string> head, int from, int to, std::vector<std::string> tail)
{
    for (int i = from; i <= to; ++i)
        head.push_back(std::to_string(i) + " L=" + std::to_string(i - 1) + " R=" + std::to_string(i + 1));
    head.insert(head.end(), tail.begin(), tail.end());
    return head;
}

// Page 1 of several, with a setup button: the ring runs 1..8, Main, Setup, Next.
const std::vector<std::string> kFirstOfSeveral =
    Table({"1 L=Next R=2"}, 2, 7, {"8 L=7 R=Main D=Main", "Next L=Main R=1", "Main L=8 R=Setup", "Setup L=Main R=Next"});

TEST(Navigation, OneChapterRingsThroughSetupAndStepsDownToMain)
{
    EXPECT_EQ(Wired(1, 1, true, true),
              (std::vector<std::string>{"1 L=Setup R=Setup D=Main", "Main R=Setup", "Setup L=Main R=1"}));
}

TEST(Navigation, OneFullPage)
{
    EXPECT_EQ(Wired(8, 1, true, true),
              Table({"1 L=Setup R=2"}, 2, 7, {"8 L=7 R=Setup D=Main", "Main L=8 R=Setup", "Setup L=Main R=1"}));
}

TEST(Navigation, SeveralPages)
{
    for (const int count : {9, 16, 17})
        EXPECT_EQ(Wired(count, 1, true, true), kFirstOfSeveral) << count;
    // Beyond page 1 the setup label is hidden. A lone last item goes through Prev both ways.
    EXPECT_EQ(Wired(9, 2), (std::vector<std::string>{"9 L=Prev R=Prev D=Main", "Prev L=9 R=Main", "Main L=Prev R=9"}));
    EXPECT_EQ(Wired(16, 2), Table({"9 L=Prev R=10"}, 10, 15, {"16 L=15 R=Prev D=Main", "Prev L=16 R=Main", "Main L=Prev R=9"}));
    EXPECT_EQ(Wired(17, 2), Table({"9 L=Next R=10"}, 10, 15,
                                  {"16 L=15 R=Prev D=Main", "Prev L=16 R=Main", "Next L=Main R=9", "Main L=Prev R=Next"}));
    EXPECT_EQ(Wired(17, 3),
              (std::vector<std::string>{"17 L=Prev R=Prev D=Main", "Prev L=17 R=Main", "Main L=Prev R=17"}));
}

TEST(Navigation, TwoTitlesStepDownOnlyToAVisibleMain)
{
    EXPECT_EQ(Wired(2, 1), (std::vector<std::string>{"1 L=2 R=2", "2 L=1 R=1 D=Main", "Main L=2 R=1"}));
    EXPECT_EQ(Wired(2, 1, false), (std::vector<std::string>{"1 L=2 R=2", "2 L=1 R=1"}));
}

} // namespace
} // namespace mw
