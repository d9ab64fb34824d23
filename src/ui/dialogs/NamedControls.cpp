#include "ui/dialogs/NamedControls.h"

#include <QDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
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
    row->addStretch();
    row->addWidget(ok);
    row->addWidget(cancel);
    return row;
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

QGroupBox* PreviewBox(QLineEdit* txtStepFrames)
{
    auto* box = new QGroupBox;
    box->setObjectName("fraPreview");
    auto* picture = NamedLabel("picPreview", "");
    picture->setMinimumSize(240, 180);
    picture->setFrameShape(QFrame::Box);
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setObjectName("Slider1");
    slider->setEnabled(false);

    auto* play = NamedButton("Command3", "Play");
    play->setToolTip("Play");
    auto* stop = NamedButton("Command4", "Stop");
    auto* back = NamedButton("Command5", "<<");
    auto* forward = NamedButton("Command6", ">>");
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {play, stop, back, forward}) {
        button->setEnabled(false);
        buttons->addWidget(button);
    }
    if (txtStepFrames) {
        const QString step = txtStepFrames->text();
        back->setToolTip("Move backward " + step + " frames");
        forward->setToolTip("Move forward " + step + " frames");
        buttons->addWidget(txtStepFrames);
    }
    buttons->addWidget(NamedLabel("lblFrame", "0"));
    buttons->addWidget(NamedLabel("lblTime", "0:00:00"));

    auto* layout = new QVBoxLayout(box);
    layout->addWidget(picture, 1);
    layout->addWidget(slider);
    layout->addLayout(buttons);
    layout->addWidget(NamedLabel("lblMovieInfo", ""));
    return box;
}

} // namespace mw
