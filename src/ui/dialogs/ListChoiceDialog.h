#pragma once

#include <QDialog>

#include <string>

namespace mw {

class LangDoc;
struct ComboList;

// A modal choice from one list with OK and Cancel: frmNewLang (a combo box) and frmSelectMenu
// (a list). The list keeps the row the user picked; exec() says whether he accepted.
class ListChoiceDialog : public QDialog {
    Q_OBJECT
public:
    enum class Look { Combo, List };
    ListChoiceDialog(const char* name, const std::string& caption, const std::string& label, ComboList& list, Look look,
                     const LangDoc& lang, QWidget* parent = nullptr);
};

} // namespace mw
