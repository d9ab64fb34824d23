#include "ui/dialogs/NamedControls.h"

#include "render/cDIB.h"
#include "ui/QtColor.h"
#include "ui/help/HelpWindow.h"

#include <QDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QSlider>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace mw {

QLabel* NamedLabel(const char* name, const char* text)
{
    auto* label = new QLabel(QString::fromUtf8(text));
    label->setObjectName(name);
    return label;
}

QPushButton* NamedButton(const char* name, const char* text)
{
    auto* button = new QPushButton(QString::fromUtf8(text));
    button->setObjectName(name);
    // Enter in the frame fields adds a chapter; no button may take it first.
    button->setAutoDefault(false);
    return button;
}

QLabel* ColorLabel(const QString& name, std::uint32_t color)
{
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setMinimumSize(40, 18);
    label->setFrameShape(QFrame::Box);
    label->setAutoFillBackground(true);
    ShowColor(label, color);
    return label;
}

void ShowColor(QLabel* label, std::uint32_t color)
{
    QPalette palette = label->palette();
    palette.setColor(QPalette::Window, ToQColor(color));
    label->setPalette(palette);
}

QHBoxLayout* OkCancelRow(QDialog& dialog, QPushButton* ok, QPushButton* cancel, bool& accepted)
{
    accepted = false;
    QObject::connect(ok, &QPushButton::clicked, &dialog, [&dialog, &accepted] {
        accepted = true;
        dialog.accept();
    });
    QObject::connect(cancel, &QPushButton::clicked, &dialog, &QDialog::reject);
    QObject::connect(&dialog, &QDialog::rejected, &dialog, [&accepted] { accepted = false; });
    auto* row = new QHBoxLayout;
    row->addWidget(HelpButton(dialog));
    row->addStretch();
    row->addWidget(ok);
    row->addWidget(cancel);
    return row;
}

void LayOutBesidePreview(QDialog& dialog, QLayout* fields, QWidget* preview, QLayout* buttons)
{
    auto* columns = new QHBoxLayout;
    columns->addLayout(fields, 3);
    columns->addWidget(preview, 2);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addLayout(columns);
    layout->addLayout(buttons);
}

QTreeWidget* TrackList()
{
    auto* list = new QTreeWidget;
    list->setObjectName("lstTracks");
    list->setRootIsDecorated(false);
    list->setAllColumnsShowFocus(true);
    list->setHeaderLabels({"Track", "Name-Language", "Info", "TrackID", "startFrame", "endFrame"});
    return list;
}

void FillTrackList(QTreeWidget& list, const TrackRows& rows)
{
    list.clear();
    for (const TrackRow& row : rows) {
        list.addTopLevelItem(new QTreeWidgetItem(
            {QString::fromStdString(row.Kind), QString::fromStdString(row.NameLanguage),
             QString::fromStdString(row.Info), QString::fromStdString(row.TrackID),
             QString::fromStdString(row.StartFrame), QString::fromStdString(row.EndFrame)}));
    }
}

namespace {

// The play button's glyphs were drawn with the Webdings font: "4" plays, ";" pauses.
QString Glyph(const std::string& caption)
{
    return caption == ";" ? QString::fromUtf8("\u23F8") : QString::fromUtf8("\u25B6");
}

} // namespace

