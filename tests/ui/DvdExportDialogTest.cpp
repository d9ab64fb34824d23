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
namespace fs = std::filesystem;

class DvdExportDialogTest : public QObject {
    Q_OBJECT
private slots:
    void defaultsComeFromTheProjectAndChoicesReachTheRequest();
};

void DvdExportDialogTest::defaultsComeFromTheProjectAndChoicesReachTheRequest()
{
    test::MainWindow w;
    std::string twoLanguages = test::kCanvasProject;
    twoLanguages.insert(twoLanguages.find("</DivXMediaManager>"),
                        R"(<LanguageMenus objectID="30" languageCode="de" startingMenuID="none" rootMenuID="none"/>)");
    w.Write("disc.xml", twoLanguages);
    w.OpenByMenu((w.Folder() / "disc.xml").string());
    QVERIFY(w.Action("mnuExportDvd")->isEnabled());
    w.project().MovieFps = 29.97;
    const DvdExportChoices choices = DvdExportDefaults(w.project());
    QCOMPARE(choices.Folder, (w.Folder() / "disc DVD").string());
    QCOMPARE(choices.Standard, TvStandard::Ntsc);
    QCOMPARE(choices.Languages, (std::vector<std::string>{"en", "de"}));

    ScriptedPrompt prompt;
    DvdExportDialog dialog(choices, prompt);
    DvdExportRequest request = dialog.Request();
    QCOMPARE(request.Target, fs::path(choices.Folder));
    QCOMPARE(request.Standard, std::optional(TvStandard::Ntsc));
    QVERIFY(!request.Iso);
    QCOMPARE(request.Language, std::string());

    auto* iso = Child<QCheckBox>(dialog, "chkIso");
    iso->setChecked(true);
    QCOMPARE(dialog.Request().Iso, std::optional(fs::path(choices.Folder + ".iso")));
    prompt.SavedFiles = {"/images/film.iso"};
    Click(dialog, "cmdIso");
    prompt.Folders = {"/elsewhere/Disc", std::nullopt};
    Click(dialog, "cmdFolder");
    Click(dialog, "cmdFolder"); // cancelled: the folder stays
    Child<QComboBox>(dialog, "cboStandard")->setCurrentIndex(0);
    Child<QComboBox>(dialog, "cboLanguage")->setCurrentIndex(2);
    request = dialog.Request();
    QCOMPARE(request.Target, fs::path("/elsewhere/Disc"));
    QCOMPARE(request.Iso, std::optional(fs::path("/images/film.iso")));
    QCOMPARE(request.Standard, std::optional(TvStandard::Pal));
    QCOMPARE(request.Language, std::string("de"));

    // Export waits for a folder, and for an image's name when one is asked for.
    auto* exportButton = Child<QPushButton>(dialog, "cmdExport");
    Child<QLineEdit>(dialog, "txtIso")->clear();
    QVERIFY(!exportButton->isEnabled());
    iso->setChecked(false);
    QVERIFY(exportButton->isEnabled());
    Child<QLineEdit>(dialog, "txtFolder")->setText("  ");
    QVERIFY(!exportButton->isEnabled());
}

QTEST_MAIN(DvdExportDialogTest)
#include "DvdExportDialogTest.moc"
