#pragma once

#include "generators/PageMenus.h"
#include "generators/PageModel.h"
#include "generators/SetupMenu.h"
#include "media/LoadTitlesInForm.h"

#include <QDialog>

#include <vector>

class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QRadioButton;

namespace mw {

class PageView;
class Project;
class ToolRunner;

// One window for the three generators: frmVisualMenuForChapters over the chapters of a title,
// frmPreviewMenu over the titles, frmSetup over the streams of a title. The page is designed in
// the page view; Create makes the menus into the project. The window stays open afterwards, as
// the page was, until Ok.
//
// A caller may hand the window a page it opened itself; the window then edits that page in place
// and keeps to its title. Editing only hides Create, for a caller that makes the menus later.
class GeneratorWindow : public QDialog {
public:
    enum class PageUse { EditOnly, Create };

    // Opens its own page: the titles, or the first title's chapters or streams.
    GeneratorWindow(GeneratorKind kind, Project& project, QWidget* parent = nullptr);
    // The title or chapter kind on the caller's page; `titleID` names the title of the chapters.
    GeneratorWindow(GeneratorKind kind, Project& project, MenuPage& page, PageUse use,
                    const std::string& titleID = {}, QWidget* parent = nullptr);
    // The setup kind on the caller's page and streams.
    GeneratorWindow(Project& project, SetupPage& setup, PageUse use, QWidget* parent = nullptr);

    // The menus made while the window was open, in the order they were made.
    const std::vector<std::string>& MadeMenus() const { return made_; }

    void reject() override;
    // The fields go back to the page however the window ends.
    void done(int result) override;

private:
    GeneratorWindow(GeneratorKind kind, Project& project, SetupPage* setup, MenuPage* page, PageUse use,
                    const std::string& titleID, QWidget* parent);
    // Fills the title list; on a handed page selects its title, else opens the window's own page.
    void LoadItems(bool handed, const std::string& titleID);
    // Combo1: the chapters or the streams of another title.
    void LoadTitle(int row);
    // Command1 and mnuCreate: asks for the file, then makes the menus.
    void Create();
    bool MakeMenus(const PageMenuRequest& request);
    // While menus are made the window shows their progress and takes no edits.
    void SetRunning(bool running);
    void SetPerPage(int perPage);
    void SetSide(bool width);
    void AddText();
    void SelectBackground();
    void ReadFields();
    void ShowFields();

    GeneratorKind kind_;
    Project& project_;
    SetupPage own_;   // the page, when no caller handed one
    SetupPage& setup_; // the setup window's streams beside its page
    MenuPage& page_;   // the page every window shows
    std::vector<TitleListRow> titles_;
    QMenu* mnuMenu_;
    PageView* view_;
    QComboBox* Combo1_;
    QRadioButton* Option1_;
    QRadioButton* Option2_;
    QLineEdit* MenuName_;
    QLineEdit* Text1_;
    QFrame* picMsg_;
    QLabel* lblMsg_;
    QPushButton* Command1_;
    QPushButton* cmdCancel_;
    std::vector<QWidget*> idle_; // what a run turns off
    bool running_ = false;
    ToolRunner* runner_ = nullptr; // of the run under way
    std::vector<std::string> made_;
};

// A page just opened, without a background picture of its own, starts on a pale blue, on which
// the default black captions read well. Callers that hand the window a page start it the same way.
void PaintStartBackground(MenuPage& page);

// Selects the first of the menus a window made, so that the canvas shows it.
void SelectFirstMenu(Project& project, const std::vector<std::string>& menus);

// The Tools entries that open the windows; afterwards the first menu made is the one selected,
// so that the canvas shows it.
void mnuCreateVisualMenuForChapters(Project& project);
void mnuSetup(Project& project);

} // namespace mw
