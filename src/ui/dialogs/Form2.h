#pragma once

#include <QDialog>

class QLabel;
class QListWidget;
class QTreeWidget;

namespace mw {

class Project;
struct ActionChoice;
struct ActionForm;

// "Add or edit action": a view of an action list. The checks and the list are the form's; the
// window keeps only which target lists the chosen type shows.
class Form2 : public QDialog {
    Q_OBJECT
public:
    Form2(ActionForm& form, Project& project, QWidget* parent = nullptr);

    void done(int result) override;

private:
    void List1_Click();
    void lstTitles_ItemClick();
    void lstMenus_ItemClick();
    void lstActions_ItemClick();
    // Add or update: false when a check stopped it.
    bool Command1_Click();
    ActionChoice Choice() const;
    void ShowActions();

    ActionForm& form_;
    Project& project_;
    QListWidget* List1_;
    QLabel* Label3_;
    QLabel* Label2_;
    QTreeWidget* lstTitles_;
    QTreeWidget* lstTracks_;
    QTreeWidget* lstChapters_;
    QTreeWidget* lstMenus_;
    QTreeWidget* lstButtons_;
    QTreeWidget* lstActions_;
    bool pending_ = false; // a choice made and not yet added
};

} // namespace mw
