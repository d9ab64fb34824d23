#include "ui/mainwindow/Form1.h"

#include "build/ToolCommands.h"
#include "core/CommandGuard.h"
#include "core/Paths.h"
#include "document/NodeKindsHelp.h"
#include "document/NodeSelection.h"
#include "document/TreeQueries.h"
#include "generators/WholeProject.h"
#include "media/AviCache.h"
#include "media/AddTitle.h"
#include "media/Chapters.h"
#include "media/NewProject.h"
#include "media/RefreshTitle.h"
#include "menus/RemoveTitle.h"
#include "ui/QtDesignTarget.h"
#include "ui/canvas/CanvasView.h"
#include "ui/dialogs/frmAbout.h"
#include "ui/dialogs/BuildLogWindow.h"
#include "ui/dialogs/frmOptions.h"
#include "ui/dvd/DvdExportDialog.h"
#include "ui/help/HelpWindow.h"
#include "ui/languages/frmCreateLang.h"
#include "ui/mainwindow/DocTreeModel.h"
#include "ui/mainwindow/HelpPane.h"
#include "ui/mainwindow/MenuActions.h"
#include "ui/mainwindow/PropertiesPane.h"
#include "ui/mainwindow/ToolbarIcons.h"
#include "ui/mainwindow/TreePanes.h"
#include "ui/menuplayer/MenuPlayerWindow.h"
#include "ui/panels/PropertyDocks.h"
#include "ui/panels/frmPropText.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QLabel>
#include <QStatusBar>
#include <QMenu>
#include <QScreen>
#include <QSplitter>
#include <QStyle>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace mw {

namespace {

// Window places are kept in twips, 15 to a pixel of a 96 dpi screen.
constexpr int kTwipsPerPixel = 15;
constexpr int kSplitterWidth = 6;
// The canvas keeps this much width, so that one splitter stops short of the other.
constexpr int kCanvasMinimumWidth = 40;
constexpr int kAutoSaveIntervalMs = 60000;
constexpr qreal kFirstStartShare = 0.8;
// How far below the top of the canvas the panels stand at the first start: under ToolbarPic.
constexpr int kFirstStartPanelsTop = 48;

} // namespace

