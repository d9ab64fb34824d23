#include "ui/wizard/WizardWindow.h"

#include "build/OutsideMenuVideo.h"
#include "core/settings/clsIniFile.h"
#include "document/Project.h"
#include "generators/GeneratorRun.h"
#include "ui/QtDesignTarget.h"
#include "ui/dialogs/BuildLogWindow.h"
#include "ui/dialogs/NamedControls.h"
#include "ui/dialogs/ToolPathDialog.h"
#include "ui/generators/GeneratorWindow.h"
#include "ui/help/HelpWindow.h"

#include <QApplication>
#include <QCheckBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace mw {

namespace {

QString Q(const std::string& text) { return QString::fromStdString(text); }

constexpr QSize kPreviewSize{360, 288};

// A stream's details end in its name as the file's fixed field holds it, padded with NULs.
QString Details(const std::string& text) { return Q(text).remove(QChar(0)).remove('\r').trimmed(); }

template <typename T> T* Named(T* widget, const char* name)
{
    widget->setObjectName(name);
    return widget;
}

// A panel with its caption in bold above what it holds.
QWidget* Panel(const char* name, const char* caption, QLayout* body)
{
    auto* panel = Named(new QWidget, name);
    auto* layout = new QVBoxLayout(panel);
    QLabel* title = NamedLabel((std::string(name) + "Caption").c_str(), caption);
    QFont font = title->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.3);
    title->setFont(font);
    layout->addWidget(title);
    layout->addLayout(body);
    return panel;
}

void FillList(QListWidget* list, const std::vector<std::string>& rows)
{
    list->clear();
    for (const std::string& row : rows)
        list->addItem(Q(row));
}

} // namespace

