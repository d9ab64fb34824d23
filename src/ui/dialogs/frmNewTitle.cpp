#include "ui/dialogs/frmNewTitle.h"

#include "media/NewTitleForm.h"
#include "ui/QtDesignTarget.h"
#include "ui/dialogs/ComboBoxView.h"
#include "ui/dialogs/NamedControls.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace mw {

frmNewTitle::frmNewTitle(NewTitleForm& form, Prompt& prompt, const LangDoc& lang, QWidget* parent)
    : QDialog(parent), form_(form), prompt_(prompt), lstTracks_(TrackList()), Text1_(new QLineEdit)
{
    setObjectName("frmNewTitle");
    setWindowTitle("Add new Title");

    auto* lblFileName = NamedLabel("lblFileName", form.FileName.c_str());
    FillTrackList(*lstTracks_, form.Tracks);
    Text1_->setObjectName("Text1");
    Text1_->setText(QString::fromStdString(form.Text1));

    auto* Command2 = NamedButton("Command2", "Update");
    auto* Command1 = NamedButton("Command1", "Ok");
    auto* Command3 = NamedButton("Command3", "Cancel");

    auto* grid = new QGridLayout;
    grid->addWidget(NamedLabel("Label1", "File name"), 0, 0);
    grid->addWidget(lblFileName, 0, 1, 1, 2);
    grid->addWidget(lstTracks_, 1, 0, 1, 3);
    grid->addWidget(NamedLabel("Label2", "New Name-Language"), 2, 0);
    grid->addWidget(Text1_, 2, 1);
    grid->addWidget(Command2, 2, 2);
    grid->addWidget(NamedLabel("Label3", "Default audio track"), 3, 0);
    grid->addWidget(ComboBoxView(form.Combo1, "Combo1", this), 3, 1, 1, 2);
    grid->addWidget(NamedLabel("Label4", "Default subtitle track"), 4, 0);
    grid->addWidget(ComboBoxView(form.Combo2, "Combo2", this), 4, 1, 1, 2);
    auto* help = NamedLabel("Label5", "Check the Name-Language for audio and subtitle tracks. Basically this must be the "
                                   "language that audio or subtitle is. Examples \"Video - en-US;MO\", \"Audio - "
                                   "en-US;02\", \"Subtitle - ro-RO;02\", Subtitle - el-GR;02\"");
    help->setWordWrap(true);
    grid->addWidget(help, 5, 0, 1, 3);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addLayout(OkCancelRow(*this, Command1, Command3, form_.Accepted));

    connect(lstTracks_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) {
        SelectTrackRow(form_, lstTracks_->indexOfTopLevelItem(item));
        Text1_->setText(QString::fromStdString(form_.Text1));
    });
    connect(Text1_, &QLineEdit::textEdited, this, [this](const QString& text) { form_.Text1 = text.toStdString(); });
    connect(Command2, &QPushButton::clicked, this, &frmNewTitle::Command2_Click);
    resize(640, 420);
    LoadTextForDesign(lang, *this);
}

void frmNewTitle::Command2_Click()
{
    UpdateTrackName(form_, prompt_);
    if (form_.SelectedRow >= 0)
        lstTracks_->topLevelItem(form_.SelectedRow)
            ->setText(1, QString::fromStdString(form_.Tracks[static_cast<std::size_t>(form_.SelectedRow)].NameLanguage));
}

} // namespace mw
