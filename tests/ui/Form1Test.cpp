#include "MainWindowFixture.h"

#include "core/settings/clsIniFile.h"
#include "ui/QtPrompt.h"
#include "ui/widgets/TextFormatWidget.h"

#include <QLabel>
#include <QMouseEvent>
#include <QSplitter>
#include <QStatusBar>
#include <QTableWidget>
#include <QTest>

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
<DivXMediaMenu objectID="12" backgroundVideoID="none" backgroundAudioID="none" menuType="title" menuName="Main"/>
</LanguageMenus>
</DivXMediaManager>
)";

// The main window, with a settings file of its own when one is given.
struct Window : test::MainWindow {
    explicit Window(const std::string& ini = {}) : MainWindow(ini.empty() ? Files{} : Files{{"Menuwright.ini", ini}}) {}

    std::string WriteProject(const char* name = "demo.xml") const
    {
        Write(name, kProject);
        return (Folder() / name).string();
    }
};

} // namespace

class Form1Test : public QObject {
    Q_OBJECT
private slots:
    void menuEntriesCarryCaptionShortcutAndName_data();
    void menuEntriesCarryCaptionShortcutAndName();
    void documentCommandsFollowTheProject();
    void openingFillsTreeAndRecentFiles();
    void selectingNodeFillsPropertiesAndHelp();
    void editingRowWritesTreeAndMarksDirty();
    void cancelAtExitKeepsWindowAndFiles();
    void splitterWidthsComeFromAndGoToSettings();
    void splitterStopsShortOfTheOther();
    void selectionDrivesCommandsAndMenuPanel();
    void autoSaveTimerSavesTheOpenProject();
    void progressGoesToTheNamedPanel();
    void nickFileOpensAtStart();
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
    QTest::newRow("open") << "mnuOpen" << "Open..." << "Ctrl+O" << true;
    QTest::newRow("exit") << "mnuExit" << "Exit" << "" << true;
    QTest::newRow("save") << "mnuSave" << "Save" << "Ctrl+S" << false;
    QTest::newRow("undo") << "mnuUndo" << "Undo" << "Ctrl+Z" << false;
    QTest::newRow("paste size") << "mnuPasteSize2" << "Paste button size" << "F5" << false;
    QTest::newRow("refresh title") << "mnuRefreshTitle" << "Refresh Title" << "Ctrl+F6" << false;
    QTest::newRow("remove button") << "mnuRemoveButton" << "Remove Button" << "Shift+F8" << false;
    QTest::newRow("create divx") << "mnuCreateDivX" << "Create DivX" << "F12" << false;
    QTest::newRow("previous node") << "mnuPreviusNode" << "Previous node" << "F2" << false;
    QTest::newRow("movies with menu") << "mnuMoviesWithMenu" << "Many movies with menu..." << "Ctrl+M" << false;
    QTest::newRow("sub2divx") << "mnuSrt2Divx" << "Sub2DivX (Add subtitles)" << "" << false;
    QTest::newRow("new language") << "mnuCreateLangNick" << "Create new Language..." << "" << false;
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

    // Every entry of the table is on the bar once, and no command is missing its place.
    int entries = 0;
    for (const MenuEntry& entry : MainMenuEntries()) {
        if (!entry.Caption || entry.Source == CommandSource::Submenu)
            continue;
        ++entries;
        QCOMPARE(w.form->findChildren<QAction*>(entry.Name).size(), 1);
        if (entry.Source == CommandSource::NotYet)
            QCOMPARE(w.Action(entry.Name)->toolTip(), QString(kNotAvailableYet));
    }
    QCOMPARE(entries, 47);
}

