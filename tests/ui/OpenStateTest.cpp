#include "MainWindowFixture.h"

#include <QTableWidget>
#include <QTest>
#include <QToolBar>
#include <QTreeWidget>

using namespace mw;

namespace {

const char* kProject = R"(<DivXMediaManager menuVersion="1" objectID="1" defaultMenuLanguage="en" version="1.0">
<Media objectID="2"><MenuTracks objectID="20"/></Media>
<LanguageMenus objectID="9" languageCode="en" startingMenuID="12" rootMenuID="none">
<DivXMediaMenu objectID="12" menuType="title" menuName="Main"/>
<DivXMediaMenu objectID="13" menuType="root" menuName="Second"/>
</LanguageMenus>
</DivXMediaManager>
)";

} // namespace

class OpenStateTest : public QObject {
    Q_OBJECT
private slots:
    void openingSelectsNothingAndHidesThePanes();
    void stepsAndGridEditsGoThroughTheProject();
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

QTEST_MAIN(OpenStateTest)
#include "OpenStateTest.moc"
