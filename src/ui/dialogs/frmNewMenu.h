#pragma once

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace mw {

class Project;
struct NewMenuForm;

// "New Menu": a view of the new-menu form. The rules are the form's; the window shows the form
// after each of them. The preview controls are here, disabled: the player comes later.
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
};

} // namespace mw
