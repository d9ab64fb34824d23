#include "MainWindowFixture.h"

#include <QTest>
#include <QToolBar>

using namespace mw;

namespace {

const char* kGerman = R"(<Lang><Form1_Design mnuRecent_0="Keine Dateien" Toolbar1_9_ToolTipText="DivX erstellen"
 mnuNewWizard_ToolTipText="Assistent"/></Lang>)";

QStringList Ticked(const test::MainWindow& w)
{
    QStringList ticked;
    for (QAction* item : w.form->findChildren<QAction*>(QRegularExpression("^mnuLangDef_\\d+$"))) {
        if (item->isChecked())
            ticked << item->text();
    }
    return ticked;
}

} // namespace

class LanguageMenuTest : public QObject {
    Q_OBJECT
private slots:
    void missingLanguageTicksNothingAndAFailedSwitchMovesNoTick();
    void switchKeepsRecentFilesAndTheMarkOfMissingCommands();
};

void LanguageMenuTest::missingLanguageTicksNothingAndAFailedSwitchMovesNoTick()
{
    test::MainWindow nosuch({{"Menuwright.ini", "[General]\r\nLang=Nosuch\r\n"},
                             {"English.Menuwright.exe.xml", "<Lang/>"},
                             {"German.Menuwright.exe.xml", kGerman}});
    QCOMPARE(Ticked(nosuch), QStringList());

    test::MainWindow w({{"Menuwright.ini", "[General]\r\nLang=English\r\n"},
                        {"English.Menuwright.exe.xml", "<Lang/>"},
                        {"German.Menuwright.exe.xml", kGerman}});
    QCOMPARE(Ticked(w), QStringList{"English"});
    std::filesystem::remove(w.Folder() / "German.Menuwright.exe.xml");
    w.Action("mnuLangDef_2")->trigger();
    QCOMPARE(Ticked(w), QStringList{"English"});
    QCOMPARE(w.program.Lang.LangName(), std::string("English"));
}

void LanguageMenuTest::switchKeepsRecentFilesAndTheMarkOfMissingCommands()
{
    test::MainWindow w({{"Menuwright.ini", "[RecentFiles]\r\nFilesCount=1\r\nFile1=/p/first.xml\r\n"},
                        {"German.Menuwright.exe.xml", kGerman}});
    w.Action("mnuLangDef_1")->trigger();
    QCOMPARE(Ticked(w), QStringList{"German"});
    QCOMPARE(w.Action("mnuRecent_0")->text(), QString("/p/first.xml"));
    QAction* divx = w.form->findChild<QToolBar*>("Toolbar1")->findChild<QAction*>("DivX");
    QCOMPARE(divx->toolTip(), QString("DivX erstellen"));
    QCOMPARE(w.Action("mnuNewWizard")->toolTip(), QString("Assistent (Not available yet)"));
}

QTEST_MAIN(LanguageMenuTest)
#include "LanguageMenuTest.moc"
