#include "ui/subedit/WindowCapture.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace mw {

namespace {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
template <typename T> using Reply = std::unique_ptr<T, FreeReply>;

xcb_connection_t* Connection()
{
    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

QByteArray Property(xcb_connection_t* c, xcb_window_t window, xcb_atom_t name)
{
    const Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(c, xcb_get_property(c, 0, window, name, XCB_ATOM_STRING, 0, 1024), nullptr));
    if (!reply)
        return {};
    return QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                      xcb_get_property_value_length(reply.get()));
}

xcb_window_t Parent(xcb_connection_t* c, xcb_window_t window)
{
    const Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(c, xcb_query_tree(c, window), nullptr));
    return tree && tree->parent != tree->root ? tree->parent : xcb_window_t(XCB_WINDOW_NONE);
}

} // namespace

bool CanCaptureWindows()
{
    return Connection() != nullptr;
}

std::optional<ForeignWindow> WindowUnderPointer()
{
    xcb_connection_t* c = Connection();
    if (!c)
        return std::nullopt;
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(c)).data;
    xcb_window_t window = screen->root;
    xcb_window_t found = XCB_WINDOW_NONE;
    // Down from the root to the innermost window under the pointer.
    for (;;) {
        const Reply<xcb_query_pointer_reply_t> pointer(
            xcb_query_pointer_reply(c, xcb_query_pointer(c, window), nullptr));
        if (!pointer || pointer->child == XCB_WINDOW_NONE)
            break;
        window = found = pointer->child;
    }
    if (found == XCB_WINDOW_NONE)
        return std::nullopt;

    ForeignWindow result;
    const Reply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(c, xcb_get_geometry(c, found), nullptr));
    const Reply<xcb_translate_coordinates_reply_t> origin(
        xcb_translate_coordinates_reply(c, xcb_translate_coordinates(c, found, screen->root, 0, 0), nullptr));
    if (!geometry || !origin)
        return std::nullopt;
    result.Geometry = QRect(origin->dst_x, origin->dst_y, geometry->width, geometry->height);
    // Inner windows seldom have a class or a title: those of the window that holds them.
    for (xcb_window_t w = found; w != XCB_WINDOW_NONE && (result.Class.isEmpty() || result.Title.isEmpty());
         w = Parent(c, w)) {
        if (result.Class.isEmpty()) {
            const QByteArray wmClass = Property(c, w, XCB_ATOM_WM_CLASS);
            result.Class = QString::fromLocal8Bit(wmClass.mid(wmClass.indexOf('\0') + 1)).remove(QChar('\0'));
        }
        if (result.Title.isEmpty())
            result.Title = QString::fromUtf8(Property(c, w, XCB_ATOM_WM_NAME));
    }
    return result;
}

QImage GrabWindow(const ForeignWindow& window)
{
    QScreen* screen = QGuiApplication::screenAt(window.Geometry.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen)
        return {};
    const QRect area = window.Geometry.translated(-screen->geometry().topLeft());
    return screen->grabWindow(0, area.x(), area.y(), area.width(), area.height()).toImage();
}

} // namespace mw
