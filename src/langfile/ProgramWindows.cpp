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
#include "ui/dvd/DvdExportDialog.h"
#include "ui/generators/GeneratorWindow.h"
#include "ui/generators/ManyMoviesWindow.h"
#include "ui/help/HelpWindow.h"
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
#include "ui/menuplayer/MenuPlayerWindow.h"
#include "ui/panels/frmPropText.h"
#include "ui/subedit/frmButtonsFromDVDSubEdit.h"
#include "ui/subedit/frmDVDSubEditPreview.h"
#include "ui/subedit/frmDVDSubEditSettings.h"
#include "ui/wizard/WizardWindow.h"

#include <QDockWidget>
#include <QTemporaryDir>

namespace mw {

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
    WizardWindow wizard(project);
    ManyMoviesWindow manyMovies(project);
    GeneratorWindow titleMenu(GeneratorKind::TitleMenu, project);
    GeneratorWindow chaptersMenu(GeneratorKind::ChaptersMenu, project);
    GeneratorWindow setupMenu(GeneratorKind::SetupMenu, project);
    frmButtonsFromDVDSubEdit subEdit(project, &form1);
    frmDVDSubEditPreview subEditPreview(SubEditSet{});
    frmDVDSubEditSettings subEditSettings(program.Lang.ProgramFolder());
    HelpWindow help(HelpFilePath(program.Lang.ProgramFolder()));
    DvdExportDialog dvdExport(DvdExportChoices{}, prompt);
    MenuPlayerWindow menuPlayer(project);

    std::vector<FormDesign> designs;
    for (QWidget* window : std::initializer_list<QWidget*>{
             &form1, &options, &cliPath, &virtualDubPath, &about, &newTitle, &chap, &newMenu, &newLang, &selectMenu,
             &action, &propText, &overFromPic, &createLang, form1.findChild<QDockWidget*>("frmProp"),
             form1.findChild<QDockWidget*>("frmPropMenu"), &wizard, &manyMovies, &titleMenu, &chaptersMenu,
             &setupMenu, &subEdit, &subEditPreview, &subEditSettings, &help, &dvdExport, &menuPlayer})
        designs.push_back(ReadFormDesign(*window));
    return designs;
}

} // namespace mw
