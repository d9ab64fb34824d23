#include "../media/MovieFixtures.h"
#include "MainWindowFixture.h"

#include "document/TreeQueries.h"
#include "menus/Actions.h"
#include "menus/CanvasCommands.h"
#include "menus/PropertyPanels.h"
#include "ui/panels/PanelDock.h"
#include "ui/panels/PropertiesGrid.h"

#include <QComboBox>
#include <QCursor>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

using namespace mw;
using mw::test::Child;
using mw::test::Click;

namespace {

namespace fs = std::filesystem;

// An empty "en" set, and a menu with one button in "fr".
const char* kProject = R"(<DivXMediaManager objectID="1" defaultMenuLanguage="en">
<TranslationTable objectID="3"/>
<Media objectID="2"/>
<LanguageMenus objectID="9" languageCode="en" startingMenuID="none" rootMenuID="none"/>
<LanguageMenus objectID="10" languageCode="fr" startingMenuID="12" rootMenuID="none">
<DivXMediaMenu objectID="12" backgroundVideoID="none" backgroundAudioID="none" menuType="title" menuName="Main">
<ButtonMenu objectID="13">
<MenuRectangle objectID="14" left="10" top="20" width="100" height="30"/>
</ButtonMenu>
</DivXMediaMenu>
</LanguageMenus>
</DivXMediaManager>
)";

void ClickStrip(QWidget& dock, const char* button)
{
    QTest::mouseClick(Child<QToolButton>(dock, button), Qt::LeftButton);
}

void ClickRow(QListWidget& list, const QString& text)
{
    QListWidgetItem* item = list.findItems(text, Qt::MatchExactly).value(0);
    QVERIFY(item);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(item).center());
}

void ClickRow(QTreeWidget& list, int row)
{
    QTreeWidgetItem* item = list.topLevelItem(row);
    QVERIFY(item);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(item).center());
}

struct Window : test::MainWindow {
    Window()
    {
        Write("menus.xml", kProject);
        OpenByMenu((Folder() / "menus.xml").string());
    }
    std::string Row(const char* id, const char* name) const
    {
        return GetPropertyInNode(project().Doc.Tree.Item(std::string("k") + id), name);
    }
    // A panel as the user sees it, its queued refresh done.
    QDockWidget& Panel(const char* name) const
    {
        QCoreApplication::processEvents();
        // The editors that a reload replaced go now, so that only the new ones are found.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return *Widget<QDockWidget>(name);
    }
};

} // namespace

class MenuWindowsTest : public QObject {
    Q_OBJECT
private slots:
    void newMenuThenItsPanelRefusesAudioAsVideoAndRenames();
    void actionListEditedThroughForm2();
    void newLanguageOnceAndRefusedTwice();
    void panelsPinHideAndKeepTheirPlaces();
};

