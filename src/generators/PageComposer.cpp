#include "generators/PageComposer.h"

#include "render/OverlayFont.h"

#include <QFontMetrics>
#include <QPainter>

#include <array>
#include <cmath>
#include <filesystem>

namespace mw {

namespace {

QColor ToColor(std::uint32_t c) { return QColor(int(c & 0xFF), int(c >> 8 & 0xFF), int(c >> 16 & 0xFF)); }

QImage ReadPicture(const std::string& path)
{
    std::error_code ec;
    if (path.empty() || !std::filesystem::is_regular_file(path, ec))
        return {};
    return QImage(QString::fromStdString(path)).convertToFormat(QImage::Format_RGB32);
}

struct Corner {
    double X;
    double Y;
    QColor Color;
};

// Fills the triangle a, b, c with colours interpolated between its corners, as the platform's
// gradient fill in triangle mode does.
void FillTriangle(QImage& image, const Corner& a, const Corner& b, const Corner& c)
{
    const double area = (b.X - a.X) * (c.Y - a.Y) - (c.X - a.X) * (b.Y - a.Y);
    if (area == 0)
        return;
    const int x0 = std::max(0, int(std::floor(std::min({a.X, b.X, c.X}))));
    const int x1 = std::min(image.width() - 1, int(std::ceil(std::max({a.X, b.X, c.X}))));
    const int y0 = std::max(0, int(std::floor(std::min({a.Y, b.Y, c.Y}))));
    const int y1 = std::min(image.height() - 1, int(std::ceil(std::max({a.Y, b.Y, c.Y}))));
    for (int y = y0; y <= y1; ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = x0; x <= x1; ++x) {
            const double wa = ((b.X - x) * (c.Y - y) - (c.X - x) * (b.Y - y)) / area;
            const double wb = ((c.X - x) * (a.Y - y) - (a.X - x) * (c.Y - y)) / area;
            const double wc = 1 - wa - wb;
            constexpr double kEdge = -1e-9;
            if (wa < kEdge || wb < kEdge || wc < kEdge)
                continue;
            const auto mix = [&](int (QColor::*channel)() const) {
                return int(std::lround(wa * (a.Color.*channel)() + wb * (b.Color.*channel)() + wc * (c.Color.*channel)()));
            };
            row[x] = qRgb(mix(&QColor::red), mix(&QColor::green), mix(&QColor::blue));
        }
    }
}

void PaintGradient(QImage& image, const GradientColors& g)
{
    const double w = image.width() - 1;
    const double h = image.height() - 1;
    const Corner tl{0, 0, ToColor(g.TopLeft)};
    const Corner tr{w, 0, ToColor(g.TopRight)};
    const Corner bl{0, h, ToColor(g.BottomLeft)};
    const Corner br{w, h, ToColor(g.BottomRight)};
    if (!g.Middle) {
        FillTriangle(image, tl, tr, br);
        FillTriangle(image, tl, br, bl);
        return;
    }
    const Corner m{w / 2, h / 2, ToColor(*g.Middle)};
    FillTriangle(image, tl, tr, m);
    FillTriangle(image, tr, br, m);
    FillTriangle(image, br, bl, m);
    FillTriangle(image, bl, tl, m);
}

// Lays `picture` on the page at `at`, leaving out the pixels of the see-through colour.
void LayKeyed(QImage& page, const QImage& picture, QPoint at, QRgb seeThrough)
{
    for (int y = 0; y < picture.height(); ++y) {
        const int py = at.y() + y;
        if (py < 0 || py >= page.height())
            continue;
        const auto* from = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        auto* to = reinterpret_cast<QRgb*>(page.scanLine(py));
        for (int x = 0; x < picture.width(); ++x) {
            const int px = at.x() + x;
            if (px >= 0 && px < page.width() && (from[x] | 0xFF000000) != seeThrough)
                to[px] = from[x];
        }
    }
}

QImage Stretched(const QImage& picture, QSize size)
{
    // No smoothing: the key colours must stay pure.
    return picture.scaled(size, Qt::IgnoreAspectRatio, Qt::FastTransformation).convertToFormat(QImage::Format_RGB32);
}

QFont FontOf(const FontGroup& group)
{
    return OverlayFont(FontChoice{group.Name, double(group.Size), group.Bold, group.Italic});
}

void SetFont(QPainter& painter, const FontGroup& group) { painter.setFont(FontOf(group)); }

// A caption centred across the rectangle, its shadow first.
void PrintLabel(QPainter& painter, const QString& text, const QRect& rect, const FontGroup& group)
{
    SetFont(painter, group);
    const int flags = Qt::AlignHCenter | Qt::AlignTop | Qt::TextDontClip;
    if (group.ShadowDepth != 0) {
        painter.setPen(ToColor(group.ShadowColor));
        painter.drawText(rect.translated(group.ShadowDepth, group.ShadowDepth), flags, text);
    }
    painter.setPen(ToColor(group.Color));
    painter.drawText(rect, flags, text);
}

void DrawLabel(QImage& image, const PageLabel& label, const FontGroup& group, const PageArt& art)
{
    if (!label.Visible)
        return;
    const QRect rect(label.Left, label.Top, label.Width, label.Height);
    const auto picture = art.LabelPictures.find(label.Picture);
    if (picture != art.LabelPictures.end() && !picture->second.isNull()) {
        LayKeyed(image, Stretched(picture->second, rect.size()), rect.topLeft(), kLabelSeeThrough);
        return;
    }
    QPainter painter(&image);
    PrintLabel(painter, QString::fromStdString(label.Caption), rect, group);
}

} // namespace

