#include "MainWindowFixture.h"

#include "core/ScriptedPrompt.h"
#include "core/Version.h"
#include "core/settings/Settings.h"
#include "document/ProgramStart.h"
#include "langfile/LangFileWriter.h"
#include "ui/QtDesignTarget.h"
#include "ui/QtFormHost.h"
#include "ui/dialogs/frmOptions.h"
#include "ui/mainwindow/Form1.h"

#include <QLabel>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>
#include <QTreeWidget>

#include <algorithm>

using namespace mw;

namespace {

const ControlDesign* Find(const FormDesign& form, const std::string& name, std::optional<int> index = {})
{
    const auto it = std::find_if(form.Controls.begin(), form.Controls.end(),
                                 [&](const ControlDesign& c) { return c.Name == name && c.Index == index; });
    return it == form.Controls.end() ? nullptr : &*it;
}

// Every text of the window changed, as a translator would change it; empty ones stay empty.
FormDesign Translated(FormDesign form)
{
    const auto change = [](std::string& text) {
        if (!text.empty())
            text = "T:" + text;
    };
    change(form.Caption);
    for (ControlDesign& c : form.Controls) {
        if (c.Caption)
            change(*c.Caption);
        change(c.ToolTipText);
        for (auto& tab : c.Tabs) {
            change(tab.Caption);
            change(tab.ToolTipText);
        }
        std::for_each(c.Columns.begin(), c.Columns.end(), change);
        for (auto& button : c.Buttons) {
            change(button.Caption);
            change(button.ToolTipText);
        }
    }
    return form;
}

// Labels the window from a file written from its own texts, translated, and reads it back.
void RelabelFromItsOwnTexts(QWidget& window)
{
    const FormDesign translated = Translated(ReadFormDesign(window));
    std::vector<std::string> errors;
    LangDoc lang;
    QVERIFY(lang.LoadString(LangFileText({.Designs = {translated}}, errors)));
    QVERIFY2(errors.empty(), errors.empty() ? "" : errors.front().c_str());
    LoadTextForDesign(lang, window);

    const FormDesign relabelled = ReadFormDesign(window);
    QCOMPARE(relabelled.Caption, translated.Caption);
    QCOMPARE(relabelled.Controls.size(), translated.Controls.size());
    for (std::size_t i = 0; i < translated.Controls.size(); ++i)
        QVERIFY2(relabelled.Controls[i] == translated.Controls[i], translated.Controls[i].Name.c_str());
}

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

class LangFileTest : public QObject {
    Q_OBJECT
private slots:
    void dialogReadsBackAsItIsLabelled();
    void mainWindowReadsBackAsItIsLabelled();
    void shippedFileHoldsEveryWindow();
    void columnsAreNumberedFromOneAndArraysByIndex();
    void missingLanguageTicksNothingAndAFailedSwitchMovesNoTick();
    void switchKeepsRecentFilesAndRelabelsTheToolBar();
};

void LangFileTest::dialogReadsBackAsItIsLabelled()
{
    QTemporaryDir home;
    const std::filesystem::path folder = home.path().toStdString();
    clsIniFile ini(SettingsFilePath(folder).string());
    Settings settings;
    ScriptedPrompt prompt;
    frmOptions dialog(settings, ini, prompt, folder);

    const FormDesign design = ReadFormDesign(dialog);
    QCOMPARE(design.FormName, std::string("frmOptions"));
    const ControlDesign* tabs = Find(design, "TabStrip1");
    QVERIFY(tabs && tabs->TypeName == "TabStrip");
    QCOMPARE(tabs->Tabs.size(), std::size_t{3});
    QCOMPARE(tabs->Tabs[1].Caption, std::string("Creating DivX"));
    const ControlDesign* member = Find(design, "optDoubleClick", 2);
    QVERIFY(member && member->Caption == "Always open the Add Action dialog");
    RelabelFromItsOwnTexts(dialog);
}

void LangFileTest::mainWindowReadsBackAsItIsLabelled()
{
    QTemporaryDir home;
    ProgramState program(home.path().toStdString());
    StartProgram(program);
    ScriptedPrompt prompt;
    QtFormHost forms;
    Form1 window(program, prompt, forms);

    const FormDesign design = ReadFormDesign(window);
    const ControlDesign* bar = Find(design, "Toolbar1");
    QVERIFY(bar && bar->TypeName == "Toolbar");
    QCOMPARE(bar->Buttons.front().ToolTipText, std::string("New xml"));
    // A menu entry's tool tip that Qt makes from its caption is none of its own.
    const ControlDesign* open = Find(design, "mnuOpen");
    QVERIFY(open && open->Caption == "Open...");
    QCOMPARE(open->ToolTipText, std::string());
    RelabelFromItsOwnTexts(window);
}

void LangFileTest::shippedFileHoldsEveryWindow()
{
    LangDoc lang;
    QVERIFY2(lang.LoadFile(MENUWRIGHT_LANG_FILE), MENUWRIGHT_LANG_FILE);
    QCOMPARE(lang.PrivateAttribute("ProgramVersion"), std::optional<std::string>(kVersionText));
    for (const char* form :
         {"Form1", "frmOptions", "frmCliPath", "frmVirtualDubPath", "frmAbout", "frmNewTitle", "frmChap", "frmPropText",
          "frmCreateOverFromPic", "frmWizard", "frmManyMovies", "frmPreviewMenu", "frmVisualMenuForChapters", "frmSetup",
          "frmButtonsFromDVDSubEdit", "frmDVDSubEditPreview", "frmDVDSubEditSettings", "frmHelp", "frmDvdExport",
          "frmMenuPlayer"})
        QVERIFY2(lang.DesignText(form, form).value_or("").size() > 0, form);
    QCOMPARE(lang.DesignText("frmOptions", "TabStrip1_3"), std::optional<std::string>("Overlays and buttons"));
    // What a window reports is no text to translate, nor one a language file may overwrite.
    QCOMPARE(lang.DesignText("frmMenuPlayer", "lblStatus"), std::optional<std::string>());
    QCOMPARE(lang.DesignText("frmDVDSubEditSettings", "Image1"), std::optional<std::string>());
    QCOMPARE(lang.LoadResText("Form1", 1, ""), std::string("File is not saved. Save it now?"));
    QCOMPARE(lang.LoadResText("Form1", 5, ""), std::string("Can not detect type for stream number "));
    QCOMPARE(lang.LoadResText("frmChap", 9, ""), std::string("Can not find any chapter"));
    QCOMPARE(lang.LoadResText("mAVIDecs", 4, ""), std::string("Frame not found"));
    // A tool bar button's tool tip is its own; a menu entry's is the caption Qt shows, none to translate.
    QCOMPARE(lang.DesignText("Form1", "Toolbar1_7_ToolTipText"), std::optional<std::string>("Add Language Menu"));
    QCOMPARE(lang.DesignText("Form1", "mnuAddLang_ToolTipText"), std::optional<std::string>());
}

// Tabs, tool bar buttons and captions go through the round trips above; this is columns and arrays.
void LangFileTest::columnsAreNumberedFromOneAndArraysByIndex()
{
    QWidget form;
    form.setObjectName("frmTest");
    auto* tree = new QTreeWidget(&form);
    tree->setObjectName("ListView1");
    tree->setHeaderLabels({"Name", "Value"});
    auto* table = new QTableWidget(0, 2, &form);
    table->setObjectName("lvFiles");
    auto* label = new QLabel("three", &form);
    label->setObjectName("Label1_3");

    LangDoc lang;
    QVERIFY(lang.LoadString(R"(<Lang><frmTest_Design ListView1_2="Wert" lvFiles_2="Datei" Label1_3="Drei" Label1="wrong"/></Lang>)"));
    LoadTextForDesign(lang, form);

    QCOMPARE(tree->headerItem()->text(0), QString("Name"));
    QCOMPARE(tree->headerItem()->text(1), QString("Wert"));
    QCOMPARE(table->horizontalHeaderItem(1)->text(), QString("Datei"));
    QCOMPARE(label->text(), QString("Drei"));
}

void LangFileTest::missingLanguageTicksNothingAndAFailedSwitchMovesNoTick()
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

void LangFileTest::switchKeepsRecentFilesAndRelabelsTheToolBar()
{
    test::MainWindow w({{"Menuwright.ini", "[RecentFiles]\r\nFilesCount=1\r\nFile1=/p/first.xml\r\n"},
                        {"German.Menuwright.exe.xml", kGerman}});
    w.Action("mnuLangDef_1")->trigger();
    QCOMPARE(Ticked(w), QStringList{"German"});
    QCOMPARE(w.Action("mnuRecent_0")->text(), QString("/p/first.xml"));
    QAction* divx = w.form->findChild<QToolBar*>("Toolbar1")->findChild<QAction*>("DivX");
    QCOMPARE(divx->toolTip(), QString("DivX erstellen"));
    QCOMPARE(w.Action("mnuNewWizard")->toolTip(), QString("Assistent"));
}

QTEST_MAIN(LangFileTest)
#include "LangFileTest.moc"
