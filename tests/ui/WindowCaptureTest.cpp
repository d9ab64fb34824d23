// The window under the pointer read from a real X server: a virtual one of the test's own.
#include "../generators/SubEditPicture.h"

#include "generators/SubEditButtons.h"
#include "ui/subedit/WindowCapture.h"

#include <QApplication>
#include <QCursor>
#include <QLabel>
#include <QTest>

#include <unistd.h>

#include <vector>

using namespace mw;

class WindowCaptureTest : public QObject {
    Q_OBJECT
private slots:
    void readsTheHighlightsOfTheWindowUnderThePointer();
};

void WindowCaptureTest::readsTheHighlightsOfTheWindowUnderThePointer()
{
    if (!CanCaptureWindows())
        QSKIP("no X server: xvfb-run is not installed");
    QLabel window;
    window.setWindowTitle("DVDSubEdit - menu 1");
    window.setPixmap(QPixmap::fromImage(test::HighlightPicture()));
    window.setFixedSize(200, 120);
    window.move(100, 80);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QCursor::setPos(window.mapToGlobal(QPoint(150, 30)));
    QTRY_VERIFY(WindowUnderPointer().has_value());
    const std::optional<ForeignWindow> found = WindowUnderPointer();
    QCOMPARE(found->Title, QString("DVDSubEdit - menu 1"));
    QVERIFY(!found->Class.isEmpty());
    QCOMPARE(found->Geometry, QRect(window.mapToGlobal(QPoint(0, 0)), QSize(200, 120)));
    const SubEditScan scan = FindSubEditButtons(GrabWindow(*found));
    std::vector<QRect> rects;
    for (const SubEditButton& button : scan.Buttons)
        rects.push_back(button.Rect);
    QCOMPARE(rects, test::ExpectedHighlights());

    // Over the bare screen there is no window.
    QCursor::setPos(5, 5);
    QTRY_VERIFY(!WindowUnderPointer().has_value());
}

// Runs again on a virtual X display of its own where xvfb-run is installed; elsewhere the test
// skips.
int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("MENUWRIGHT_ON_XVFB")) {
        qputenv("MENUWRIGHT_ON_XVFB", "1");
        qputenv("QT_QPA_PLATFORM", "xcb");
        std::vector<char*> args{const_cast<char*>("xvfb-run"), const_cast<char*>("-a"), const_cast<char*>("-s"),
                                const_cast<char*>("-screen 0 640x480x24")};
        args.insert(args.end(), argv, argv + argc);
        args.push_back(nullptr);
        execvp(args[0], args.data());
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    WindowCaptureTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "WindowCaptureTest.moc"