PageArt LoadPageArt(const MenuPage& page)
{
    PageArt art;
    art.Background = ReadPicture(page.Design.Picture);
    art.Border = ReadPicture(page.Design.ButtonPicture);
    const PageDesign& d = page.Design;
    for (const PageLabel* label : {&d.Title, &d.Main, &d.Previous, &d.Next, &d.Setup, &d.Audio, &d.Subtitle})
        art.LabelPictures.emplace(label->Picture, ReadPicture(label->Picture));
    for (const FreeItem& free : page.FreeItems)
        art.LabelPictures.emplace(free.Label.Picture, ReadPicture(free.Label.Picture));
    return art;
}

QRect ItemRect(const MenuPage& page, const PageItem& item)
{
    return QRect(int(item.Left), int(item.Top), int(page.ItemWidth), int(page.ItemHeight));
}

QRect CaptionRect(const MenuPage& page, const PageItem& item)
{
    const FontGroup& group = page.Design.Captions;
    const QFontMetrics metrics(FontOf(group));
    const QRect rect = ItemRect(page, item);
    const int width = metrics.horizontalAdvance(QString::fromStdString(item.Caption));
    return QRect(rect.left() + (rect.width() - width) / 2, rect.bottom() + 2, width, metrics.height());
}

void LayThumbnail(QImage& image, const MenuPage& page, const PageItem& item, const PageArt& art)
{
    const QRect rect = ItemRect(page, item);
    QImage thumb(rect.size(), QImage::Format_RGB32);
    thumb.fill(Qt::black);
    if (!item.Picture.isNull())
        thumb = item.Picture.scaled(rect.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                    .convertToFormat(QImage::Format_RGB32);
    if (!art.Border.isNull())
        LayKeyed(thumb, Stretched(art.Border, rect.size()), QPoint(0, 0), kBorderWindow);
    LayKeyed(image, thumb, rect.topLeft(), kOutsideShape);
}

QImage ComposePage(const MenuPage& page, const PageArt& art)
{
    NeedFontApplication();
    QImage image(page.Width, page.Height, QImage::Format_RGB32);
    if (art.Background.isNull())
        PaintGradient(image, page.Gradient);
    else
        image = Stretched(art.Background, image.size());

    for (const PageItem& item : page.Items) {
        if (!item.Visible)
            continue;
        LayThumbnail(image, page, item, art);
        QPainter painter(&image);
        SetFont(painter, page.Design.Captions);
        painter.setPen(ToColor(page.Design.Captions.Color));
        const QRect caption = CaptionRect(page, item);
        painter.drawText(QPoint(caption.left(), caption.top() + painter.fontMetrics().ascent()),
                         QString::fromStdString(item.Caption));
    }

    const PageDesign& d = page.Design;
    const std::array<const PageLabel*, 7> labels{&d.Title, &d.Previous, &d.Next, &d.Main, &d.Setup, &d.Audio, &d.Subtitle};
    for (const PageLabel* label : labels) {
        // A label the window does not have keeps an empty rectangle and prints nothing.
        if (label->Width > 0 && label->Height > 0)
            DrawLabel(image, *label, d.Labels, art);
    }
    for (const FreeItem& free : page.FreeItems)
        DrawLabel(image, free.Label, free.Font, art);
    return image.convertToFormat(QImage::Format_RGB888);
}

} // namespace mw