PreviewBox::PreviewBox(QLineEdit* txtStepFrames, QWidget* parent)
    : QGroupBox(parent), txtStepFrames_(txtStepFrames), picture_(NamedLabel("picPreview", "")),
      slider_(new QSlider(Qt::Horizontal)), play_(NamedButton("Command3", "")), lblFrame_(NamedLabel("lblFrame", "0")),
      lblTime_(NamedLabel("lblTime", "0:00:00")), lblMovieInfo_(NamedLabel("lblMovieInfo", "")),
      timer_(new QTimer(this))
{
    setObjectName("fraPreview");
    picture_->setMinimumSize(240, 180);
    picture_->setFrameShape(QFrame::Box);
    picture_->setAlignment(Qt::AlignCenter);
    slider_->setObjectName("Slider1");
    timer_->setObjectName("Timer1");
    timer_->setInterval(40);

    auto* stop = NamedButton("Command4", "Stop");
    auto* back = NamedButton("Command5", "<<");
    auto* forward = NamedButton("Command6", ">>");
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {play_, stop, back, forward})
        buttons->addWidget(button);
    controls_ = {slider_, play_, stop, back, forward};
    if (txtStepFrames_) {
        buttons->addWidget(txtStepFrames_);
        const auto tips = [this, back, forward] {
            back->setToolTip("Move backward " + txtStepFrames_->text() + " frames");
            forward->setToolTip("Move forward " + txtStepFrames_->text() + " frames");
        };
        tips();
        connect(txtStepFrames_, &QLineEdit::textChanged, this, tips);
    }
    buttons->addWidget(lblFrame_);
    buttons->addWidget(lblTime_);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(picture_, 1);
    layout->addWidget(slider_);
    layout->addLayout(buttons);
    layout->addWidget(lblMovieInfo_);

    preview_.ShowMovieInfo = [this](const std::string& text) {
        lblMovieInfo_->setText(QString::fromStdString(text));
        lblMovieInfo_->repaint();
    };
    connect(play_, &QPushButton::clicked, this, [this] {
        PreviewPlayClick(preview_);
        Show();
    });
    connect(stop, &QPushButton::clicked, this, [this] {
        PreviewStopClick(preview_);
        Show();
    });
    connect(back, &QPushButton::clicked, this, [this] { Step(-1); });
    connect(forward, &QPushButton::clicked, this, [this] { Step(1); });
    connect(slider_, &QSlider::valueChanged, this, [this](int value) {
        PreviewSliderChange(preview_, value);
        Show();
    });
    connect(timer_, &QTimer::timeout, this, [this] {
        PreviewTimerTick(preview_);
        Show();
    });
    Show();
}

bool PreviewBox::Open(const std::string& file)
{
    if (preview_.Opened && file == file_)
        return true;
    file_ = file;
    const bool opened = OpenPreview(preview_, file, picture_->width(), picture_->height());
    Show();
    return opened;
}

void PreviewBox::Close()
{
    ClosePreview(preview_);
    Show();
}

void PreviewBox::SeekTo(const QString& frame)
{
    PreviewSeek(preview_, frame.toStdString());
    Show();
}

void PreviewBox::Step(long direction)
{
    const long frames = txtStepFrames_ ? txtStepFrames_->text().toLong() : 30;
    PreviewStep(preview_, direction * frames);
    Show();
}

void PreviewBox::Show()
{
    for (QWidget* control : controls_)
        control->setEnabled(preview_.Opened);
    play_->setText(Glyph(preview_.PlayCaption));
    play_->setToolTip(QString::fromStdString(preview_.PlayToolTip));
    lblFrame_->setText(QString::fromStdString(preview_.lblFrame));
    lblTime_->setText(QString::fromStdString(preview_.lblTime));
    {
        // The timer's moves of the slider must not seek.
        const QSignalBlocker quiet(slider_);
        slider_->setMaximum(static_cast<int>(preview_.SliderMax));
        slider_->setValue(static_cast<int>(preview_.SliderValue));
    }
    if (preview_.TimerEnabled != timer_->isActive())
        preview_.TimerEnabled ? timer_->start() : timer_->stop();
    const auto picture = preview_.Opened ? mm_.Picture(preview_.Alias) : nullptr;
    if (picture == shown_)
        return;
    shown_ = picture;
    if (!picture) {
        picture_->clear();
        return;
    }
    const PreviewWindow window = mm_.Window(preview_.Alias);
    picture_->setPixmap(QPixmap::fromImage(picture->ToImage().scaled(
        window.Width, window.Height, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
}

} // namespace mw
