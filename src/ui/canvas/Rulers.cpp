#include "ui/canvas/Rulers.h"

#include "menus/CanvasCommands.h"

#include <QMouseEvent>
#include <QPainter>

namespace mw {

namespace {

constexpr int kTick = 10;
constexpr int kNumberedTick = 20;

} // namespace

Ruler::Ruler(Qt::Orientation along, std::vector<long>& lines, QWidget& picture, std::function<void()> changed,
             QWidget* parent)
    : QWidget(parent), along_(along), lines_(lines), picture_(picture), changed_(std::move(changed))
{
    const bool top = along_ == Qt::Horizontal;
    setObjectName(top ? "rullerT" : "rullerL");
    setToolTip(top ? "Left click and drag on the ruler to create/move vertical guide lines"
                   : "Left click and drag on the ruler to create/move horizontal guide lines");
    if (top)
        setFixedHeight(kThickness);
    else
        setFixedWidth(kThickness);
}

long Ruler::ToPicture(QPoint at) const
{
    const QPoint p = picture_.mapFromGlobal(mapToGlobal(at));
    return along_ == Qt::Horizontal ? p.x() : p.y();
}

long Ruler::Extent() const { return along_ == Qt::Horizontal ? picture_.width() : picture_.height(); }

void Ruler::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.fillRect(rect(), QColor(236, 236, 228));
    p.setPen(QColor(90, 90, 90));
    const bool top = along_ == Qt::Horizontal;
    const QPoint origin = mapFromGlobal(picture_.mapToGlobal(QPoint(0, 0)));
    const int start = top ? origin.x() : origin.y();
    QFont small = font();
    small.setPixelSize(9);
    p.setFont(small);
    for (long c = 0; c <= Extent(); c += kTick) {
        const int at = start + int(c);
        const int length = c % kNumberedTick == 0 ? 8 : 4;
        if (top) {
            p.drawLine(at, kThickness - length, at, kThickness - 1);
            if (c % kNumberedTick == 0)
                p.drawText(at + 2, 10, QString::number(c));
        } else {
            p.drawLine(kThickness - length, at, kThickness - 1, at);
            if (c % kNumberedTick == 0)
                p.drawText(1, at + 10, QString::number(c));
        }
    }
    p.setPen(QColor(0, 120, 200));
    for (long line : lines_) {
        const int at = start + int(line);
        if (top)
            p.drawText(QRect(at - 5, kThickness - 14, 10, 14), Qt::AlignCenter, "|");
        else
            p.drawText(QRect(kThickness - 12, at - 7, 12, 14), Qt::AlignCenter, ">");
    }
}

void Ruler::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton) {
        lines_.clear();
    } else if (event->button() == Qt::LeftButton) {
        active_ = long(PickGuideLine(lines_, ToPicture(event->position().toPoint())));
    }
    changed_();
}

void Ruler::mouseMoveEvent(QMouseEvent* event)
{
    if (active_ < 0)
        return;
    lines_[std::size_t(active_)] = ToPicture(event->position().toPoint());
    changed_();
}

void Ruler::mouseReleaseEvent(QMouseEvent* event)
{
    if (active_ < 0 || event->button() != Qt::LeftButton)
        return;
    DropGuideLine(lines_, std::size_t(active_), ToPicture(event->position().toPoint()), Extent());
    active_ = -1;
    changed_();
}

RulerCorner::RulerCorner(std::function<void()> clear, QWidget* parent) : QWidget(parent), clear_(std::move(clear))
{
    setObjectName("rullerHide");
    setToolTip("Right click to clear all guide lines");
    setFixedSize(Ruler::kThickness, Ruler::kThickness);
}

void RulerCorner::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), QColor(210, 210, 200));
}

void RulerCorner::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton)
        clear_();
}

} // namespace mw
