#include "langfile/ProgramWindows.h"

#include "core/ScriptedPrompt.h"
#include "core/settings/Settings.h"
#include "core/settings/clsIniFile.h"
#include "document/ProgramStart.h"
#include "media/ChapForm.h"
#include "media/NewTitleForm.h"
#include "menus/Actions.h"
#include "menus/LanguageCommands.h"
#include "menus/MenuForms.h"
#include "menus/OverlayDialogs.h"
#include "ui/QtDesignTarget.h"
#include "ui/QtFormHost.h"
#include "ui/dialogs/Form2.h"
#include "ui/dialogs/ListChoiceDialog.h"
#include "ui/dialogs/ToolPathDialog.h"
#include "ui/dialogs/frmAbout.h"
#include "ui/dialogs/frmChap.h"
#include "ui/dialogs/frmCreateOverFromPic.h"
#include "ui/dialogs/frmNewMenu.h"
#include "ui/dialogs/frmNewTitle.h"
#include "ui/dialogs/frmOptions.h"
#include "ui/languages/frmCreateLang.h"
#include "ui/mainwindow/Form1.h"
#include "ui/mainwindow/MenuBar.h"
#include "ui/panels/frmPropText.h"

#include <QDockWidget>
#include <QTemporaryDir>

namespace mw {

namespace {

// The mark of a command that is not in the program yet is no text to translate.
FormDesign WithoutPlaceholders(FormDesign design)
{
    const auto strip = [](std::string& tip) {
        tip = WithoutNotAvailableYet(QString::fromStdString(tip)).toStdString();
    };
    for (ControlDesign& control : design.Controls) {
        strip(control.ToolTipText);
        for (ButtonTexts& button : control.Buttons)
            strip(button.ToolTipText);
    }
    return design;
}

} // namespace

std::vector<FormDesign> ProgramWindowDesigns()
{
    // An empty program folder of its own: no language file, no settings of the user.
    const QTemporaryDir home;
    ProgramState program(home.path().toStdString());
    StartProgram(program);
    ScriptedPrompt prompt;
    QtFormHost forms;
    Form1 form1(program, prompt, forms);
    Project& project = form1.CurrentProject();
    forms.Attach(project, &form1);
    clsIniFile ini(SettingsFilePath(program.Lang.ProgramFolder()).string());

    frmOptions options(program.Values, ini, prompt, program.Lang.ProgramFolder());
    ToolPathDialog cliPath(kCliPathKind, program.Values, ini, prompt);
    ToolPathDialog virtualDubPath(kVirtualDubPathKind, program.Values, ini, prompt);
    frmAbout about;
    NewTitleForm newTitleForm;
    frmNewTitle newTitle(newTitleForm, prompt, program.Lang.LangDoc());
    ChapForm chapForm;
    frmChap chap(chapForm, project);
    frmPropText propText(project);
    CreateOverFromPicForm overFromPicForm;
    frmCreateOverFromPic overFromPic(overFromPicForm, project);
    NewMenuForm newMenuForm;
    frmNewMenu newMenu(newMenuForm, project);
    NewLangForm newLangForm;
    ListChoiceDialog newLang("frmNewLang", newLangForm.Caption, newLangForm.Label, newLangForm.Combo1,
                             ListChoiceDialog::Look::Combo, program.Lang.LangDoc());
    SelectMenuForm selectMenuForm;
    ListChoiceDialog selectMenu("frmSelectMenu", selectMenuForm.Caption, selectMenuForm.Label, selectMenuForm.List,
                                ListChoiceDialog::Look::List, program.Lang.LangDoc());
    ActionForm actionForm;
    Form2 action(actionForm, project);
    frmCreateLang createLang(program.Lang.ProgramFolder(), program.Lang.LangDoc(), prompt);

    std::vector<FormDesign> designs;
    for (QWidget* window : std::initializer_list<QWidget*>{
             &form1, &options, &cliPath, &virtualDubPath, &about, &newTitle, &chap, &newMenu, &newLang, &selectMenu,
             &action, &propText, &overFromPic, &createLang, form1.findChild<QDockWidget*>("frmProp"),
             form1.findChild<QDockWidget*>("frmPropMenu")})
        designs.push_back(WithoutPlaceholders(ReadFormDesign(*window)));
    return designs;
}

} // namespace mw
