#pragma once

#include "i18n/LanguageEditor.h"

#include <QDialog>

#include <filesystem>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace mw {

// The language editor: the original language file on the left, the new one on the right, the
// selected item's texts below. It labels itself from the running language.
class frmCreateLang : public QDialog {
    Q_OBJECT
public:
    frmCreateLang(const std::filesystem::path& programFolder, const LangDoc& lang, Prompt& prompt,
                  QWidget* parent = nullptr);

    void reject() override;

signals:
    // A language file was written to the program folder.
    void Saved();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void FillCombos();
    void Combo1_Click(const QString& entry);
    void Combo2_Click(const QString& entry);
    void ShowNewFile();
    void TellIfSaved(bool unsaved);
    void FillTree(QTreeWidget& tree, const std::optional<LangTreeNode>& root, bool otherFile = false);
    void Show(const LanguageEditor::Shown& shown);
    void Select(QTreeWidget& tree, const std::optional<LangItem>& item);
    void Command2_Click();
    void Command1_Click();

    LanguageEditor editor_;
    Prompt& prompt_;
    QComboBox* combo1_;
    QComboBox* combo2_;
    QLabel* lblVersion_;
    QLabel* lblVersionEdit_;
    QLineEdit* txtCreator_;
    QCheckBox* chkAutoCreate_;
    QTreeWidget* tree1_;
    QTreeWidget* tree2_;
    QLineEdit* text1_;
    QLineEdit* text2_;
    bool selecting_ = false; // the window, not the user, moves a tree's selection
};

} // namespace mw
