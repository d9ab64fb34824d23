#pragma once

#include "core/FormHost.h"

class QWidget;

namespace mw {

class Project;

// The dialogs that commands fill before they ask, shown modally over the main window.
class QtFormHost : public FormHost {
public:
    // The project whose document, settings and language the dialogs use, and their parent.
    void Attach(Project& project, QWidget* parent);

    bool ShowNewTitle(NewTitleForm& form) override;
    bool ShowChap(ChapForm& form) override;
    bool ShowCreateOverFromPic(CreateOverFromPicForm& form) override;
    bool ShowOverlayColors(std::array<std::uint32_t, 3>& colors) override;
    bool ShowNewMenu(NewMenuForm& form) override;
    bool ShowNewLang(NewLangForm& form) override;
    bool ShowSelectMenu(SelectMenuForm& form) override;
    bool ShowAction(ActionForm& form) override;

private:
    Project* project_ = nullptr;
    QWidget* parent_ = nullptr;
};

} // namespace mw
