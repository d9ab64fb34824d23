#include "MainWindowFixture.h"

#include "core/settings/Settings.h"
#include "ui/dvd/DvdExportDialog.h"
#include "ui/generators/GeneratorWindow.h"
#include "ui/generators/ManyMoviesWindow.h"
#include "ui/help/HelpWindow.h"
#include "ui/languages/frmCreateLang.h"
#include "ui/menuplayer/MenuPlayerWindow.h"
#include "ui/subedit/frmButtonsFromDVDSubEdit.h"
#include "ui/subedit/frmDVDSubEditPreview.h"
#include "ui/subedit/frmDVDSubEditSettings.h"
#include "ui/wizard/WizardWindow.h"

#include <QFile>
#include <QTest>
#include <QToolBar>

#include <filesystem>
#include <functional>
#include <memory>

using namespace mw;

namespace {

namespace fs = std::filesystem;

// The main window over a program folder that holds the help the build put beside the program.
struct Window : test::MainWindow {
    explicit Window(const Files& files = {}) : test::MainWindow(files)
    {
        fs::create_directories(HelpFilePath(Folder()).parent_path());
        fs::copy_file(MENUWRIGHT_HELP_FILE, HelpFilePath(Folder()));
    }
};

QString HelpTopic()
{
    HelpWindow* help = OpenHelpWindow();
    return help ? help->Topic() : QString("(no help window)");
}

} // namespace

class HelpWindowTest : public QObject {
    Q_OBJECT
private slots:
    void f1AndTheHelpButtonsOpenTheHelpAtTheirWindowsTopic();
    void onTopRoundTripsThroughTheSettingsFile();
    void everyToolWindowOpensItsOwnPart();
};

void HelpWindowTest::f1AndTheHelpButtonsOpenTheHelpAtTheirWindowsTopic()
{
    Window w;
    w.form->show();
    QVERIFY(!OpenHelpWindow());
    QAction* contents = w.Action("mnuHelpHelp");
    QVERIFY(contents->isEnabled());
    contents->trigger();
    QCOMPARE(HelpTopic(), QString("contents"));

    QTest::keyClick(w.Widget<QWidget>("TreeView1"), Qt::Key_F1);
    QCOMPARE(HelpTopic(), QString("Form1"));

    // In a modal window the help opens over it at its topic, and stays usable beside it.
    QString fromKey;
    QString fromButton;
    QString helpParent;
    test::OnNextDialog([&](QDialog& options) {
        QTest::keyClick(test::Child<QWidget>(options, "TabStrip1"), Qt::Key_F1);
        fromKey = HelpTopic();
        helpParent = OpenHelpWindow()->parentWidget()->objectName();
        w.Action("mnuHelpHelp")->trigger();
        test::Click(options, "cmdHelp");
        fromButton = HelpTopic();
        test::Click(options, "CancelButton");
    });
    w.Action("mnuOptions")->trigger();
    QCOMPARE(fromKey, QString("frmOptions"));
    QCOMPARE(fromButton, QString("frmOptions"));
    QCOMPARE(helpParent, QString("frmOptions"));

    // Back and forward walk the topics shown; a topic the help lacks shows the contents.
    ShowHelp("titles");
    ShowHelp("generators");
    HelpWindow* help = OpenHelpWindow();
    QVERIFY(help);
    test::Click(*help, "cmdBack");
    QCOMPARE(HelpTopic(), QString("titles"));
    test::Click(*help, "cmdForward");
    QCOMPARE(HelpTopic(), QString("generators"));
    ShowHelp("no such window");
    QCOMPARE(HelpTopic(), QString("contents"));

    // The tool bars' help buttons.
    w.form->findChild<QToolBar*>("ToolbarPic")->findChild<QAction*>("help")->trigger();
    QCOMPARE(HelpTopic(), QString("menus"));
    w.form->findChild<QToolBar*>("Toolbar1")->findChild<QAction*>("help")->trigger();
    QCOMPARE(HelpTopic(), QString("contents"));
}

void HelpWindowTest::onTopRoundTripsThroughTheSettingsFile()
{
    std::string ini;
    {
        Window w;
        w.form->show();
        QAction* onTop = w.Action("mnuHelpOnTop");
        QVERIFY(onTop->isCheckable() && onTop->isChecked());
        ShowHelp();
        QVERIFY(OpenHelpWindow()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        onTop->trigger();
        QVERIFY(!w.project().Values().HelpOnTop);
        QVERIFY(!OpenHelpWindow()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        QVERIFY(OpenHelpWindow()->isVisible());
        QFile file(QString::fromStdString(SettingsFilePath(w.Folder()).string()));
        QVERIFY(file.open(QIODevice::ReadOnly));
        ini = file.readAll().toStdString();
    }
    Window again({{"Menuwright.ini", ini}});
    QVERIFY(!again.Action("mnuHelpOnTop")->isChecked());
    ShowHelp();
    QVERIFY(!OpenHelpWindow()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    again.Action("mnuHelpOnTop")->trigger();
    QVERIFY(OpenHelpWindow()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

// A window whose part is missing, or whose name differs from its part's, would show the contents.
void HelpWindowTest::everyToolWindowOpensItsOwnPart()
{
    Window w;
    w.form->show();
    Project& project = w.project();
    const std::filesystem::path folder = w.Folder();
    const std::vector<std::function<std::unique_ptr<QWidget>()>> windows{
        [&] { return std::make_unique<WizardWindow>(project); },
        [&] { return std::make_unique<ManyMoviesWindow>(project); },
        [&] { return std::make_unique<GeneratorWindow>(GeneratorKind::TitleMenu, project); },
        [&] { return std::make_unique<GeneratorWindow>(GeneratorKind::ChaptersMenu, project); },
        [&] { return std::make_unique<GeneratorWindow>(GeneratorKind::SetupMenu, project); },
        [&] { return std::make_unique<frmButtonsFromDVDSubEdit>(project, w.form.get()); },
        [&] { return std::make_unique<frmDVDSubEditPreview>(SubEditSet{}); },
        [&] { return std::make_unique<frmDVDSubEditSettings>(folder); },
        [&] { return std::make_unique<frmCreateLang>(folder, project.Lang(), w.prompt); },
        [&] { return std::make_unique<DvdExportDialog>(DvdExportChoices{}, w.prompt); },
        [&] { return std::make_unique<MenuPlayerWindow>(project); },
    };
    for (const auto& make : windows) {
        const std::unique_ptr<QWidget> window = make();
        const QString name = window->objectName();
        window->show();
        ShowHelp();
        QTest::keyClick(window.get(), Qt::Key_F1);
        QVERIFY2(HelpTopic() == name, qPrintable(name + " by F1 opened " + HelpTopic()));
        ShowHelp();
        test::Click(*window, "cmdHelp");
        QVERIFY2(HelpTopic() == name, qPrintable(name + " by its button opened " + HelpTopic()));
    }
    // The help tells of itself too.
    QTest::keyClick(OpenHelpWindow(), Qt::Key_F1);
    QCOMPARE(HelpTopic(), QString("frmHelp"));
}

QTEST_MAIN(HelpWindowTest)
#include "HelpWindowTest.moc"
