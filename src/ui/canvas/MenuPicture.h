#pragma once

#include "document/TreeQueries.h"

#include <QImage>
#include <QWidget>

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace mw {

class CanvasView;
class Project;

// Picture1: the frame of the menu with each button's overlay (Shape1) and rectangle (Label1,
// one child widget per button), the nine handles of ResizeBorder1 on the selected button, the
// guide lines and the rubber band. It reads everything from the project's canvas and keeps only
// the gesture in progress.
class MenuPicture : public QWidget {
public:
    // A canvas without a frame has this size, so that its buttons can still be edited.
    static constexpr QSize kBlankSize{720, 576};
    static constexpr int kHandleSize = 7;
    static constexpr int kMoveHandle = 8;

    MenuPicture(Project& project, CanvasView& view, QWidget* parent = nullptr);

    void SetFrame(const QImage& frame);
    // Labels, handles and overlays again from the canvas.
    void Refresh();

    // From the labels and the handles, in this widget's coordinates.
    void LabelPressed(int index, Qt::MouseButton button, QPoint at);
    void HandlePressed(int handle, QPoint at);
    void DragTo(QPoint at);
    void DragEnd(Qt::MouseButton button, QPoint at);
    void LabelDoubleClicked(int index);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    // A move or resize of one button, or of its overlay alone: handle 0 to 7 from the top left
    // corner clockwise, or 8.
    struct Drag {
        int Index;
        int Handle;
        bool Overlay;
        QPoint Start;
        ButtonShape From;
        ButtonShape Now;
    };

    ButtonShape Dragged(int index) const;
    ButtonShape OverlayOf(int index) const;
    void StartDrag(int index, int handle, QPoint at);
    void PlaceLabels();
    void PlaceHandles();

    Project& project_;
    CanvasView& view_;
    QImage frame_;
    std::vector<QWidget*> labels_;
    std::array<QWidget*, 9> handles_{};
    // Shape1: each button's overlay picture with what it was painted from.
    struct Overlay {
        std::string Key;
        QImage Picture;
    };
    std::vector<Overlay> overlays_;
    std::optional<Drag> drag_;
    bool onOverlay_ = false; // the handles are on the selected button's overlay
    std::optional<QPoint> bandStart_;
    QRect band_;
};

} // namespace mw
