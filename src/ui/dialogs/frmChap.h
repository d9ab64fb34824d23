#pragma once

#include <QDialog>

#include <functional>
#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QTreeWidget;

namespace mw {

class PreviewBox;
class Project;
struct ChapForm;

// "Create Chapters for Title": a view of the chapter form. The rules are the form's; this
// window shows the form after each of them.
class frmChap : public QDialog {
    Q_OBJECT
public:
    frmChap(ChapForm& form, Project& project, QWidget* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Combo1_Click();
    void ModeChanged();
    // The chosen title in the preview while the list is made by hand.
    void OpenPreview();
    void ShowTitle();
    void ShowCounts();
    void ShowChapters();
    // Runs a rule of the hand-made list with the frame fields read, then shows the result.
    void EditList(const std::function<void()>& rule);
    void ListView1_DblClick();
    void Command9_Click();
    void Command9_RightClick();
    void Accept(bool keepOpen);

    ChapForm& form_;
    Project& project_;
    QComboBox* Combo1_;
    QTreeWidget* lstTracks_;
    QLabel* lblEndFrame_;
    QLabel* lblRuntime_;
    QRadioButton* optPerMin_;
    QRadioButton* optChapters_;
    QRadioButton* Option1_;
    QLineEdit* txtMinutes_;
    QLineEdit* txtChapters_;
    QLabel* lblCountChapters_;
    QLabel* lblCountTime_;
    QTreeWidget* ListView1_;
    QLineEdit* txtStartFrame_;
    QLineEdit* txtEndFrame_;
    QLineEdit* txtStepFrames_;
    QCheckBox* chkAll_;
    PreviewBox* preview_;
    std::vector<QWidget*> manual_; // the hand-made list and its controls
};

} // namespace mw
