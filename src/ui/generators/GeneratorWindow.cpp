#include "ui/generators/GeneratorWindow.h"

#include "build/OutsideMenuVideo.h"
#include "core/Paths.h"
#include "core/settings/clsIniFile.h"
#include "core/Text.h"
#include "document/NodeSelection.h"
#include "document/Project.h"
#include "generators/ChapterMenu.h"
#include "generators/GeneratorRun.h"
#include "generators/PageSettings.h"
#include "generators/TitleMenu.h"
#include "ui/QtDesignTarget.h"
#include "ui/dialogs/BuildLogWindow.h"
#include "ui/dialogs/NamedControls.h"
#include "ui/dialogs/ToolPathDialog.h"
#include "ui/generators/PageDialogs.h"
#include "ui/generators/PageView.h"
#include "ui/help/HelpWindow.h"

#include <QApplication>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>
#include <initializer_list>

namespace mw {

namespace {

QString Q(const std::string& text) { return QString::fromStdString(text); }

struct WindowNames {
    const char* Form;
    const char* Caption;
};

WindowNames NamesOf(GeneratorKind kind)
{
    switch (kind) {
    case GeneratorKind::ChaptersMenu:
        return {"frmVisualMenuForChapters", "Menu for chapters with preview"};
    case GeneratorKind::TitleMenu:
        return {"frmPreviewMenu", "Menu for titles with preview"};
    case GeneratorKind::SetupMenu:
        break;
    }
    return {"frmSetup", "Preview menu for Setup"};
}

QLineEdit* NamedEdit(const char* name)
{
    auto* edit = new QLineEdit;
    edit->setObjectName(name);
    return edit;
}

} // namespace

GeneratorWindow::GeneratorWindow(GeneratorKind kind, Project& project, QWidget* parent)
    : GeneratorWindow(kind, project, nullptr, nullptr, PageUse::Create, {}, parent)
{
}

GeneratorWindow::GeneratorWindow(GeneratorKind kind, Project& project, MenuPage& page, PageUse use,
                                 const std::string& titleID, QWidget* parent)
    : GeneratorWindow(kind, project, nullptr, &page, use, titleID, parent)
{
}

GeneratorWindow::GeneratorWindow(Project& project, SetupPage& setup, PageUse use, QWidget* parent)
    : GeneratorWindow(GeneratorKind::SetupMenu, project, &setup, &setup.Page, use, setup.TitleID, parent)
{
}

GeneratorWindow::GeneratorWindow(GeneratorKind kind, Project& project, SetupPage* setup, MenuPage* page,
                                 PageUse use, const std::string& titleID, QWidget* parent)
    : QDialog(parent), kind_(kind), project_(project), setup_(setup ? *setup : own_),
      page_(page ? *page : setup_.Page), mnuMenu_(new QMenu("Menu", this)), Combo1_(new QComboBox),
      Option1_(new QRadioButton("6/page")), Option2_(new QRadioButton("8/page")), MenuName_(NamedEdit("MenuName")),
      Text1_(NamedEdit("Text1")), picMsg_(new QFrame), lblMsg_(NamedLabel("lblMsg", "")),
      Command1_(NamedButton("Command1", "Create...")), cmdCancel_(NamedButton("cmdCancel", "Cancel"))
{
    setObjectName(NamesOf(kind).Form);
    setWindowTitle(NamesOf(kind).Caption);
    Combo1_->setObjectName("Combo1");
    Option1_->setObjectName("Option1");
    Option2_->setObjectName("Option2");
    picMsg_->setObjectName("picMsg");
    picMsg_->setFrameShape(QFrame::Panel);
    picMsg_->setFrameShadow(QFrame::Sunken);
    lblMsg_->setWordWrap(true);
    (new QVBoxLayout(picMsg_))->addWidget(lblMsg_);
    picMsg_->hide();

    LoadItems(page != nullptr, titleID);
    PageExtras extras;
    if (kind_ == GeneratorKind::SetupMenu) {
        extras.Compose = [this] { return ComposeSetupPage(setup_); };
        extras.Labels = [this] {
            std::vector<PageLabel*> labels;
            for (auto* column : {&setup_.Audio, &setup_.Subtitles}) {
                for (StreamLabel& row : *column)
                    labels.push_back(&row.Label);
            }
            return labels;
        };
    }
    view_ = new PageView(page_, project_.Ask(), mnuMenu_, std::move(extras));

    const auto item = [this](const char* name, const char* text, auto run) {
        QAction* action = mnuMenu_->addAction(text);
        action->setObjectName(name);
        connect(action, &QAction::triggered, this, run);
        return action;
    };
    mnuMenu_->setObjectName("mnuMenu");
    item("mnuCreate", "Create...", [this] { Create(); })->setVisible(use == PageUse::Create);
    item("mnuSetSettings", "Set these settings as default", [this] {
        ReadFields();
        SaveDefValues(kind_, page_.Design, SettingsFilePath(project_.ProgramFolder()));
    });
    mnuMenu_->addSeparator();
    item("mnuAddText", "Add text/picture", [this] { AddText(); });
    item("mnuBackground", "Background...", [this] { SelectBackground(); });
    const auto selectOverlay = [this] { mw::SelectOverlay(page_.Design.WhatOverlay, this); };
    if (kind_ != GeneratorKind::SetupMenu)
        item("mnuSelectOverlay", "Overlay...", selectOverlay);
    item("mnuWidth", "Width...", [this] { SetSide(true); });
    item("mnuHeight", "Height...", [this] { SetSide(false); });
    if (kind_ != GeneratorKind::SetupMenu) {
        mnuMenu_->addSeparator();
        item("mnuPreviousPage", "Previous page", [this] { view_->StepPage(-1); })->setShortcut(QKeySequence("PgUp"));
        item("mnuNextPage", "Next page", [this] { view_->StepPage(1); })->setShortcut(QKeySequence("PgDown"));
    }
    auto* bar = new QMenuBar;
    bar->addMenu(mnuMenu_);

    auto* fields = new QFormLayout;
    if (kind_ != GeneratorKind::TitleMenu)
        fields->addRow(NamedLabel("lblTitle", "Title"), Combo1_);
    else
        Combo1_->hide();
    if (kind_ != GeneratorKind::SetupMenu) {
        auto* perPage = new QHBoxLayout;
        perPage->addWidget(Option1_);
        perPage->addWidget(Option2_);
        fields->addRow(NamedLabel("lblPerPage", "Thumbnails"), perPage);
    }
    fields->addRow(NamedLabel("lblMenuName", "Menu name"), MenuName_);
    if (kind_ == GeneratorKind::ChaptersMenu)
        fields->addRow(NamedLabel("lblMotion", "Motion (seconds)"), Text1_);
    else
        Text1_->hide();
    if (kind_ != GeneratorKind::SetupMenu) {
        auto* overlay = NamedButton("cmdOverlay", "Select overlay...");
        connect(overlay, &QPushButton::clicked, this, selectOverlay);
        fields->addRow(NamedLabel("lblOverlay", "Overlay"), overlay);
    }

    // A handed page keeps to its title.
    Combo1_->setEnabled(page == nullptr);
    Command1_->setVisible(use == PageUse::Create);
    auto* ok = NamedButton("Command4", "Ok");
    auto* fieldsBox = new QWidget;
    fieldsBox->setLayout(fields);
    auto* side = new QVBoxLayout;
    side->addWidget(fieldsBox);
    side->addWidget(picMsg_);
    side->addStretch();
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(HelpButton(*this));
    buttons->addWidget(Command1_);
    buttons->addWidget(ok);
    buttons->addWidget(cmdCancel_);
    cmdCancel_->hide();
    side->addLayout(buttons);
    idle_ = {fieldsBox, Command1_, ok, view_, bar};

    auto* sidePanel = new QWidget;
    sidePanel->setLayout(side);
    sidePanel->setFixedWidth(330);
    Combo1_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto* columns = new QHBoxLayout;
    columns->addWidget(sidePanel);
    columns->addWidget(view_, 1, Qt::AlignLeft | Qt::AlignTop);
    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(bar);
    layout->addLayout(columns);
    // The controls this kind leaves out still belong to the window.
    for (QWidget* control : std::initializer_list<QWidget*>{Combo1_, Option1_, Option2_, Text1_}) {
        if (!control->parentWidget()) {
            control->setParent(this);
            control->hide();
        }
    }

    ShowFields();

    connect(Combo1_, &QComboBox::currentIndexChanged, this, &GeneratorWindow::LoadTitle);
    connect(Option1_, &QRadioButton::toggled, this, [this](bool on) { SetPerPage(on ? 6 : 8); });
    connect(Command1_, &QPushButton::clicked, this, &GeneratorWindow::Create);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancel_, &QPushButton::clicked, this, &GeneratorWindow::reject);
}

