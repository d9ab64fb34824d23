// Pictures in formatted text: in the line, on a line of their own, and floating beside the text.
#include "i18n/TextFormatLayout.h"
#include "i18n/TextFormatParser.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

using mw::TextRect;

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
        TextRect Box;
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
    EXPECT_EQ(inLine.Pictures[0].Box, (TextRect{10, 0, 20, 30}));
    EXPECT_EQ(inLine.Pieces[1].Box.Left, 30);
    EXPECT_EQ(inLine.Pieces[1].Y + 8, 30); // the text's base line is the picture's bottom

    // Too wide for the rest of the line: on the next one, whose base line is at 18.
    EXPECT_EQ(Lay("abcdefghijklmnop[gPic.PNG|30x5]", measurer).Pictures[0].Box, (TextRect{0, 13, 30, 5}));

    const mw::TextLayout right = Lay("ab[gPic.PNG|20x30r]cd", measurer);
    EXPECT_EQ(right.Pictures[0].Box, (TextRect{80, 10, 20, 30}));
    EXPECT_EQ(right.Pieces[1].Box, (TextRect{0, 40, 10, 10}));
    EXPECT_EQ(Lay("[gPic.PNG|20x30c]", measurer).Pictures[0].Box, (TextRect{40, 0, 20, 30}));
}

TEST(TextFormatPictures, FloatingPicturesNarrowTheLinesBesideThem)
{
    const PictureMeasurer measurer;
    // Lines of 10 beside a picture 25 high: three lines are narrowed, the fourth is not.
    const mw::TextLayout left = Lay("[ga][gPic.PNG|20x25]aaaa bbbb cccc dddd eeee ffff gggg hhhh", measurer, 70);
    EXPECT_EQ(left.Pictures[0].Box, (TextRect{0, 0, 20, 25}));
    for (const mw::TextPiece& piece : left.Pieces)
        EXPECT_EQ(piece.Box.Left, piece.Box.Top < 25 ? 24 : 0) << piece.Text;
    EXPECT_EQ(left.Pieces.back().Box.Top, 30);

    const mw::TextLayout right = Lay("[ga][gPic.PNG|20x25r]aaaa bbbb cccc", measurer, 70);
    EXPECT_EQ(right.Pictures[0].Box, (TextRect{50, 0, 20, 25}));
    for (const mw::TextPiece& piece : right.Pieces)
        EXPECT_LE(piece.Box.Right(), 46) << piece.Text;

    // Met inside a line, the picture waits for the next one; "gr" goes on below it, and after
    // "gn" pictures are in the line again.
    const mw::TextLayout waited = Lay("ab[ga][gPic.PNG|20x25]cd[l]ef[gr]gh[gn][gPic.PNG|5x5]", measurer);
    EXPECT_EQ(waited.Pictures[0].Box, (TextRect{0, 10, 20, 25}));
    ASSERT_EQ(waited.Pieces.size(), 4u);
    EXPECT_EQ(waited.Pieces[1].Box, (TextRect{10, 0, 10, 10}));
    EXPECT_EQ(waited.Pieces[2].Box, (TextRect{24, 10, 10, 10}));
    EXPECT_EQ(waited.Pieces[3].Box.Top, 35);
    EXPECT_EQ(waited.Pictures[1].Box, (TextRect{10, 38, 5, 5}));
}

} // namespace
