#pragma once

#include <QDockWidget>

class QLabel;
class QMainWindow;
class QTimer;
class QToolButton;

namespace mw {

// Where a panel stands, as the settings keep it: its place against the main window, its size
// in pixels and whether it auto-hides.
struct PanelPlace {
    int& X;
    int& Y;
    int& Width;
    int& Height;
    bool& Pinned;
};

// The frame of a property panel: a dock that floats, docks, hides and auto-hides. Its title strip
// (Picture1) holds the caption, the pin (PicAutoHide) and the close mark (PicX). While pinned,
// the panel shrinks to its strip whenever the cursor is away and opens when it comes back.
class PanelDock : public QDockWidget {
    Q_OBJECT
public:
    // Shows `panel` at the place the settings keep. The dock is the window that the language file
    // labels by `name`, the strip and the panel's controls together.
    PanelDock(const char* name, const char* caption, QWidget* panel, PanelPlace place, QMainWindow& window);

    bool AutoHide() const;
    void SetAutoHide(bool on);
    // The place into the settings; a shrunken panel keeps its full size.
    void KeepPlace() const;
    // Timer1: opens or shrinks a pinned panel as the cursor is inside or away.
    void FollowCursor(const QPoint& cursor);

signals:
    // The close mark hid the panel.
    void Closed();

private:
    void Collapse(bool collapsed);

    PanelPlace place_;
    QMainWindow& window_;
    QLabel* caption_;
    QToolButton* pin_;
    QTimer* timer_;
    bool collapsed_ = false;
    QSize fullSize_; // the size to open to again
};

} // namespace mw