Form1::Form1(ProgramState& program, Prompt& prompt, FormHost& forms, QWidget* parent)
    : QMainWindow(parent), program_(program), project_(program, prompt, forms), menus_(*this), status_(*this),
      toolbars_(*this, menus_),
      model_(new DocTreeModel(project_.Doc.Tree, this)), tree_(new QTreeView),
      panes_(new TreePanes(*tree_, *model_, project_.Doc.Tree, menus_)), properties_(new PropertiesPane),
      help_(new HelpPane(program.Lang.ProgramFolder())), splitter_(new QSplitter(Qt::Horizontal))
{
    setObjectName("Form1");
    project_.ReadMovieFps = ReadMovieFps;

    tree_->setObjectName("TreeView1");
    tree_->setHeaderHidden(true);
    tree_->setModel(model_);
    auto* canvasFrame = new QWidget;
    canvasFrame->setObjectName("PicCon");
    canvasFrame->setMinimumWidth(kCanvasMinimumWidth);
    canvas_ = new CanvasView(project_, {[this](const std::function<void()>& command) { RefreshTree(command); },
                                        [this](DocNode* node) { panes_->SelectInTreeView1(node); }});
    auto* canvasLayout = new QVBoxLayout(canvasFrame);
    canvasLayout->setContentsMargins(0, 0, 0, 0);
    canvasLayout->addWidget(canvas_);
    auto* rightPane = new QWidget;
    rightPane->setObjectName("PicCon2");
    auto* rightLayout = new QVBoxLayout(rightPane);
    rightLayout->addWidget(properties_, 1);
    rightLayout->addWidget(help_, 1);

    // The panes sit in holders, so that hiding them keeps the widths the splitters give.
    const auto held = [](QWidget* pane) {
        auto* holder = new QWidget;
        holder->setMinimumWidth(pane->minimumWidth());
        auto* layout = new QVBoxLayout(holder);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(pane);
        return holder;
    };
    splitter_->addWidget(panes_);
    splitter_->addWidget(held(canvasFrame));
    splitter_->addWidget(held(rightPane));
    splitter_->setHandleWidth(kSplitterWidth);
    splitter_->setChildrenCollapsible(false);
    splitter_->setStretchFactor(1, 1);
    splitter_->handle(1)->setObjectName("lblDiax");
    splitter_->handle(2)->setObjectName("lblDiax2");
    setCentralWidget(splitter_);

    setWindowIcon(ToolbarIcon("menuwright"));
    const Settings& values = project_.Values();
    if (program_.FirstStart) {
        // Nothing is remembered yet: most of the screen, in its middle.
        const QRect area = screen()->availableGeometry();
        setGeometry(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, area.size() * kFirstStartShare, area));
    } else {
        move(static_cast<int>(values.Left / kTwipsPerPixel), static_cast<int>(values.Top / kTwipsPerPixel));
        resize(static_cast<int>(values.Width / kTwipsPerPixel), static_cast<int>(values.Height / kTwipsPerPixel));
    }

    docks_ = std::make_unique<PropertyDocks>(*this, project_, menus_,
                                             [this](const std::function<void()>& edit) { ReplaceDocument(edit); });
    connect(&docks_->TextPanel(), &frmPropText::OverlayChanged, canvas_, &CanvasView::Refresh);
    panes_->SetSimpleMode(values.SimpleMode);
    FillLanguages();
    ConnectCommands();
    Relabel();
    status_.ShowLast(LastPanelAtStart(program_.Lang.LangDoc()));

    auto* autoSave = new QTimer(this);
    autoSave->setObjectName("tmrAutoSave");
    autoSave->setInterval(kAutoSaveIntervalMs);
    connect(autoSave, &QTimer::timeout, this,
            [this] { RunCommandCaught(project_.Ask(), [this] { project_.AutoSaveTick(); }); });
    project_.AutoSaveTimerChanged = [autoSave](bool running) {
        autoSave->stop();
        if (running)
            autoSave->start();
    };
}

Form1::~Form1() = default;

