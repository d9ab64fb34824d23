#include "MainWindowFixture.h"

#include "core/settings/clsIniFile.h"
#include "ui/QtPrompt.h"
#include "ui/mainwindow/ToolbarIcons.h"
#include "ui/widgets/TextFormatWidget.h"

#include <QAbstractButton>
#include <QDir>
#include <QLabel>
#include <QMouseEvent>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QToolBar>
#include <QTreeWidget>

#include <functional>

using namespace mw;

namespace {

const char* kProject = R"(<DivXMediaManager menuVersion="1" objectID="1" defaultMenuLanguage="en" version="1.0">
<TranslationTable objectID="3"/>
<Media objectID="2">
<Title objectID="6">
<MediaSource objectID="7" mediaType="featureAvi" location="movie.avi"/>
</Title>
</Media>
<LanguageMenus objectID="9" languageCode="en" startingMenuID="12" rootMenuID="none">
<DivXMediaMenu objectID="12" backgroundVideoID="none" backgroundAudioID="none" menuType="title" menuName="Main">
<ButtonMenu objectID="20" overlayID="none"/>
</DivXMediaMenu>
<DivXMediaMenu objectID="13" backgroundVideoID="none" backgroundAudioID="none" menuType="root" menuName="Second"/>
</LanguageMenus>
</DivXMediaManager>
)";

struct Window : test::MainWindow {
    using MainWindow::MainWindow;

    std::string WriteProject(const char* name = "demo.xml") const
    {
        Write(name, kProject);
        return (Folder() / name).string();
    }
    QAction* Button(const char* bar, const char* key) const
    {
        return form->findChild<QToolBar*>(bar)->findChild<QAction*>(key);
    }
    QString MenuPanel() const { return form->statusBar()->findChild<QLabel*>("menu")->text(); }
};

Window::Files Ini(const char* text)
{
    return {{"Menuwright.ini", text}};
}

QTreeWidgetItem* FindRow(QTreeWidget* tree, const QString& text)
{
    const auto found = tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? nullptr : found.front();
}

} // namespace

class Form1Test : public QObject {
    Q_OBJECT
private slots:
    void menuEntriesCarryCaptionShortcutAndName_data();
    void menuEntriesCarryCaptionShortcutAndName();
    void openingFillsTheWindowAndCommandsFollowProjectAndSelection();
    void propertiesShowAndEditTheSelectedNode();
    void cancelAtExitKeepsWindowAndFiles();
    void splittersComeFromAndGoToSettings();
    void firstStartFillsMostOfTheScreen();
    void everyToolbarButtonAndTheWindowHaveAPicture();
    void autoSaveTimerSavesTheOpenProject();
    void progressGoesToTheNamedPanel();
    void nickFileOpensAtStart();
    void languageSwitchRelabelsWindowAndDialogs();
    void nodeStepsAndSimpleModeSelectInTreeView1();
    void fileFiltersInQtForm_data();
    void fileFiltersInQtForm();
};

void Form1Test::menuEntriesCarryCaptionShortcutAndName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("shortcut");
    QTest::addColumn<bool>("enabledAtStart");
    QTest::newRow("new") << "mnuNew" << "New..." << "Ctrl+N" << true;
    QTest::newRow("exit") << "mnuExit" << "Exit" << "" << true;
    QTest::newRow("save") << "mnuSave" << "Save" << "Ctrl+S" << false;
    QTest::newRow("remove button") << "mnuRemoveButton" << "Remove Button" << "Shift+F8" << false;
    QTest::newRow("create divx") << "mnuCreateDivX" << "Create DivX" << "F12" << false;
    QTest::newRow("previous node") << "mnuPreviusNode" << "Previous node" << "F2" << false;
    QTest::newRow("sub2divx") << "mnuSrt2Divx" << "Sub2DivX (Add subtitles)" << "" << true;
}

