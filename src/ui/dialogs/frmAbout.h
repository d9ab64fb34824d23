#pragma once

#include <QDialog>

namespace mw {

// Help > About: the program's name and version.
class frmAbout : public QDialog {
    Q_OBJECT
public:
    explicit frmAbout(QWidget* parent = nullptr);
};

} // namespace mw