void Form1::ConnectCommands()
{
    // Nothing a command throws leaves its handler: the user is told and the window goes on.
    // Within one command each movie's index is read once.
    const auto on = [this](const char* name, auto handler) {
        connect(menus_.Action(name), &QAction::triggered, this, [this, handler] {
            AviCacheScope movies;
            RunCommandCaught(project_.Ask(), handler);
        });
    };
    on("mnuNew", [this] { ReplaceDocument([this] { CreateNewFile(project_); }); });
    on("mnuOpen", [this] { mnuOpen_Click(); });
    on("mnuClose", [this] { ReplaceDocument([this] { project_.CloseOpenFile(); }); });
    on("mnuNormalize", [this] { ReplaceDocument([this] { project_.Normalize(); }); });
    on("mnuCheck", [this] { project_.Check(true); });
    on("mnuSave", [this] { project_.SaveFile(false, false); RefreshCommands(); });
    on("mnuSaveAs", [this] { project_.SaveFile(true, false); RefreshCommands(); });
    on("mnuUndo", [this] { ReplaceDocument([this] { project_.UndoDo(); }); });
    on("mnuAddTitle", [this] { ReplaceDocument([this] { mnuAddTitle(project_); }); });
    on("mnuCreateChapters", [this] { ReplaceDocument([this] { mnuCreateChapters(project_); }); });
    on("mnuRefreshTitle", [this] { ReplaceDocument([this] { mnuRefreshTitle(project_); }); });
    on("mnuRemoveTitle", [this] { ReplaceDocument([this] { mnuRemoveTitle(project_); }); });
    for (const MenuAction& action : MenuActions())
        on(action.Name, [this, run = action.Run] { ReplaceDocument([this, run] { run(project_); }); });
    on("mnuExit", [this] { close(); });
    on("mnuNextNode", [this] { StepSibling(true); });
    on("mnuPreviusNode", [this] { StepSibling(false); });
    QAction* rulers = menus_.Action("mnuViewRullers");
    rulers->setCheckable(true);
    rulers->setChecked(project_.Values().ShowRulers);
    connect(rulers, &QAction::toggled, this, [this](bool shown) {
        project_.Values().ShowRulers = shown;
        canvas_->SetRulersShown(shown);
    });
    connect(toolbars_.NoCreateOverlays(), &QAction::toggled, this, [this](bool pressed) { project_.NoCreateOverlays = pressed; });
    on("mnuOptions", [this] { mnuOptions_Click(); });
    on("mnuAbout", [this] { mnuAbout_Click(); });
    on("mnuCreateLangNick", [this] { mnuCreateLangNick_Click(); });
    ConnectHelp(*this, program_.Lang.ProgramFolder(), program_.Lang.LangDoc(), project_.Values(),
                *menus_.Action("mnuHelpHelp"), *menus_.Action("mnuHelpOnTop"));
    on("mnuMux", [this] {
        StartWithLogWindow(this, [this](ToolRunner& runner, BuildLog& log) {
            return mnuMux(project_.ProgramFolder(), project_.Lang(), project_.Ask(), runner, log);
        });
    });
    on("mnuCreateDivX", [this] { RunDivXBuild(this, project_); });
    on("mnuExportDvd", [this] { RunDvdExport(this, project_); });
    on("mnuMovieWithChaps", [this] {
        bool createNow = false;
        ReplaceDocument([this, &createNow] { createNow = mnuMovieWithChaps(project_) == MovieWithChapsEnd::CreateNow; });
        if (createNow)
            RunDivXBuild(this, project_);
    });
    // The player only reads the project, so the tree and the canvas stay as they are.
    on("mnuMenuPlayer", [this] { ShowMenuPlayer(project_); });
    on("mnuSrt2Divx", [this] {
        clsIniFile ini(SettingsFilePath(project_.ProgramFolder()).string());
        StartWithLogWindow(this, [&](ToolRunner& runner, BuildLog& log) {
            return mnuSrt2Divx(project_.ProgramFolder(), ini, project_.Ask(), runner, log);
        });
    });

    // The tree keeps what is open, so that it opens again after a model reset.
    connect(tree_, &QTreeView::expanded, this,
            [](const QModelIndex& index) { DocTreeModel::NodeOf(index)->Expanded = true; });
    connect(tree_, &QTreeView::collapsed, this,
            [](const QModelIndex& index) { DocTreeModel::NodeOf(index)->Expanded = false; });
    connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& current) {
        RunCommandCaught(project_.Ask(), [this, current] { TreeView1_NodeClick(DocTreeModel::NodeOf(current)); });
    });
    connect(properties_, &PropertiesPane::RowEdited, this, [this](const QString& name, const QString& value) {
        RunCommandCaught(project_.Ask(), [this, name, value] { Properties1_RowEdited(name, value); });
    });
}

void Form1::mnuOpen_Click()
{
    ReplaceDocument([this] { project_.OpenFileAsk(); });
}

void Form1::mnuOptions_Click()
{
    clsIniFile ini(SettingsFilePath(project_.ProgramFolder()).string());
    frmOptions dialog(project_.Values(), ini, project_.Ask(), project_.ProgramFolder(), this);
    LoadTextForDesign(project_.Lang(), dialog);
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (project_.ItemsEnabled)
        project_.RestartAutoSave();
}

void Form1::mnuAbout_Click()
{
    frmAbout dialog(this);
    LoadTextForDesign(project_.Lang(), dialog);
    dialog.exec();
}

void Form1::mnuCreateLangNick_Click()
{
    frmCreateLang dialog(project_.ProgramFolder(), program_.Lang.LangDoc(), project_.Ask(), this);
    // A saved language is offered at once, not only at the next start.
    connect(&dialog, &frmCreateLang::Saved, this, &Form1::FillLanguages);
    dialog.exec();
}

