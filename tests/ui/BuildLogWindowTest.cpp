#include "ui/dialogs/BuildLogWindow.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QtTest>

#include <thread>

using namespace mw;

class BuildLogWindowTest : public QObject {
    Q_OBJECT
private slots:
    void linesFromTheBuildThreadShowAndCancelStopsTheTool();
};

void BuildLogWindowTest::linesFromTheBuildThreadShowAndCancelStopsTheTool()
{
    BuildLogWindow window;
    int cancels = 0;
    window.SetCancel([&cancels] { ++cancels; });
    window.show();
    std::thread build([&window] {
        window.Step("Creating overlays");
        window.Progress(2, 5);
        window.Line("DivXMux.exe -v menu.avi");
    });
    build.join();
    QTRY_COMPARE(window.findChild<QPlainTextEdit*>("txtLog")->toPlainText(), QString("DivXMux.exe -v menu.avi"));
    QCOMPARE(window.findChild<QLabel*>("lblStep")->text(), QString("Creating overlays"));
    QCOMPARE(window.findChild<QProgressBar*>("ProgressBar1")->value(), 2);
    QCOMPARE(window.findChild<QProgressBar*>("ProgressBar1")->maximum(), 5);

    auto* cancel = window.findChild<QPushButton*>("cmdCancel");
    QTest::mouseClick(cancel, Qt::LeftButton);
    QCOMPARE(cancels, 1);
    QVERIFY(window.isVisible());
    window.Finished();
    QTRY_COMPARE(cancel->text(), QString("Close"));
    QTest::mouseClick(cancel, Qt::LeftButton);
    QCOMPARE(cancels, 1);
    QVERIFY(!window.isVisible());
}

QTEST_MAIN(BuildLogWindowTest)
#include "BuildLogWindowTest.moc"
