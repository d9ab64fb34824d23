#include "MainWindowFixture.h"

#include <QAbstractButton>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>
#include <QTreeWidget>

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

// The main window, with a German language file beside it when one is given.
struct Window : test::MainWindow {
    explicit Window(const std::string& languageFile = {})
        : MainWindow(languageFile.empty() ? Files{} : Files{{"German.Menuwright.exe.xml", languageFile}})
    {
    }
    void Open()
    {
        Write("demo.xml", kProject);
        OpenByMenu((Folder() / "demo.xml").string());
    }
    QAction* Button(const char* bar, const char* key) const
    {
        return form->findChild<QToolBar*>(bar)->findChild<QAction*>(key);
    }
};

QTreeWidgetItem* FindRow(QTreeWidget* tree, const QString& text)
{
    const auto found = tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? nullptr : found.front();
}

} // namespace

class MainWindowPanesTest : public QObject {
    Q_OBJECT
private slots:
    void languageSwitchRelabelsTheWindow();
    void dialogsAreLabelledWhenTheyOpen();
    void simpleModeSwapsTreesAndClicksSelectInTreeView1();
    void nextAndPreviousNodeStopAtTheEnds();
    void toolbarButtonsFollowTheirCommands();
};

void MainWindowPanesTest::languageSwitchRelabelsTheWindow()
{
    Window window(R"(<Lang><Private Creator="Bernd" ProgramVersion="0"/>
<Form1_Design Form1="Hauptfenster" mnuOpen="Oeffnen..." mnuOpen_ToolTipText="Projekt oeffnen"
 mnuRecent_0="Keine Dateien" Toolbar1_2_ToolTipText="Xml oeffnen"/></Lang>)");
    QAction* open = window.Action("mnuOpen");
    QCOMPARE(open->text(), QString("Open..."));
    QAction* german = window.Action("mnuLangDef_1");
    QVERIFY(german);
    QCOMPARE(german->text(), QString("German"));
    QVERIFY(!german->isChecked());

    const QString title = window.form->windowTitle();
    german->trigger();
    // The caption names the project, whatever the file calls the window.
    QCOMPARE(window.form->windowTitle(), title);
    QCOMPARE(open->text(), QString("Oeffnen..."));
    QCOMPARE(open->toolTip(), QString("Projekt oeffnen"));
    QCOMPARE(window.Action("mnuRecent_0")->text(), QString("Keine Dateien"));
    QCOMPARE(window.Button("Toolbar1", "openXml")->toolTip(), QString("Xml oeffnen"));
    QVERIFY(german->isChecked());
    // Texts the file does not hold stay as they were.
    QCOMPARE(window.Action("mnuSave")->text(), QString("Save"));
}

void MainWindowPanesTest::dialogsAreLabelledWhenTheyOpen()
{
    Window window(R"(<Lang><frmOptions_Design frmOptions="Optionen" TabStrip1_1="Allgemein" CancelButton="Abbrechen"/>
<frmAbout_Design frmAbout="Ueber"/></Lang>)");
    window.Action("mnuLangDef_1")->trigger();
    QStringList seen;
    const auto closeWhenOpen = [&seen] {
        test::OnNextDialog([&seen](QDialog& dialog) {
            seen << dialog.windowTitle();
            if (auto* tabs = dialog.findChild<QTabWidget*>("TabStrip1"))
                seen << tabs->tabText(0);
            if (auto* cancel = dialog.findChild<QAbstractButton*>("CancelButton"))
                seen << cancel->text();
            dialog.reject();
        });
    };
    closeWhenOpen();
    window.Action("mnuOptions")->trigger();
    closeWhenOpen();
    window.Action("mnuAbout")->trigger();
    QCOMPARE(seen, QStringList({"Optionen", "Allgemein", "Abbrechen", "Ueber"}));
}

void MainWindowPanesTest::simpleModeSwapsTreesAndClicksSelectInTreeView1()
{
    Window window;
    window.Open();
    auto* tv2 = window.form->findChild<QTreeWidget*>("tv2");
    auto* treeView1 = window.form->findChild<QTreeView*>("TreeView1");
    QVERIFY(!tv2->isVisibleTo(window.form.get()));
    QVERIFY(window.Action("mnuExpertMode")->isChecked());

    window.Action("mnuSimpleMode")->trigger();
    QVERIFY(tv2->isVisibleTo(window.form.get()));
    QVERIFY(!treeView1->isVisibleTo(window.form.get()));
    QVERIFY(!window.Action("mnuExpertMode")->isChecked());
    QCOMPARE(tv2->topLevelItemCount(), 2);
    QCOMPARE(tv2->topLevelItem(1)->text(0), QString("Menus (en)"));

    emit tv2->itemClicked(FindRow(tv2, "Menu Second (root)"), 0);
    QCOMPARE(window.SelectedKey(), std::string("k13"));
    emit tv2->itemClicked(FindRow(tv2, "Button 20"), 0);
    QCOMPARE(window.SelectedKey(), std::string("k20"));
    // A title row only selects itself.
    emit tv2->itemClicked(FindRow(tv2, "Titles"), 0);
    QCOMPARE(window.SelectedKey(), std::string("k20"));

    // A structural change rebuilds the shown simple tree.
    window.Action("mnuClose")->trigger();
    QCOMPARE(tv2->topLevelItemCount(), 0);

    window.Action("mnuExpertMode")->trigger();
    QVERIFY(treeView1->isVisibleTo(window.form.get()));
    QVERIFY(!tv2->isVisibleTo(window.form.get()));
}

void MainWindowPanesTest::nextAndPreviousNodeStopAtTheEnds()
{
    Window window;
    window.Open();
    window.Select("12");
    window.Action("mnuNextNode")->trigger();
    QCOMPARE(window.SelectedKey(), std::string("k13"));
    window.Action("mnuNextNode")->trigger();
    QCOMPARE(window.SelectedKey(), std::string("k13"));
    window.Action("mnuPreviusNode")->trigger();
    QCOMPARE(window.SelectedKey(), std::string("k12"));
}

void MainWindowPanesTest::toolbarButtonsFollowTheirCommands()
{
    Window window;
    QAction* save = window.Button("Toolbar1", "save");
    QAction* noOverlays = window.Button("Toolbar1", "NoCreateOverlays");
    QVERIFY(!save->isEnabled());
    QVERIFY(!noOverlays->isEnabled());
    QVERIFY(noOverlays->isCheckable());
    QCOMPARE(noOverlays->toolTip(), QString("Dont recreate overlays (del temp must be false)"));
    QCOMPARE(window.Button("Toolbar1", "addLang")->toolTip(), QString("Add Language Menu (Not available yet)"));
    QVERIFY(!window.Button("ToolbarPic", "buttonAdd")->isEnabled());

    window.Write("demo.xml", kProject);
    window.prompt.OpenedFiles.push_back({(window.Folder() / "demo.xml").string()});
    window.Button("Toolbar1", "openXml")->trigger();
    QVERIFY(window.form->CurrentProject().ItemsEnabled);
    QVERIFY(save->isEnabled());
    QVERIFY(noOverlays->isEnabled());
    QVERIFY(!window.Button("Toolbar1", "addLang")->isEnabled());
}

QTEST_MAIN(MainWindowPanesTest)
#include "MainWindowPanesTest.moc"
