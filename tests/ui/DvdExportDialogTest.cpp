#include "../document/TestProjects.h"
#include "MainWindowFixture.h"

#include "ui/dvd/DvdExportDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

using namespace mw;
using test::Child;
using test::Click;

class DvdExportDialogTest : public QObject {
    Q_OBJECT
private slots:
    void defaultsComeFromTheProject();
    void choicesReachTheRequest();
};

void DvdExportDialogTest::defaultsComeFromTheProject()
{
    test::MainWindow w;
    std::string twoLanguages = test::kCanvasProject;
    twoLanguages.insert(twoLanguages.find("</DivXMediaManager>"),
                        R"(<LanguageMenus objectID="30" languageCode="de" startingMenuID="12" rootMenuID="none"/>)");
    w.Write("disc.xml", twoLanguages);
    w.OpenByMenu((w.Folder() / "disc.xml").string());
    w.project().MovieFps = 25;
    DvdExportChoices choices = DvdExportDefaults(w.project());
    QCOMPARE(choices.Folder, (w.Folder() / "disc DVD").string());
    QCOMPARE(choices.Standard, TvStandard::Pal);
    QCOMPARE(choices.Languages, (std::vector<std::string>{"en", "de"}));
    w.project().MovieFps = 29.97;
    QCOMPARE(DvdExportDefaults(w.project()).Standard, TvStandard::Ntsc);

    // The entry is on the File menu and waits for a project.
    QAction* entry = w.Action("mnuExportDvd");
    QVERIFY(entry);
    QCOMPARE(entry->text(), QString("Export DVD-Video..."));
    QVERIFY(entry->isEnabled());
}

void DvdExportDialogTest::choicesReachTheRequest()
{
    ScriptedPrompt prompt;
    DvdExportDialog dialog({"/discs/Film DVD", TvStandard::Ntsc, {"en", "de"}}, prompt);
    DvdExportRequest request = dialog.Request();
    QCOMPARE(request.Target, std::filesystem::path("/discs/Film DVD"));
    QCOMPARE(request.Standard, std::optional(TvStandard::Ntsc));
    QVERIFY(!request.Iso);
    QCOMPARE(request.Language, std::string());
    auto* iso = Child<QLineEdit>(dialog, "txtIso");
    QVERIFY(!iso->isEnabled());

    Child<QCheckBox>(dialog, "chkIso")->setChecked(true);
    QVERIFY(iso->isEnabled());
    QCOMPARE(dialog.Request().Iso, std::optional<std::filesystem::path>("/discs/Film DVD.iso"));
    prompt.SavedFiles = {"/images/film.iso"};
    Click(dialog, "cmdIso");
    prompt.Folders = {"/elsewhere/Disc"};
    Click(dialog, "cmdFolder");
    Child<QComboBox>(dialog, "cboStandard")->setCurrentIndex(0);
    Child<QComboBox>(dialog, "cboLanguage")->setCurrentIndex(2);
    request = dialog.Request();
    QCOMPARE(request.Target, std::filesystem::path("/elsewhere/Disc"));
    QCOMPARE(request.Iso, std::optional<std::filesystem::path>("/images/film.iso"));
    QCOMPARE(request.Standard, std::optional(TvStandard::Pal));
    QCOMPARE(request.Language, std::string("de"));

    // Nothing to export into: the button waits; a cancelled folder dialog keeps the folder.
    auto* exportButton = Child<QPushButton>(dialog, "cmdExport");
    QVERIFY(exportButton->isEnabled());
    iso->clear();
    QVERIFY(!exportButton->isEnabled());
    Child<QCheckBox>(dialog, "chkIso")->setChecked(false);
    QVERIFY(exportButton->isEnabled());
    prompt.Folders = {std::nullopt};
    Click(dialog, "cmdFolder");
    QCOMPARE(dialog.Request().Target, std::filesystem::path("/elsewhere/Disc"));
    Child<QLineEdit>(dialog, "txtFolder")->setText("  ");
    QVERIFY(!exportButton->isEnabled());
}

QTEST_MAIN(DvdExportDialogTest)
#include "DvdExportDialogTest.moc"
