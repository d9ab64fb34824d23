#pragma once

#include <QGuiApplication>

namespace mw::test {

// Text needs fonts, and fonts need an application (no screen).
inline void NeedGuiApplication()
{
    if (QGuiApplication::instance())
        return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "menuwright_tests";
    static char* argv[] = {name, nullptr};
    static QGuiApplication app(argc, argv);
}

} // namespace mw::test
