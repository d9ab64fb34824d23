#include "media/NewTitleForm.h"

#include "core/Text.h"
#include "media/mAVIDecs.h"

#include <cstddef>

namespace mw {

void AddAudioSubtitleToComboFromListView(const TrackRows& rows, ComboList& audio, ComboList& subtitle)
{
    audio.Clear();
    subtitle.Clear();
    audio.AddItem("<none>");
    subtitle.AddItem("<none>");
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const int stream = static_cast<int>(i);
        const std::string text = rows[i].NameLanguage + " | " + std::to_string(stream);
        if (EqualsNoCase(rows[i].Kind, "audio"))
            audio.AddItem(text, stream);
        else if (EqualsNoCase(rows[i].Kind, "subtitle"))
            subtitle.AddItem(text, stream);
    }
    for (ComboList* combo : {&audio, &subtitle})
        combo->ListIndex = combo->Items.size() < 2 ? 0 : 1;
}

bool FillNewTitleForm(NewTitleForm& form, const std::string& fileName, double& fps, Prompt& prompt)
{
    form.FileName = fileName;
    form.Tracks.clear();
    form.SelectedRow = -1;
    const bool read = LoadStreamsToListView(fileName, form.Tracks, true, fps, prompt);
    form.Accepted = false;
    AddAudioSubtitleToComboFromListView(form.Tracks, form.Combo1, form.Combo2);
    return read;
}

void SelectTrackRow(NewTitleForm& form, int row)
{
    if (row < 0 || static_cast<std::size_t>(row) >= form.Tracks.size())
        return;
    form.SelectedRow = row;
    form.Text1 = form.Tracks[static_cast<std::size_t>(row)].NameLanguage;
}

bool UpdateTrackName(NewTitleForm& form, Prompt& prompt)
{
    if (form.SelectedRow < 0 || static_cast<std::size_t>(form.SelectedRow) >= form.Tracks.size())
        return false;
    const auto row = static_cast<std::size_t>(form.SelectedRow);
    form.Tracks[row].NameLanguage = form.Text1;
    return SetStreamName(form.FileName, row, form.Text1, prompt);
}

int ChosenStream(const ComboList& combo)
{
    if (combo.ListIndex <= 0 || static_cast<std::size_t>(combo.ListIndex) >= combo.Items.size())
        return -1;
    return combo.Items[static_cast<std::size_t>(combo.ListIndex)].ItemData;
}

} // namespace mw
