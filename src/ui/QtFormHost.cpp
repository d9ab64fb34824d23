#include "ui/QtFormHost.h"

namespace mw {

bool QtFormHost::ShowNewTitle(NewTitleForm&)
{
    return true;
}

bool QtFormHost::ShowChap(ChapForm&)
{
    return true;
}

} // namespace mw
