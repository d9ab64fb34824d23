#include "core/ScriptedPrompt.h"
#include "core/Version.h"
#include "core/settings/Settings.h"
#include "document/ProgramStart.h"
#include "langfile/LangFileWriter.h"
#include "ui/QtDesignTarget.h"
#include "ui/QtFormHost.h"
#include "ui/dialogs/frmOptions.h"
#include "ui/mainwindow/Form1.h"

#include <QTemporaryDir>
#include <QTest>

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

} // namespace

class LangFileTest : public QObject {
    Q_OBJECT
private slots:
    void dialogReadsBackAsItIsLabelled();
    void mainWindowReadsBackAsItIsLabelled();
    void shippedFileHoldsEveryWindow();
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
          "frmCreateOverFromPic"})
        QVERIFY2(lang.DesignText(form, form).value_or("").size() > 0, form);
    QCOMPARE(lang.DesignText("frmOptions", "TabStrip1_3"), std::optional<std::string>("Overlays and buttons"));
    QCOMPARE(lang.LoadResText("Form1", 1, ""), std::string("File is not saved. Save it now?"));
    QCOMPARE(lang.LoadResText("Form1", 5, ""), std::string("Can not detect type for stream number "));
    QCOMPARE(lang.LoadResText("frmChap", 9, ""), std::string("Can not find any chapter"));
    QCOMPARE(lang.LoadResText("mAVIDecs", 4, ""), std::string("Frame not found"));
    // Unfinished commands keep their own tool tips for the translator, not the placeholder.
    QCOMPARE(lang.DesignText("Form1", "Toolbar1_7_ToolTipText"), std::optional<std::string>("Add Language Menu"));
    QCOMPARE(lang.DesignText("Form1", "mnuAddLang_ToolTipText"), std::optional<std::string>());
}

QTEST_MAIN(LangFileTest)
#include "LangFileTest.moc"
