#include "ui/canvas/MenuPicture.h"

#include "document/Project.h"
#include "menus/CanvasCommands.h"
#include "menus/OverlayAttributes.h"
#include "render/cDIB.h"
#include "ui/canvas/CanvasView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace mw {

namespace {

// Which of the edges a handle drags: handles run clockwise from the top left corner.
struct Edges {
    bool Left, Top, Right, Bottom;
};
constexpr std::array<Edges, 8> kHandleEdges = {{{true, true, false, false},
                                                 {false, true, false, false},
                                                 {false, true, true, false},
                                                 {false, false, true, false},
                                                 {false, false, true, true},
                                                 {false, false, false, true},
                                                 {true, false, false, true},
                                                 {true, false, false, false}}};

// ResizeBorder1's switches; a locked menu switches them all off.
struct Allow {
    bool Left, Top, Width, Height, Move;
};

bool Allowed(const Allow& allow, int handle)
{
    if (handle == MenuPicture::kMoveHandle)
        return allow.Move;
    const Edges& e = kHandleEdges[std::size_t(handle)];
    return (!e.Left || (allow.Left && allow.Width)) && (!e.Top || (allow.Top && allow.Height)) &&
           (!e.Right || allow.Width) && (!e.Bottom || allow.Height);
}

ButtonShape Resized(ButtonShape r, int handle, QPoint delta)
{
    if (handle == MenuPicture::kMoveHandle) {
        r.Left += delta.x();
        r.Top += delta.y();
        return r;
    }
    const Edges& e = kHandleEdges[std::size_t(handle)];
    const long right = r.Left + r.Width, bottom = r.Top + r.Height;
    if (e.Left)
        r.Left = std::min(r.Left + delta.x(), right - 1);
    if (e.Top)
        r.Top = std::min(r.Top + delta.y(), bottom - 1);
    r.Width = e.Right ? std::max(1L, r.Width + delta.x()) : right - r.Left;
    r.Height = e.Bottom ? std::max(1L, r.Height + delta.y()) : bottom - r.Top;
    return r;
}

QRect ToRect(const ButtonShape& r) { return QRect(int(r.Left), int(r.Top), int(r.Width), int(r.Height)); }

bool SameRect(const ButtonShape& a, const ButtonShape& b)
{
    return a.Left == b.Left && a.Top == b.Top && a.Width == b.Width && a.Height == b.Height;
}

// Label1(i): the button's rectangle. The picture does the work; the label passes its mouse on.
class ButtonLabel : public QWidget {
public:
    ButtonLabel(MenuPicture& picture, int index) : QWidget(&picture), picture_(picture), index_(index)
    {
        setObjectName(QString("Label1_%1").arg(index + 1));
        setAttribute(Qt::WA_TranslucentBackground);
        setCursor(Qt::SizeAllCursor);
    }
    bool Marked = false;   // member of the multi-selection
    bool Current = false;  // the handles are on it

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.setPen(QPen(Marked ? QColor(255, 64, 64) : Current ? QColor(255, 255, 255) : QColor(255, 220, 0),
                      Marked || Current ? 2 : 1, Marked ? Qt::SolidLine : Qt::DashLine));
        p.drawRect(rect().adjusted(0, 0, -1, -1));
    }
    void mousePressEvent(QMouseEvent* e) override
    {
        picture_.LabelPressed(index_, e->button(), mapTo(&picture_, e->position().toPoint()));
    }
    void mouseMoveEvent(QMouseEvent* e) override { picture_.DragTo(mapTo(&picture_, e->position().toPoint())); }
    void mouseReleaseEvent(QMouseEvent* e) override
    {
        picture_.DragEnd(e->button(), mapTo(&picture_, e->position().toPoint()));
    }
    void mouseDoubleClickEvent(QMouseEvent* e) override
    {
        if (e->button() == Qt::LeftButton)
            picture_.LabelDoubleClicked(index_);
    }

private:
    MenuPicture& picture_;
    int index_;
};

