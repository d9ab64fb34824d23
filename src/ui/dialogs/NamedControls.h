#pragma once

#include "media/TrackRow.h"

class QDialog;
class QHBoxLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;

namespace mw {

// Controls named as the language files and the tests know them.
QLabel* NamedLabel(const char* name, const char* text);
QPushButton* NamedButton(const char* name, const char* text);

// The OK and Cancel buttons of a form's dialog, in a row at the right; accepted says how the
// dialog closed.
QHBoxLayout* OkCancelRow(QDialog& dialog, QPushButton* ok, QPushButton* cancel, bool& accepted);

// lstTracks: the columns of a track list, one row per stream.
QTreeWidget* TrackList();
void FillTrackList(QTreeWidget& list, const TrackRows& rows);

// The movie preview of a dialog: its controls are here, the player comes later. A dialog that
// steps through the movie gives its step field.
QGroupBox* PreviewBox(QLineEdit* txtStepFrames = nullptr);

} // namespace mw
