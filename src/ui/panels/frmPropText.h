#pragma once

#include <QWidget>

#include <array>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace mw {

class Project;

// The text overlay panel: the text, outline and shadow of the selected button's text overlay
// and its font. A view of the project's panel model; every change is written into the button
// at once.
class frmPropText : public QWidget {
    Q_OBJECT
public:
    explicit frmPropText(Project& project, QWidget* parent = nullptr);

    // Shows the model again, after a command filled it (SetSpecialOverlay, CreateTextOverlay).
    void LoadFromProject();

signals:
    // The selected button's overlay was written anew and wants painting.
    void OverlayChanged();

private:
    void UpdateTextOverlay();
    void Command1_Click();
    void ShowFont();

    Project& project_;
    QPlainTextEdit* Text1_;
    QComboBox* Combo1_;
    QLineEdit* txt3D_;
    std::array<QCheckBox*, 4> Check1_{};
    QLabel* lblFont_;
};

} // namespace mw