WizardWindow::WizardWindow(Project& project, QWidget* parent)
    : QDialog(parent), project_(project), Picture1_(new QStackedWidget), List1_(Named(new QListWidget, "List1")),
      Info1_(NamedLabel("Info1", "")), Info2_(Named(new QListWidget, "Info2")),
      chkCreateTitleMenu_(Named(new QCheckBox("Create a menu for the titles"), "chkCreateTitleMenu")),
      chkCreateChapterMenu_(Named(new QCheckBox("Create a menu for the chapters of each title"), "chkCreateChapterMenu")),
      chkCreateSetupMenu_(Named(new QCheckBox("Create a setup menu for the audio and subtitles of each title"),
                                "chkCreateSetupMenu")),
      TreeView1_(Named(new QTreeWidget, "TreeView1")), picMenuPreview_(NamedLabel("picMenuPreview", "")),
      Text1_(Named(new QLineEdit, "Text1")), List2_(Named(new QListWidget, "List2")), picMsg_(Named(new QFrame, "picMsg")),
      List3_(Named(new QListWidget, "List3")), btnBack_(NamedButton("btnBack", "< Back")),
      btnNext_(NamedButton("btnNext", "Next >")), CancelButton_(NamedButton("CancelButton", "Cancel"))
{
    setObjectName("frmWizard");
    setWindowTitle("New project wizard");

    // Panel 0: the movies, and the details of the selected one.
    QPushButton* add = NamedButton("Command1", "Add");
    QPushButton* remove = NamedButton("Command2", "Remove");
    QPushButton* chapters = NamedButton("Command3", "Create chapters");
    auto* commands = new QVBoxLayout;
    for (QPushButton* command : {add, remove, chapters})
        commands->addWidget(command);
    commands->addStretch();
    auto* list = new QHBoxLayout;
    list->addWidget(List1_, 1);
    list->addLayout(commands);
    auto* titles = new QVBoxLayout;
    titles->addLayout(list, 1);
    Info1_->setWordWrap(true);
    titles->addWidget(Info1_);
    Info2_->setMaximumHeight(90);
    titles->addWidget(Info2_);
    List1_->setMinimumWidth(420);

    // Panel 1: the menus wanted.
    auto* boxes = new QVBoxLayout;
    for (QCheckBox* box : {chkCreateTitleMenu_, chkCreateChapterMenu_, chkCreateSetupMenu_})
        boxes->addWidget(box);
    boxes->addStretch();

    // Panel 2: the menu structure, the selected page and its file, the files to be made.
    TreeView1_->setHeaderLabel("Menu structure");
    TreeView1_->setMinimumWidth(240);
    picMenuPreview_->setFixedSize(kPreviewSize);
    picMenuPreview_->setAlignment(Qt::AlignCenter);
    picMenuPreview_->setFrameShape(QFrame::Panel);
    picMenuPreview_->setFrameShadow(QFrame::Sunken);
    Text1_->setReadOnly(true);
    picMsg_->setFrameShape(QFrame::Panel);
    picMsg_->setFrameShadow(QFrame::Raised);
    auto* message = new QVBoxLayout(picMsg_);
    message->addWidget(NamedLabel("lblMsg2", ""));
    message->addWidget(NamedLabel("lblMsg", ""));
    picMsg_->hide();
    auto* file = new QHBoxLayout;
    file->addWidget(Text1_);
    QPushButton* browse = NamedButton("Command4", "...");
    file->addWidget(browse);
    auto* page = new QVBoxLayout;
    page->addWidget(picMenuPreview_);
    page->addLayout(file);
    page->addWidget(NamedLabel("lblFiles", "Files that will be made"));
    page->addWidget(List2_);
    auto* preview = new QGridLayout;
    preview->addWidget(TreeView1_, 0, 0);
    preview->addLayout(page, 0, 1);
    preview->addWidget(picMsg_, 1, 0, 1, 2);

    // Panel 3: what was made.
    auto* finish = new QVBoxLayout;
    finish->addWidget(NamedLabel("lblFilesCreated", "Files created"));
    finish->addWidget(List3_);

    Picture1_->addWidget(Panel("Picture1_0", "Select titles", titles));
    Picture1_->addWidget(Panel("Picture1_1", "Select menus to create", boxes));
    Picture1_->addWidget(Panel("Picture1_2", "Create/Preview menus", preview));
    Picture1_->addWidget(Panel("Picture1_3", "Finish", finish));

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(HelpButton(*this));
    buttons->addStretch();
    buttons->addWidget(btnBack_);
    buttons->addWidget(btnNext_);
    buttons->addWidget(CancelButton_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Picture1_);
    layout->addLayout(buttons);
    btnNext_->setDefault(true);

    connect(add, &QPushButton::clicked, this, &WizardWindow::AddTitles);
    connect(remove, &QPushButton::clicked, this, &WizardWindow::RemoveTitle);
    connect(chapters, &QPushButton::clicked, this, &WizardWindow::CreateChapters);
    connect(List1_, &QListWidget::currentRowChanged, this, &WizardWindow::SelectTitle);
    connect(chkCreateTitleMenu_, &QCheckBox::toggled, this, [this](bool on) { wizard_.chkCreateTitleMenu = on; });
    connect(chkCreateChapterMenu_, &QCheckBox::toggled, this, [this](bool on) {
        SetChapterMenuBox(project_, wizard_, on);
        ShowBoxes();
    });
    connect(chkCreateSetupMenu_, &QCheckBox::toggled, this, [this](bool on) {
        SetSetupMenuBox(wizard_, on);
        ShowBoxes();
    });
    const auto rowOf = [](QTreeWidgetItem* item) { return item ? item->data(0, Qt::UserRole).toInt() : -1; };
    connect(TreeView1_, &QTreeWidget::itemClicked, this, [this, rowOf](QTreeWidgetItem* item) { SelectRow(rowOf(item)); });
    connect(TreeView1_, &QTreeWidget::itemDoubleClicked, this,
            [this, rowOf](QTreeWidgetItem* item) { EditRow(rowOf(item)); });
    connect(browse, &QPushButton::clicked, this, &WizardWindow::ChooseFile);
    connect(btnBack_, &QPushButton::clicked, this, &WizardWindow::Back);
    connect(btnNext_, &QPushButton::clicked, this, &WizardWindow::Next);
    connect(CancelButton_, &QPushButton::clicked, this, &WizardWindow::reject);
    ShowPanel();
}

