#include "ui/dialogs/frmNewMenu.h"

#include "build/MenuFromPictures.h"
#include "build/OutsideMenuVideo.h"
#include "core/Paths.h"
#include "core/settings/clsIniFile.h"
#include "document/Project.h"
#include "menus/MenuForms.h"
#include "ui/QtDesignTarget.h"
#include "ui/dialogs/ComboBoxView.h"
#include "ui/dialogs/BuildLogWindow.h"
#include "ui/dialogs/NamedControls.h"
#include "ui/dialogs/ToolPathDialog.h"
#include "ui/help/HelpWindow.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <functional>

namespace mw {

namespace {

QString Q(const std::string& text)
{
    return QString::fromStdString(text);
}

QLineEdit* NamedEdit(const char* name)
{
    auto* edit = new QLineEdit;
    edit->setObjectName(name);
    return edit;
}

} // namespace

frmNewMenu::frmNewMenu(NewMenuForm& form, Project& project, QWidget* parent)
    : QDialog(parent), form_(form), project_(project), Combo2_(ComboBoxView(form.Combo2, "Combo2", this)),
      Combo3_(ComboBoxView(form.Combo3, "Combo3", this)), cmbfps_(ComboBoxView(form.cmbfps, "cmbfps", this)),
      txtMenuName_(NamedEdit("txtMenuName")), lblVideo_(NamedLabel("lblVideo", "")),
      txtStartFrame_(NamedEdit("txtStartFrame")), txtEndFrame_(NamedEdit("txtEndFrame")),
      cmdOK_(NamedButton("cmdOK", "Ok")), Command10_(NamedButton("Command10", "Next key frame")),
      Command7_(NamedButton("Command7", "Load menu's movie")), preview_(new PreviewBox)
{
    setObjectName("frmNewMenu");
    setWindowTitle(Q(form.Caption));
    Combo2_->setToolTip("Create menu inside this Language Menu");
    cmbfps_->setEditable(true);
    cmbfps_->setToolTip("Frames per second for the menu created from a picture");
    cmbfps_->installEventFilter(this);
    txtStartFrame_->installEventFilter(this);
    txtEndFrame_->installEventFilter(this);
    lblVideo_->setFrameShape(QFrame::Panel);
    lblVideo_->setMinimumWidth(260);

    auto* fromAvi = NamedButton("Command1", "from avi");
    auto* fromPicture = NamedButton("Command2", "from picture");
    auto* Command8 = NamedButton("Command8", "from menu");
    auto* Command9 = NamedButton("Command9", "?");
    auto* cancel = NamedButton("cmdCancel", "Cancel");

    auto* grid = new QGridLayout;
    grid->addWidget(NamedLabel("Label1", "Language"), 0, 0);
    grid->addWidget(Combo2_, 0, 1, 1, 3);
    grid->addWidget(NamedLabel("Label2", "Menu type"), 1, 0);
    grid->addWidget(ComboBoxView(form.Combo1, "Combo1", this), 1, 1, 1, 3);
    grid->addWidget(NamedLabel("Label3", "Menu name"), 2, 0);
    grid->addWidget(txtMenuName_, 2, 1, 1, 3);
    grid->addWidget(NamedLabel("Label4", "exitAction"), 3, 0);
    grid->addWidget(Combo3_, 3, 1, 1, 3);
    grid->addWidget(NamedLabel("Label5", "Background video"), 4, 0);
    grid->addWidget(lblVideo_, 4, 1, 1, 3);
    auto* sources = new QHBoxLayout;
    for (QPushButton* button : {fromAvi, fromPicture, Command8, Command9, Command7_})
        sources->addWidget(button);
    grid->addLayout(sources, 5, 0, 1, 4);
    grid->addWidget(NamedLabel("Label6", "fps"), 6, 0);
    grid->addWidget(cmbfps_, 6, 1);

    auto* frames = new QGroupBox(Q(form.FrameCaption));
    frames->setObjectName("Frame1");
    auto* framesLayout = new QHBoxLayout(frames);
    framesLayout->addWidget(txtStartFrame_);
    framesLayout->addWidget(NamedLabel("Label7", "-"));
    framesLayout->addWidget(txtEndFrame_);
    framesLayout->addWidget(Command10_);
    grid->addWidget(frames, 7, 0, 1, 4);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(HelpButton(*this));
    buttons->addStretch();
    buttons->addWidget(cmdOK_);
    buttons->addWidget(cancel);
    LayOutBesidePreview(*this, grid, preview_, buttons);

    connect(Combo2_, &QComboBox::currentIndexChanged, this,
            [this] { Apply([this] { Combo2_Click(form_, project_.Doc.Tree); }); });
    connect(Combo3_, &QComboBox::currentIndexChanged, this, [this] { Combo3_->setToolTip(Q(Combo3ToolTip(form_))); });
    connect(fromAvi, &QPushButton::clicked, this, [this] { Apply([this] { LoadMovieForMenu(project_, form_, ""); }); });
    connect(fromPicture, &QPushButton::clicked, this, [this] { Apply([this] { FromPictures(); }); });
    connect(Command8, &QPushButton::clicked, this, [this] { Apply([this] { Command8_Click(project_, form_); }); });
    connect(Command9, &QPushButton::clicked, this, [this] { Command9_Click(project_); });
    connect(Command10_, &QPushButton::clicked, this, [this] { Apply([this] { Command10_Click(project_, form_); }); });
    connect(cmdOK_, &QPushButton::clicked, this, [this] {
        bool accepted = false;
        Apply([this, &accepted] { accepted = cmdOK_Click(project_, form_); });
        if (accepted)
            accept();
    });
    connect(Command7_, &QPushButton::clicked, this, &frmNewMenu::Command7_Click);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(this, &QDialog::finished, preview_, &PreviewBox::Close);
    connect(this, &QDialog::rejected, this, [this] { form_.Accepted = false; });

    form_.Accepted = false;
    ShowForm();
    LoadTextForDesign(project_.Lang(), *this);
}

bool frmNewMenu::eventFilter(QObject* watched, QEvent* event)
{
    if ((watched == txtStartFrame_ || watched == txtEndFrame_) && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && (key->modifiers() & Qt::ControlModifier)) {
            preview_->SeekTo(static_cast<QLineEdit*>(watched)->text());
            return true;
        }
    }
    if (watched == cmbfps_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            form_.cmbfpsText = cmbfps_->currentText().toStdString();
            clsIniFile ini(SettingsFilePath(project_.ProgramFolder()).string());
            if (cmbfps_Enter(form_, ini))
                RefillComboBox(*cmbfps_, form_.cmbfps);
            cmbfps_->setEditText(Q(form_.cmbfpsText));
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmNewMenu::Apply(const std::function<void()>& rule)
{
    form_.txtMenuName = txtMenuName_->text().toStdString();
    form_.txtStartFrame = txtStartFrame_->text().toStdString();
    form_.txtEndFrame = txtEndFrame_->text().toStdString();
    form_.cmbfpsText = cmbfps_->currentText().toStdString();
    rule();
    ShowForm();
}

void frmNewMenu::Command7_Click()
{
    // A "<Menu" reference plays that menu's background video.
    const std::string file = form_.lblVideo.starts_with("<Menu")
                                 ? GetFileNameForMenu(project_, MenuIdOfRow(form_.lblVideo))
                                 : ResolveLocation(project_.Doc.ProjectFile, form_.lblVideo);
    if (!file.empty())
        preview_->Open(file);
}

void frmNewMenu::ShowForm()
{
    // A new background video or a cleared one leaves the old movie behind.
    if (form_.lblVideo != shownVideo_) {
        preview_->Close();
        shownVideo_ = form_.lblVideo;
    }
    Command7_->setEnabled(!form_.lblVideo.empty());
    RefillComboBox(*Combo3_, form_.Combo3);
    Combo3_->setToolTip(Q(Combo3ToolTip(form_)));
    cmbfps_->setEditText(Q(form_.cmbfpsText));
    txtMenuName_->setText(Q(form_.txtMenuName));
    lblVideo_->setText(Q(form_.lblVideo));
    txtStartFrame_->setText(Q(form_.txtStartFrame));
    txtStartFrame_->setToolTip(Q(form_.txtStartFrameToolTip));
    txtEndFrame_->setText(Q(form_.txtEndFrame));
    txtEndFrame_->setToolTip(Q(form_.txtEndFrameToolTip));
    cmdOK_->setEnabled(form_.cmdOKEnabled);
    Command10_->setEnabled(form_.Command10Enabled);
}

// The menu video from pictures by the method of the options; a missing outside tool is asked for
// (or the built-in encoder taken instead), and a failed tool leaves its log window open.
void frmNewMenu::FromPictures()
{
    clsIniFile ini(SettingsFilePath(project_.ProgramFolder()).string());
    StartWithLogWindow(this, [this, &ini](ToolRunner& runner, BuildLog& log) {
        MenuVideoTools tools{runner, log, project_.ProgramFolder(), [this, &ini](int method) {
                                 return AskForTool(method, project_.Values(), ini, project_.Ask(), this);
                             }};
        return MenuVideoFromPictures(project_, form_, &tools) ||
               project_.Values().MethodForPicToMenu == kPicToMenuBuiltIn;
    });
}

} // namespace mw
