#include "document/NodeKindsHelp.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

namespace {

const std::string kPaneSettings = "[am2][amt2][ab3x1][abc16744576]";

struct ElementHelp {
    const char* Name;
    std::vector<const char*> Attributes;
};

// Every element of the document with every attribute the program writes or reads.
const std::vector<ElementHelp> kSchema = {
    {"DivXMediaManager", {"menuVersion", "objectID", "defaultMenuLanguage", "version", "startingMenuID"}},
    {"TranslationTable", {"objectID"}},
    {"TranslationLookup", {"objectID"}},
    {"Translation", {"objectID", "languageCode", "value"}},
    {"Media", {"objectID"}},
    {"Title", {"objectID", "translationLookupID", "defaultAudioTrack", "defaultSubtitleTrack"}},
    {"MediaSource", {"objectID", "mediaType", "location"}},
    {"MediaTrack",
     {"objectID", "mediaSourceID", "sourceTrackID", "trackID", "startFrame", "endFrame", "languageCode", "strn",
      "translationLookupID", "type"}},
    {"Chapter", {"objectID", "translationLookupID"}},
    {"MenuTracks", {"objectID"}},
    {"LanguageMenus", {"objectID", "languageCode", "startingMenuID", "rootMenuID"}},
    {"DivXMediaMenu",
     {"objectID", "backgroundVideoID", "backgroundAudioID", "startingMenuItemID", "enterAction", "exitAction",
      "menuType", "menuName"}},
    {"ButtonMenu", {"objectID", "overlayID", "upAction", "downAction", "leftAction", "rightAction", "selectAction"}},
    {"MenuRectangle", {"objectID", "left", "top", "width", "height"}},
    {"Action", {"objectID"}},
    {"AudioSelectAction", {"objectID", "titleID", "trackID"}},
    {"SubtitleSelectAction", {"objectID", "titleID", "trackID"}},
    {"PlayAction", {"objectID", "titleID", "mediaObjectID"}},
    {"PlayFromCurrentOffsetAction", {"objectID", "titleID", "mediaObjectID"}},
    {"MenuTransitionAction", {"objectID", "menuID"}},
    {"ButtonTransitionAction", {"objectID", "buttonMenuID"}},
    {"Menuwright", {"Color1", "Color2", "Color3", "frame", "Shape", "width", "Position", "rectID", "Buttons", "menuID"}},
};

std::size_t Occurrences(const std::string& text, const std::string& what)
{
    std::size_t count = 0;
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
        ++count;
    return count;
}

TEST(NodeKindsHelp, EveryElementHasABlockWithEachAttribute)
{
    EXPECT_EQ(Occurrences(mw::NodeKindsHelpText(), "[b][s"), kSchema.size());
    for (const ElementHelp& element : kSchema) {
        SCOPED_TRACE(element.Name);
        const std::string block = mw::HelpBlockFor(element.Name);
        const std::string heading = "[b][s12]" + std::string(element.Name) + "[s8][/b]";
        EXPECT_EQ(block.rfind(kPaneSettings + heading, 0), 0u) << block;
        // One block only: it stops before the next heading.
        EXPECT_EQ(Occurrences(block, "[b][s"), 1u);
        EXPECT_EQ(block.find_first_of("\r\n"), std::string::npos);
        for (const char* attribute : element.Attributes)
            EXPECT_NE(block.find("<" + std::string(attribute) + "> [a100]"), std::string::npos) << attribute;
    }
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
