#pragma once

#include "dvd/DvdExport.h"

#include <QDialog>

#include <string>
#include <vector>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;

namespace mw {

class Project;
class Prompt;

// What the dialog starts with.
struct DvdExportChoices {
    std::string Folder;
    TvStandard Standard = TvStandard::Pal;
    std::vector<std::string> Languages; // the codes of the project's menu sets
};

// A folder beside the project named after it, the standard the export takes by default and the
// project's menu languages.
DvdExportChoices DvdExportDefaults(Project& project);

// File > Export DVD-Video...: where the disc goes, its TV standard, an ISO image or not, and all
// menu languages or one.
class DvdExportDialog : public QDialog {
    Q_OBJECT
public:
    DvdExportDialog(const DvdExportChoices& choices, Prompt& prompt, QWidget* parent = nullptr);

    DvdExportRequest Request() const;

private:
    void cmdFolder_Click();
    void cmdIso_Click();
    void UpdateButtons();

    Prompt& prompt_;
    QLineEdit* txtFolder_;
    QComboBox* cboStandard_;
    QCheckBox* chkIso_;
    QLineEdit* txtIso_;
    QPushButton* cmdIso_;
    QComboBox* cboLanguage_;
    QPushButton* cmdExport_;
};

// Asks for the export and runs it in the build's log window: its steps, progress, the tools'
// output and Cancel. The project is only read.
void RunDvdExport(QWidget* window, Project& project);

} // namespace mw
