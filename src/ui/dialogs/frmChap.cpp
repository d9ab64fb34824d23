#include "ui/dialogs/frmChap.h"

#include "core/CommandGuard.h"
#include "document/Project.h"
#include "media/ChapForm.h"
#include "media/Chapters.h"
#include "ui/QtDesignTarget.h"
#include "ui/dialogs/ComboBoxView.h"
#include "ui/dialogs/NamedControls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <utility>

namespace mw {

namespace {

const char* kFrameTip = "Enter to Add - Ctrl+Enter to set movie to that frame - Shift+Enter = Next keyframe - 1";

QLineEdit* NamedEdit(const char* name, const std::string& text)
{
    auto* edit = new QLineEdit(QString::fromStdString(text));
    edit->setObjectName(name);
    return edit;
}

QRadioButton* NamedOption(const char* name, const char* text, bool checked)
{
    auto* option = new QRadioButton(text);
    option->setObjectName(name);
    option->setChecked(checked);
    return option;
}

} // namespace

frmChap::frmChap(ChapForm& form, Project& project, QWidget* parent)
    : QDialog(parent), form_(form), project_(project), Combo1_(ComboBoxView(form.Combo1, "Combo1", this)),
      lstTracks_(TrackList()), lblEndFrame_(NamedLabel("lblEndFrame", "")), lblRuntime_(NamedLabel("lblRuntime", "")),
      optPerMin_(NamedOption("optPerMin", "Chapter every (minutes)", form.Mode == ChapMode::PerMinutes)),
      optChapters_(NamedOption("optChapters", "Number of chapters", form.Mode == ChapMode::Count)),
      Option1_(NamedOption("Option1", "Manually", form.Mode == ChapMode::Manual)),
      txtMinutes_(NamedEdit("txtMinutes", form.txtMinutes)), txtChapters_(NamedEdit("txtChapters", form.txtChapters)),
      lblCountChapters_(NamedLabel("lblCountChapters", "")), lblCountTime_(NamedLabel("lblCountTime", "")),
      ListView1_(new QTreeWidget), txtStartFrame_(NamedEdit("txtStartFrame", form.txtStartFrame)),
      txtEndFrame_(NamedEdit("txtEndFrame", form.txtEndFrame)),
      txtStepFrames_(NamedEdit("txtStepFrames", form.txtStepFrames)),
      chkAll_(new QCheckBox("Create chapters for all tiltles")), preview_(new PreviewBox(txtStepFrames_))
{
    setObjectName("frmChap");
    setWindowTitle("Create Chapters for Title");

    ListView1_->setObjectName("ListView1");
    ListView1_->setRootIsDecorated(false);
    ListView1_->setAllColumnsShowFocus(true);
    ListView1_->setHeaderLabels({"Nr", "Start Frame", "End Frame", "Name"});
    ListView1_->setToolTip("Double click to edit");
    ListView1_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    txtStartFrame_->setToolTip(kFrameTip);
    txtEndFrame_->setToolTip(kFrameTip);
    txtStartFrame_->installEventFilter(this);
    txtEndFrame_->installEventFilter(this);
    chkAll_->setObjectName("chkAll");
    chkAll_->setChecked(form.chkAll);

    auto* Command7 = NamedButton("Command7", "Add");
    auto* Command8 = NamedButton("Command8", "Insert");
    Command8->setToolTip("Insert chapter after the selected one in the list");
    auto* cmdDelete = NamedButton("cmdDelete", "Delete");
    auto* Command9 = NamedButton("Command9", "from .txt");
    Command9->setToolTip("Import chapters from PgcDemux or ChapterXtractor .txt file (right click to clear)");
    Command9->setContextMenuPolicy(Qt::CustomContextMenu);
    auto* Command2 = NamedButton("Command2", "Create chapters");
    auto* Command10 = NamedButton("Command10", "Apply");

    auto* grid = new QGridLayout;
    grid->addWidget(NamedLabel("Label1", "Title"), 0, 0);
    grid->addWidget(Combo1_, 0, 1, 1, 3);
    grid->addWidget(lstTracks_, 1, 0, 1, 4);
    grid->addWidget(NamedLabel("Label2", "Last frame"), 2, 0);
    grid->addWidget(lblEndFrame_, 2, 1);
    grid->addWidget(NamedLabel("Label3", "Runtime"), 2, 2);
    grid->addWidget(lblRuntime_, 2, 3);
    grid->addWidget(optPerMin_, 3, 0);
    grid->addWidget(txtMinutes_, 3, 1);
    grid->addWidget(lblCountChapters_, 3, 2, 1, 2);
    grid->addWidget(optChapters_, 4, 0);
    grid->addWidget(txtChapters_, 4, 1);
    grid->addWidget(lblCountTime_, 4, 2);
    grid->addWidget(Command9, 4, 3);
    grid->addWidget(Option1_, 5, 0);
    grid->addWidget(ListView1_, 6, 0, 1, 4);
    auto* frames = new QHBoxLayout;
    frames->addWidget(NamedLabel("Label4", "Start frame"));
    frames->addWidget(txtStartFrame_);
    frames->addWidget(NamedLabel("Label5", "End frame"));
    frames->addWidget(txtEndFrame_);
    for (QPushButton* button : {Command7, Command8, cmdDelete})
        frames->addWidget(button);
    manual_ = {ListView1_, txtStartFrame_, txtEndFrame_, Command7, Command8, cmdDelete};
    grid->addLayout(frames, 7, 0, 1, 4);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(chkAll_);
    buttons->addStretch();
    buttons->addWidget(Command2);
    buttons->addWidget(Command10);
    LayOutBesidePreview(*this, grid, preview_, buttons);

    connect(Combo1_, &QComboBox::currentIndexChanged, this, &frmChap::Combo1_Click);
    for (QRadioButton* option : {optPerMin_, optChapters_, Option1_})
        connect(option, &QRadioButton::toggled, this, &frmChap::ModeChanged);
    connect(txtMinutes_, &QLineEdit::textEdited, this, [this](const QString& text) {
        form_.txtMinutes = text.toStdString();
        CalcChapters(form_, project_.Ask());
        ShowCounts();
    });
    connect(txtChapters_, &QLineEdit::textEdited, this, [this](const QString& text) {
        form_.txtChapters = text.toStdString();
        CalcChapters(form_, project_.Ask());
        ShowCounts();
    });
    connect(ListView1_, &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem* item) { form_.ListView1Index = ListView1_->indexOfTopLevelItem(item); });
    connect(ListView1_, &QTreeWidget::itemDoubleClicked, this, &frmChap::ListView1_DblClick);
    connect(ListView1_, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item, int column) {
        const int row = ListView1_->indexOfTopLevelItem(item);
        if (column == 3 && row >= 0 && row < static_cast<int>(form_.ListView1.size()))
            form_.ListView1[static_cast<std::size_t>(row)].Name = item->text(3).toStdString();
    });
    connect(Command7, &QPushButton::clicked, this, [this] { EditList([this] { AddChapterRow(form_, project_.Ask()); }); });
    connect(Command8, &QPushButton::clicked, this,
            [this] { EditList([this] { InsertChapterRow(form_, project_.Ask()); }); });
    connect(cmdDelete, &QPushButton::clicked, this, [this] { EditList([this] { DeleteChapterRow(form_); }); });
    connect(Command9, &QPushButton::clicked, this, &frmChap::Command9_Click);
    connect(Command9, &QPushButton::customContextMenuRequested, this, &frmChap::Command9_RightClick);
    connect(Command2, &QPushButton::clicked, this, [this] { Accept(false); });
    connect(Command10, &QPushButton::clicked, this, [this] { Accept(true); });
    connect(this, &QDialog::rejected, this, [this] { form_.Accepted = false; });
    connect(this, &QDialog::finished, preview_, &PreviewBox::Close);

    form_.Accepted = false;
    ShowTitle();
    ShowCounts();
    ModeChanged();
    LoadTextForDesign(project_.Lang(), *this);
}

