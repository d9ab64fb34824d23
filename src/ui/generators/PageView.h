#pragma once

#include "generators/PageModel.h"

#include <QImage>
#include <QWidget>

#include <functional>
#include <vector>

class QLabel;
class QMenu;
class QPushButton;

namespace mw {

class PageSurface;
class Prompt;
struct FileDialogRequest;

// The open dialog of the pictures a page shows: a background, a label's picture.
FileDialogRequest PictureRequest(const char* title);

// What a page shows beside its own model: the setup page's stream labels.
struct PageExtras {
    std::function<QImage()> Compose{};                 // the page's picture; ComposePage when empty
    std::function<std::vector<PageLabel*>()> Labels{}; // more labels, printed in the labels' font
};

// The page of a generator window as it will be made, with the rulers above and left of it and
// the paging buttons below. Thumbnails, navigation labels and free items are dragged by the
// mouse and resized by their lower right corner; their context menu sets caption, font and
// colours. Every change goes to the page model, which then lays the page out.
class PageView : public QWidget {
public:
    // `pageMenu` pops up on a right click where the page is empty.
    PageView(MenuPage& page, Prompt& prompt, QMenu* pageMenu, PageExtras extras = {}, QWidget* parent = nullptr);

    // Shows the page model again after it changed outside the view.
    void Refresh();
    // Previous (-1) or next (+1) page.
    void StepPage(int step);

private:
    MenuPage& page_;
    PageSurface* surface_;
    QPushButton* cmdBef_;
    QPushButton* cmdNext_;
    QLabel* Label8_;
    QLabel* lblSize_;
    QWidget* rulerLeft_;
    QWidget* rulerTop_;
};

} // namespace mw