// One of the nine squares of ResizeBorder1.
class BorderHandle : public QWidget {
public:
    BorderHandle(MenuPicture& picture, int handle) : QWidget(&picture), picture_(picture), handle_(handle)
    {
        setObjectName(QString("ResizeBorder1_%1").arg(handle));
        setFixedSize(MenuPicture::kHandleSize, MenuPicture::kHandleSize);
        static constexpr std::array<Qt::CursorShape, 9> cursors = {
            Qt::SizeFDiagCursor, Qt::SizeVerCursor, Qt::SizeBDiagCursor, Qt::SizeHorCursor, Qt::SizeFDiagCursor,
            Qt::SizeVerCursor,   Qt::SizeBDiagCursor, Qt::SizeHorCursor, Qt::SizeAllCursor};
        setCursor(cursors[std::size_t(handle)]);
        hide();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.fillRect(rect(), handle_ == MenuPicture::kMoveHandle ? QColor(255, 220, 0) : QColor(255, 255, 255));
        p.setPen(Qt::black);
        p.drawRect(rect().adjusted(0, 0, -1, -1));
    }
    void mousePressEvent(QMouseEvent* e) override
    {
        if (e->button() == Qt::LeftButton)
            picture_.HandlePressed(handle_, mapTo(&picture_, e->position().toPoint()));
    }
    void mouseMoveEvent(QMouseEvent* e) override { picture_.DragTo(mapTo(&picture_, e->position().toPoint())); }
    void mouseReleaseEvent(QMouseEvent* e) override
    {
        picture_.DragEnd(e->button(), mapTo(&picture_, e->position().toPoint()));
    }

private:
    MenuPicture& picture_;
    int handle_;
};

} // namespace

MenuPicture::MenuPicture(Project& project, CanvasView& view, QWidget* parent)
    : QWidget(parent), project_(project), view_(view)
{
    setObjectName("Picture1");
    setFocusPolicy(Qt::StrongFocus);
    setFixedSize(kBlankSize);
    for (int h = 0; h < int(handles_.size()); ++h)
        handles_[std::size_t(h)] = new BorderHandle(*this, h);
}

void MenuPicture::SetFrame(const QImage& frame)
{
    frame_ = frame;
    setFixedSize(frame_.isNull() ? kBlankSize : frame_.size());
    update();
}

void MenuPicture::Refresh()
{
    const MenuCanvas& canvas = project_.Canvas;
    // A label may be the one whose event led here, so it goes once the event is done.
    while (labels_.size() > canvas.Buttons.size()) {
        labels_.back()->hide();
        labels_.back()->setObjectName({});
        labels_.back()->deleteLater();
        labels_.pop_back();
    }
    while (labels_.size() < canvas.Buttons.size())
        labels_.push_back(new ButtonLabel(*this, int(labels_.size())));
    // An overlay is painted again only when what it shows changed: a bitmap that has gone is
    // then said once, not at every click.
    overlays_.resize(canvas.Buttons.size());
    for (std::size_t i = 0; i < canvas.Buttons.size(); ++i) {
        const CanvasButton& b = canvas.Buttons[i];
        const DocNode* node = project_.Doc.Tree.ObjectNode(b.Label.Tag);
        std::string key = (node ? node->Tag : std::string()) + '|' + b.OverlayFile + '|' +
                          std::to_string(b.Overlay.Width) + 'x' + std::to_string(b.Overlay.Height);
        for (std::uint32_t c : canvas.Colors)
            key += '|' + std::to_string(c);
        if (overlays_[i].Key != key)
            overlays_[i] = {key, ButtonOverlayPicture(project_, int(i)).ToImage(true)};
    }
    drag_.reset();
    onOverlay_ = onOverlay_ && canvas.Selected >= 0;
    PlaceLabels();
    update();
}

