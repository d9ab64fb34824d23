#include "i18n/TextFormatHitTest.h"
#include "i18n/TextFormatLayout.h"
#include "i18n/TextFormatParser.h"

#include "document/NodeKindsHelp.h"

#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <string>
#include <vector>

using mw::FormatMethod;

namespace {

// Every character is as wide as the font size; lines are twice as high.
class FixedWidthMeasurer : public mw::TextMeasurer {
public:
    int TextWidth(const mw::FontState& font, std::string_view text) const override
    {
        return font.Size * static_cast<int>(text.size());
    }
    int Height(const mw::FontState& font) const override { return 2 * font.Size; }
    int Ascent(const mw::FontState& font) const override { return font.Size * 3 / 2; }
};

const FixedWidthMeasurer kMeasurer;

struct Laid {
    mw::ParsedText Text;
    mw::TextLayout Layout;
};

Laid Lay(std::string_view source, int width = 200, FormatMethod method = FormatMethod::Brackets)
{
    mw::TextFormatOptions options;
    options.Width = width;
    options.Font.Size = 10;
    options.Color = 0x123456;
    options.FontCount = 2;
    Laid laid{mw::ParseTextFormat(source, method), {}};
    laid.Layout = mw::LayoutTextFormat(laid.Text, options, kMeasurer);
    return laid;
}

// "text*/_#font" per piece: bold, italic, underline, font index.
std::string Styles(const mw::TextLayout& layout)
{
    std::string out;
    for (const mw::TextPiece& p : layout.Pieces) {
        out += (out.empty() ? "" : "|") + p.Text + (p.Font.Bold ? "*" : "") + (p.Font.Italic ? "/" : "") +
               (p.Font.Underline ? "_" : "") + (p.Font.Font ? "#" + std::to_string(p.Font.Font) : "");
    }
    return out;
}

// "text@left,top" per piece, top being that of the text itself.
std::vector<std::string> Places(const mw::TextLayout& layout)
{
    std::vector<std::string> out;
    for (const mw::TextPiece& p : layout.Pieces)
        out.push_back(p.Text + "@" + std::to_string(p.Box.Left) + "," + std::to_string(p.Y));
    return out;
}

TEST(TextFormatParser, SplitsIntoRunsOfTagAndText)
{
    struct Case {
        const char* Source;
        FormatMethod Method;
        std::vector<mw::TextRun> Runs;
    };
    const Case cases[] = {
        {"a[[b]]c", FormatMethod::Brackets, {{"", 0, 6}}},
        {"[b]x[/b]y", FormatMethod::Brackets, {{"b", 3, 3}, {"b", 8, 8}}},
        {"ab[i]", FormatMethod::Brackets, {{"", 0, 1}, {"i", 5, 4}}},
        {"x\r\ny", FormatMethod::Brackets, {{"", 0, 0}, {"l", 4, 4}}},
        {"[[b]", FormatMethod::Brackets, {{"", 0, 3}}},
        {"a[b", FormatMethod::Brackets, {{"", 0, 2}}},
        {"/b x//y/b z", FormatMethod::Slash, {{"b", 3, 6}, {"b", 10, 10}}},
        {"x\ny/i", FormatMethod::Slash, {{"", 0, 0}, {"l", 4, 4}, {"i", 7, 6}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Source);
        const mw::ParsedText parsed = mw::ParseTextFormat(c.Source, c.Method);
        ASSERT_EQ(parsed.Runs.size(), c.Runs.size());
        for (std::size_t i = 0; i < c.Runs.size(); ++i) {
            EXPECT_EQ(parsed.Runs[i].Tag, c.Runs[i].Tag);
            EXPECT_EQ(parsed.Runs[i].First, c.Runs[i].First);
            EXPECT_EQ(parsed.Runs[i].Last, c.Runs[i].Last);
        }
    }
}

TEST(TextFormatLayout, TagsToggleFontsAndEscapesShowPlain)
{
    const std::pair<const char*, const char*> cases[] = {
        {"a[[b]]c", "a[b]c"},
        {"[b]x[/b]y", "x*|y"},
        {"[b]x[b]y", "x*|y"},
        {"[i]x[u]y[/i]z", "x/|y/_|z_"},
        {"[f2]a[f9]b[f1]c[f]d", "a#2|b|c#1|d"},
        {"[q]x[s]y", "x|y"},
    };
    for (const auto& [source, expected] : cases)
        EXPECT_EQ(Styles(Lay(source).Layout), expected) << source;
    EXPECT_EQ(Lay("[q]x[s]y[b]").Layout.UnknownTags, (std::vector<std::string>{"q", "s"}));
}

TEST(TextFormatLayout, SlashMarkupLaysOutAsBrackets)
{
    const auto brackets = Lay("[b]x [b]y[l][s12]a/b [n10]c").Layout;
    const auto slashes = Lay("/b x /b y\r\n/s12 a//b /n10 c", 200, FormatMethod::Slash).Layout;
    EXPECT_EQ(Places(slashes), Places(brackets));
    EXPECT_EQ(Styles(slashes), Styles(brackets));
    EXPECT_EQ(slashes.Height, brackets.Height);
}

TEST(TextFormatLayout, WrapsAlignsAndIndentsLines)
{
    struct Case {
        const char* Source;
        std::vector<std::string> Places;
    };
    // 100 wide: ten characters of size 10 to a line 20 high, text 15 above the base line.
    const Case cases[] = {
        {"aaaa bbbb cccc", {"aaaa bbbb @0,0", "cccc@0,20"}},
        {"abcdefghijklmno", {"abcdefghij@0,0", "klmno@0,20"}},
        {" x", {"x@0,0"}},
        {"aaaaaaaaa  bb", {"aaaaaaaaa@0,0", "bb@0,20"}},
        {"[n20]aaaa bbbb cccc[l]dddd", {"aaaa bbbb @0,0", "cccc@20,20", "dddd@0,40"}},
        {"[m30]x[l]y[m+10][l]z[m-5][l]w", {"x@0,0", "y@30,20", "z@40,40", "w@35,60"}},
        {"[lgr]abc", {"abc@70,0"}},
        {"[lgc]abc", {"abc@35,0"}},
        {"[lgr]aaaa bbbb cccc", {"aaaa bbbb @10,0", "cccc@60,20"}},
        {"a[s20]b", {"a@0,15", "b@10,0"}},
        {"a[y30]b[l]c", {"a@0,0", "b@10,30", "c@0,50"}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Places(Lay(c.Source, 100).Layout), c.Places) << c.Source;
    EXPECT_EQ(Lay("a[s20]b", 100).Layout.Height, 40);
}

TEST(TextFormatLayout, TableRowOfFixedAndRemainingCells)
{
    const auto open = Lay("[a100f]x [a100]y", 300).Layout;
    EXPECT_TRUE(open.Cells.empty());
    EXPECT_TRUE(open.Shapes.empty());
    EXPECT_EQ(Places(open), (std::vector<std::string>{"x @0,0", "y@100,0"}));

    const auto row = Lay("[a100f]x [a100]y[a0]z", 300).Layout;
    ASSERT_EQ(row.Cells.size(), 2u);
    EXPECT_EQ(row.Cells[0].Box, (mw::TextRect{0, 0, 100, 20}));
    EXPECT_EQ(row.Cells[1].Box, (mw::TextRect{100, 0, 200, 20}));
    EXPECT_FALSE(row.Shapes.empty());
    EXPECT_EQ(Places(row).back(), "z@0,20");

    // A line end stays in its cell; the row is as high as its tallest cell.
    const auto lines = Lay("[a50f]ab[l]cd[a100n]x[a0]", 200).Layout;
    EXPECT_EQ(Places(lines), (std::vector<std::string>{"ab@0,0", "cd@0,20", "x@50,0"}));
    EXPECT_EQ(lines.Cells[1].Box, (mw::TextRect{50, 0, 150, 40}));
    EXPECT_FALSE(lines.Cells[1].Border);
}

TEST(TextFormatLayout, TableBordersTakeRoomAndColour)
{
    const auto row = Lay("[am2][amt1][ab3x1][abc255][a50]x[a100]y[a0]", 200).Layout;
    EXPECT_EQ(Places(row), (std::vector<std::string>{"x@5,4", "y@105,4"}));
    EXPECT_EQ(row.Cells[0].Box, (mw::TextRect{0, 0, 100, 29}));
    // Frames of both cells, the line between them drawn once, with the inner width.
    const std::vector<mw::TextRect> lines = {
        {0, 0, 100, 3},   {0, 26, 100, 3},  {0, 0, 3, 29},  {100, 0, 100, 3},
        {100, 26, 100, 3}, {100, 0, 1, 29}, {197, 0, 3, 29},
    };
    ASSERT_EQ(row.Shapes.size(), lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(row.Shapes[i].Box, lines[i]) << i;
        EXPECT_EQ(row.Shapes[i].Color, 255u);
    }
    EXPECT_EQ(row.Height, 29);
}

TEST(TextFormatLayout, LinksAreBlueAndRestoreTheColour)
{
    const auto layout = Lay("[c255]aaaaaa [w]bb cccccccc[w]d", 100).Layout;
    ASSERT_EQ(layout.Links.size(), 1u);
    const mw::TextLink& link = layout.Links[0];
    EXPECT_EQ(link.Target, "bb cccccccc");
    EXPECT_EQ(link.Rects, (std::vector<mw::TextRect>{{70, 0, 30, 20}, {0, 20, 80, 20}}));
    EXPECT_EQ(layout.Pieces[1].Color, mw::kLinkColor);
    EXPECT_EQ(layout.Pieces.back().Text, "d");
    EXPECT_EQ(layout.Pieces.back().Color, 255u); // the colour before the link, not the starting one
    EXPECT_EQ(mw::LinkAtXY(layout, 75, 5), &link);
    EXPECT_EQ(mw::LinkAtXY(layout, 85, 25), nullptr); // "d" follows the link
}

TEST(TextFormatLayout, BulletsSitOnTheLineBeforeTheText)
{
    const auto layout = Lay("[t]a[l][t2]b").Layout;
    ASSERT_EQ(layout.Shapes.size(), 2u);
    EXPECT_TRUE(layout.Shapes[0].Round);
    EXPECT_FALSE(layout.Shapes[1].Round);
    EXPECT_EQ(layout.Shapes[1].Box, (mw::TextRect{0, 24, 7, 7}));
    EXPECT_EQ(Places(layout), (std::vector<std::string>{"a@10,0", "b@10,20"}));
}

TEST(TextFormatHitTest, LocatesRunAndSourcePosition)
{
    struct Case {
        const char* Source;
        int X;
        int Y;
        mw::TextHit Hit;
    };
    const Case cases[] = {
        {"ab[b]cd", 15, 5, {0, 1}},
        {"ab[b]cd", 25, 5, {1, 5}},
        {"ab[b]cd", 500, 5, {1, 7}},
        {"ab[b]cd", -5, 100, {0, 0}},
        {"a[[b", 25, 5, {0, 3}},
        {"ab[l]cd", 15, 25, {1, 6}},
    };
    for (const Case& c : cases) {
        const auto hit = mw::LocateTextAtXY(Lay(c.Source).Layout, kMeasurer, c.X, c.Y);
        ASSERT_TRUE(hit) << c.Source;
        EXPECT_EQ(*hit, c.Hit) << c.Source << " at " << c.X << "," << c.Y;
    }
    EXPECT_FALSE(mw::LocateTextAtXY(Lay("[b]").Layout, kMeasurer, 0, 0));
}

TEST(TextFormatParser, CopiesRangesWithAndWithoutTags)
{
    const mw::ParsedText text = mw::ParseTextFormat("ab[b]c[[d[l]e[/b]f", FormatMethod::Brackets);
    const struct {
        std::size_t From, To;
        const char* Plain;
        const char* Formated;
    } cases[] = {
        {0, 99, "abc[d\nef", "ab[b]c[[d[l]e[/b]f"},
        {1, 12, "bc[d\n", "b[b]c[[d[l]"},
        {5, 9, "c[d", "c[[d"},
        {9, 9, "", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(mw::CopyText(text, c.From, c.To), c.Plain) << c.From;
        EXPECT_EQ(mw::CopyFormated(text, c.From, c.To), c.Formated) << c.From;
    }
}

TEST(TextFormatLayout, EveryNodeKindHelpBlockLaysOut)
{
    const std::string help = mw::NodeKindsHelpText();
    const std::regex heading(R"(\[b\]\[s12\](\w+)\[s8\]\[/b\])");
    int blocks = 0;
    for (std::sregex_iterator it(help.begin(), help.end(), heading), end; it != end; ++it, ++blocks) {
        const std::string name = (*it)[1];
        SCOPED_TRACE(name);
        const auto layout = Lay(mw::HelpBlockFor(name), 400).Layout;
        EXPECT_TRUE(layout.UnknownTags.empty());
        EXPECT_GT(layout.Height, 0);
        EXPECT_FALSE(layout.Cells.empty());
        EXPECT_EQ(layout.Pieces.front().Text, name);
        for (const mw::TextPiece& piece : layout.Pieces)
            EXPECT_LE(piece.Box.Right(), 400) << piece.Text;
    }
    EXPECT_GT(blocks, 20);
}

// Pictures in formatted text: in the line, on a line of their own, and floating beside the text.
// Letters 5 wide, lines 10 high with the base line at 8; pictures by name.
class PictureMeasurer : public mw::TextMeasurer {
public:
    std::map<std::string, mw::PictureExtent> Files{{"Pic.PNG", {40, 60}}, {"/pf/help/a.png", {8, 8}}};
    mutable std::vector<std::string> Asked;

    int TextWidth(const mw::FontState&, std::string_view text) const override { return 5 * int(text.size()); }
    int Height(const mw::FontState&) const override { return 10; }
    int Ascent(const mw::FontState&) const override { return 8; }
    std::optional<mw::PictureExtent> PictureSize(const std::string& file) const override
    {
        Asked.push_back(file);
        const auto it = Files.find(file);
        return it == Files.end() ? std::nullopt : std::optional(it->second);
    }
};

mw::TextLayout Lay(const std::string& text, const PictureMeasurer& measurer, int width = 100)
{
    mw::TextFormatOptions options;
    options.Width = width;
    options.ProgramFolder = "/pf";
    return mw::LayoutTextFormat(mw::ParseTextFormat(text, mw::FormatMethod::Brackets), options, measurer);
}

TEST(TextFormatPictures, SizesSourcesAndUnreadablePictures)
{
    const struct {
        const char* Text;
        mw::TextRect Box;
    } cases[] = {
        {"[gPic.PNG]", {0, 0, 40, 60}},     {"[gPic.PNG|20x10]", {0, 0, 20, 10}},
        {"[gPic.PNG|20]", {0, 0, 20, 30}},  {"[gPic.PNG|x30]", {0, 0, 20, 30}},
        {"[g<APP.PATH>\\help\\a.png]", {0, 0, 8, 8}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Text);
        const PictureMeasurer measurer;
        const mw::TextLayout layout = Lay(c.Text, measurer);
        ASSERT_EQ(layout.Pictures.size(), 1u);
        EXPECT_EQ(layout.Pictures[0].Box, c.Box);
        EXPECT_EQ(layout.Pictures[0].File, measurer.Asked.back());
        EXPECT_TRUE(layout.UnknownTags.empty());
        EXPECT_EQ(layout.Height, c.Box.Height + 2); // the font's descent below the base line
    }
    // A resource, a file that cannot be read, a size that is no number: no effect.
    for (const char* text : {"[g<R>101]x", "[gpic.png]x", "[gPic.PNG|2ax3]x"}) {
        const PictureMeasurer measurer;
        const mw::TextLayout layout = Lay(text, measurer);
        EXPECT_TRUE(layout.Pictures.empty()) << text;
        EXPECT_EQ(layout.UnknownTags.size(), 1u) << text;
        ASSERT_EQ(layout.Pieces.size(), 1u) << text;
        EXPECT_EQ(layout.Pieces[0].Box.Left, 0) << text;
    }
}

TEST(TextFormatPictures, InTheLineOnTheBaseLineOrOnALineOfItsOwn)
{
    const PictureMeasurer measurer;
    const mw::TextLayout inLine = Lay("ab[gPic.PNG|20x30]cd", measurer);
    ASSERT_EQ(inLine.Pieces.size(), 2u);
    EXPECT_EQ(inLine.Pictures[0].Box, (mw::TextRect{10, 0, 20, 30}));
    EXPECT_EQ(inLine.Pieces[1].Box.Left, 30);
    EXPECT_EQ(inLine.Pieces[1].Y + 8, 30); // the text's base line is the picture's bottom

    // Too wide for the rest of the line: on the next one, whose base line is at 18.
    EXPECT_EQ(Lay("abcdefghijklmnop[gPic.PNG|30x5]", measurer).Pictures[0].Box, (mw::TextRect{0, 13, 30, 5}));

    const mw::TextLayout right = Lay("ab[gPic.PNG|20x30r]cd", measurer);
    EXPECT_EQ(right.Pictures[0].Box, (mw::TextRect{80, 10, 20, 30}));
    EXPECT_EQ(right.Pieces[1].Box, (mw::TextRect{0, 40, 10, 10}));
    EXPECT_EQ(Lay("[gPic.PNG|20x30c]", measurer).Pictures[0].Box, (mw::TextRect{40, 0, 20, 30}));
}

TEST(TextFormatPictures, FloatingPicturesNarrowTheLinesBesideThem)
{
    const PictureMeasurer measurer;
    // Lines of 10 beside a picture 25 high: three lines are narrowed, the fourth is not.
    const mw::TextLayout left = Lay("[ga][gPic.PNG|20x25]aaaa bbbb cccc dddd eeee ffff gggg hhhh", measurer, 70);
    EXPECT_EQ(left.Pictures[0].Box, (mw::TextRect{0, 0, 20, 25}));
    for (const mw::TextPiece& piece : left.Pieces)
        EXPECT_EQ(piece.Box.Left, piece.Box.Top < 25 ? 24 : 0) << piece.Text;
    EXPECT_EQ(left.Pieces.back().Box.Top, 30);

    const mw::TextLayout right = Lay("[ga][gPic.PNG|20x25r]aaaa bbbb cccc", measurer, 70);
    EXPECT_EQ(right.Pictures[0].Box, (mw::TextRect{50, 0, 20, 25}));
    for (const mw::TextPiece& piece : right.Pieces)
        EXPECT_LE(piece.Box.Right(), 46) << piece.Text;

    // Met inside a line, the picture waits for the next one; "gr" goes on below it, and after
    // "gn" pictures are in the line again.
    const mw::TextLayout waited = Lay("ab[ga][gPic.PNG|20x25]cd[l]ef[gr]gh[gn][gPic.PNG|5x5]", measurer);
    EXPECT_EQ(waited.Pictures[0].Box, (mw::TextRect{0, 10, 20, 25}));
    ASSERT_EQ(waited.Pieces.size(), 4u);
    EXPECT_EQ(waited.Pieces[1].Box, (mw::TextRect{10, 0, 10, 10}));
    EXPECT_EQ(waited.Pieces[2].Box, (mw::TextRect{24, 10, 10, 10}));
    EXPECT_EQ(waited.Pieces[3].Box.Top, 35);
    EXPECT_EQ(waited.Pictures[1].Box, (mw::TextRect{10, 38, 5, 5}));
}

} // namespace
