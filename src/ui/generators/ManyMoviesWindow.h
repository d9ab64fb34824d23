#pragma once

#include "generators/WholeProject.h"

#include <QDialog>

#include <string>
#include <vector>

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QRadioButton;
class QWidget;

namespace mw {

class Project;

// "Many movies with menu": the movies become titles, each with the frame its thumbnail shows,
// optionally all with chapters, and the title window opens on a page of them to make the menu.
class ManyMoviesWindow : public QDialog {
public:
    explicit ManyMoviesWindow(Project& project, QWidget* parent = nullptr);

    // The menus the title window made, in the order they were made.
    const std::vector<std::string>& MadeMenus() const { return made_; }

private:
    void ShowList();
    // Text1 and, while the preview is on, the frame of the selected movie.
    void ShowFrame();
    void ShowChapterFields();
    void ReadFields();
    // Command6: the title window, modally, over a page of the movies.
    void EditMenu();

    Project& project_;
    ManyMoviesForm form_;
    std::vector<std::string> made_;
    QListWidget* List1_;
    QLineEdit* Text1_;
    QCheckBox* Check1_;
    QWidget* preview_;
    QLabel* picFrame_;
    QCheckBox* chkCreateChap_;
    QRadioButton* optChapters_;
    QRadioButton* optPerMin_;
    QLineEdit* txtChapters_;
    QLineEdit* txtMinutes_;
    QLineEdit* txtColumns_;
    QLineEdit* txtRows_;
};

// Tools > Many movies with menu; afterwards the first menu made is the one selected.
void mnuMoviesWithMenu(Project& project);

} // namespace mw
