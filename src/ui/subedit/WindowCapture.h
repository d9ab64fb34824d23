#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>

#include <optional>

namespace mw {

// Another program's window, found under the mouse pointer.
struct ForeignWindow {
    QString Class;
    QString Title;
    QRect Geometry; // on the screen

    // "class - title", as the status line shows it while the icon is dragged.
    QString Description() const { return Class + " - " + Title; }
};

// Whether windows of other programs can be found and read here: on X11 they can (a program
// under Wine has X11 windows too); on Wayland and without a screen they cannot.
bool CanCaptureWindows();

// The innermost window under the pointer, with the class and title of the nearest window that
// has them. Nothing where windows cannot be read or none is there.
std::optional<ForeignWindow> WindowUnderPointer();

// What the screen shows of the window.
QImage GrabWindow(const ForeignWindow& window);

} // namespace mw
