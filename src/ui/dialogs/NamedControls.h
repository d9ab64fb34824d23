#pragma once

#include "media/TrackRow.h"

class QLabel;
class QPushButton;
class QTreeWidget;

namespace mw {

// Controls named as the language files and the tests know them.
QLabel* NamedLabel(const char* name, const char* text);
QPushButton* NamedButton(const char* name, const char* text);

// lstTracks: the columns of a track list, one row per stream.
QTreeWidget* TrackList();
void FillTrackList(QTreeWidget& list, const TrackRows& rows);

} // namespace mw
