#include "document/NodeKindsHelp.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <iterator>

namespace {

const std::string kPaneSettings = "[am2][amt2][ab3x1][abc16744576]";

// Every element the document holds, and the extra info's own.
const char* const kElements[] = {
    "DivXMediaManager", "TranslationTable", "TranslationLookup", "Translation", "Media", "Title", "MediaSource",
    "MediaTrack", "Chapter", "MenuTracks", "LanguageMenus", "DivXMediaMenu", "ButtonMenu", "MenuRectangle", "Action",
    "AudioSelectAction", "SubtitleSelectAction", "PlayAction", "PlayFromCurrentOffsetAction", "MenuTransitionAction",
    "ButtonTransitionAction", "Menuwright",
};

std::size_t Occurrences(const std::string& text, const std::string& what)
{
    std::size_t count = 0;
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
        ++count;
    return count;
}

TEST(NodeKindsHelp, EveryElementHasOneBlockOfOneLine)
{
    EXPECT_EQ(Occurrences(mw::NodeKindsHelpText(), "[b][s"), std::size(kElements));
    for (const std::string element : kElements) {
        const std::string block = mw::HelpBlockFor(element);
        EXPECT_EQ(block.rfind(kPaneSettings + "[b][s12]" + element + "[s8][/b]", 0), 0u) << block;
        EXPECT_EQ(Occurrences(block, "[b][s"), 1u) << element; // it stops before the next heading
        EXPECT_EQ(block.find_first_of("\r\n"), std::string::npos) << element;
    }
    EXPECT_NE(mw::HelpBlockFor("MediaTrack").find("<translationLookupID> [a100]"), std::string::npos);
}

TEST(NodeKindsHelp, NameMustMatchTheWholeHeading)
{
    EXPECT_EQ(mw::HelpBlockFor("action"), mw::HelpBlockFor("Action"));
    EXPECT_EQ(mw::HelpBlockFor("Action").find("titleID"), std::string::npos);
    for (const char* name : {"", "Foo", "Actio", "SelectAction", "Translation[s8][/b]", "prop"})
        EXPECT_EQ(mw::HelpBlockFor(name), "none") << name;
}

TEST(NodeKindsHelp, UsesOnlyTheTagsOfTheHelpPaneAndEndsEachLineInOne)
{
    const std::regex allowed(R"(/?(a\d+f?|ab\d+x\d+|abc\d+|amt?\d+|[biult]|t2|s\d+|m[+-]?\d+|n\d+))");
    const std::string text = mw::NodeKindsHelpText();
    for (std::size_t i = 0; i < text.size(); ++i) {
        // Line breaks are dropped from a block, so a line ending in a word would run into the next.
        if (i > 1 && text[i] == '\n') {
            EXPECT_EQ(text[i - (text[i - 1] == '\r' ? 2 : 1)], ']') << "line ending at " << i;
        }
        if (text[i] != '[')
            continue;
        if (i + 1 < text.size() && text[i + 1] == '[') {
            ++i; // an escaped bracket
            continue;
        }
        const auto close = text.find(']', i);
        ASSERT_NE(close, std::string::npos) << "unclosed tag at " << i;
        EXPECT_TRUE(std::regex_match(text.substr(i + 1, close - i - 1), allowed)) << text.substr(i, close - i + 1);
        i = close;
    }
}

} // namespace
