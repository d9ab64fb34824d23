#pragma once

#include "core/FormHost.h"
#include "core/Prompt.h"
#include "document/ProgramStart.h"
#include "document/Project.h"
#include "ui/mainwindow/MenuBar.h"
#include "ui/mainwindow/StatusBar.h"
#include "ui/mainwindow/Toolbars.h"

#include <QMainWindow>

#include <functional>
#include <memory>
#include <vector>

class QSplitter;
class QTreeView;

namespace mw {

class CanvasView;
class DocTreeModel;
class HelpPane;
class PropertiesPane;
class PropertyDocks;
class TreePanes;

// The main window: a view of one Project. Every command goes to the project; the window shows
// what the project then holds.
class Form1 : public QMainWindow {
    Q_OBJECT
public:
    Form1(ProgramState& program, Prompt& prompt, FormHost& forms, QWidget* parent = nullptr);
    ~Form1() override;

    Project& CurrentProject() { return project_; }
    // The last step of the start: nick.xml of the program folder, or the demo at the first start.
    void OpenStartProject();
    // Progress of long work: into the status panel the channel names, else the message area.
    void ShowProgress(const ProgressChannel& channel, const std::string& text);

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void ConnectCommands();
    // Runs a command that may replace the document, with the tree pane told around it.
    void ReplaceDocument(const std::function<void()>& command);
    // Runs a command that changes the document in place, with the tree pane told around it.
    void RefreshTree(const std::function<void()>& command);
    void RefreshCommands();
    // mnuLangDef's entries, one per language file of the program folder.
    void FillLanguages();
    // Labels the window from the language file, keeping what the file does not decide.
    void Relabel();
    void ChangeLanguage(const std::string& name);

    void TreeView1_NodeClick(DocNode* node);
    void StepSibling(bool forward);
    void Properties1_RowEdited(const QString& name, const QString& value);
    void ShowExpandedNodes();

    void mnuOpen_Click();
    void mnuOptions_Click();
    void mnuAbout_Click();
    void mnuCreateLangNick_Click();
    void ApplyLayout();
    void KeepLayout();

    ProgramState& program_;
    Project project_;
    MenuBar menus_;
    StatusBar status_;
    Toolbars toolbars_;
    DocTreeModel* model_;
    QTreeView* tree_;
    TreePanes* panes_;
    PropertiesPane* properties_;
    HelpPane* help_;
    CanvasView* canvas_;
    QSplitter* splitter_;
    std::unique_ptr<PropertyDocks> docks_;
    std::vector<QAction*> languages_; // mnuLangDef's entries, one per language file
    bool laidOut_ = false;
};

} // namespace mw