void MenuWindowsTest::newMenuThenItsPanelRefusesAudioAsVideoAndRenames()
{
    const fs::path movie = test::ShortMovie();
    if (movie.empty())
        QSKIP("ffmpeg could not make the movie");
    Window w;
    w.Select("9");
    w.prompt.OpenedFiles.push_back({movie.string()});
    test::OnNextDialog([&](QDialog& dialog) {
        QVERIFY(!Child<QPushButton>(dialog, "cmdOK")->isEnabled());
        QVERIFY(!Child<QPushButton>(dialog, "Command7")->isEnabled()); // no video to preview yet
        QCOMPARE(Child<QComboBox>(dialog, "Combo2")->currentText(), QString("en"));
        Click(dialog, "Command1");
        QCOMPARE(Child<QLineEdit>(dialog, "txtEndFrame")->text(), QString("50"));
        // "Load menu's movie", then Ctrl+Enter in a frame field shows that frame.
        QVERIFY(!Child<QPushButton>(dialog, "Command3")->isEnabled());
        Click(dialog, "Command7");
        QVERIFY(Child<QPushButton>(dialog, "Command3")->isEnabled());
        auto* start = Child<QLineEdit>(dialog, "txtStartFrame");
        start->setText("25");
        QTest::keyClick(start, Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(Child<QLabel>(dialog, "lblFrame")->text(), QString("25"));
        QCOMPARE(Child<QLabel>(dialog, "lblTime")->text(), QString("0:00:01"));
        QTest::keyClicks(Child<QLineEdit>(dialog, "txtMenuName"), "Intro");
        Click(dialog, "cmdOK");
    });
    w.Action("mnuAddMenu")->trigger();
    const std::string id = w.project().Canvas.CurrentMenuID;
    QVERIFY(!id.empty());
    const DocNode& menu = w.project().Doc.Tree.Item("k" + id);
    QCOMPARE(menu.Previous()->Text, std::string(" -> Menu Intro (other)"));
    const std::string video = w.Row(id.c_str(), "backgroundVideoID");
    QVERIFY(w.Row(id.c_str(), "backgroundAudioID") != "none");

    // Saved and opened again, the tracks know their kinds: backgroundVideoID offers the audio
    // track too, and refuses it.
    w.Action("mnuSave")->trigger();
    w.OpenByMenu((w.Folder() / "menus.xml").string());
    w.Select(id.c_str());
    QDockWidget& panel = w.Panel("frmPropMenu");
    QVERIFY(panel.isVisible());
    auto* tracks = Child<QComboBox>(panel, "Combo1_1");
    QCOMPARE(tracks->toolTip().toStdString(), std::string(kMenuTracksToolTip));
    QTest::keyClick(tracks, Qt::Key_Down);
    QCOMPARE(w.prompt.Texts().back(), std::string("Not valid type. Try again"));
    QCOMPARE(w.Row(id.c_str(), "backgroundVideoID"), video);
    QCOMPARE(Child<QComboBox>(w.Panel("frmPropMenu"), "Combo1_1")->currentText().section('|', 0, 0).toStdString(), video);

    auto* name = Child<QLineEdit>(w.Panel("frmPropMenu"), "Text1_7");
    name->clear();
    QTest::keyClicks(name, "Main");
    QTest::keyClick(name, Qt::Key_Return);
    QCOMPARE(w.Row(id.c_str(), "menuName"), std::string("Main"));
    QCOMPARE(w.project().Doc.Tree.Item("k" + id).Previous()->Text, std::string(" -> Menu Main (other)"));
    QVERIFY(w.project().FileIsDirty);
}

void MenuWindowsTest::actionListEditedThroughForm2()
{
    Window w;
    w.Select("12");
    ParceMenu(w.project(), w.project().Doc.Tree.Item("k12"));
    Label1_Click(w.project(), 0); // as a click on the button in the canvas
    w.prompt.Log.clear();             // the menu's video is missing
    w.Select("13");
    QDockWidget& panel = w.Panel("frmProp");
    QVERIFY(panel.isVisible());

    QStringList messages;
    test::OnNextDialog([&](QDialog& dialog) {
        QCOMPARE(dialog.windowTitle(), QString("Edit Action list for button 13"));
        ClickRow(*Child<QListWidget>(dialog, "List1"), "MenuTransitionAction");
        QVERIFY(Child<QTreeWidget>(dialog, "lstMenus")->isVisible());
        Click(dialog, "Command1");
        ClickRow(*Child<QTreeWidget>(dialog, "lstMenus"), 0);
        Click(dialog, "Command1");
        ClickRow(*Child<QListWidget>(dialog, "List1"), "ButtonTransitionAction");
        auto* buttons = Child<QTreeWidget>(dialog, "lstButtons");
        QCOMPARE(buttons->topLevelItem(0)->text(0), QString("13"));
        ClickRow(*buttons, 0);
        Click(dialog, "OKButton"); // the button chosen but not added: asked, and added
        for (const std::string& text : w.prompt.Texts())
            messages << QString::fromStdString(text);
    });
    Click(panel, "cmdAddButtonAction");

    QCOMPARE(messages, QStringList({"Please, select a Menu", "Add changes to list ofActions?"}));
    const std::string list = w.Row("13", "selectAction");
    const std::vector<ActionRow> rows = LoadActionRows(w.project().Doc.Tree, list);
    QCOMPARE(rows.size(), std::size_t{2});
    QCOMPARE(rows[0].Type, std::string("MenuTransitionAction"));
    QCOMPARE(rows[0].Target1, std::string("12"));
    QCOMPARE(rows[1].Type, std::string("ButtonTransitionAction"));
    QCOMPARE(rows[1].Target1, std::string("13"));
    QCOMPARE(Child<QListWidget>(w.Panel("frmProp"), "lstButtonActions")->count(), 2);

    // The panel removes one action, then the other with the list's row.
    Click(w.Panel("frmProp"), "cmdRemoveButtonAction");
    Click(w.Panel("frmProp"), "cmdRemoveButtonAction");
    QCOMPARE(w.Row("13", "selectAction"), std::string());
}

void MenuWindowsTest::newLanguageOnceAndRefusedTwice()
{
    Window w;
    for (int attempt = 0; attempt < 2; ++attempt) {
        test::OnNextDialog([&](QDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), QString("Add Language Menu"));
            auto* combo = Child<QComboBox>(dialog, "Combo1");
            QCOMPARE(combo->currentText(), QString("en ENGLISH"));
            combo->setCurrentIndex(combo->findText("de GERMAN"));
            Click(dialog, "OKButton");
        });
        w.Action("mnuAddLang")->trigger();
    }
    QCOMPARE(w.prompt.Texts(), std::vector<std::string>{"This language exist"});
    const DocNode* root = w.project().Doc.Tree.Root();
    int german = 0;
    for (const auto& child : *root)
        german += GetPropertyInNode(*child, "languageCode") == "de";
    QCOMPARE(german, 1);
    QVERIFY(w.project().FileIsDirty);
}

