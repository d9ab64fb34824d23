#include "ui/dvd/DvdExportDialog.h"

#include "document/Project.h"
#include "core/Text.h"
#include "document/TreeQueries.h"
#include "ui/QtDesignTarget.h"
#include "ui/dialogs/BuildLogWindow.h"
#include "ui/help/HelpWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>

namespace mw {

namespace fs = std::filesystem;

DvdExportChoices DvdExportDefaults(Project& project)
{
    DvdExportChoices choices;
    choices.Standard = PlanDvdExport(project, {}).Standard;
    const fs::path file = project.Doc.ProjectFile;
    if (!file.empty())
        choices.Folder = (file.parent_path() / (file.stem().string() + " DVD")).string();
    if (const DocNode* root = project.Doc.Tree.Root()) {
        for (const auto& child : *root) {
            if (EqualsNoCase(child->Text, "LanguageMenus"))
                choices.Languages.push_back(GetPropertyInNode(*child, "languageCode"));
        }
    }
    return choices;
}

DvdExportDialog::DvdExportDialog(const DvdExportChoices& choices, Prompt& prompt, QWidget* parent)
    : QDialog(parent), prompt_(prompt), txtFolder_(new QLineEdit), cboStandard_(new QComboBox),
      chkIso_(new QCheckBox("Also write a disc image (ISO):")), txtIso_(new QLineEdit),
      cmdIso_(new QPushButton("Browse...")), cboLanguage_(new QComboBox), cmdExport_(new QPushButton("Export"))
{
    setObjectName("frmDvdExport");
    setWindowTitle("Export DVD-Video");
    txtFolder_->setObjectName("txtFolder");
    txtFolder_->setText(QString::fromStdString(choices.Folder));
    txtFolder_->setMinimumWidth(360);
    auto* cmdFolder = new QPushButton("Browse...");
    cmdFolder->setObjectName("cmdFolder");
    connect(cmdFolder, &QPushButton::clicked, this, &DvdExportDialog::cmdFolder_Click);

    cboStandard_->setObjectName("cboStandard");
    cboStandard_->addItem("PAL (720x576, 25 frames a second)", int(TvStandard::Pal));
    cboStandard_->addItem("NTSC (720x480, 29.97 frames a second)", int(TvStandard::Ntsc));
    cboStandard_->setCurrentIndex(cboStandard_->findData(int(choices.Standard)));

    chkIso_->setObjectName("chkIso");
    txtIso_->setObjectName("txtIso");
    if (!choices.Folder.empty())
        txtIso_->setText(QString::fromStdString(choices.Folder + ".iso"));
    cmdIso_->setObjectName("cmdIso");
    connect(cmdIso_, &QPushButton::clicked, this, &DvdExportDialog::cmdIso_Click);

    cboLanguage_->setObjectName("cboLanguage");
    cboLanguage_->addItem("All languages", QString());
    for (const std::string& code : choices.Languages)
        cboLanguage_->addItem(QString::fromStdString(code), QString::fromStdString(code));
    cboLanguage_->setEnabled(choices.Languages.size() > 1);

    cmdExport_->setObjectName("cmdExport");
    cmdExport_->setDefault(true);
    connect(cmdExport_, &QPushButton::clicked, this, &QDialog::accept);
    auto* cancel = new QPushButton("Cancel");
    cancel->setObjectName("CancelButton");
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* form = new QFormLayout;
    auto* folderRow = new QHBoxLayout;
    folderRow->addWidget(txtFolder_, 1);
    folderRow->addWidget(cmdFolder);
    form->addRow("Folder of the disc:", folderRow);
    form->addRow("TV standard:", cboStandard_);
    form->addRow("Menu languages:", cboLanguage_);
    auto* isoRow = new QHBoxLayout;
    isoRow->addWidget(txtIso_, 1);
    isoRow->addWidget(cmdIso_);
    form->addRow(chkIso_, isoRow);

    auto* note = new QLabel("The disc's VIDEO_TS folder is made in the folder; what was there is replaced only "
                            "when the export succeeds.");
    note->setWordWrap(true);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(HelpButton(*this));
    buttons->addStretch();
    buttons->addWidget(cmdExport_);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(note);
    layout->addLayout(buttons);

    connect(txtFolder_, &QLineEdit::textChanged, this, &DvdExportDialog::UpdateButtons);
    connect(txtIso_, &QLineEdit::textChanged, this, &DvdExportDialog::UpdateButtons);
    connect(chkIso_, &QCheckBox::toggled, this, &DvdExportDialog::UpdateButtons);
    UpdateButtons();
}

void DvdExportDialog::UpdateButtons()
{
    txtIso_->setEnabled(chkIso_->isChecked());
    cmdIso_->setEnabled(chkIso_->isChecked());
    cmdExport_->setEnabled(!txtFolder_->text().trimmed().isEmpty() &&
                           (!chkIso_->isChecked() || !txtIso_->text().trimmed().isEmpty()));
}

void DvdExportDialog::cmdFolder_Click()
{
    if (const std::optional<std::string> folder = prompt_.PickFolder("Choose the folder of the DVD-Video"))
        txtFolder_->setText(QString::fromStdString(*folder));
}

void DvdExportDialog::cmdIso_Click()
{
    FileDialogRequest request;
    request.Title = "Save the disc image";
    request.Filter = "Disc images (*.iso)|*.iso";
    request.DefaultExt = "iso";
    request.FileName = txtIso_->text().toStdString();
    request.OverwritePrompt = true;
    if (const std::optional<std::string> file = prompt_.SaveFile(request))
        txtIso_->setText(QString::fromStdString(*file));
}

DvdExportRequest DvdExportDialog::Request() const
{
    DvdExportRequest request;
    request.Target = txtFolder_->text().trimmed().toStdString();
    if (chkIso_->isChecked())
        request.Iso = txtIso_->text().trimmed().toStdString();
    request.Standard = TvStandard(cboStandard_->currentData().toInt());
    request.Language = cboLanguage_->currentData().toString().toStdString();
    return request;
}

void RunDvdExport(QWidget* window, Project& project)
{
    DvdExportDialog dialog(DvdExportDefaults(project), project.Ask(), window);
    LoadTextForDesign(project.Lang(), dialog);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const DvdExportRequest request = dialog.Request();
    // The export reads the tree from its own thread, so nothing may change it meanwhile.
    const QSignalBlocker noAutoSave(window->findChild<QTimer*>("tmrAutoSave"));
    RunBuildWithLogWindow(window, project.Ask(), [&](Prompt& prompt, ToolRunner& runner, BuildLog& log) {
        std::string error;
        if (ExportDvd(project, request, runner, log, error))
            return BuildEnd::Done;
        if (runner.Cancelled())
            return BuildEnd::Cancelled;
        prompt.Message(error);
        return BuildEnd::Failed;
    });
}

} // namespace mw
