#include "core/ScriptedPrompt.h"
#include "ui/dialogs/BuildLogWindow.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QThread>
#include <QTimer>
#include <QtTest>

#include <thread>

using namespace mw;

class BuildLogWindowTest : public QObject {
    Q_OBJECT
private slots:
    void linesFromTheBuildThreadShowAndCancelStopsTheTool();
    void aBuildRunsOffTheInterfaceThreadAsksInItAndClosingCancelsIt();
};

// Notes the thread each question is asked in.
struct ThreadPrompt : ScriptedPrompt {
    QThread* AskedIn = nullptr;
    PromptAnswer Ask(const std::string& text, PromptButtons buttons, PromptAnswer defaultAnswer,
                     const std::string& title, PromptIcon icon) override
    {
        AskedIn = QThread::currentThread();
        return ScriptedPrompt::Ask(text, buttons, defaultAnswer, title, icon);
    }
};

void BuildLogWindowTest::aBuildRunsOffTheInterfaceThreadAsksInItAndClosingCancelsIt()
{
    QWidget parent;
    ThreadPrompt prompt;
    prompt.Answers = {PromptAnswer::Yes};
    QThread* buildThread = nullptr;
    // The user closes the window while the build waits for its tool, then closes it again.
    QTimer user;
    connect(&user, &QTimer::timeout, [&parent] {
        auto* window = parent.findChild<BuildLogWindow*>();
        if (!window || !window->isVisible())
            return;
        window->reject();
    });
    user.start(20);
    const BuildEnd end = RunBuildWithLogWindow(&parent, prompt, [&](Prompt& asked, ToolRunner& runner, BuildLog& log) {
        buildThread = QThread::currentThread();
        if (asked.Ask("Go on?", PromptButtons::YesNo, PromptAnswer::No, {}, PromptIcon::Question) != PromptAnswer::Yes)
            return BuildEnd::Failed;
        log.Step("Waiting for the tool");
        while (!runner.Cancelled())
            QThread::msleep(5);
        return BuildEnd::Cancelled;
    });
    QCOMPARE(end, BuildEnd::Cancelled);
    QVERIFY(buildThread != QThread::currentThread());
    QCOMPARE(prompt.AskedIn, QThread::currentThread());
    QCOMPARE(prompt.Texts(), std::vector<std::string>{"Go on?"});
}

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
