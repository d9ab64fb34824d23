#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

namespace mw {

class Project;
struct CreateOverFromPicForm;

// "Create Overlay from picture": the picture, a click on it for the transparent colour, and the
// picture in 16 colours as the overlay will hold it. A view of the form; the form keeps the
// result and whether the user accepted.
class frmCreateOverFromPic : public QDialog {
    Q_OBJECT
public:
    frmCreateOverFromPic(CreateOverFromPicForm& form, Project& project, QWidget* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Command1_Click();
    void ShowForm();

    CreateOverFromPicForm& form_;
    Project& project_;
    QLabel* Picture1_;
    QLabel* Picture2_;
    QLabel* lblTrans_;
    QLabel* lblTrans2_;
    QLabel* lblFileName_;
    QPushButton* Command2_;
    QPushButton* Command3_;
    QPushButton* OKButton_;
};

} // namespace mw