void Form1::OpenStartProject()
{
    const std::filesystem::path start = StartProjectFile(project_.ProgramFolder(), program_.FirstStart);
    if (start.empty())
        return;
    ReplaceDocument([this, &start] { project_.OpenFile(start.string()); });
    // The project opens on its first language's starting menu and button, so that the canvas
    // shows them with the button's handles and properties.
    const DocTree& tree = project_.Doc.Tree;
    const DocNode* language = tree.Empty() ? nullptr : ChildNamed(tree.Root(), "LanguageMenus");
    DocNode* menu = language ? tree.ObjectNode(GetPropertyInNode(*language, "startingmenuid")) : nullptr;
    if (!menu || tree.Selected())
        return;
    panes_->SelectInTreeView1(menu);
    if (DocNode* button = tree.ObjectNode(GetPropertyInNode(*menu, "startingmenuitemid")))
        panes_->SelectInTreeView1(button);
}

void Form1::ReplaceDocument(const std::function<void()>& command)
{
    canvas_->ForgetShownMenu();
    RefreshTree(command);
}

void Form1::RefreshTree(const std::function<void()>& command)
{
    model_->Detach();
    properties_->ShowNode(nullptr);
    help_->ShowBlock({});
    RunCommandCaught(project_.Ask(), command);
    model_->Reattach();
    panes_->LoadToSimple();
    ShowExpandedNodes();
    if (DocNode* selected = project_.Doc.Tree.Selected())
        tree_->setCurrentIndex(model_->IndexOf(selected));
    else
        status_.ShowMenu({});
    canvas_->ShowNode(project_.Doc.Tree.Selected());
    RefreshCommands();
}

void Form1::StepSibling(bool forward)
{
    if (mw::StepSibling(project_, forward))
        panes_->SelectInTreeView1(project_.Doc.Tree.Selected());
}

void Form1::ShowExpandedNodes()
{
    project_.Doc.Tree.ForEach([this](DocNode& node) {
        if (node.Expanded)
            tree_->expand(model_->IndexOf(&node));
    });
}

void Form1::RefreshCommands()
{
    setWindowTitle(QString::fromStdString(project_.WindowTitle));
    findChild<QWidget*>("PicCon")->setVisible(project_.PanesShown);
    // The right pane goes with its holder, so that the splitter hides lblDiax2 along with it.
    // The strip's place is kept first: a hidden pane has none.
    QWidget* rightHolder = splitter_->widget(2);
    if (laidOut_ && !project_.PanesShown && rightHolder->isVisibleTo(this))
        KeepLayout();
    rightHolder->setVisible(project_.PanesShown);
    menus_.ApplyStates(project_);
    toolbars_.ApplyStates(project_);
    docks_->Refresh();
    menus_.FillRecent(project_.RecentFiles(), program_.Lang.LangDoc(), [this](std::size_t index) {
        // Deferred: the entry that was clicked goes away when the list is filled again.
        QTimer::singleShot(0, this,
                           [this, index] { ReplaceDocument([this, index] { project_.OpenRecentFile(index); }); });
    });
}

void Form1::FillLanguages()
{
    QMenu* menu = menus_.Menu("mnuLanguages");
    for (QAction* item : languages_)
        delete item;
    languages_.clear();
    int index = 0;
    for (const LanguageFileEntry& entry : ListLanguageFiles(project_.ProgramFolder())) {
        QAction* item = menu->addAction(QString::fromStdString(entry.Caption));
        item->setObjectName("mnuLangDef_" + QString::number(++index));
        item->setCheckable(true);
        item->setChecked(entry.Caption == program_.TickedLanguage);
        languages_.push_back(item);
        connect(item, &QAction::triggered, this, [this, caption = entry.Caption] {
            RunCommandCaught(project_.Ask(), [this, &caption] { ChangeLanguage(caption); });
        });
    }
}

void Form1::Relabel()
{
    LoadTextForDesign(program_.Lang.LangDoc(), *this);
    docks_->Relabel(program_.Lang.LangDoc());
    menus_.AfterRelabel();
    // The click ticked the item by itself; the tick follows the language that really loaded.
    for (QAction* item : languages_)
        item->setChecked(item->text().toStdString() == program_.TickedLanguage);
    // The caption tells the open project, whatever the language file calls the window.
    RefreshCommands();
}

void Form1::ChangeLanguage(const std::string& name)
{
    const bool changed = mw::ChangeLanguage(program_, name);
    if (changed)
        status_.ShowLast(LastPanelAfterChange(program_.Lang.LangDoc()));
    Relabel();
}