ButtonShape MenuPicture::Dragged(int index) const
{
    const MenuCanvas& canvas = project_.Canvas;
    const CanvasButton& b = canvas.Buttons[std::size_t(index)];
    if (!drag_ || drag_->Overlay)
        return b.Label;
    if (index == drag_->Index)
        return drag_->Now;
    if (!b.Selected || !canvas.Buttons[std::size_t(drag_->Index)].Selected)
        return b.Label;
    ButtonShape carried = b.Label;
    carried.Left += drag_->Now.Left - drag_->From.Left;
    carried.Top += drag_->Now.Top - drag_->From.Top;
    return carried;
}

ButtonShape MenuPicture::OverlayOf(int index) const
{
    if (drag_ && drag_->Overlay && drag_->Index == index)
        return drag_->Now;
    CanvasButton moved = project_.Canvas.Buttons[std::size_t(index)];
    moved.Label = Dragged(index);
    PlaceShapeFromTag(moved);
    return moved.Overlay;
}

void MenuPicture::PlaceLabels()
{
    const MenuCanvas& canvas = project_.Canvas;
    for (std::size_t i = 0; i < labels_.size(); ++i) {
        auto* label = static_cast<ButtonLabel*>(labels_[i]);
        label->Marked = canvas.Buttons[i].Selected;
        label->Current = int(i) == canvas.Selected;
        label->setGeometry(ToRect(Dragged(int(i))));
        label->show();
        label->update();
    }
    PlaceHandles();
}

void MenuPicture::PlaceHandles()
{
    const MenuCanvas& canvas = project_.Canvas;
    const bool attached = canvas.Selected >= 0 && canvas.Selected < int(labels_.size()) && !bandStart_;
    const bool free = !canvas.Lock;
    const Allow allow{free, free, free, free, free};
    if (!attached) {
        for (QWidget* h : handles_)
            h->hide();
        return;
    }
    const QRect r = ToRect(onOverlay_ ? OverlayOf(canvas.Selected) : Dragged(canvas.Selected));
    const int half = kHandleSize / 2;
    const std::array<QPoint, 9> centres = {r.topLeft(),     QPoint(r.center().x(), r.top()), r.topRight(),
                                           QPoint(r.right(), r.center().y()), r.bottomRight(),
                                           QPoint(r.center().x(), r.bottom()), r.bottomLeft(),
                                           QPoint(r.left(), r.center().y()), r.center()};
    for (int h = 0; h < 9; ++h) {
        QWidget* handle = handles_[std::size_t(h)];
        handle->move(centres[std::size_t(h)] - QPoint(half, half));
        handle->setVisible(Allowed(allow, h));
        handle->raise();
    }
}

void MenuPicture::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    if (frame_.isNull())
        p.fillRect(rect(), QColor(48, 48, 56));
    else
        p.drawImage(0, 0, frame_);
    const MenuCanvas& canvas = project_.Canvas;
    for (std::size_t i = 0; i < overlays_.size() && i < canvas.Buttons.size(); ++i)
        p.drawImage(ToRect(OverlayOf(int(i))), overlays_[i].Picture);
    p.setPen(QPen(QColor(0, 200, 255), 1, Qt::DashLine));
    for (long y : canvas.LinesH)
        p.drawLine(0, int(y), width(), int(y));
    for (long x : canvas.LinesV)
        p.drawLine(int(x), 0, int(x), height());
    if (bandStart_) {
        p.setPen(QPen(Qt::white, 1, Qt::DashLine));
        p.drawRect(band_);
    }
}

void MenuPicture::StartDrag(int index, int handle, QPoint at)
{
    if (project_.Canvas.Lock || index < 0 || index >= int(project_.Canvas.Buttons.size()))
        return;
    const ButtonShape r = onOverlay_ ? OverlayOf(index) : project_.Canvas.Buttons[std::size_t(index)].Label;
    drag_ = Drag{index, handle, onOverlay_, at, r, r};
}