void WizardWindow::reject()
{
    if (!running_)
        QDialog::reject();
    else if (runner_)
        runner_->Cancel();
}

void WizardWindow::ShowPanel()
{
    const WizardPanel panel = wizard_.Panel;
    Picture1_->setCurrentIndex(static_cast<int>(panel));
    // The pages stay as they are while their menus are made.
    Picture1_->setEnabled(!running_);
    btnBack_->setEnabled(wizard_.btnBackEnabled && !running_);
    btnNext_->setEnabled(wizard_.btnNextEnabled && !running_);
    btnNext_->setText(panel == WizardPanel::Preview ? "Create >" : "Next >");
    CancelButton_->setText(panel == WizardPanel::Finish ? "Close" : "Cancel");
}

void WizardWindow::Next()
{
    switch (wizard_.Panel) {
    case WizardPanel::SelectTitles:
        WizardShowMenus(wizard_);
        ShowBoxes();
        break;
    case WizardPanel::SelectMenus: {
        picMenuPreview_->clear();
        SetBusy("Loading menus...");
        const bool loaded = WizardShowPreview(project_, wizard_);
        picMsg_->hide();
        if (!loaded)
            return;
        FillTree();
        break;
    }
    case WizardPanel::Preview:
        Create();
        break;
    case WizardPanel::Finish:
        break;
    }
    ShowPanel();
}

void WizardWindow::Back()
{
    WizardBack(wizard_);
    ShowPanel();
}

void WizardWindow::AddTitles()
{
    WizardAddTitles(project_, wizard_);
    FillTitles();
}

void WizardWindow::RemoveTitle()
{
    WizardRemoveTitle(project_, wizard_);
    FillTitles();
}

void WizardWindow::CreateChapters()
{
    WizardCreateChapters(project_, wizard_);
}

void WizardWindow::SelectTitle(int row)
{
    WizardSelectTitle(project_, wizard_, row);
    Info1_->setText(Details(wizard_.Info1));
    Info2_->clear();
    for (const std::string& stream : wizard_.Info2)
        Info2_->addItem(Details(stream));
}

void WizardWindow::FillTitles()
{
    const QSignalBlocker quiet(List1_);
    List1_->clear();
    for (const WizardTitle& title : wizard_.List1)
        List1_->addItem(Q(title.Path));
    List1_->setCurrentRow(wizard_.ListIndex);
    ShowPanel();
}

void WizardWindow::ShowBoxes()
{
    const std::pair<QCheckBox*, bool> boxes[] = {{chkCreateTitleMenu_, wizard_.chkCreateTitleMenu},
                                                 {chkCreateChapterMenu_, wizard_.chkCreateChapterMenu},
                                                 {chkCreateSetupMenu_, wizard_.chkCreateSetupMenu}};
    for (const auto& [box, on] : boxes) {
        const QSignalBlocker quiet(box);
        box->setChecked(on);
    }
}

void WizardWindow::FillTree()
{
    TreeView1_->clear();
    QTreeWidgetItem* root = nullptr;
    for (std::size_t i = 0; i < wizard_.TreeView1.size(); ++i) {
        const WizardRow& row = wizard_.TreeView1[i];
        auto* item = row.Kind == WizardRowKind::Root ? (root = new QTreeWidgetItem(TreeView1_))
                                                      : new QTreeWidgetItem(root);
        item->setText(0, Q(row.Text));
        item->setData(0, Qt::UserRole, static_cast<int>(i));
    }
    TreeView1_->expandAll();
    FillList(List2_, wizard_.List2);
    Text1_->clear();
    picMenuPreview_->clear();
}