void Form1Test::documentCommandsFollowTheProject()
{
    Window w;
    const char* documentCommands[] = {"mnuClose", "mnuSave", "mnuSaveAs", "mnuNormalize", "mnuCheck"};
    for (const char* name : documentCommands)
        QVERIFY2(!w.Action(name)->isEnabled(), name);
    QCOMPARE(w.form->windowTitle(), QString::fromStdString(WindowTitleFor("")));

    w.OpenByMenu(w.WriteProject());
    for (const char* name : documentCommands)
        QVERIFY2(w.Action(name)->isEnabled(), name);
    QVERIFY(!w.Action("mnuUndo")->isEnabled());
    QVERIFY(!w.Action("mnuAddMenu")->isEnabled());
    QVERIFY(w.form->windowTitle().startsWith("demo.xml - Menuwright ver. "));

    w.Action("mnuClose")->trigger();
    for (const char* name : documentCommands)
        QVERIFY2(!w.Action(name)->isEnabled(), name);
    QCOMPARE(w.Widget<QTreeView>("TreeView1")->model()->rowCount(), 0);
    QCOMPARE(w.form->windowTitle(), QString::fromStdString(WindowTitleFor("")));
}

void Form1Test::openingFillsTreeAndRecentFiles()
{
    Window w;
    QAction* none = w.Action("mnuRecent_0");
    QCOMPARE(none->text(), QString("No files"));
    QVERIFY(!none->isEnabled());

    const std::string path = w.WriteProject();
    w.OpenByMenu(path);
    auto* tree = w.Widget<QTreeView>("TreeView1");
    const QModelIndex root = tree->model()->index(0, 0);
    QCOMPARE(root.data().toString(), QString("DivXMediaManager"));
    QVERIFY(tree->isExpanded(root));
    QCOMPARE(tree->model()->rowCount(root), 7); // four attribute rows and three elements
    QCOMPARE(w.form->CurrentProject().Values().LastFolderUsed, w.Folder().string());

    QAction* recent = w.Action("mnuRecent_0");
    QCOMPARE(recent->text(), QString::fromStdString(path));
    QVERIFY(recent->isEnabled());

    // A cancelled open dialog leaves the project open.
    w.Action("mnuOpen")->trigger();
    QCOMPARE(tree->model()->rowCount(), 1);
}

void Form1Test::selectingNodeFillsPropertiesAndHelp()
{
    Window w;
    w.OpenByMenu(w.WriteProject());
    w.Select("12");
    auto* grid = w.Widget<QTableWidget>("Properties1");
    QCOMPARE(w.Widget<QLabel>("lblPropFor")->text(), QString("DivXMediaMenu properties"));
    QCOMPARE(grid->rowCount(), 5);
    QCOMPARE(grid->item(0, 0)->text(), QString("objectID"));
    QVERIFY(!(grid->item(0, 1)->flags() & Qt::ItemIsEditable));
    QCOMPARE(grid->item(4, 0)->text(), QString("menuName"));
    QCOMPARE(grid->item(4, 1)->text(), QString("Main"));
    QVERIFY(grid->item(4, 1)->flags() & Qt::ItemIsEditable);

    const QString help = QString::fromStdString(w.Widget<TextFormatWidget>("TextFormat1")->PlainText());
    QVERIFY2(help.startsWith("DivXMediaMenu"), qPrintable(help));
    QVERIFY(!help.contains("[b]"));

    // A row has no help block of its own.
    auto* tree = w.Widget<QTreeView>("TreeView1");
    tree->setCurrentIndex(tree->model()->index(0, 0, tree->currentIndex()));
    QCOMPARE(QString::fromStdString(w.Widget<TextFormatWidget>("TextFormat1")->PlainText()), QString("none"));
    QCOMPARE(grid->rowCount(), 0);
}