void GeneratorWindow::reject()
{
    // While menus are made the window stays; Cancel, Escape and its close box end the run.
    if (!running_)
        QDialog::reject();
    else if (runner_)
        runner_->Cancel();
}

void GeneratorWindow::done(int result)
{
    ReadFields();
    QDialog::done(result);
}

void GeneratorWindow::SetRunning(bool running)
{
    running_ = running;
    for (QWidget* control : idle_)
        control->setEnabled(!running);
    for (QAction* action : mnuMenu_->actions())
        action->setEnabled(!running);
}

void GeneratorWindow::LoadItems(bool handed, const std::string& titleID)
{
    titles_ = LoadTitlesInForm(project_.Doc).lstTitles;
    for (const TitleListRow& title : titles_)
        Combo1_->addItem(Q(title.Path + "|" + title.TitleID));
    if (handed) {
        const auto row = std::ranges::find(titles_, titleID, &TitleListRow::TitleID);
        Combo1_->setCurrentIndex(row == titles_.end() ? -1 : int(row - titles_.begin()));
        return;
    }
    bool opened = false;
    switch (kind_) {
    case GeneratorKind::TitleMenu:
        opened = OpenTitlePage(project_, 8, page_);
        break;
    case GeneratorKind::ChaptersMenu:
        opened = !titles_.empty() && OpenChapterPage(project_, titles_.front().TitleID, 8, page_);
        break;
    case GeneratorKind::SetupMenu:
        opened = !titles_.empty() && OpenSetupPage(project_, titles_.front().TitleID, setup_);
        break;
    }
    if (opened)
        PaintStartBackground(page_);
}

