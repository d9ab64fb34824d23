#pragma once

#include "generators/PageModel.h"

#include <QImage>

#include <map>
#include <string>

namespace mw {

// Pure green in a border picture is the window the frame shows through; pure red is outside
// the shape and lets the page show; pure blue is the see-through colour of label pictures.
inline constexpr QRgb kBorderWindow = 0xFF00FF00;
inline constexpr QRgb kOutsideShape = 0xFFFF0000;
inline constexpr QRgb kLabelSeeThrough = 0xFF0000FF;

// The pictures a page is painted with, read once so that a motion menu does not read them for
// every frame. A path that names no readable picture gives a null image.
struct PageArt {
    QImage Background;
    QImage Border;
    std::map<std::string, QImage> LabelPictures; // by path
};

PageArt LoadPageArt(const MenuPage& page);

// Where a thumbnail stands on the page, in whole pixels.
QRect ItemRect(const MenuPage& page, const PageItem& item);

// Where a thumbnail's caption prints in font group 1: centred under it, one pixel below.
QRect CaptionRect(const MenuPage& page, const PageItem& item);

// The current page as a 24-bit picture of the page's size: the background picture stretched
// to the page or the gradient, each visible thumbnail in its border with its caption under it,
// the visible navigation labels and the free items.
QImage ComposePage(const MenuPage& page, const PageArt& art);

// Lays the item's picture in its border onto a page composed in 32 bits, as ComposePage does:
// a motion page changes only its thumbnails from frame to frame.
void LayThumbnail(QImage& image, const MenuPage& page, const PageItem& item, const PageArt& art);

} // namespace mw