bool frmChap::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)
        return QDialog::eventFilter(watched, event);
    auto* field = static_cast<QLineEdit*>(watched);
    if (key->modifiers() & Qt::ShiftModifier) {
        std::string frame = field->text().toStdString();
        NextKeyFrameEnd(form_, frame, project_.Ask());
        field->setText(QString::fromStdString(frame));
    } else if (key->modifiers() & Qt::ControlModifier) {
        preview_->SeekTo(field->text());
    } else {
        EditList([this] { AddChapterRow(form_, project_.Ask()); });
    }
    return true;
}

void frmChap::Combo1_Click()
{
    mw::Combo1_Click(form_, project_.Doc, project_.Ask());
    if (form_.Combo1.ListIndex >= 0)
        CalcChapters(form_, project_.Ask());
    ShowTitle();
    ShowCounts();
    OpenPreview();
}

void frmChap::ModeChanged()
{
    form_.Mode = Option1_->isChecked() ? ChapMode::Manual
                 : optPerMin_->isChecked() ? ChapMode::PerMinutes
                                            : ChapMode::Count;
    const bool manual = form_.Mode == ChapMode::Manual;
    for (QWidget* control : manual_)
        control->setEnabled(manual);
    txtMinutes_->setEnabled(form_.Mode == ChapMode::PerMinutes);
    txtChapters_->setEnabled(form_.Mode == ChapMode::Count);
    OpenPreview();
}

