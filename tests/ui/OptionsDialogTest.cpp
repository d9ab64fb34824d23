#include "core/ScriptedPrompt.h"
#include "core/settings/Settings.h"
#include "ui/dialogs/ToolPathDialog.h"
#include "ui/dialogs/frmOptions.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QTest>

#include <filesystem>

using namespace mw;

namespace {

// A dialog over a program folder of its own, answered by a scripted prompt.
struct Options {
    QTemporaryDir home;
    std::filesystem::path folder{home.path().toStdString()};
    clsIniFile ini{SettingsFilePath(folder).string()};
    Settings settings;
    ScriptedPrompt prompt;
    frmOptions dialog{settings, ini, prompt, folder};

    template <typename T> T* Widget(const char* name) const
    {
        T* widget = dialog.findChild<T*>(name);
        if (!widget)
            qFatal("no control %s", name);
        return widget;
    }
    bool Enabled(const char* name) const { return Widget<QWidget>(name)->isEnabled(); }
    // A click as the user's, also on controls of a tab that is not in front.
    void Click(const char* name) const { Widget<QAbstractButton>(name)->click(); }
    Settings Reread()
    {
        Settings reread;
        LoadValues(reread, ini, folder);
        return reread;
    }
};

} // namespace

class OptionsDialogTest : public QObject {
    Q_OBJECT
private slots:
    void controlsFollowTheirSwitches();
    void missingFolderKeepsDialogOpen();
    void okWritesTheKeys();
    void shiftClickOnLabel12TogglesDebugMessages();
    void toolPathDialogsWriteTheirKey();
};

void OptionsDialogTest::controlsFollowTheirSwitches()
{
    Options o;
    o.dialog.show();
    QVERIFY(!o.Enabled("txtAutoSaveMin"));
    o.Click("chkAutoSave");
    QVERIFY(o.Enabled("txtAutoSaveMin"));

    // VirtualDubMod is the default method.
    QVERIFY(o.Enabled("chkOnlyVD"));
    for (const char* cli : {"chkDonNotInvolveCliExe", "chkShowDOScli", "Command2"})
        QVERIFY2(!o.Enabled(cli), cli);
    o.Click("optUseCli");
    QVERIFY(!o.Enabled("chkOnlyVD"));
    for (const char* cli : {"chkDonNotInvolveCliExe", "chkShowDOScli", "Command2"})
        QVERIFY2(o.Enabled(cli), cli);
    o.Click("optUseBuiltIn");
    QVERIFY(!o.Enabled("chkOnlyVD"));
    QVERIFY(!o.Enabled("chkShowDOScli"));

    QVERIFY(o.Enabled("chkDeleteBmp"));
    o.Click("chkDeleteTemp");
    QVERIFY(!o.Enabled("chkDeleteBmp"));
    QVERIFY(!o.Enabled("chkDeleteDivX"));
    o.Click("chkDeleteTemp");
    o.Click("chkDeleteDivX");
    QCOMPARE(o.prompt.Texts(), std::vector<std::string>{"I don't recommend to uncheck this"});
}

void OptionsDialogTest::missingFolderKeepsDialogOpen()
{
    Options o;
    o.dialog.show();
    o.Click("Option3");
    o.Widget<QLineEdit>("txtFolder")->setText(QString::fromStdString((o.folder / "nowhere").string()));
    o.Click("OKButton");
    QCOMPARE(o.prompt.Texts().size(), std::size_t{1});
    QVERIFY(o.dialog.isVisible());
    QVERIFY(!std::filesystem::exists(o.ini.FullPath()));

    // Command1 picks the folder, and then the dialog closes.
    o.prompt.Folders = {o.folder.string()};
    o.Click("Command1");
    QCOMPARE(o.prompt.Log.back().Text, std::string("Please select a folder"));
    o.Click("OKButton");
    QCOMPARE(o.dialog.result(), int(QDialog::Accepted));
    QCOMPARE(o.Reread().NewDivXSaveToFolder, o.folder.string());
}

