#include "ui/QtFormHost.h"

#include "document/Project.h"
#include "media/ChapForm.h"
#include "menus/OverlayDialogs.h"
#include "ui/dialogs/OverlayColorDialog.h"
#include "ui/dialogs/frmChap.h"
#include "ui/dialogs/frmCreateOverFromPic.h"
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

} // namespace mw