void Form1Test::editingRowWritesTreeAndMarksDirty()
{
    Window w;
    w.OpenByMenu(w.WriteProject());
    DocNode* menu = w.Select("12");
    QVERIFY(!w.form->CurrentProject().FileIsDirty);
    auto* grid = w.Widget<QTableWidget>("Properties1");
    grid->item(4, 1)->setText("Start");
    QCOMPARE(GetPropertyInNode(*menu, "menuName"), std::string("Start"));
    QVERIFY(w.form->CurrentProject().FileIsDirty);
    auto* tree = w.Widget<QTreeView>("TreeView1");
    QCOMPARE(tree->model()->index(4, 0, tree->currentIndex()).data().toString(), QString("menuName = Start"));

    // "<none>" takes the row away.
    grid->item(3, 1)->setText(kNoneMarker);
    QCOMPARE(menu->ChildCount(), std::size_t{4});
    QCOMPARE(GetPropertyInNode(*menu, "menuType"), std::string());
    QTest::qWait(0);
    QCOMPARE(grid->rowCount(), 4);
}

void Form1Test::cancelAtExitKeepsWindowAndFiles()
{
    Window w;
    w.form->show();
    w.OpenByMenu(w.WriteProject());
    w.form->CurrentProject().MarkDirty();
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

void Form1Test::splitterWidthsComeFromAndGoToSettings()
{
    Window w("[General]\r\nDiax=200\r\nDiax2=500\r\nWidth=12000\r\nHeight=6000\r\n");
    w.form->show();
    QVERIFY(QTest::qWaitForWindowExposed(w.form.get()));
    auto* splitter = w.form->findChild<QSplitter*>();
    QCOMPARE(splitter->sizes().front(), 200);
    QCOMPARE(w.Widget<QWidget>("lblDiax")->x(), 200);
    QCOMPARE(w.Widget<QWidget>("lblDiax2")->x(), 500);

    splitter->setSizes({150, 300, splitter->width() - 462});
    w.Action("mnuSimpleMode")->trigger();
    QVERIFY(w.form->close());
    clsIniFile ini((w.Folder() / "Menuwright.ini").string());
    QCOMPARE(ini.GetString("Diax", ""), std::string("150"));
    QCOMPARE(ini.GetString("Diax2", ""), std::string("456"));
    QCOMPARE(ini.GetString("SimpleMode", ""), std::string("-1"));

    Window again("[General]\r\nSimpleMode=-1\r\n");
    QVERIFY(again.Action("mnuSimpleMode")->isChecked());
    QVERIFY(again.Widget<QWidget>("tv2")->isVisibleTo(again.form.get()));
}

void Form1Test::splitterStopsShortOfTheOther()
{
    Window w("[General]\r\nDiax=200\r\nDiax2=500\r\n");
    w.form->show();
    QVERIFY(QTest::qWaitForWindowExposed(w.form.get()));
    auto* left = w.Widget<QWidget>("lblDiax");
    auto* right = w.Widget<QWidget>("lblDiax2");
    // A drag with the button held, from the left strip to well past the right one.
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
}

void Form1Test::selectionDrivesCommandsAndMenuPanel()
{
    Window w;
    w.OpenByMenu(w.WriteProject());
    QAction* removeTitle = w.Action("mnuRemoveTitle");
    QAction* refreshTitle = w.Action("mnuRefreshTitle");
    auto* panel = w.form->statusBar()->findChild<QLabel*>("menu");
    QVERIFY(!removeTitle->isEnabled());

    w.Select("6");
    QVERIFY(removeTitle->isEnabled());
    QVERIFY(refreshTitle->isEnabled());
    QCOMPARE(panel->text(), QString());

    w.Select("12");
    QVERIFY(!removeTitle->isEnabled());
    QCOMPARE(panel->text(), QString("Menu Main (title)"));

    w.Action("mnuClose")->trigger();
    QCOMPARE(panel->text(), QString());
    QVERIFY(!refreshTitle->isEnabled());
}

void Form1Test::autoSaveTimerSavesTheOpenProject()
{
    Window w("[General]\r\nAutoSaveMin=1\r\n");
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
    QCOMPARE(w.form->statusBar()->findChild<QLabel*>("menu")->text(), QString("Reading movie"));
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