void Form1Test::menuEntriesCarryCaptionShortcutAndName()
{
    QFETCH(QString, name);
    QFETCH(QString, caption);
    QFETCH(QString, shortcut);
    QFETCH(bool, enabledAtStart);
    Window w;
    QAction* action = w.Action(name.toUtf8().constData());
    QVERIFY(action);
    QCOMPARE(action->text(), caption);
    QCOMPARE(action->shortcut(), QKeySequence(shortcut));
    QCOMPARE(action->isEnabled(), enabledAtStart);
}

void Form1Test::openingFillsTheWindowAndCommandsFollowProjectAndSelection()
{
    Window w;
    // Every entry of the table is on the bar once, and no command is missing its place.
    int entries = 0;
    for (const MenuEntry& entry : MainMenuEntries()) {
        if (!entry.Caption || entry.Source == CommandSource::Submenu)
            continue;
        ++entries;
        QCOMPARE(w.form->findChildren<QAction*>(entry.Name).size(), 1);
    }
    QCOMPARE(entries, 49);

    QAction* noOverlays = w.Button("Toolbar1", "NoCreateOverlays");
    QVERIFY(noOverlays->isCheckable());
    QCOMPARE(noOverlays->toolTip(), QString("Dont recreate overlays (del temp must be false)"));
    QCOMPARE(w.Button("Toolbar1", "addLang")->toolTip(), QString("Add Language Menu"));
    QCOMPARE(w.Button("Toolbar1", "DivX")->toolTip(), QString("Create the DivX file"));
    QVERIFY(!w.Button("ToolbarPic", "buttonAdd")->isEnabled());
    const auto documentCommandsAre = [&w](bool enabled) {
        for (const char* name : {"mnuClose", "mnuSave", "mnuSaveAs", "mnuNormalize", "mnuCheck"})
            QVERIFY2(w.Action(name)->isEnabled() == enabled, name);
        QCOMPARE(w.Button("Toolbar1", "save")->isEnabled(), enabled);
        QCOMPARE(w.Button("Toolbar1", "NoCreateOverlays")->isEnabled(), enabled);
        QCOMPARE(w.project().ItemsEnabled, enabled);
    };
    documentCommandsAre(false);
    QCOMPARE(w.form->windowTitle(), QString::fromStdString(WindowTitleFor("")));
    QCOMPARE(w.Action("mnuRecent_0")->text(), QString("No files"));
    QVERIFY(!w.Action("mnuRecent_0")->isEnabled());

    const std::string path = w.WriteProject();
    w.prompt.OpenedFiles.push_back({path});
    w.Button("Toolbar1", "openXml")->trigger();
    documentCommandsAre(true);
    auto* tree = w.Widget<QTreeView>("TreeView1");
    const QModelIndex root = tree->model()->index(0, 0);
    QCOMPARE(root.data().toString(), QString("DivXMediaManager"));
    QVERIFY(tree->isExpanded(root));
    QCOMPARE(tree->model()->rowCount(root), 7); // four attribute rows and three elements
    QCOMPARE(w.project().Values().LastFolderUsed, w.Folder().string());
    QCOMPARE(w.Action("mnuRecent_0")->text(), QString::fromStdString(path));
    QVERIFY(w.Action("mnuRecent_0")->isEnabled());
    QVERIFY(!w.Action("mnuUndo")->isEnabled());
    QVERIFY(w.Action("mnuAddMenu")->isEnabled());
    QVERIFY(w.Button("Toolbar1", "addLang")->isEnabled());
    QVERIFY(!w.Action("mnuAddButton")->isEnabled()); // no menu on the canvas yet
    QVERIFY(w.form->windowTitle().startsWith("demo.xml - Menuwright ver. "));

    QAction* removeTitle = w.Action("mnuRemoveTitle");
    QVERIFY(!removeTitle->isEnabled());
    w.Select("6");
    QVERIFY(removeTitle->isEnabled());
    QVERIFY(w.Action("mnuRefreshTitle")->isEnabled());
    QCOMPARE(w.MenuPanel(), QString());
    w.Select("12");
    QVERIFY(!removeTitle->isEnabled());
    QCOMPARE(w.MenuPanel(), QString("Menu Main (title)"));

    // A cancelled open dialog leaves the project open.
    w.Action("mnuOpen")->trigger();
    QCOMPARE(tree->model()->rowCount(), 1);

    w.Action("mnuClose")->trigger();
    documentCommandsAre(false);
    QVERIFY(!w.Action("mnuRefreshTitle")->isEnabled());
    QCOMPARE(w.MenuPanel(), QString());
    QCOMPARE(tree->model()->rowCount(), 0);
    QCOMPARE(w.form->windowTitle(), QString::fromStdString(WindowTitleFor("")));
}

