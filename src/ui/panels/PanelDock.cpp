#include "ui/panels/PanelDock.h"

#include "ui/QtDesignTarget.h"

#include <QCursor>
#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QStyle>
#include <QTimer>
#include <QToolButton>

namespace mw {

namespace {

constexpr int kStripHeight = 18;
constexpr int kPollMs = 200;

QToolButton* StripButton(const char* name, const char* tip, QStyle::StandardPixmap icon, QWidget* parent)
{
    auto* button = new QToolButton(parent);
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setIcon(parent->style()->standardIcon(icon));
    button->setAutoRaise(true);
    button->setFixedSize(kStripHeight, kStripHeight);
    return button;
}

} // namespace

PanelDock::PanelDock(const char* name, const char* caption, QWidget* panel, PanelPlace place, QMainWindow& window)
    : QDockWidget(caption, &window), place_(place), window_(window), timer_(new QTimer(this))
{
    setObjectName(name);
    MarkAsOwnForm(*this);
    setFeatures(DockWidgetClosable | DockWidgetMovable | DockWidgetFloatable);
    setWidget(panel);

    auto* strip = new QWidget(this);
    caption_ = new QLabel(windowTitle(), strip);
    caption_->setObjectName("Picture1");
    pin_ = StripButton("PicAutoHide", "Toggle auto hide", QStyle::SP_TitleBarShadeButton, strip);
    pin_->setCheckable(true);
    auto* close = StripButton("PicX", "Close", QStyle::SP_TitleBarCloseButton, strip);
    auto* layout = new QHBoxLayout(strip);
    layout->setContentsMargins(4, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(caption_, 1);
    layout->addWidget(pin_);
    layout->addWidget(close);
    strip->setFixedHeight(kStripHeight + 2);
    setTitleBarWidget(strip);

    connect(this, &QWidget::windowTitleChanged, caption_, &QLabel::setText);
    connect(close, &QToolButton::clicked, this, [this] {
        hide();
        emit Closed();
    });
    connect(pin_, &QToolButton::toggled, this, [this](bool on) { SetAutoHide(on); });
    timer_->setObjectName("Timer1");
    timer_->setInterval(kPollMs);
    connect(timer_, &QTimer::timeout, this, [this] { FollowCursor(QCursor::pos()); });

    window.addDockWidget(Qt::RightDockWidgetArea, this);
    setFloating(true);
    const QPoint origin = window.geometry().topLeft();
    setGeometry(origin.x() + place.X, origin.y() + place.Y, place.Width, place.Height);
    fullSize_ = QSize(place.Width, place.Height);
    SetAutoHide(place.Pinned);
}

bool PanelDock::AutoHide() const
{
    return pin_->isChecked();
}

void PanelDock::SetAutoHide(bool on)
{
    if (pin_->isChecked() != on) {
        pin_->setChecked(on); // comes back here through the toggle
        return;
    }
    if (on) {
        timer_->start();
    } else {
        timer_->stop();
        Collapse(false);
    }
}

void PanelDock::FollowCursor(const QPoint& cursor)
{
    if (!AutoHide() || !isVisible())
        return;
    Collapse(!frameGeometry().contains(cursor));
}

void PanelDock::Collapse(bool collapsed)
{
    if (collapsed == collapsed_)
        return;
    collapsed_ = collapsed;
    if (collapsed)
        fullSize_ = size();
    // The strip stays where it is; only the body goes.
    widget()->setVisible(!collapsed);
    if (isFloating())
        resize(collapsed ? QSize(fullSize_.width(), titleBarWidget()->height()) : fullSize_);
}

void PanelDock::KeepPlace() const
{
    // A docked panel is kept where it stands on the screen, and opens floating there.
    const QPoint origin = window_.geometry().topLeft();
    const QPoint at = isFloating() ? geometry().topLeft() : mapToGlobal(QPoint(0, 0));
    place_.X = at.x() - origin.x();
    place_.Y = at.y() - origin.y();
    const QSize size = collapsed_ ? fullSize_ : this->size();
    place_.Width = size.width();
    place_.Height = size.height();
    place_.Pinned = AutoHide();
}

} // namespace mw
