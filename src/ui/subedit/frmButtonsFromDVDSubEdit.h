#pragma once

#include "generators/SubEditButtons.h"

#include <QDialog>

#include <array>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace mw {

class Project;

// "Buttons from DVDSubEdit": the icon dragged onto the subtitle editor's menu picture reads that
// window, finds its highlight areas and keeps them as one of ten sets; the active set is pasted
// into the menu on the canvas. Where other programs' windows cannot be read, the picture comes
// from a file. mainWindow is what "Hide Main window" hides.
class frmButtonsFromDVDSubEdit : public QDialog {
    Q_OBJECT
public:
    frmButtonsFromDVDSubEdit(Project& project, QWidget* mainWindow, QWidget* parent = nullptr);

    const SubEditSets& Sets() const { return sets_; }
    // A picture captured or read: scanned into the next free set.
    void Captured(const QImage& picture);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void done(int result) override;

private:
    // The release of the dragged icon: the window under the pointer, or a picture file where
    // windows cannot be read.
    void CatchWindow();
    void PictureFromFile();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void Command5_Click();
    void ShowSets();

    Project& project_;
    QWidget* mainWindow_;
    SubEditSets sets_;
    bool dragging_ = false;
    QLabel* Picture1_;
    std::array<QLabel*, kSubEditSetCount> Label2_{};
    QLabel* Label3_;
    QCheckBox* chkForce_;
    QLineEdit* Text1_;
    QCheckBox* chkPasteOverlays_;
    QPushButton* Command5_;
    QLabel* lblMinimize_;
    QLabel* lblRestore_;
    QLabel* status_;
};

// Tools > Buttons from DVDSubEdit...
void mnuButtonsFromDVDSubEdit(Project& project);

} // namespace mw
