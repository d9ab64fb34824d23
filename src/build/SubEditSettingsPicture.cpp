#include "build/SubEditSettingsPicture.h"

#include <QPainter>
#include <QPainterPath>

#include <array>

namespace mw {

namespace {

constexpr int kWidth = 720;
constexpr int kHeight = 420;

struct Note {
    const char* Text;
    QPoint Mark; // where its number stands on the sketch
};

constexpr std::array kNotes{
    Note{"Zoom 100%: one screen pixel for each pixel of the menu picture.", {336, 56}},
    Note{"Show the button areas (highlights) filled, each in one plain colour.", {128, 150}},
    Note{"No smoothing or blending of the colours at the edges.", {262, 226}},
    Note{"One background colour over most of the picture.", {60, 300}},
    Note{"Keep the whole picture on the screen, not covered by other windows.", {360, 344}},
};

void Number(QPainter& p, QPoint at, int n)
{
    p.setPen(QPen(Qt::white, 2));
    p.setBrush(QColor(200, 40, 40));
    p.drawEllipse(at, 11, 11);
    p.drawText(QRect(at - QPoint(11, 11), QSize(22, 22)), Qt::AlignCenter, QString::number(n));
}

} // namespace

QImage SubEditSettingsPicture()
{
    QImage picture(kWidth, kHeight, QImage::Format_RGB32);
    picture.fill(QColor(236, 236, 236));
    QPainter p(&picture);
    p.setRenderHint(QPainter::Antialiasing);
    QFont font = p.font();
    font.setPixelSize(14);
    font.setBold(true);
    p.setFont(font);
    p.setPen(Qt::black);
    p.drawText(QRect(16, 8, kWidth - 32, 26), Qt::AlignLeft | Qt::AlignVCenter,
               "How the subtitle editor shows the menu picture before you drag the icon onto it");

    // The editor's window, with the menu's highlight areas on a plain background.
    const QRect window(20, 44, 340, 300);
    p.setPen(QPen(QColor(90, 90, 90), 1));
    p.setBrush(QColor(250, 250, 250));
    p.drawRect(window);
    p.setBrush(QColor(60, 90, 160));
    p.drawRect(QRect(window.topLeft(), QSize(window.width(), 24)));
    p.setPen(Qt::white);
    p.drawText(window.adjusted(8, 0, 0, 0).topLeft() + QPoint(0, 17), "DVDSubEdit - menu picture  [100%]");
    const QRect menu = window.adjusted(12, 36, -12, -12);
    p.setRenderHint(QPainter::Antialiasing, false);
    p.fillRect(menu, Qt::black);
    p.fillRect(QRect(menu.left() + 30, menu.top() + 30, 120, 34), QColor(255, 0, 0));
    p.fillRect(QRect(menu.left() + 30, menu.top() + 84, 120, 34), QColor(255, 255, 0));
    p.fillRect(QRect(menu.left() + 30, menu.top() + 138, 120, 34), QColor(0, 200, 0));
    p.fillRect(QRect(menu.left() + 190, menu.top() + 84, 90, 90), QColor(0, 160, 255));
    p.setRenderHint(QPainter::Antialiasing);

    // The icon of the Buttons window, dropped onto the picture.
    const QRect icon(menu.left() + 214, menu.top() + 196, 28, 28);
    p.fillRect(icon, Qt::white);
    p.setPen(QPen(QColor(200, 40, 40), 2));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(icon.center() + QPoint(1, 1), 8, 8);
    p.drawLine(icon.center().x() + 1, icon.top() + 3, icon.center().x() + 1, icon.bottom() - 2);
    p.drawLine(icon.left() + 3, icon.center().y() + 1, icon.right() - 2, icon.center().y() + 1);
    QPainterPath pointer;
    const QPoint tip = icon.bottomRight() - QPoint(6, 6);
    pointer.moveTo(tip);
    pointer.lineTo(tip + QPoint(4, 16));
    pointer.lineTo(tip + QPoint(8, 11));
    pointer.lineTo(tip + QPoint(15, 10));
    pointer.closeSubpath();
    p.setPen(QPen(Qt::black, 1));
    p.setBrush(Qt::white);
    p.drawPath(pointer);

    font.setBold(false);
    font.setPixelSize(13);
    p.setFont(font);
    for (std::size_t i = 0; i < kNotes.size(); ++i) {
        const int n = static_cast<int>(i) + 1;
        Number(p, kNotes[i].Mark, n);
        const QRect text(window.right() + 44, window.top() + 40 + static_cast<int>(i) * 52, kWidth - window.right() - 60, 48);
        Number(p, text.topLeft() + QPoint(-18, 12), n);
        p.setPen(Qt::black);
        p.drawText(text.adjusted(4, 2, 0, 0), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, kNotes[i].Text);
    }
    p.setPen(QColor(70, 70, 70));
    p.drawText(QRect(16, kHeight - 66, kWidth - 32, 60), Qt::AlignLeft | Qt::TextWordWrap,
               "Then drag the icon of the Buttons window and release it over the picture. Each area of one colour "
               "at least 5 by 5 pixels becomes a button; up to 20 a capture, up to 10 captures.");
    return picture;
}

} // namespace mw
