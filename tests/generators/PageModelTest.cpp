#include "generators/PageModel.h"

#include <gtest/gtest.h>

namespace mw {
namespace {

MenuPage PageOf(int count, GeneratorKind kind = GeneratorKind::ChaptersMenu)
{
    MenuPage page;
    page.Kind = kind;
    page.Design.Setup = PageLabel{.Caption = "Setup", .Width = 100, .Height = 40};
    page.Items.resize(static_cast<std::size_t>(count));
    return page;
}

TEST(PageModel, GridRestartsOnEveryPageAndKeepsDraggedItems)
{
    // 720 x 576, 120 x 90 thumbnails, 4 columns: gaps of 48, first row at 132 - 5.
    MenuPage page = PageOf(9);
    page.Page = 2;
    PlacePictures(page, true);
    const auto at = [&page](int i) {
        const PageItem& item = page.Items[static_cast<std::size_t>(i - 1)];
        return std::pair(item.Left, item.Top);
    };
    EXPECT_EQ(at(1), std::pair(48.f, 127.f));
    EXPECT_EQ(at(4), std::pair(552.f, 127.f));
    EXPECT_EQ(at(5), std::pair(48.f, 252.f));
    EXPECT_EQ(at(8), std::pair(552.f, 252.f));
    EXPECT_EQ(at(9), std::pair(48.f, 127.f));
    EXPECT_FALSE(page.Items[0].Visible);
    EXPECT_TRUE(page.Items[8].Visible);
    EXPECT_TRUE(page.Design.Previous.Visible);
    EXPECT_FALSE(page.Design.Next.Visible);

    // Titles start ten units lower; six a page makes three columns.
    MenuPage titles = PageOf(7, GeneratorKind::TitleMenu);
    titles.PerPage = 6;
    PlacePictures(titles, true);
    EXPECT_EQ(titles.Items[0].Top, 137.f);
    EXPECT_EQ(titles.Items[1].Left, 90.f + 120.f + 90.f);
    EXPECT_EQ(titles.Items[3].Top, 137.f + 90.f + kRowGap);
    EXPECT_EQ(titles.Items[6].Left, 90.f);

    // Dragged items keep their place until a recalculation is asked for.
    titles.Items[1].Left = 7;
    PlacePictures(titles, false);
    EXPECT_EQ(titles.Items[1].Left, 7.f);
    PlacePictures(titles, true);
    EXPECT_EQ(titles.Items[1].Left, 300.f);
}

TEST(PageModel, FewerPagesBringTheCurrentPageBack)
{
    MenuPage page = PageOf(13);
    page.PerPage = 6;
    page.Page = 3;
    PlacePictures(page, true);
    EXPECT_EQ(page.Page, 3);
    page.PerPage = 8;
    PlacePictures(page, true);
    EXPECT_EQ(page.Page, 2);
    EXPECT_TRUE(page.Items[12].Visible);
}

TEST(PageModel, SetupLabelShowsOnPageOneOnlyUnlessTheUserHidIt)
{
    MenuPage page = PageOf(9);
    page.Page = 2;
    PlacePictures(page, false);
    EXPECT_FALSE(page.Design.Setup.Visible);
    page.Page = 1;
    PlacePictures(page, false);
    EXPECT_TRUE(page.Design.Setup.Visible);

    page.Design.Setup.Visible = false;
    page.Page = 2;
    PlacePictures(page, false);
    page.Page = 1;
    PlacePictures(page, false);
    EXPECT_FALSE(page.Design.Setup.Visible);
}

TEST(PageModel, PageSidesAreMultiplesOfFourFromAHundred)
{
    MenuPage page = PageOf(1);
    EXPECT_FALSE(SetPageWidth(page, 102));
    EXPECT_FALSE(SetPageWidth(page, 96));
    EXPECT_FALSE(SetPageHeight(page, -4));
    // A picture too small on one side changes neither side.
    EXPECT_FALSE(FitPageToPicture(page, QSize(640, 99)));
    EXPECT_EQ(page.Width, 720);
    EXPECT_EQ(page.Height, 576);
    EXPECT_TRUE(SetPageWidth(page, 104));
    EXPECT_TRUE(SetPageHeight(page, 100));
    EXPECT_EQ(page.Width, 104);
    EXPECT_EQ(page.Height, 100);
    EXPECT_TRUE(FitPageToPicture(page, QSize(643, 102)));
    EXPECT_EQ(page.Width, 640);
    EXPECT_EQ(page.Height, 100);
}

} // namespace
} // namespace mw