void GeneratorWindow::LoadTitle(int row)
{
    if (row < 0 || row >= int(titles_.size()))
        return;
    const std::string& id = titles_[std::size_t(row)].TitleID;
    lblMsg_->setText("Loading frames... Please wait");
    picMsg_->show();
    if (kind_ == GeneratorKind::SetupMenu) {
        // The streams differ from title to title; the design stays the user's.
        const PageDesign design = page_.Design;
        const GradientColors gradient = page_.Gradient;
        OpenSetupPage(project_, id, setup_);
        page_.Design = design;
        page_.Gradient = gradient;
        PlaceStreamLabels(setup_);
    } else {
        LoadChapterItems(project_, id, page_);
    }
    picMsg_->hide();
    view_->Refresh();
}

void GeneratorWindow::SetPerPage(int perPage)
{
    if (page_.PerPage == perPage)
        return;
    page_.PerPage = perPage;
    PlacePictures(page_, true);
    view_->Refresh();
}

void GeneratorWindow::SetSide(bool width)
{
    const std::string prompt = width ? "Set the width for the menu. Must be a multiple of 4."
                                     : "Set the height for the menu. Must be a multiple of 4.";
    const auto typed = project_.Ask().Input(prompt, "", std::to_string(width ? page_.Width : page_.Height));
    if (!typed)
        return;
    const long side = static_cast<long>(LeadingNumber(*typed));
    if (!(width ? SetPageWidth(page_, side) : SetPageHeight(page_, side))) {
        QApplication::beep();
        return;
    }
    PlacePictures(page_, true);
    view_->Refresh();
}

void GeneratorWindow::AddText()
{
    FreeItem free;
    free.Label = PageLabel{.Caption = "Some text", .Width = 160, .Height = 40};
    free.Font = page_.Design.Free;
    page_.FreeItems.push_back(std::move(free));
    view_->Refresh();
}