void Form1::TreeView1_NodeClick(DocNode* node)
{
    if (const std::optional<std::string> menu = mw::TreeView1_NodeClick(project_, node))
        status_.ShowMenu(*menu);
    properties_->ShowNode(node);
    if (node)
        help_->ShowBlock(HelpBlockFor(node->Text));
    else
        help_->ShowBlock({});
    canvas_->ShowNode(node);
    RefreshCommands();
}

void Form1::Properties1_RowEdited(const QString& name, const QString& value)
{
    DocNode* node = project_.Doc.Tree.Selected();
    if (!node)
        return;
    if (value.toStdString() == kNoneMarker) {
        // The row goes away: the grid is filled again once its own signal has returned.
        model_->Detach();
        RunCommandCaught(project_.Ask(), [&] { EditPropertyRow(project_, *node, name.toStdString(), kNoneMarker); });
        model_->Reattach();
        ShowExpandedNodes();
        QTimer::singleShot(0, this, [this, node] { tree_->setCurrentIndex(model_->IndexOf(node)); });
    } else {
        EditPropertyRow(project_, *node, name.toStdString(), value.toStdString());
        model_->ChildrenChanged(*node);
    }
    panes_->LoadToSimple();
    RefreshCommands();
}

void Form1::ShowProgress(const ProgressChannel& channel, const std::string& text)
{
    // A window that runs the work shows it in its own label of that name and keeps its Cancel
    // answering: it turns off what must not be touched meanwhile.
    QWidget* modal = QApplication::activeModalWidget();
    auto* own = modal && !channel.Name.empty() ? modal->findChild<QLabel*>(QString::fromStdString(channel.Name)) : nullptr;
    if (own) {
        own->setText(QString::fromStdString(text));
        QCoreApplication::processEvents();
        return;
    }
    if (!status_.ShowInPanel(channel.Name, text))
        statusBar()->showMessage(QString::fromStdString(text));
    // Long work runs in this thread; the window still repaints between its steps.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void Form1::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (!laidOut_)
        ApplyLayout();
    laidOut_ = true;
}

void Form1::ApplyLayout()
{
    const Settings& values = project_.Values();
    const int left = static_cast<int>(values.Diax);
    const int room = splitter_->width() - left - 2 * kSplitterWidth;
    // At the first start the window is larger than the strips' places were made for: the
    // right pane gets the tree's width and the canvas all the rest.
    const int middle = program_.FirstStart ? room - left
                                           : static_cast<int>(values.Diax2 - values.Diax) - kSplitterWidth;
    splitter_->setSizes({left, std::max(1, middle), std::max(1, room - middle)});
    // The panels' default places were made for a smaller window and would cover the tree: at
    // the first start they stand inside the canvas's right edge, below its tool bar.
    if (program_.FirstStart)
        docks_->LineUpAt(splitter_->mapToGlobal(QPoint(left + kSplitterWidth + middle, kFirstStartPanelsTop)));
}

void Form1::KeepLayout()
{
    Settings& values = project_.Values();
    const QList<int> sizes = splitter_->sizes();
    values.Diax = sizes[0];
    // While the right pane is hidden its strip has no place of its own: the last one stays.
    if (splitter_->widget(2)->isVisibleTo(this))
        values.Diax2 = sizes[0] + kSplitterWidth + sizes[1];
    values.SimpleMode = panes_->SimpleMode();
    docks_->Keep();
    if (!isMaximized() && !isMinimized()) {
        values.Left = static_cast<long>(x()) * kTwipsPerPixel;
        values.Top = static_cast<long>(y()) * kTwipsPerPixel;
        values.Width = static_cast<long>(width()) * kTwipsPerPixel;
        values.Height = static_cast<long>(height()) * kTwipsPerPixel;
    }
}

void Form1::closeEvent(QCloseEvent* event)
{
    // The layout goes into the settings first, so that the end of the program writes it.
    KeepLayout();
    bool unloaded = false;
    RunCommandCaught(project_.Ask(), [this, &unloaded] { unloaded = project_.Unload(); });
    if (unloaded)
        event->accept();
    else
        event->ignore();
}

} // namespace mw