void Form1Test::propertiesShowAndEditTheSelectedNode()
{
    Window w;
    w.OpenByMenu(w.WriteProject());
    DocNode* menu = w.Select("12");
    auto* grid = w.Widget<QTableWidget>("Properties1");
    auto* help = w.Widget<TextFormatWidget>("TextFormat1");
    QCOMPARE(w.Widget<QLabel>("lblPropFor")->text(), QString("DivXMediaMenu properties"));
    QCOMPARE(grid->rowCount(), 5);
    QCOMPARE(grid->item(0, 0)->text(), QString("objectID"));
    QVERIFY(!(grid->item(0, 1)->flags() & Qt::ItemIsEditable));
    QCOMPARE(grid->item(4, 0)->text(), QString("menuName"));
    QCOMPARE(grid->item(4, 1)->text(), QString("Main"));
    QVERIFY(grid->item(4, 1)->flags() & Qt::ItemIsEditable);
    QVERIFY2(help->PlainText().starts_with("DivXMediaMenu"), help->PlainText().c_str());
    QVERIFY(help->PlainText().find("[b]") == std::string::npos);

    QVERIFY(!w.project().FileIsDirty);
    grid->item(4, 1)->setText("Start");
    QCOMPARE(GetPropertyInNode(*menu, "menuName"), std::string("Start"));
    QVERIFY(w.project().FileIsDirty);
    auto* tree = w.Widget<QTreeView>("TreeView1");
    QCOMPARE(tree->model()->index(4, 0, tree->currentIndex()).data().toString(), QString("menuName = Start"));

    // "<none>" takes the row away.
    grid->item(3, 1)->setText(kNoneMarker);
    QCOMPARE(menu->ChildCount(), std::size_t{5}); // four rows and the button
    QCOMPARE(GetPropertyInNode(*menu, "menuType"), std::string());
    QTest::qWait(0);
    QCOMPARE(grid->rowCount(), 4);

    // A row has no help block nor properties of its own.
    tree->setCurrentIndex(tree->model()->index(0, 0, tree->currentIndex()));
    QCOMPARE(help->PlainText(), std::string("none"));
    QCOMPARE(grid->rowCount(), 0);
}

void Form1Test::cancelAtExitKeepsWindowAndFiles()
{
    Window w;
    w.form->show();
    w.OpenByMenu(w.WriteProject());
    w.project().MarkDirty();
    const std::filesystem::path autoSave = w.Folder() / "_tmpFile_1_05.03.2004_18.22.01.xml";
    test::WriteFile(autoSave, kProject);

    w.prompt.Answers.push_back(PromptAnswer::Cancel);
    QVERIFY(!w.form->close());
    QVERIFY(w.form->isVisible());
    QCOMPARE(w.prompt.Texts().back(), std::string("File is not saved. Save it now?"));
    QVERIFY(std::filesystem::exists(autoSave));
    QVERIFY(!std::filesystem::exists(w.Folder() / "Menuwright.ini"));

    w.prompt.Answers.push_back(PromptAnswer::No);
    QVERIFY(w.form->close());
    QVERIFY(!std::filesystem::exists(autoSave));
    QVERIFY(std::filesystem::exists(w.Folder() / "Menuwright.ini"));
}

