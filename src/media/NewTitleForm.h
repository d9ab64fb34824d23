#pragma once

#include "media/TrackRow.h"

#include <string>
#include <utility>
#include <vector>

namespace mw {

class Prompt;

// One entry of a combo box: the text shown and the number kept with it.
struct ComboItem {
    std::string Text;
    int ItemData = 0;
};

// A combo box as data: its entries and the selected one (-1 for none).
struct ComboList {
    std::vector<ComboItem> Items;
    int ListIndex = -1;

    void Clear()
    {
        Items.clear();
        ListIndex = -1;
    }
    void AddItem(std::string text, int itemData = 0) { Items.push_back({std::move(text), itemData}); }
};

// The dialog in which the user reviews the streams of a new title (frmNewTitle).
struct NewTitleForm {
    std::string FileName; // lblFileName
    TrackRows Tracks;     // lstTracks
    int SelectedRow = -1; // lstTracks' selected row from 0, -1 when none
    ComboList Combo1;     // default audio track
    ComboList Combo2;     // default subtitle track
    std::string Text1;    // the name-language being edited
    bool Accepted = false;
};

// Fills the two default-track combos: "<none>", then "<name> | <stream>" for each audio or
// subtitle row with the stream number as item data. The first stream of each is selected.
void AddAudioSubtitleToComboFromListView(const TrackRows& rows, ComboList& audio, ComboList& subtitle);

// Prepares the dialog for a file: its name, its streams with their frames, the combos, the
// accepted flag cleared. fps is set as LoadStreamsToListView sets it; false when the file
// could not be read (the user has been told, and the list stays empty).
bool FillNewTitleForm(NewTitleForm& form, const std::string& fileName, double& fps, Prompt& prompt);

// A click on a row: it becomes the selected one and its name goes into Text1.
void SelectTrackRow(NewTitleForm& form, int row);

// "Update": writes Text1 as the selected row's name, in the list whatever the file says, and
// into the file's stream. Nothing happens without a selected row. True when the file took it.
bool UpdateTrackName(NewTitleForm& form, Prompt& prompt);

// The stream a default-track combo stands at: its item data, or -1 for "<none>".
int ChosenStream(const ComboList& combo);

} // namespace mw
