#pragma once

#include <array>
#include <cstdint>

namespace mw {

struct NewTitleForm;
struct ChapForm;
struct NewMenuForm;
struct NewLangForm;
struct SelectMenuForm;
struct ActionForm;
struct CreateOverFromPicForm;

// Shows the modal dialogs whose fields a command fills before it asks the user: the window
// shows real dialogs, the command line and tests accept or cancel them as told. Each call
// returns true when the user accepted the form (the dialog's accepted flag).
class FormHost {
public:
    virtual ~FormHost() = default;
    virtual bool ShowNewTitle(NewTitleForm& form) = 0; // frmNewTitle
    virtual bool ShowChap(ChapForm& form) = 0;         // frmChap
    // The menu dialogs. A host without these windows takes each form as the caller filled it.
    virtual bool ShowNewMenu(NewMenuForm&) { return true; }       // frmNewMenu
    virtual bool ShowNewLang(NewLangForm&) { return true; }       // frmNewLang
    virtual bool ShowSelectMenu(SelectMenuForm&) { return true; } // frmSelectMenu
    virtual bool ShowAction(ActionForm&) { return true; }         // Form2
    virtual bool ShowCreateOverFromPic(CreateOverFromPicForm&) { return true; } // frmCreateOverFromPic
    // The colour dialog with the three colours of a menu's overlays as its first custom colours,
    // which come back as the user left them.
    virtual bool ShowOverlayColors(std::array<std::uint32_t, 3>&) { return true; }
};

} // namespace mw
