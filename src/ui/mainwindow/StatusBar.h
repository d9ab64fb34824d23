#pragma once

#include "i18n/LanguageFiles.h"

class QLabel;
class QMainWindow;

namespace mw {

// Status1 with its four panels, each a label named by the panel's key: "menu", "CAPS", "NUM",
// "last".
class StatusBar {
public:
    explicit StatusBar(QMainWindow& window);

    void ShowMenu(const std::string& text);
    // Puts text into the panel of that key; false when there is no such panel.
    bool ShowInPanel(const std::string& key, const std::string& text);
    // The language file's panel, with its picture for a file of another version.
    void ShowLast(const LanguagePanel& panel);

private:
    QLabel* menu_;
    QLabel* oldLang_;
    QLabel* last_;
};

} // namespace mw