void frmChap::OpenPreview()
{
    // Only the hand-made list steps through the movie.
    const std::string file = form_.Mode == ChapMode::Manual ? ChosenTitleFile(form_) : "";
    if (file.empty())
        preview_->Close();
    else
        preview_->Open(file);
}

void frmChap::ShowTitle()
{
    FillTrackList(*lstTracks_, form_.lstTracks);
    lblEndFrame_->setText(QString::number(form_.lblEndFrame));
    lblRuntime_->setText(QString::fromStdString(form_.lblRuntime));
    ShowChapters();
}

void frmChap::ShowCounts()
{
    lblCountChapters_->setText(QString::fromStdString(form_.lblCountChapters.Caption));
    lblCountTime_->setText(QString::fromStdString(form_.lblCountTime.Caption));
    // Only a changed text is set again, so that the cursor stays where the user types.
    for (auto [edit, text] : {std::pair{txtMinutes_, &form_.txtMinutes}, std::pair{txtChapters_, &form_.txtChapters}}) {
        if (edit->text().toStdString() != *text)
            edit->setText(QString::fromStdString(*text));
    }
}

void frmChap::ShowChapters()
{
    const QSignalBlocker quiet(ListView1_);
    ListView1_->clear();
    for (const ChapterRow& row : form_.ListView1) {
        auto* item = new QTreeWidgetItem({QString::number(row.Number), QString::number(row.Start),
                                          QString::number(row.End), QString::fromStdString(row.Name)});
        item->setFlags(item->flags() | Qt::ItemIsEditable);
        ListView1_->addTopLevelItem(item);
    }
    if (form_.ListView1Index >= 0)
        ListView1_->setCurrentItem(ListView1_->topLevelItem(form_.ListView1Index));
    txtStartFrame_->setText(QString::fromStdString(form_.txtStartFrame));
}

void frmChap::EditList(const std::function<void()>& rule)
{
    form_.txtStartFrame = txtStartFrame_->text().toStdString();
    form_.txtEndFrame = txtEndFrame_->text().toStdString();
    rule();
    ShowChapters();
}

void frmChap::ListView1_DblClick()
{
    if (QTreeWidgetItem* item = ListView1_->currentItem())
        ListView1_->editItem(item, 3);
}

void frmChap::Command9_Click()
{
    ImportChaptersFromTxt(form_, project_.Values().LastFolderUsed, project_.Lang(), project_.Ask());
    ShowCounts();
}

void frmChap::Command9_RightClick()
{
    ClearImportedChapters(form_);
    CalcChapters(form_, project_.Ask());
    ShowCounts();
}

void frmChap::Accept(bool keepOpen)
{
    form_.txtStepFrames = txtStepFrames_->text().toStdString();
    form_.chkAll = chkAll_->isChecked();
    if (!AcceptChapForm(form_, ChapSettingsFile(project_), project_.Lang(), project_.Ask()))
        return;
    if (!keepOpen) {
        accept();
        return;
    }
    // "Apply" makes the chapters now and stays open for the next title; nothing it throws may
    // leave through the dialog's event loop.
    RunCommandCaught(project_.Ask(), [this] { CreateChaps(project_, form_, false); });
    form_.Accepted = false;
    RefillComboBox(*Combo1_, form_.Combo1);
    Combo1_Click();
}

} // namespace mw