void Form1Test::splittersComeFromAndGoToSettings()
{
    Window w(Ini("[General]\r\nDiax=200\r\nDiax2=500\r\nWidth=12000\r\nHeight=6000\r\nLeft=1500\r\nTop=1500\r\n"));
    QCOMPARE(w.form->geometry(), QRect(100, 100, 800, 400));
    w.form->show();
    QVERIFY(QTest::qWaitForWindowExposed(w.form.get()));
    auto* splitter = w.form->findChild<QSplitter*>();
    auto* left = w.Widget<QWidget>("lblDiax");
    auto* right = w.Widget<QWidget>("lblDiax2");
    // With nothing selected the panes are hidden, and so is the strip between them.
    w.OpenByMenu(w.WriteProject());
    QVERIFY(!right->isVisible());
    w.Select("12");
    QTRY_VERIFY(right->isVisible()); // the splitter lays out on its next turn
    QCOMPARE(splitter->sizes().front(), 200);
    QCOMPARE(left->x(), 200);
    QCOMPARE(right->x(), 500);

    // A drag with the button held, from the left strip to well past the right one, stops short of it.
    const QPoint from = left->mapToGlobal(QPoint(2, 10));
    const QPoint to = right->mapToGlobal(QPoint(200, 10));
    const auto send = [left](QEvent::Type type, QPoint global, Qt::MouseButtons buttons) {
        QMouseEvent event(type, left->mapFromGlobal(global), global, Qt::LeftButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(left, &event);
    };
    send(QEvent::MouseButtonPress, from, Qt::LeftButton);
    send(QEvent::MouseMove, to, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, to, Qt::NoButton);
    QVERIFY2(left->x() > 200, "the strip did not follow the mouse");
    QVERIFY(left->x() + left->width() < right->x());
    QVERIFY(w.Widget<QWidget>("PicCon")->width() > 0);

    splitter->setSizes({150, 300, splitter->width() - 462});
    w.Action("mnuSimpleMode")->trigger();
    // Hidden again at the end, the right pane keeps the strip's last place.
    w.Action("mnuClose")->trigger();
    QTRY_VERIFY(!right->isVisible());
    QVERIFY(w.form->close());
    clsIniFile ini((w.Folder() / "Menuwright.ini").string());
    QCOMPARE(ini.GetString("Diax", ""), std::string("150"));
    QCOMPARE(ini.GetString("Diax2", ""), std::string("456"));
    QCOMPARE(ini.GetString("SimpleMode", ""), std::string("-1"));

    Window again(Ini("[General]\r\nSimpleMode=-1\r\n"));
    QVERIFY(again.Action("mnuSimpleMode")->isChecked());
    QVERIFY(again.Widget<QWidget>("tv2")->isVisibleTo(again.form.get()));
}

void Form1Test::firstStartFillsMostOfTheScreen()
{
    Window w;
    QVERIFY(w.program.FirstStart);
    const QRect screen = w.form->screen()->availableGeometry();
    const QRect window = w.form->geometry();
    QCOMPARE(window.size(), screen.size() * 0.8);
    QCOMPARE(window.center(), screen.center());
    // The canvas takes the room; the panes beside it keep the tree's width.
    w.form->show();
    QVERIFY(QTest::qWaitForWindowExposed(w.form.get()));
    w.OpenByMenu(w.WriteProject());
    w.Select("12");
    auto* splitter = w.form->findChild<QSplitter*>();
    QTRY_COMPARE(splitter->sizes()[2], 263);
    QCOMPARE(splitter->sizes()[0], 263);
    QCOMPARE(splitter->sizes()[1], splitter->width() - 2 * 263 - 12);
}

void Form1Test::everyToolbarButtonAndTheWindowHaveAPicture()
{
    // A picture that draws nothing would pass a null check: count its painted pixels.
    const auto paints = [](const QIcon& icon) {
        const QImage image = icon.pixmap(QSize(24, 24)).toImage();
        int painted = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                painted += qAlpha(image.pixel(x, y)) > 0;
        return painted > 24;
    };
    Window w;
    int buttons = 0;
    for (const char* bar : {"Toolbar1", "ToolbarPic"}) {
        for (QAction* action : w.form->findChild<QToolBar*>(bar)->actions()) {
            if (action->isSeparator())
                continue;
            ++buttons;
            QVERIFY2(paints(action->icon()), qPrintable(action->objectName()));
        }
    }
    QCOMPARE(buttons, 26);
    QVERIFY(paints(w.form->windowIcon()));

    // So does every row of the tree, whatever its kind.
    w.OpenByMenu(w.WriteProject());
    const QAbstractItemModel* tree = w.Widget<QTreeView>("TreeView1")->model();
    std::function<void(const QModelIndex&)> check = [&](const QModelIndex& parent) {
        for (int row = 0; row < tree->rowCount(parent); ++row) {
            const QModelIndex index = tree->index(row, 0, parent);
            QVERIFY2(paints(index.data(Qt::DecorationRole).value<QIcon>()), qPrintable(index.data().toString()));
            check(index);
        }
    };
    check({});

    // Our own drawings stand in wherever the desktop has no theme; each must load by itself.
    const QStringList drawings = QDir(":/icons").entryList({"*.svg"});
    QCOMPARE(drawings.size(), 25);
    for (const QString& name : drawings)
        QVERIFY2(paints(QIcon(":/icons/" + name)), qPrintable(name));
    QVERIFY(ToolbarIcon("noSuchKey").isNull());
}

void Form1Test::autoSaveTimerSavesTheOpenProject()
{
    Window w(Ini("[General]\r\nAutoSaveMin=1\r\n"));
    auto* timer = w.form->findChild<QTimer*>("tmrAutoSave");
    QVERIFY(timer);
    QCOMPARE(timer->interval(), 60000);
    const auto autoSaves = [&w] {
        int count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(w.Folder()))
            count += entry.path().filename().string().starts_with("_tmpFile_");
        return count;
    };
    QVERIFY(!timer->isActive()); // nothing open
    timer->setInterval(1);
    w.OpenByMenu(w.WriteProject());
    QVERIFY(timer->isActive());
    QTRY_VERIFY(autoSaves() > 0);
    w.Action("mnuClose")->trigger();
    QVERIFY(!timer->isActive());
}

