#include "../media/MovieFixtures.h"
#include "MainWindowFixture.h"

#include "media/ChapterNodes.h"
#include "media/TitleNodes.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QToolBar>
#include <QTreeWidget>

using namespace mw;

namespace {

namespace fs = std::filesystem;

const char* kProject = R"(<DivXMediaManager menuVersion="1" objectID="1" defaultMenuLanguage="en" version="1.0">
<Media objectID="2"><MenuTracks objectID="20"/></Media>
<LanguageMenus objectID="9" languageCode="en" startingMenuID="12" rootMenuID="none">
<DivXMediaMenu objectID="12" menuType="title" menuName="Main"/>
<DivXMediaMenu objectID="13" menuType="root" menuName="Second"/>
</LanguageMenus>
</DivXMediaManager>
)";

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

// The main window over a project: what opening sets, the steps between nodes, the grid, and a
// whole session.
class OpenStateTest : public QObject {
    Q_OBJECT
private slots:
    void openingSelectsNothingAndHidesThePanes();
    void stepsAndGridEditsGoThroughTheProject();
    void newProjectTitlesChaptersSaveReopenAndExit();
};

void OpenStateTest::openingSelectsNothingAndHidesThePanes()
{
    test::MainWindow w;
    QVERIFY(!w.Action("mnuNextNode")->isEnabled());
    QVERIFY(!w.Action("mnuPreviusNode")->isEnabled());
    w.Write("p.xml", kProject);
    w.OpenByMenu((w.Folder() / "p.xml").string());
    w.Select("13");
    QAction* noOverlays = w.form->findChild<QToolBar*>("Toolbar1")->findChild<QAction*>("NoCreateOverlays");
    noOverlays->trigger();
    QVERIFY(w.project().NoCreateOverlays);
    QVERIFY(w.Widget<QWidget>("PicCon2")->isVisibleTo(w.form.get()));

    w.OpenByMenu((w.Folder() / "p.xml").string());
    QCOMPARE(w.SelectedKey(), std::string());
    QVERIFY(!w.Action("mnuNextNode")->isEnabled());
    QVERIFY(!w.Action("mnuPreviusNode")->isEnabled());
    QVERIFY(!noOverlays->isChecked());
    QVERIFY(!w.project().NoCreateOverlays);
    QVERIFY(!w.Widget<QWidget>("PicCon")->isVisibleTo(w.form.get()));
    QVERIFY(!w.Widget<QWidget>("PicCon2")->isVisibleTo(w.form.get()));
}

void OpenStateTest::stepsAndGridEditsGoThroughTheProject()
{
    test::MainWindow w;
    w.Write("p.xml", kProject);
    w.OpenByMenu((w.Folder() / "p.xml").string());
    w.Select("12");
    QVERIFY(w.Action("mnuNextNode")->isEnabled());
    w.Action("mnuNextNode")->trigger();
    QCOMPARE(w.SelectedKey(), std::string("k13"));
    w.Action("mnuNextNode")->trigger(); // the last sibling stays
    QCOMPARE(w.SelectedKey(), std::string("k13"));
    w.Action("mnuPreviusNode")->trigger();
    QCOMPARE(w.SelectedKey(), std::string("k12"));

    // An edit of a menu's row can be undone, and the simple tree shows it at once.
    w.Action("mnuSimpleMode")->trigger();
    auto* grid = w.Widget<QTableWidget>("Properties1");
    const QList<QTableWidgetItem*> found = grid->findItems("menuName", Qt::MatchExactly);
    QCOMPARE(found.size(), 1);
    grid->item(found.front()->row(), 1)->setText("Renamed");
    QCOMPARE(GetPropertyInNode(*w.project().Doc.Tree.ObjectNode("12"), "menuName"), std::string("Renamed"));
    QVERIFY(w.Action("mnuUndo")->isEnabled());
    auto* tv2 = w.Widget<QTreeWidget>("tv2");
    QCOMPARE(tv2->findItems("Menu Renamed (title)", Qt::MatchExactly | Qt::MatchRecursive).size(), 1);
    QVERIFY(w.project().FileIsDirty);
    w.Action("mnuUndo")->trigger();
    QCOMPARE(GetPropertyInNode(*w.project().Doc.Tree.ObjectNode("12"), "menuName"), std::string("Main"));

    // A title is no menu: its edits keep no undo step.
    w.Select("2");
    const QList<QTableWidgetItem*> id = grid->findItems("objectID", Qt::MatchExactly);
    QCOMPARE(id.size(), 1);
    w.project().Undo.Clear();
    grid->item(id.front()->row(), 1)->setText("2");
    QCOMPARE(w.project().Undo.Count(), std::size_t{0});
}

// One session as a user has it: every step through the window's own commands and dialogs.
void OpenStateTest::newProjectTitlesChaptersSaveReopenAndExit()
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

QTEST_MAIN(OpenStateTest)
#include "OpenStateTest.moc"