void MenuWindowsTest::panelsPinHideAndKeepTheirPlaces()
{
    Window w;
    w.Select("12");
    auto& dock = static_cast<PanelDock&>(w.Panel("frmPropMenu"));
    QVERIFY(dock.isVisible());
    QVERIFY(dock.isFloating());

    // The menu panel starts pinned, as the settings say by default. Unpinned it opens; pinned
    // again, it shrinks to its strip while the cursor is away.
    QVERIFY(dock.AutoHide());
    ClickStrip(dock, "PicAutoHide");
    QVERIFY(!dock.AutoHide());
    QTRY_VERIFY(dock.widget()->isVisible() && dock.height() > 100);
    const QRect full = dock.geometry();
    ClickStrip(dock, "PicAutoHide");
    const QPoint away = full.bottomRight() + QPoint(400, 400);
    QCursor::setPos(away);
    QTRY_VERIFY(!dock.widget()->isVisible());
    QTRY_VERIFY(dock.height() < full.height()); // the window system resizes it in its own time
    QCursor::setPos(dock.geometry().topLeft() + QPoint(5, 5));
    QTRY_VERIFY(dock.widget()->isVisible());
    QTRY_COMPARE(dock.height(), full.height());

    // Placed and split by the user, then shrunk as the window closes.
    const QPoint origin = w.form->geometry().topLeft();
    const QRect placed(origin + QPoint(30, 40), QSize(260, 420));
    QCursor::setPos(placed.center());
    dock.setGeometry(placed);
    QTRY_COMPARE(dock.height(), 420);
    Child<PropertiesGrid>(dock, "Properties1")->SetMiddleWidth(95);
    QCursor::setPos(away);
    QTRY_VERIFY(!dock.widget()->isVisible());
    ClickStrip(dock, "PicX");
    QVERIFY(!dock.isVisible());
    QVERIFY(!w.Action("mnuShowMenuProp")->isChecked());

    QVERIFY(w.form->close());
    const Settings& values = w.program.Values;
    QCOMPARE(values.PropMenuX, 30);
    QCOMPARE(values.PropMenuY, 40);
    QCOMPARE(values.PropMenuWidth, 260);
    QCOMPARE(values.PropMenuHeight, 420);
    QVERIFY(values.PropMenuPined);
    QCOMPARE(values.PropMenuMiddle, 95);
}

QTEST_MAIN(MenuWindowsTest)
#include "MenuWindowsTest.moc"
