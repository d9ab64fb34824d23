#include "../media/MovieFixtures.h"
#include "MainWindowFixture.h"

#include "media/ChapterNodes.h"
#include "media/TitleNodes.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>

using namespace mw;

namespace {

namespace fs = std::filesystem;

// Presses a button of the next modal dialog once it shows, after `fill` had its go at it.
void OnNextDialog(const char* button, const std::function<void(QDialog&)>& fill = {})
{
    test::OnNextDialog([button, fill](QDialog& dialog) {
        if (fill)
            fill(dialog);
        QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
    });
}

} // namespace

// One session as a user has it: every step through the window's own commands and dialogs.
class UserJourneyTest : public QObject {
    Q_OBJECT
private slots:
    void newProjectTitlesChaptersSaveReopenAndExit();
};

void UserJourneyTest::newProjectTitlesChaptersSaveReopenAndExit()
{
    const fs::path movie = test::TestMovie("journey.avi", 4);
    test::MainWindow window;
    Form1& form = *window.form;
    ScriptedPrompt& prompt = window.prompt;
    form.show();
    Project& project = window.project();
    const auto action = [&window](const char* name) { return window.Action(name); };

    // A new project around the movie, through frmNewTitle.
    prompt.OpenedFiles.push_back({movie.string()});
    OnNextDialog("Command1");
    action("mnuNew")->trigger();
    QVERIFY(project.ItemsEnabled);
    QVERIFY(form.windowTitle().startsWith("Untitled.xml - "));
    auto* tree = form.findChild<QTreeView*>("TreeView1");
    QVERIFY(tree->model()->rowCount() > 0);

    // A second title, then two chapters for the first one.
    prompt.OpenedFiles.push_back({movie.string()});
    OnNextDialog("Command1");
    action("mnuAddTitle")->trigger();
    const std::vector<DocNode*> titles = TitleNodes(project.Doc);
    QCOMPARE(titles.size(), std::size_t{2});
    OnNextDialog("Command2", [](QDialog& dialog) {
        dialog.findChild<QComboBox*>("Combo1")->setCurrentIndex(0);
        auto* count = dialog.findChild<QLineEdit*>("txtChapters");
        count->clear();
        QTest::keyClicks(count, "2");
    });
    action("mnuCreateChapters")->trigger();
    QCOMPARE(ChapterNodesOf(*titles[0]).size() + ChapterNodesOf(*titles[1]).size(), std::size_t{2});

    // Save under a name, close, and come back through the recent list.
    const fs::path saved = window.Folder() / "journey.xml";
    prompt.SavedFiles.push_back(saved.string());
    action("mnuSave")->trigger();
    QVERIFY(fs::exists(saved));
    QVERIFY(!project.FileIsDirty);
    action("mnuClose")->trigger();
    QVERIFY(!project.ItemsEnabled);
    QAction* recent = form.findChild<QMenu*>("mnuRecentFiles")->actions().value(0);
    QVERIFY(recent);
    QCOMPARE(recent->text(), QString::fromStdString(saved.string()));
    recent->trigger();
    QTRY_VERIFY(project.ItemsEnabled);
    QVERIFY(form.windowTitle().startsWith("journey.xml - "));

    // An unsaved change is asked about at exit; Yes saves it.
    project.MarkDirty();
    prompt.Answers.push_back(PromptAnswer::Yes);
    const auto before = fs::last_write_time(saved);
    QTest::qWait(20);
    QVERIFY(form.close());
    QCOMPARE(prompt.Texts().back(), std::string("File is not saved. Save it now?"));
    QVERIFY(fs::last_write_time(saved) > before);
    QVERIFY(!project.FileIsDirty);
}

QTEST_MAIN(UserJourneyTest)
#include "UserJourneyTest.moc"
