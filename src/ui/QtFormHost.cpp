#include "ui/QtFormHost.h"

#include "document/Project.h"
#include "media/ChapForm.h"
#include "ui/dialogs/frmChap.h"
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

} // namespace mw
