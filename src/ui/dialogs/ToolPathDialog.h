#pragma once

#include "build/OutsideMenuVideo.h"
#include "core/settings/Settings.h"

#include <QDialog>

class QLineEdit;

namespace mw {

// What tells frmCliPath and frmVirtualDubPath apart.
struct ToolPathKind {
    const char* FormName;
    const char* FileName;
    const char* DialogTitle;
    const char* Filter;
    std::string Settings::*Path;
    bool (*Save)(Settings&, const std::string&, clsIniFile&);
};

extern const ToolPathKind kCliPathKind;
extern const ToolPathKind kVirtualDubPathKind;

// Asks where an outside tool lies. OKButton keeps the path in memory and writes its key;
// cmdBuiltIn switches the pictures-to-menu method to our own encoder instead.
class ToolPathDialog : public QDialog {
    Q_OBJECT
public:
    ToolPathDialog(const ToolPathKind& kind, Settings& settings, clsIniFile& ini, Prompt& prompt,
                   QWidget* parent = nullptr);

private:
    void Command1_Click();
    void OKButton_Click();
    void cmdBuiltIn_Click();

    const ToolPathKind& kind_;
    Settings& settings_;
    clsIniFile& ini_;
    Prompt& prompt_;
    QLineEdit* Text1_;
};

// Asks for the tool of a pictures-to-menu method (kPicToMenuVirtualDub or kPicToMenuCli) with its
// dialog, modally, and says what the user chose.
ToolAnswer AskForTool(int method, Settings& settings, clsIniFile& ini, Prompt& prompt, QWidget* parent);

} // namespace mw