void Form1Test::progressGoesToTheNamedPanel()
{
    Window w;
    w.form->ShowProgress({"menu"}, "Reading movie");
    QCOMPARE(w.MenuPanel(), QString("Reading movie"));
    w.form->ShowProgress({""}, "Step 2 of 5");
    QCOMPARE(w.form->statusBar()->currentMessage(), QString("Step 2 of 5"));
}

void Form1Test::nickFileOpensAtStart()
{
    Window w;
    w.form->OpenStartProject();
    QCOMPARE(w.Widget<QTreeView>("TreeView1")->model()->rowCount(), 0);

    w.WriteProject("nick.xml");
    w.form->OpenStartProject();
    QVERIFY(w.form->windowTitle().startsWith("nick.xml - "));
    QVERIFY(w.Action("mnuSave")->isEnabled());
}

void Form1Test::languageSwitchRelabelsWindowAndDialogs()
{
    Window w(Window::Files{{"German.Menuwright.exe.xml", R"(<Lang><Private Creator="Bernd" ProgramVersion="0"/>
<Form1_Design Form1="Hauptfenster" mnuOpen="Oeffnen..." mnuOpen_ToolTipText="Projekt oeffnen"
 mnuRecent_0="Keine Dateien" Toolbar1_2_ToolTipText="Xml oeffnen"/>
<frmOptions_Design frmOptions="Optionen" TabStrip1_1="Allgemein" TabStrip1_1_ToolTipText="Tipp"
 CancelButton="Abbrechen"/>
<frmAbout_Design frmAbout="Ueber"/></Lang>)"}});
    QAction* open = w.Action("mnuOpen");
    QCOMPARE(open->text(), QString("Open..."));
    QAction* german = w.Action("mnuLangDef_1");
    QVERIFY(german);
    QCOMPARE(german->text(), QString("German"));
    QVERIFY(!german->isChecked());

    const QString title = w.form->windowTitle();
    german->trigger();
    // The caption names the project, whatever the file calls the window.
    QCOMPARE(w.form->windowTitle(), title);
    QCOMPARE(open->text(), QString("Oeffnen..."));
    QCOMPARE(open->toolTip(), QString("Projekt oeffnen"));
    QCOMPARE(w.Action("mnuRecent_0")->text(), QString("Keine Dateien"));
    QCOMPARE(w.Button("Toolbar1", "openXml")->toolTip(), QString("Xml oeffnen"));
    QVERIFY(german->isChecked());
    // Texts the file does not hold stay as they were.
    QCOMPARE(w.Action("mnuSave")->text(), QString("Save"));

    // Dialogs are labelled when they open.
    QStringList seen;
    for (const char* command : {"mnuOptions", "mnuAbout"}) {
        test::OnNextDialog([&seen](QDialog& dialog) {
            seen << dialog.windowTitle();
            if (auto* tabs = dialog.findChild<QTabWidget*>("TabStrip1"))
                seen << tabs->tabText(0) << tabs->tabToolTip(0);
            if (auto* cancel = dialog.findChild<QAbstractButton*>("CancelButton"))
                seen << cancel->text();
            dialog.reject();
        });
        w.Action(command)->trigger();
    }
    QCOMPARE(seen, QStringList({"Optionen", "Allgemein", "Tipp", "Abbrechen", "Ueber"}));
}

void Form1Test::nodeStepsAndSimpleModeSelectInTreeView1()
{
    Window w;
    w.OpenByMenu(w.WriteProject());
    // Next and previous node stop at the ends.
    w.Select("12");
    w.Action("mnuNextNode")->trigger();
    QCOMPARE(w.SelectedKey(), std::string("k13"));
    w.Action("mnuNextNode")->trigger();
    QCOMPARE(w.SelectedKey(), std::string("k13"));
    w.Action("mnuPreviusNode")->trigger();
    QCOMPARE(w.SelectedKey(), std::string("k12"));

    auto* tv2 = w.Widget<QTreeWidget>("tv2");
    auto* treeView1 = w.Widget<QTreeView>("TreeView1");
    QVERIFY(!tv2->isVisibleTo(w.form.get()));
    QVERIFY(w.Action("mnuExpertMode")->isChecked());

    w.Action("mnuSimpleMode")->trigger();
    QVERIFY(tv2->isVisibleTo(w.form.get()));
    QVERIFY(!treeView1->isVisibleTo(w.form.get()));
    QVERIFY(!w.Action("mnuExpertMode")->isChecked());
    QCOMPARE(tv2->topLevelItemCount(), 2);
    QCOMPARE(tv2->topLevelItem(1)->text(0), QString("Menus (en)"));

    emit tv2->itemClicked(FindRow(tv2, "Menu Second (root)"), 0);
    QCOMPARE(w.SelectedKey(), std::string("k13"));
    emit tv2->itemClicked(FindRow(tv2, "Button 20"), 0);
    QCOMPARE(w.SelectedKey(), std::string("k20"));
    // A title row only selects itself.
    emit tv2->itemClicked(FindRow(tv2, "Titles"), 0);
    QCOMPARE(w.SelectedKey(), std::string("k20"));

    // A structural change rebuilds the shown simple tree.
    w.Action("mnuClose")->trigger();
    QCOMPARE(tv2->topLevelItemCount(), 0);

    w.Action("mnuExpertMode")->trigger();
    QVERIFY(treeView1->isVisibleTo(w.form.get()));
    QVERIFY(!tv2->isVisibleTo(w.form.get()));
}

void Form1Test::fileFiltersInQtForm_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("expected");
    QTest::newRow("one pair") << "*.xml|*.xml" << "*.xml (*.xml)";
    QTest::newRow("several patterns") << "*.avi;*.divx|*.avi;*.divx" << "*.avi;*.divx (*.avi *.divx)";
    QTest::newRow("two pairs") << "Movies|*.avi|All files|*.*" << "Movies (*.avi);;All files (*.*)";
    QTest::newRow("a named file") << "cli.exe|cli.exe" << "cli.exe (cli.exe)";
    QTest::newRow("empty") << "" << "";
}

void Form1Test::fileFiltersInQtForm()
{
    QFETCH(QString, filter);
    QFETCH(QString, expected);
    QCOMPARE(QtFileFilter(filter.toStdString()), expected);
}

QTEST_MAIN(Form1Test)
#include "Form1Test.moc"
