#pragma once

#include "core/FormHost.h"

#include <functional>
#include <optional>
#include <string>

namespace mw {

// The command line's dialogs: each form is accepted as the command line chose it. A choice that
// the form cannot take refuses the form, and Error says why.
class ConsoleFormHost : public FormHost {
public:
    // Stream numbers for the default audio and subtitle tracks of a new title, -1 for "<none>";
    // unset keeps the dialog's own default.
    std::optional<int> DefaultAudio;
    std::optional<int> DefaultSubtitle;
    // How a command fills the chapter dialog; without it the form is accepted as it stands.
    std::function<bool(ChapForm&)> FillChap;
    // How a command picks the transparent colour of a picture; without it the form is accepted
    // as it stands.
    std::function<bool(CreateOverFromPicForm&)> FillCreateOverFromPic;

    std::string Error;

    bool ShowNewTitle(NewTitleForm& form) override;
    bool ShowChap(ChapForm& form) override;
    bool ShowCreateOverFromPic(CreateOverFromPicForm& form) override;
};

} // namespace mw
