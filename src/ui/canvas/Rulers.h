#pragma once

#include <QWidget>

#include <functional>
#include <vector>

namespace mw {

// rullerL and rullerT beside the canvas: a left press makes or picks up a guide line, a drag
// moves it, a release off the page takes it away, a right press clears the ruler's lines. They
// scroll with the picture they measure. rullerL makes the horizontal lines, rullerT the
// vertical ones.
class Ruler : public QWidget {
public:
    static constexpr int kThickness = 27;

    Ruler(Qt::Orientation along, std::vector<long>& lines, QWidget& picture, std::function<void()> changed,
          QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    // A point of the ruler as a place on the picture, along the ruler.
    long ToPicture(QPoint at) const;
    long Extent() const;

    Qt::Orientation along_;
    std::vector<long>& lines_;
    QWidget& picture_;
    std::function<void()> changed_;
    long active_ = -1; // the line being dragged
};

// rullerHide, the corner between the rulers: a right press clears every guide line.
class RulerCorner : public QWidget {
public:
    explicit RulerCorner(std::function<void()> clear, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    std::function<void()> clear_;
};

} // namespace mw
