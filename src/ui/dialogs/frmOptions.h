#pragma once

#include "core/settings/OptionsModel.h"

#include <QDialog>

#include <filesystem>

class QAbstractButton;
class QCheckBox;
class QLabel;
class QLineEdit;

namespace mw {

// The options dialog: a view of OptionsModel. OKButton writes the dialog's keys to `ini` and
// the settings in memory, and closes the dialog only when the fields are valid.
class frmOptions : public QDialog {
    Q_OBJECT
public:
    frmOptions(Settings& settings, clsIniFile& ini, Prompt& prompt, const std::filesystem::path& programFolder,
               QWidget* parent = nullptr);

    const OptionsModel& Model() const { return model_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* GeneralPage();
    QWidget* BuildPage();
    QWidget* OverlaysPage();
    QCheckBox* Check(const char* name, const char* caption, bool& field);
    void RefreshEnabled();
    void OKButton_Click();

    Settings& settings_;
    clsIniFile& ini_;
    Prompt& prompt_;
    OptionsModel model_;
    QLineEdit* txtAutoSaveMin_ = nullptr;
    QLineEdit* txtFolder_ = nullptr;
    QCheckBox* chkOnlyVD_ = nullptr;
    QCheckBox* chkDonNotInvolveCliExe_ = nullptr;
    QCheckBox* chkShowDOScli_ = nullptr;
    QAbstractButton* Command2_ = nullptr;
    QCheckBox* chkDeleteBmp_ = nullptr;
    QCheckBox* chkDeleteDivX_ = nullptr;
};

} // namespace mw
