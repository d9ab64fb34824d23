#pragma once

#include "media/ModuleMultimedia.h"
#include "media/MoviePreview.h"
#include "media/TrackRow.h"
#include "ui/QtAudioSinks.h"

#include <QGroupBox>

#include <cstdint>
#include <memory>

class QDialog;
class QHBoxLayout;
class QSlider;
class QTimer;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QTreeWidget;

namespace mw {

// Controls named as the language files and the tests know them.
QLabel* NamedLabel(const char* name, const char* text);
QPushButton* NamedButton(const char* name, const char* text);

// A box that shows a colour (red in the low byte) and opens the colour picker on a click, which
// the form's event filter catches; ShowColor repaints it.
QLabel* ColorLabel(const QString& name, std::uint32_t color);
void ShowColor(QLabel* label, std::uint32_t color);

// The OK and Cancel buttons of a form's dialog, in a row at the right; accepted says how the
// dialog closed.
QHBoxLayout* OkCancelRow(QDialog& dialog, QPushButton* ok, QPushButton* cancel, bool& accepted);

// A dialog with a movie preview: its fields beside the preview, its buttons in a row below.
void LayOutBesidePreview(QDialog& dialog, QLayout* fields, QWidget* preview, QLayout* buttons);

// lstTracks: the columns of a track list, one row per stream.
QTreeWidget* TrackList();
void FillTrackList(QTreeWidget& list, const TrackRows& rows);

// The movie preview of a dialog: the picture, the slider, play, stop, the step buttons and the
// labels, over the core's preview. A dialog that steps through the movie gives its step field.
class PreviewBox : public QGroupBox {
public:
    explicit PreviewBox(QLineEdit* txtStepFrames = nullptr, QWidget* parent = nullptr);

    // A file that is open already stays where it is.
    bool Open(const std::string& file);
    void Close();
    // Ctrl+Enter in a frame field.
    void SeekTo(const QString& frame);

private:
    void Show();
    void Step(long direction);

    ModuleMultimedia mm_{{}, DeviceSinks()};
    MoviePreview preview_{mm_};
    std::string file_;
    std::shared_ptr<const cDIB> shown_;
    QLineEdit* txtStepFrames_;
    QLabel* picture_;
    QSlider* slider_;
    QPushButton* play_;
    QLabel* lblFrame_;
    QLabel* lblTime_;
    QLabel* lblMovieInfo_;
    QTimer* timer_;
    std::vector<QWidget*> controls_; // enabled while a movie is open
};

} // namespace mw
