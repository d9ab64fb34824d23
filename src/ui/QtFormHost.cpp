#include "ui/QtFormHost.h"

#include "document/Project.h"
#include "media/ChapForm.h"
#include "menus/Actions.h"
#include "menus/LanguageCommands.h"
#include "menus/MenuForms.h"
#include "menus/OverlayDialogs.h"
#include "ui/dialogs/Form2.h"
#include "ui/dialogs/ListChoiceDialog.h"
#include "ui/dialogs/OverlayColorDialog.h"
#include "ui/dialogs/frmChap.h"
#include "ui/dialogs/frmCreateOverFromPic.h"
#include "ui/dialogs/frmNewMenu.h"
#include "ui/dialogs/frmNewTitle.h"

namespace mw {

void QtFormHost::Attach(Project& project, QWidget* parent)
{
    project_ = &project;
    parent_ = parent;
}

bool QtFormHost::ShowNewTitle(NewTitleForm& form)
{
    frmNewTitle dialog(form, project_->Ask(), project_->Lang(), parent_);
    dialog.exec();
    return form.Accepted;
}

bool QtFormHost::ShowChap(ChapForm& form)
{
    frmChap dialog(form, *project_, parent_);
    dialog.exec();
    return form.Accepted;
}

bool QtFormHost::ShowCreateOverFromPic(CreateOverFromPicForm& form)
{
    frmCreateOverFromPic dialog(form, *project_, parent_);
    dialog.exec();
    return form.Accepted;
}

bool QtFormHost::ShowOverlayColors(std::array<std::uint32_t, 3>& colors)
{
    return ShowOverlayColorDialog(colors, parent_);
}

bool QtFormHost::ShowNewMenu(NewMenuForm& form)
{
    frmNewMenu dialog(form, *project_, parent_);
    dialog.exec();
    return form.Accepted;
}

bool QtFormHost::ShowNewLang(NewLangForm& form)
{
    ListChoiceDialog dialog("frmNewLang", form.Caption, form.Label, form.Combo1, ListChoiceDialog::Look::Combo,
                            project_->Lang(), parent_);
    return dialog.exec() == QDialog::Accepted;
}

bool QtFormHost::ShowSelectMenu(SelectMenuForm& form)
{
    ListChoiceDialog dialog("frmSelectMenu", form.Caption, form.Label, form.List, ListChoiceDialog::Look::List,
                            project_->Lang(), parent_);
    return dialog.exec() == QDialog::Accepted;
}

bool QtFormHost::ShowAction(ActionForm& form)
{
    Form2 dialog(form, *project_, parent_);
    return dialog.exec() == QDialog::Accepted;
}

} // namespace mw