void MenuPicture::LabelPressed(int index, Qt::MouseButton button, QPoint at)
{
    setFocus();
    if (button != Qt::LeftButton)
        return;
    onOverlay_ = false;
    view_.ClickButton(index);
    StartDrag(index, kMoveHandle, at);
}

void MenuPicture::HandlePressed(int handle, QPoint at)
{
    setFocus();
    StartDrag(project_.Canvas.Selected, handle, at);
}

void MenuPicture::DragTo(QPoint at)
{
    if (bandStart_) {
        band_ = QRect(*bandStart_, at).normalized();
        update();
        return;
    }
    if (!drag_)
        return;
    const ButtonShape r = Resized(drag_->From, drag_->Handle, at - drag_->Start);
    drag_->Now = drag_->Overlay ? r : SnapToGuideLines(project_.Canvas, drag_->Index, r);
    PlaceLabels();
    update();
}

void MenuPicture::DragEnd(Qt::MouseButton button, QPoint at)
{
    if (button == Qt::RightButton) {
        view_.PopupButtonMenu(mapToGlobal(at));
        return;
    }
    if (button != Qt::LeftButton)
        return;
    if (bandStart_) {
        const QPoint start = *bandStart_;
        bandStart_.reset();
        update();
        view_.EndBand(start, at);
        return;
    }
    if (!drag_)
        return;
    const Drag done = *drag_;
    drag_.reset();
    if (SameRect(done.Now, done.From))
        PlaceLabels();
    else if (done.Overlay)
        view_.EndOverlayGesture(done.Index, done.Now);
    else
        view_.EndGesture(done.Index, done.Now);
}

void MenuPicture::LabelDoubleClicked(int index) { view_.FollowLink(index); }

void MenuPicture::mousePressEvent(QMouseEvent* event)
{
    setFocus();
    if (event->button() != Qt::LeftButton)
        return;
    const QPoint at = event->position().toPoint();
    // Outside every rectangle but on an overlay (Shape1): the handles go on the overlay.
    const int buttons = int(project_.Canvas.Buttons.size());
    for (int i = buttons - 1; i >= 0 && !project_.Canvas.AddMode; --i) {
        if (ToRect(OverlayOf(i)).contains(at)) {
            onOverlay_ = true;
            view_.ClickButton(i);
            StartDrag(i, kMoveHandle, at);
            return;
        }
    }
    onOverlay_ = false;
    bandStart_ = at;
    band_ = QRect(*bandStart_, QSize());
    PlaceHandles();
    view_.BandStarted();
}

void MenuPicture::mouseMoveEvent(QMouseEvent* event) { DragTo(event->position().toPoint()); }

void MenuPicture::mouseReleaseEvent(QMouseEvent* event) { DragEnd(event->button(), event->position().toPoint()); }

void MenuPicture::keyPressEvent(QKeyEvent* event)
{
    const MenuCanvas& canvas = project_.Canvas;
    switch (event->key()) {
    case Qt::Key_Delete:
        view_.DeleteSelection();
        return;
    default:
        break;
    }
    const std::array<std::pair<int, QPoint>, 4> arrows = {
        {{Qt::Key_Left, {-1, 0}}, {Qt::Key_Right, {1, 0}}, {Qt::Key_Up, {0, -1}}, {Qt::Key_Down, {0, 1}}}};
    const auto arrow = std::find_if(arrows.begin(), arrows.end(), [event](const auto& a) { return a.first == event->key(); });
    if (arrow == arrows.end() || canvas.Selected < 0 || canvas.Lock) {
        QWidget::keyPressEvent(event);
        return;
    }
    ButtonShape r = canvas.Buttons[std::size_t(canvas.Selected)].Label;
    if (event->modifiers() & Qt::ShiftModifier) {
        r.Width = std::max(1L, r.Width + arrow->second.x());
        r.Height = std::max(1L, r.Height + arrow->second.y());
    } else {
        r.Left += arrow->second.x();
        r.Top += arrow->second.y();
    }
    view_.EndGesture(canvas.Selected, r);
}

} // namespace mw