void WizardWindow::SelectRow(int row)
{
    WizardSelectRow(wizard_, row);
    Text1_->setText(Q(wizard_.Text1));
    const QImage picture = WizardRowPicture(wizard_, row);
    if (picture.isNull())
        picMenuPreview_->clear();
    else
        picMenuPreview_->setPixmap(
            QPixmap::fromImage(picture.scaled(kPreviewSize, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
}

void WizardWindow::EditRow(int row)
{
    const WizardRow* shown = row >= 0 && row < static_cast<int>(wizard_.TreeView1.size())
                                 ? &wizard_.TreeView1[static_cast<std::size_t>(row)]
                                 : nullptr;
    if (!shown || shown->Kind == WizardRowKind::Root)
        return;
    const std::string titleID =
        shown->Title >= 0 ? wizard_.List1[static_cast<std::size_t>(shown->Title)].TitleID : std::string();
    std::unique_ptr<GeneratorWindow> window;
    if (SetupPage* setup = WizardRowSetup(wizard_, row))
        window = std::make_unique<GeneratorWindow>(project_, *setup, GeneratorWindow::PageUse::EditOnly, this);
    else if (MenuPage* page = WizardRowPage(wizard_, row))
        window = std::make_unique<GeneratorWindow>(page->Kind, project_, *page, GeneratorWindow::PageUse::EditOnly,
                                                   titleID, this);
    if (!window)
        return;
    LoadTextForDesign(project_.Lang(), *window);
    window->exec();
    // The page count may have changed with the thumbnails a page.
    WizardRebuildRows(wizard_);
    FillTree();
    SelectRow(row < static_cast<int>(wizard_.TreeView1.size()) ? row : -1);
}

void WizardWindow::ChooseFile()
{
    if (wizard_.TreeIndex < 0)
        return;
    const std::optional<std::string> file = MenuFileName(project_.Ask(), "", MenuFileFilter(GeneratorKind::ChaptersMenu));
    if (!file)
        return;
    const int row = wizard_.TreeIndex;
    WizardSetFile(wizard_, *file);
    FillTree();
    SelectRow(row);
}

void WizardWindow::SetBusy(const QString& text)
{
    findChild<QLabel*>("lblMsg2")->setText(text);
    findChild<QLabel*>("lblMsg")->clear();
    picMsg_->show();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void WizardWindow::Create()
{
    running_ = true;
    ShowPanel();
    SetBusy("");
    bool made = false;
    clsIniFile ini(SettingsFilePath(project_.ProgramFolder()).string());
    // The options' method makes the videos; its runner lets Cancel end the run at the next frame.
    StartWithLogWindow(this, [&](ToolRunner& runner, BuildLog& log) {
        MenuVideoTools tools{runner, log, project_.ProgramFolder(), [this, &ini](int method) {
                                 return AskForTool(method, project_.Values(), ini, project_.Ask(), this);
                             }};
        runner_ = &runner;
        made = WizardCreate(project_, wizard_, &tools);
        runner_ = nullptr;
        return made || runner.Cancelled();
    });
    running_ = false;
    picMsg_->hide();
    FillList(List3_, wizard_.List3);
}

void mnuNewWizard(Project& project)
{
    if (!project.AskToSave())
        return;
    WizardWindow window(project, QApplication::activeWindow());
    LoadTextForDesign(project.Lang(), window);
    window.exec();
    // The canvas shows the top menu made.
    const Wizard& made = window.Model();
    std::vector<std::string> menus = made.TitleMenus;
    for (const WizardTitle& title : made.List1)
        menus.insert(menus.end(), title.ChapterMenus.begin(), title.ChapterMenus.end());
    SelectFirstMenu(project, menus);
}

} // namespace mw