void GeneratorWindow::SelectBackground()
{
    const QSize size(page_.Width, page_.Height);
    if (!mw::SelectBackground(page_, project_.Ask(), this))
        return;
    // A page fitted to its picture lays its grid out anew.
    if (size != QSize(page_.Width, page_.Height))
        PlacePictures(page_, true);
    view_->Refresh();
}

void GeneratorWindow::ReadFields()
{
    std::string name = MenuName_->text().toStdString();
    // A page number follows the name.
    if (!name.empty() && !name.ends_with(' '))
        name += ' ';
    page_.Design.MenuName = name;
    page_.Design.Animation = std::to_string(std::max(0LL, LeadingNumber(Text1_->text().toStdString())));
}

void GeneratorWindow::ShowFields()
{
    MenuName_->setText(Q(page_.Design.MenuName));
    Text1_->setText(Q(page_.Design.Animation));
    (page_.PerPage == 6 ? Option1_ : Option2_)->setChecked(true);
}

void GeneratorWindow::Create()
{
    ReadFields();
    ShowFields();
    // Asked before the run, so that a cancelled dialog opens no log window.
    const std::optional<std::string> file =
        MenuFileName(project_.Ask(), "", MenuFileFilter(kind_));
    if (!file)
        return;
    PageMenuRequest request;
    request.FileName = *file;
    request.MotionSeconds = static_cast<double>(LeadingNumber(page_.Design.Animation));
    picMsg_->show();
    lblMsg_->setText("Creating picture...");
    SetRunning(true);
    // The tool of the options' method makes the videos, and its runner lets Cancel end the run
    // at the next frame.
    bool made = false;
    clsIniFile ini(SettingsFilePath(project_.ProgramFolder()).string());
    StartWithLogWindow(this, [&](ToolRunner& runner, BuildLog& log) {
        MenuVideoTools tools{runner, log, project_.ProgramFolder(), [this, &ini](int method) {
                                 return AskForTool(method, project_.Values(), ini, project_.Ask(), this);
                             }};
        request.Tools = &tools;
        runner_ = &runner;
        cmdCancel_->show();
        made = MakeMenus(request);
        cmdCancel_->hide();
        runner_ = nullptr;
        return made || runner.Cancelled();
    });
    SetRunning(false);
    picMsg_->setVisible(made);
    view_->Refresh();
}

bool GeneratorWindow::MakeMenus(const PageMenuRequest& request)
{
    PageMenuResult result;
    const int row = Combo1_->currentIndex();
    bool made = false;
    switch (kind_) {
    case GeneratorKind::TitleMenu:
        made = CreateTitleMenu(project_, page_, request, result);
        break;
    case GeneratorKind::ChaptersMenu:
        made = row >= 0 && CreateChapterMenu(project_, page_, {titles_[std::size_t(row)].TitleID, request}, result);
        break;
    case GeneratorKind::SetupMenu: {
        SetupMenuResult setup;
        made = CreateSetupMenu(project_, setup_, {request, false}, setup);
        result.MenuIDs = {setup.MenuID};
        break;
    }
    }
    if (made)
        made_.insert(made_.end(), result.MenuIDs.begin(), result.MenuIDs.end());
    return made;
}

namespace {

void OpenGenerator(GeneratorKind kind, Project& project)
{
    if (LoadTitlesInForm(project.Doc).lstTitles.empty())
        return;
    GeneratorWindow window(kind, project, QApplication::activeWindow());
    LoadTextForDesign(project.Lang(), window);
    window.exec();
    SelectFirstMenu(project, window.MadeMenus());
}

} // namespace

void PaintStartBackground(MenuPage& page)
{
    page.Gradient = kPaleGradient;
}

void SelectFirstMenu(Project& project, const std::vector<std::string>& menus)
{
    if (menus.empty())
        return;
    if (DocNode* menu = project.Doc.Tree.ObjectNode(menus.front()))
        TreeView1_NodeClick(project, menu);
}

void mnuCreateVisualMenuForChapters(Project& project)
{
    OpenGenerator(GeneratorKind::ChaptersMenu, project);
}

void mnuSetup(Project& project)
{
    OpenGenerator(GeneratorKind::SetupMenu, project);
}

} // namespace mw
