#pragma once

#include "generators/Wizard.h"

#include <QDialog>

class QCheckBox;
class QFrame;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QStackedWidget;
class QTreeWidget;
class QTreeWidgetItem;

namespace mw {

class Project;
class ToolRunner;

// frmWizard: four panels over the wizard's model. The pages of the preview open in the generator
// window for editing; the last step shows its progress, and Cancel ends it with nothing made.
class WizardWindow : public QDialog {
public:
    explicit WizardWindow(Project& project, QWidget* parent = nullptr);

    const Wizard& Model() const { return wizard_; }

    // While the menus are made Cancel, Escape and the close box end the run, not the window.
    void reject() override;

private:
    void ShowPanel();
    void Next();
    void Back();
    void AddTitles();
    void RemoveTitle();
    void CreateChapters();
    void SelectTitle(int row);
    void FillTitles();
    void ShowBoxes();
    void FillTree();
    void SelectRow(int row);
    void EditRow(int row);
    void ChooseFile();
    void Create();
    void SetBusy(const QString& text);

    Project& project_;
    Wizard wizard_;
    QStackedWidget* Picture1_;
    QListWidget* List1_;
    QLabel* Info1_;
    QListWidget* Info2_;
    QCheckBox* chkCreateTitleMenu_;
    QCheckBox* chkCreateChapterMenu_;
    QCheckBox* chkCreateSetupMenu_;
    QTreeWidget* TreeView1_;
    QLabel* picMenuPreview_;
    QLineEdit* Text1_;
    QListWidget* List2_;
    QFrame* picMsg_;
    QListWidget* List3_;
    QPushButton* btnBack_;
    QPushButton* btnNext_;
    QPushButton* CancelButton_;
    bool running_ = false;
    ToolRunner* runner_ = nullptr; // of the run under way
};

// mnuNewWizard: after the usual save question, the wizard.
void mnuNewWizard(Project& project);

} // namespace mw
