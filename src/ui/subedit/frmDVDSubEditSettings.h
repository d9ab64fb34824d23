#pragma once

#include <QDialog>

#include <filesystem>

namespace mw {

// The picture of the program folder that shows how the subtitle editor must be set up.
class frmDVDSubEditSettings : public QDialog {
public:
    explicit frmDVDSubEditSettings(const std::filesystem::path& programFolder, QWidget* parent = nullptr);
};

} // namespace mw
