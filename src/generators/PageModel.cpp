#include "generators/PageModel.h"

#include <algorithm>

namespace mw {

int PageCount(int count, int perPage)
{
    if (perPage <= 0)
        return 0;
    return count / perPage + (count % perPage > 0 ? 1 : 0);
}

void PlacePictures(MenuPage& page, bool recalculate)
{
    const int count = static_cast<int>(page.Items.size());
    if (count == 0)
        return;
    const int pages = PageCount(count, page.PerPage);
    page.Page = std::clamp(page.Page, 1, pages);
    const int first = (page.Page - 1) * page.PerPage + 1;

    page.Design.Previous.Visible = page.Page > 1;
    page.Design.Next.Visible = page.Page < pages;
    if (page.Kind == GeneratorKind::ChaptersMenu) {
        PageLabel& setup = page.Design.Setup;
        if (setup.Visible && page.Page > 1) {
            setup.Visible = false;
            page.SetupHiddenByPaging = true;
        } else if (!setup.Visible && page.SetupHiddenByPaging && page.Page == 1) {
            setup.Visible = true;
            page.SetupHiddenByPaging = false;
        }
    }

    if (recalculate) {
        const int columns = page.PerPage / 2;
        const float w = page.ItemWidth;
        const float h = page.ItemHeight;
        const float gap = (static_cast<float>(page.Width) - static_cast<float>(columns) * w) / static_cast<float>(columns + 1);
        const float spare = (static_cast<float>(page.Height) - 2 * h) / 3;
        // Titles start their first row lower than chapters on the same page.
        const float firstTop = page.Kind == GeneratorKind::TitleMenu ? spare + 5 : spare - 5;
        float left = gap;
        float top = firstTop;
        for (int i = 1; i <= count; ++i) {
            PageItem& item = page.Items[static_cast<std::size_t>(i - 1)];
            item.Left = left;
            item.Top = top;
            if (i % page.PerPage == 0) {
                left = gap;
                top = firstTop;
            } else if (top == 0) {
                top = spare + 5;
            } else if (i % columns == 0) {
                left = gap;
                top += h + kRowGap;
            } else {
                left += gap + w;
            }
        }
    }
    for (int i = 1; i <= count; ++i)
        page.Items[static_cast<std::size_t>(i - 1)].Visible = i >= first && i < first + page.PerPage;
}

namespace {

bool ValidSide(long side) { return side >= kMinPageSide && side % 4 == 0; }

} // namespace

bool SetPageWidth(MenuPage& page, long width)
{
    if (!ValidSide(width))
        return false;
    page.Width = static_cast<int>(width);
    return true;
}

bool SetPageHeight(MenuPage& page, long height)
{
    if (!ValidSide(height))
        return false;
    page.Height = static_cast<int>(height);
    return true;
}

bool FitPageToPicture(MenuPage& page, QSize picture)
{
    const long width = picture.width() - picture.width() % 4;
    const long height = picture.height() - picture.height() % 4;
    if (!ValidSide(width) || !ValidSide(height))
        return false;
    page.Width = static_cast<int>(width);
    page.Height = static_cast<int>(height);
    return true;
}

} // namespace mw
