// The window outlives its commands: a dialog's event loop never paints a tree the command is
// changing, whatever a command throws is told while the window goes on, and a build runs off the
// interface thread in its log window, which can stop it.
#include "../media/MovieFixtures.h"
#include "MainWindowFixture.h"

#include "ui/dialogs/BuildLogWindow.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <stdexcept>
#include <thread>

using namespace mw;

namespace {

namespace fs = std::filesystem;

void Press(QDialog& dialog, const char* button)
{
    QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
}

void TypeChapters(QDialog& dialog, const char* count)
{
    auto* field = dialog.findChild<QLineEdit*>("txtChapters");
    field->clear();
    QTest::keyClicks(field, count);
}

int Chapters(const DocNode& title)
{
    int count = 0;
    for (const auto& child : title)
        count += child->Text == "Chapter" ? 1 : 0;
    return count;
}

// A prompt whose file dialogs fail as a broken desktop portal might.
class FailingPrompt : public ScriptedPrompt {
public:
    std::vector<std::string> OpenFiles(const FileDialogRequest&) override { throw std::runtime_error("no portal"); }
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

} // namespace

class CommandSafetyTest : public QObject {
    Q_OBJECT
private slots:
    void applyInTheChapterDialogNeverPaintsFreedNodes();
    void aCommandThatThrowsIsToldAndTheWindowGoesOn();
    void linesFromTheBuildThreadShowAndCancelStopsTheTool();
    void aBuildRunsOffTheInterfaceThreadAsksInItAndClosingCancelsIt();
};

void CommandSafetyTest::applyInTheChapterDialogNeverPaintsFreedNodes()
{
    const fs::path movie = test::TestMovie("safety.avi", 4);
    if (movie.empty())
        QSKIP("ffmpeg could not make the movie");
    test::MainWindow w;
    w.form->show();
    QVERIFY(QTest::qWaitForWindowExposed(w.form.get()));
    test::OnNextDialog([](QDialog& dialog) { Press(dialog, "Command1"); });
    w.prompt.OpenedFiles.push_back({movie.string()});
    w.Action("mnuNew")->trigger();
    test::OnNextDialog([](QDialog& dialog) {
        TypeChapters(dialog, "2");
        Press(dialog, "Command2");
    });
    w.Action("mnuCreateChapters")->trigger();
    auto* tree = w.Widget<QTreeView>("TreeView1");
    DocNode* title = w.project().Doc.Tree.ObjectNode("6");
    QCOMPARE(Chapters(*title), 2);
    for (const DocNode* open = title; open; open = open->Parent()) // the chapters are on show
        tree->expand(static_cast<DocTreeModel*>(tree->model())->IndexOf(open));

    // Apply replaces the chapters (the question takes its default, Yes) while the dialog stays
    // open, and the tree is painted meanwhile: it must hold no index into the tree then.
    int rowsWhileOpen = -1;
    test::OnNextDialog([&](QDialog& dialog) {
        rowsWhileOpen = tree->model()->rowCount();
        TypeChapters(dialog, "3");
        Press(dialog, "Command10");
        tree->viewport()->repaint();
        QTest::qWait(20);
        dialog.reject();
    });
    w.Action("mnuCreateChapters")->trigger();
    QCOMPARE(rowsWhileOpen, 0);
    QCOMPARE(Chapters(*w.project().Doc.Tree.ObjectNode("6")), 3);
    QCOMPARE(tree->model()->rowCount(), 1);
    QVERIFY(tree->isExpanded(static_cast<DocTreeModel*>(tree->model())->IndexOf(w.project().Doc.Tree.ObjectNode("6"))));
}

void CommandSafetyTest::aCommandThatThrowsIsToldAndTheWindowGoesOn()
{
    QTemporaryDir home;
    const fs::path folder = home.path().toStdString();
    test::WriteFile(folder / "nick.xml", R"(<DivXMediaManager objectID="1"><Media objectID="2"/></DivXMediaManager>)");
    ProgramState program(folder);
    StartProgram(program);
    FailingPrompt prompt;
    QtFormHost forms;
    Form1 form(program, prompt, forms);
    forms.Attach(form.CurrentProject(), &form);
    form.OpenStartProject();
    const auto* tree = form.findChild<QTreeView*>("TreeView1");
    QCOMPARE(tree->model()->rowCount(), 1);

    for (const char* command : {"mnuOpen", "mnuAddTitle"}) {
        prompt.Log.clear();
        form.findChild<QAction*>(command)->trigger();
        QCOMPARE(prompt.Texts(), std::vector<std::string>{"The command stopped on an unexpected error: no portal"});
        QCOMPARE(tree->model()->rowCount(), 1); // the tree is back on show
        QVERIFY(form.CurrentProject().Doc.Tree.ObjectNode("2"));
    }
}

void CommandSafetyTest::aBuildRunsOffTheInterfaceThreadAsksInItAndClosingCancelsIt()
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

void CommandSafetyTest::linesFromTheBuildThreadShowAndCancelStopsTheTool()
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

QTEST_MAIN(CommandSafetyTest)
#include "CommandSafetyTest.moc"
