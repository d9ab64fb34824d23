#pragma once

#include "core/FormHost.h"

namespace mw {

// The dialogs that commands fill before they ask. frmNewTitle and frmChap are not windows yet:
// until they are, each form is accepted as the command filled it.
class QtFormHost : public FormHost {
public:
    bool ShowNewTitle(NewTitleForm& form) override;
    bool ShowChap(ChapForm& form) override;
};

} // namespace mw