void OptionsDialogTest::okWritesTheKeys()
{
    Options o;
    o.dialog.show();
    o.Click("chkAutoSave");
    QTest::keyClicks(o.Widget<QLineEdit>("txtAutoSaveMin"), "12");
    o.Click("optUseCli");
    o.Click("chkShowDOScli");
    o.Click("optOverlayPos6");
    o.prompt.Colors = {0x123456u, 0x00FF00u};
    QTest::mouseClick(o.Widget<QLabel>("lblGuideColor"), Qt::LeftButton);
    QTest::mouseClick(o.Widget<QLabel>("lblColor_1"), Qt::LeftButton);
    QCOMPARE(o.Widget<QLabel>("lblColor_1")->palette().color(QPalette::Window), QColor(0, 255, 0));
    o.Click("OKButton");

    const Settings reread = o.Reread();
    QCOMPARE(reread.AutoSaveMin, 12);
    QCOMPARE(reread.MethodForPicToMenu, kPicToMenuCli);
    QVERIFY(reread.ShowDOScli);
    QCOMPARE(reread.DefOverlayPos, 0);
    QCOMPARE(reread.GuideLineColor, 0x123456u);
    QCOMPARE(reread.defOverlayColor2, 0x00FF00u);
    QCOMPARE(reread.DefOverlay, std::string("|Rectangle"));
    QCOMPARE(o.settings.AutoSaveMin, 12);
}

void OptionsDialogTest::shiftClickOnLabel12TogglesDebugMessages()
{
    Options o;
    o.dialog.show();
    auto* label = o.Widget<QLabel>("Label12");
    QTest::mouseClick(label, Qt::LeftButton);
    QVERIFY(o.prompt.Texts().empty());
    QTest::mouseClick(label, Qt::LeftButton, Qt::ShiftModifier);
    QVERIFY(o.Reread().ShowDebugMessage);
}

void OptionsDialogTest::toolPathDialogsWriteTheirKey()
{
    Options o;
    ToolPathDialog cli(kCliPathKind, o.settings, o.ini, o.prompt);
    o.prompt.OpenedFiles = {{"/opt/tools/cli.exe"}};
    QTest::mouseClick(cli.findChild<QPushButton*>("Command1"), Qt::LeftButton);
    QCOMPARE(o.prompt.Log.back().Title, std::string("Locate file cli.exe"));
    QTest::mouseClick(cli.findChild<QPushButton*>("OKButton"), Qt::LeftButton);
    QCOMPARE(o.Reread().cliPath, std::string("/opt/tools/cli.exe"));
    QVERIFY(o.Reread().virtualDubPath.empty());

    ToolPathDialog vd(kVirtualDubPathKind, o.settings, o.ini, o.prompt);
    QTest::mouseClick(vd.findChild<QPushButton*>("cmdBuiltIn"), Qt::LeftButton);
    QCOMPARE(vd.result(), int(QDialog::Accepted));
    QCOMPARE(o.Reread().MethodForPicToMenu, kPicToMenuBuiltIn);
    QVERIFY(o.Reread().virtualDubPath.empty());

    // Asked for by a build: the answer says which way the user went.
    const auto clickInDialog = [](const char* button) {
        QTimer::singleShot(0, [button] {
            QTest::mouseClick(QApplication::activeModalWidget()->findChild<QPushButton*>(button), Qt::LeftButton);
        });
    };
    clickInDialog("cmdBuiltIn");
    const ToolAnswer builtIn = AskForTool(kPicToMenuCli, o.settings, o.ini, o.prompt, nullptr);
    QVERIFY(builtIn.Accepted && builtIn.UseBuiltIn);
    clickInDialog("CancelButton");
    QVERIFY(!AskForTool(kPicToMenuVirtualDub, o.settings, o.ini, o.prompt, nullptr).Accepted);
}

QTEST_MAIN(OptionsDialogTest)
#include "OptionsDialogTest.moc"
