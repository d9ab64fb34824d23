#pragma once

#include <QDialog>

#include <string>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace mw {

class PreviewBox;
class Project;
struct NewMenuForm;

// "New Menu": a view of the new-menu form. The rules are the form's; the window shows the form
// after each of them.
class frmNewMenu : public QDialog {
    Q_OBJECT
public:
    frmNewMenu(NewMenuForm& form, Project& project, QWidget* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Runs a rule of the form with the typed fields read, then shows the form.
    void Apply(const std::function<void()>& rule);
    void ShowForm();
    void FromPictures();
    // "Load menu's movie": the background video in the preview.
    void Command7_Click();

    NewMenuForm& form_;
    Project& project_;
    QComboBox* Combo2_;
    QComboBox* Combo3_;
    QComboBox* cmbfps_;
    QLineEdit* txtMenuName_;
    QLabel* lblVideo_;
    QLineEdit* txtStartFrame_;
    QLineEdit* txtEndFrame_;
    QPushButton* cmdOK_;
    QPushButton* Command10_;
    QPushButton* Command7_;
    PreviewBox* preview_;
    std::string shownVideo_; // lblVideo when the preview last followed it
};

} // namespace mw
