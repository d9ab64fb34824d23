#pragma once

#include <QDialog>

class QLineEdit;
class QTreeWidget;

namespace mw {

class LangDoc;
class Prompt;
struct NewTitleForm;

// "Add new Title": the streams of a new title, their names and the default tracks. A view of
// the form; the form keeps what the user chose and whether he accepted.
class frmNewTitle : public QDialog {
    Q_OBJECT
public:
    frmNewTitle(NewTitleForm& form, Prompt& prompt, const LangDoc& lang, QWidget* parent = nullptr);

private:
    void Command2_Click();

    NewTitleForm& form_;
    Prompt& prompt_;
    QTreeWidget* lstTracks_;
    QLineEdit* Text1_;
};

} // namespace mw
