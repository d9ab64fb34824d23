#include "cli/ConsoleFormHost.h"

#include "media/ChapForm.h"
#include "media/NewTitleForm.h"
#include "menus/OverlayDialogs.h"

#include <cstddef>

namespace mw {

namespace {

// Selects the combo entry that holds the stream; -1 is "<none>", the first entry.
bool SelectStream(ComboList& combo, std::optional<int> stream, const char* kind, std::string& error)
{
    if (!stream)
        return true;
    if (*stream < 0) {
        combo.ListIndex = 0;
        return true;
    }
    for (std::size_t i = 1; i < combo.Items.size(); ++i) {
        if (combo.Items[i].ItemData == *stream) {
            combo.ListIndex = static_cast<int>(i);
            return true;
        }
    }
    error = "stream " + std::to_string(*stream) + " is no " + kind + " stream of the movie";
    return false;
}

} // namespace

bool ConsoleFormHost::ShowNewTitle(NewTitleForm& form)
{
    Error.clear();
    form.Accepted = SelectStream(form.Combo1, DefaultAudio, "audio", Error) &&
                    SelectStream(form.Combo2, DefaultSubtitle, "subtitle", Error);
    return form.Accepted;
}

bool ConsoleFormHost::ShowChap(ChapForm& form)
{
    Error.clear();
    form.Accepted = FillChap ? FillChap(form) : true;
    return form.Accepted;
}

bool ConsoleFormHost::ShowCreateOverFromPic(CreateOverFromPicForm& form)
{
    Error.clear();
    form.Accepted = FillCreateOverFromPic ? FillCreateOverFromPic(form) : true;
    return form.Accepted;
}

} // namespace mw
