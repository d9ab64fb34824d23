#include "ui/canvas/CanvasView.h"

#include "document/NodeSelection.h"
#include "document/Project.h"
#include "menus/Buttons.h"
#include "menus/CanvasCommands.h"
#include "menus/MenuBarCommands.h"
#include "menus/MenuForms.h"
#include "menus/OverlayAttributes.h"
#include "menus/OverlayDialogs.h"
#include "menus/OverlayMenu.h"
#include "render/cDIB.h"
#include "ui/canvas/MenuPicture.h"
#include "ui/canvas/Rulers.h"
#include "ui/help/HelpWindow.h"
#include "ui/mainwindow/ToolbarIcons.h"

#include <QAction>
#include <QGridLayout>
#include <QLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolBar>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <array>

namespace mw {

namespace {

// One button of ToolbarPic: its key and tool tip. No key is a separator.
struct ToolbarButton {
    const char* Key;
    const char* ToolTip;
};

const std::array kToolbarPic{
    ToolbarButton{"buttonAdd", "New button"},
    ToolbarButton{"buttonDel", "Delete button"},
    ToolbarButton{"shapeSelect", "Select the shape (overlayID) of active button"},
    ToolbarButton{"shapeName", "Select overlay shape"},
    ToolbarButton{"shapeLineWidth", "Select line width for special overlays"},
    ToolbarButton{"color1", ""},
    ToolbarButton{"color2", ""},
    ToolbarButton{"color3", ""},
    ToolbarButton{"lock", "Lock/unlock button position"},
    ToolbarButton{"previous", "Previous frame (right click to select manually)"},
    ToolbarButton{"next", "Next frame (right click to select manually)"},
    ToolbarButton{nullptr, nullptr},
    ToolbarButton{"play", "Play"},
    ToolbarButton{"stop", "Stop"},
    ToolbarButton{"closemovie", "Close movie, so buttons will be visible again"},
    ToolbarButton{"help", "Help for menus"},
};

// The swatch of a colour button: the colour in a frame of colour 0.
QIcon Swatch(std::uint32_t c)
{
    QImage image(16, 16, QImage::Format_RGB32);
    image.fill(QColor(int(c & 0xFF), int(c >> 8 & 0xFF), int(c >> 16 & 0xFF)));
    QPainter p(&image);
    p.setPen(Qt::black);
    p.drawRect(0, 0, 15, 15);
    return QIcon(QPixmap::fromImage(image));
}

} // namespace

CanvasView::CanvasView(Project& project, Hooks hooks, QWidget* parent)
    : QWidget(parent), project_(project), hooks_(std::move(hooks)), toolbar_(new QToolBar),
      scroll_(new QScrollArea), picture_(new MenuPicture(project, *this))
{
    setObjectName("CanvasView");
    timer_ = new QTimer(this);
    timer_->setObjectName("Timer1");
    timer_->setInterval(40);
    movie_.ShowMovieInfo = [this](const std::string& text) { project_.Ask().Progress({"lblMovieInfo"}, text); };
    MenuCanvas& canvas = project_.Canvas;
    const auto linesChanged = [this] {
        picture_->update();
        rulerTop_->update();
        rulerLeft_->update();
    };
    rulerTop_ = new Ruler(Qt::Horizontal, canvas.LinesV, *picture_, linesChanged);
    rulerLeft_ = new Ruler(Qt::Vertical, canvas.LinesH, *picture_, linesChanged);
    rulerCorner_ = new RulerCorner([this, linesChanged] {
        project_.Canvas.LinesH.clear();
        project_.Canvas.LinesV.clear();
        linesChanged();
    });

    scroll_->setObjectName("PicConScroll");
    scroll_->horizontalScrollBar()->setObjectName("HScroll1");
    scroll_->verticalScrollBar()->setObjectName("VScroll1");
    scroll_->setAlignment(Qt::AlignCenter);
    scroll_->setWidget(picture_);
    scroll_->setBackgroundRole(QPalette::Dark);
    for (QScrollBar* bar : {scroll_->horizontalScrollBar(), scroll_->verticalScrollBar()})
        connect(bar, &QScrollBar::valueChanged, this, linesChanged);

    auto* grid = new QGridLayout;
    grid->setSpacing(0);
    grid->addWidget(rulerCorner_, 0, 0);
    grid->addWidget(rulerTop_, 0, 1);
    grid->addWidget(rulerLeft_, 1, 0);
    grid->addWidget(scroll_, 1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(toolbar_);
    layout->addLayout(grid, 1);

    LoadOverlaysToMenu(project_.ProgramFolder() / "overlays", project_.Overlays, project_.Ask());
    BuildToolbar();
    BuildButtonMenu();
    SetRulersShown(project_.Values().ShowRulers);
    Refresh();
}

void CanvasView::BuildToolbar()
{
    toolbar_->setObjectName("ToolbarPic");
    // Narrow, so that it fits over the canvas pane of a small window.
    toolbar_->setContentsMargins(0, 0, 0, 0);
    toolbar_->layout()->setSpacing(0);
    for (const ToolbarButton& entry : kToolbarPic) {
        if (!entry.Key) {
            toolbar_->addSeparator();
            continue;
        }
        QAction* tool = toolbar_->addAction(ToolbarIcon(entry.Key), *entry.ToolTip ? entry.ToolTip : entry.Key);
        tool->setObjectName(entry.Key);
        tool->setToolTip(entry.ToolTip);
        tools_[entry.Key] = tool;
    }
    tools_.at("buttonAdd")->setCheckable(true);
    tools_.at("lock")->setCheckable(true);

    connect(tools_.at("buttonAdd"), &QAction::triggered, this, [this](bool on) {
        project_.Canvas.AddMode = on;
        Refresh();
    });
    connect(tools_.at("buttonDel"), &QAction::triggered, this, [this] { DeleteSelection(); });
    connect(tools_.at("help"), &QAction::triggered, this, [] { ShowHelp("menus"); });
    for (const char* key : {"shapeSelect", "shapeName"}) {
        connect(tools_.at(key), &QAction::triggered, this, [this, key] {
            FillOverlayMenu(*overlayMenu_);
            QWidget* button = toolbar_->widgetForAction(tools_.at(key));
            overlayMenu_->exec(button->mapToGlobal(QPoint(0, button->height())));
        });
    }
    connect(tools_.at("shapeLineWidth"), &QAction::triggered, this, [this] {
        FillWidthMenu(*widthMenu_);
        QWidget* button = toolbar_->widgetForAction(tools_.at("shapeLineWidth"));
        widthMenu_->exec(button->mapToGlobal(QPoint(0, button->height())));
    });
    for (const char* key : {"color1", "color2", "color3"})
        connect(tools_.at(key), &QAction::triggered, this, [this] { Run([this] { SelectColor(project_); }); });
    connect(tools_.at("lock"), &QAction::triggered, this, [this] { Run([this] { ToggleLock(project_); }); });
    connect(tools_.at("previous"), &QAction::triggered, this, [this] { StepFrame(-1); });
    connect(tools_.at("next"), &QAction::triggered, this, [this] { StepFrame(1); });
    for (const char* key : {"previous", "next"}) {
        QWidget* button = toolbar_->widgetForAction(tools_.at(key));
        button->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(button, &QWidget::customContextMenuRequested, this, [this] { AskFrame(); });
    }
    connect(tools_.at("play"), &QAction::triggered, this, &CanvasView::PlayMovie);
    connect(tools_.at("stop"), &QAction::triggered, this, [this] {
        PreviewStopClick(movie_);
        ShowMovie();
    });
    connect(tools_.at("closemovie"), &QAction::triggered, this, &CanvasView::CloseMovie);
    connect(timer_, &QTimer::timeout, this, [this] {
        PreviewTimerTick(movie_);
        ShowMovie();
    });
}

void CanvasView::PlayMovie()
{
    if (!movie_.Opened) {
        const std::string file = GetFileNameForMenu(project_, project_.Canvas.CurrentMenuID);
        if (file.empty() || !OpenPreview(movie_, file, picture_->width(), picture_->height()))
            return;
    }
    PreviewPlayClick(movie_);
    ShowMovie();
}

void CanvasView::CloseMovie()
{
    if (!movie_.Opened)
        return;
    ClosePreview(movie_);
    ShowMovie();
    ShowFrame();
}

void CanvasView::ShowMovie()
{
    tools_.at("play")->setToolTip(QString::fromStdString(movie_.PlayToolTip));
    tools_.at("closemovie")->setEnabled(movie_.Opened);
    if (movie_.TimerEnabled != timer_->isActive())
        movie_.TimerEnabled ? timer_->start() : timer_->stop();
    const auto picture = movie_.Opened ? mm_.Picture(movie_.Alias) : nullptr;
    if (picture && picture != movieFrame_)
        picture_->SetFrame(picture->ToImage());
    movieFrame_ = picture;
}

void CanvasView::BuildButtonMenu()
{
    buttonMenu_ = new QMenu(this);
    buttonMenu_->setObjectName("mnuButtonMenu");
    const auto entry = [this](QMenu* menu, const char* name, const char* caption, std::function<void()> command) {
        QAction* action = menu->addAction(caption);
        action->setObjectName(name);
        connect(action, &QAction::triggered, this, std::move(command));
        entries_[name] = action;
        return action;
    };
    const auto submenu = [this](QMenu* menu, const char* name, const char* caption) {
        QMenu* sub = menu->addMenu(caption);
        sub->setObjectName(name);
        sub->menuAction()->setObjectName(name);
        entries_[name] = sub->menuAction();
        return sub;
    };
    overlayMenu_ = submenu(buttonMenu_, "mnuOverlays", "Overlays");
    buttonMenu_->addSeparator();
    QMenu* align = submenu(buttonMenu_, "mnuAlign", "Align");
    const std::array<std::pair<const char*, const char*>, 4> aligns = {
        {{"mnuAlignLeft", "Left"}, {"mnuAlignTop", "Top"}, {"mnuAlignRight", "Right"}, {"mnuAlignBottom", "Bottom"}}};
    for (int mode = 1; mode <= 4; ++mode) {
        const auto& [name, caption] = aligns[std::size_t(mode - 1)];
        entry(align, name, caption, [this, mode] { Run([this, mode] { DoAlign(project_, mode); }); });
    }
    QMenu* size = submenu(buttonMenu_, "mnuSize", "Make same size");
    const std::array<std::pair<const char*, const char*>, 3> sizes = {
        {{"mnuSizeWidth", "Width"}, {"mnuSizeHeight", "Height"}, {"mnuSizeBoth", "Both"}}};
    for (int mode = 1; mode <= 3; ++mode) {
        const auto& [name, caption] = sizes[std::size_t(mode - 1)];
        entry(size, name, caption, [this, mode] { Run([this, mode] { DoSameSize(project_, mode); }); });
    }
    entry(buttonMenu_, "mnuCopyButtons", "Copy button(s)", [this] { mnuCopyButtons(project_); });
    entry(buttonMenu_, "mnuPasteButtons", "Paste button(s)", [this] { Run([this] { mnuPasteButtons(project_); }); });
    entry(buttonMenu_, "mnuCopySize", "Copy button size", [this] { mnuCopySize(project_); });
    entry(buttonMenu_, "mnuPasteSize", "Paste button size", [this] { Run([this] { mnuPasteSize(project_); }); });
    buttonMenu_->addSeparator();
    entry(buttonMenu_, "mnuAddButton2", "Add button (F8)", [this] {
        project_.Canvas.AddMode = true;
        Refresh();
    });
    entry(buttonMenu_, "mnuRemoveButton2", "Remove button (Shift+F8)", [this] { DeleteSelection(); });
    buttonMenu_->addSeparator();
    entry(buttonMenu_, "mnuResetOverlayPos", "Reset overlay position", [this] { Run([this] { ResetOverlayPos(project_); }); });
    entries_.at("mnuCopyButtons")->setShortcut(QKeySequence("Ctrl+C"));
    entries_.at("mnuPasteButtons")->setShortcut(QKeySequence("Ctrl+V"));
    FillOverlayMenu(*overlayMenu_);
    widthMenu_ = new QMenu(this);
    widthMenu_->setObjectName("mnuOverlayWidth");
    FillWidthMenu(*widthMenu_);
}

void CanvasView::FillOverlayMenu(QMenu& menu)
{
    menu.clear();
    const OverlayMenus& overlays = project_.Overlays;
    const OverlayCheck& checked = overlays.Checked;
    const auto item = [this, &menu](QMenu* into, const QString& name, const std::string& caption, bool check,
                                    std::function<void()> command) {
        QAction* action = into->addAction(QString::fromStdString(caption));
        action->setObjectName(name);
        action->setCheckable(true);
        action->setChecked(check);
        connect(action, &QAction::triggered, &menu, [this, command = std::move(command)] { Run(command); });
        return action;
    };
    const std::array<std::pair<const char*, const char*>, 4> specials = {
        {{"mnuOverlayText", "Text"}, {"mnuShape1", "Shape1"}, {"mnuOverlayOval", "Oval"}, {"mnuOverlayRect", "Rectangle"}}};
    for (std::size_t i = 0; i < specials.size(); ++i) {
        const std::string shape = kSpecialOverlays[i];
        item(&menu, specials[i].first, specials[i].second,
             checked.Where == OverlayCheck::In::Special && checked.Item == int(i),
             [this, shape] { SetSpecialOverlay(project_, shape); });
    }
    QAction* fromPicture = menu.addAction("* Create from picture *");
    fromPicture->setObjectName("mnuOverlayFromPic");
    connect(fromPicture, &QAction::triggered, &menu, [this] { Run([this] { CreateOverlayFromPic(project_); }); });
    menu.addSeparator();
    for (int f = 0; f < kOverlayFolderMenus; ++f) {
        const OverlayFolderMenu& folder = overlays.Folders[std::size_t(f)];
        if (!folder.Visible)
            continue;
        QMenu* sub = menu.addMenu(QString::fromStdString(folder.Caption));
        sub->menuAction()->setObjectName(QString("mnuoverlaysFolder%1").arg(f + 1));
        for (int i = 0; i < int(folder.Items.size()); ++i) {
            QAction* action =
                item(sub, QString("mnuOverlaysInFolder%1_%2").arg(f + 1).arg(i), folder.Items[std::size_t(i)].Caption,
                     checked.Where == OverlayCheck::In::Folder && checked.Folder == f && checked.Item == i,
                     [this, f, i] { SetOverlayInFolder(project_, f, i); });
            action->setEnabled(folder.Items[std::size_t(i)].Enabled);
        }
    }
    for (int i = 0; i < int(overlays.Top.size()); ++i) {
        item(&menu, QString("mnuOverlay_%1").arg(i), overlays.Top[std::size_t(i)].Caption,
             checked.Where == OverlayCheck::In::Top && checked.Item == i, [this, i] { mnuOverlay_Click(project_, i); });
    }
}

void CanvasView::FillWidthMenu(QMenu& menu)
{
    menu.clear();
    for (int i = 0; i < int(kOverlayWidths.size()); ++i) {
        const long width = kOverlayWidths[std::size_t(i)];
        QAction* action = menu.addAction(QString::number(width));
        action->setObjectName(QString("mnuOverlayWidthValue_%1").arg(i));
        action->setCheckable(true);
        action->setChecked(project_.Overlays.CheckedWidth == width);
        connect(action, &QAction::triggered, &menu,
                [this, i] { Run([this, i] { mnuOverlayWidthValue_Click(project_, i); }); });
    }
}

void CanvasView::ShowNode(DocNode* node)
{
    const DocNode* menu = node ? MenuOfNode(*node) : nullptr;
    if (menu) {
        const std::string id = GetPropertyInNode(*menu, "objectid");
        if (id != shownMenu_) {
            CloseMovie();
            shownMenu_ = id;
            ParceMenu(project_, project_.Doc.Tree.Item(menu->Key()));
            ShowFrame();
        } else if (const DocNode* button = EnclosingNamed(*node, "ButtonMenu")) {
            const std::string buttonID = GetPropertyInNode(*button, "objectid");
            const auto& buttons = project_.Canvas.Buttons;
            for (std::size_t i = 0; i < buttons.size(); ++i) {
                if (buttons[i].Label.Tag == buttonID && project_.Canvas.Selected != int(i))
                    Label1_Click(project_, int(i));
            }
        }
    }
    Refresh();
}

void CanvasView::ForgetShownMenu()
{
    ClosePreview(movie_);
    ShowMovie();
    shownMenu_.clear();
    picture_->SetFrame({});
}

void CanvasView::SetRulersShown(bool shown)
{
    for (QWidget* ruler : {static_cast<QWidget*>(rulerTop_), static_cast<QWidget*>(rulerLeft_), rulerCorner_})
        ruler->setVisible(shown);
}

void CanvasView::ShowFrame()
{
    cDIB frame;
    picture_->SetFrame(GrabMenuFrame(project_, frame) ? frame.ToImage() : QImage());
    rulerTop_->update();
    rulerLeft_->update();
}

void CanvasView::StepFrame(long step)
{
    Run([this, step] { SetMenuFrame(project_, std::max(0L, ShownFrame(project_.Canvas) + step)); });
    ShowFrame();
}

void CanvasView::AskFrame()
{
    const auto frame = AskMenuFrame(project_);
    if (!frame)
        return;
    Run([this, frame] { SetMenuFrame(project_, *frame); });
    ShowFrame();
}

void CanvasView::Run(const std::function<void()>& command)
{
    hooks_.Change(command);
    Refresh();
}

void CanvasView::ClickButton(int index)
{
    Label1_Click(project_, index);
    hooks_.Select(project_.Doc.Tree.Selected());
    Refresh();
}

void CanvasView::FollowLink(int index)
{
    if (index < int(project_.Canvas.Buttons.size())) {
        if (DocNode* menu = ButtonLinkMenu(project_, index))
            hooks_.Select(menu);
    }
}

void CanvasView::BandStarted()
{
    if (project_.Canvas.AddMode)
        return;
    for (const char* key : {"shapeSelect", "shapeName", "buttonDel", "shapeLineWidth"})
        tools_.at(key)->setEnabled(false);
}

void CanvasView::EndBand(QPoint from, QPoint to)
{
    if (project_.Canvas.AddMode)
        Run([&] { AddButtonFromBand(project_, from.x(), from.y(), to.x(), to.y()); });
    else {
        SelectInBand(project_, from.x(), from.y(), to.x(), to.y());
        if (project_.Canvas.Selected >= 0)
            hooks_.Select(project_.Doc.Tree.Selected());
        Refresh();
    }
}

void CanvasView::EndGesture(int index, const ButtonShape& rect)
{
    Run([&] { EndButtonGesture(project_, index, rect); });
}

void CanvasView::EndOverlayGesture(int index, const ButtonShape& overlay)
{
    Run([&] { PlaceShapeToPos(project_, index, overlay); });
}

int CanvasView::SelectionCount() const
{
    const MenuCanvas& canvas = project_.Canvas;
    const auto marked = std::count_if(canvas.Buttons.begin(), canvas.Buttons.end(), [](const CanvasButton& b) { return b.Selected; });
    return marked > 0 ? int(marked) : canvas.Selected >= 0 ? 1 : 0;
}

void CanvasView::DeleteSelection()
{
    Run([this] { mnuRemoveButton(project_); });
}

void CanvasView::PopupButtonMenu(const QPoint& global)
{
    if (project_.Canvas.CurrentMenuID.empty())
        return;
    const int count = SelectionCount();
    for (const char* name : {"mnuOverlays", "mnuRemoveButton2", "mnuCopySize", "mnuPasteSize", "mnuResetOverlayPos"})
        entries_.at(name)->setEnabled(count == 1);
    for (const char* name : {"mnuAlign", "mnuSize"})
        entries_.at(name)->setEnabled(count >= 2);
    entries_.at("mnuCopyButtons")->setEnabled(count >= 1);
    FillOverlayMenu(*overlayMenu_);
    buttonMenu_->popup(global);
}

void CanvasView::Refresh()
{
    const MenuCanvas& canvas = project_.Canvas;
    const bool shown = project_.ItemsEnabled && !canvas.CurrentMenuID.empty();
    for (const char* key : {"buttonAdd", "color1", "color2", "color3", "lock", "previous", "next", "play", "stop"})
        tools_.at(key)->setEnabled(shown);
    tools_.at("closemovie")->setEnabled(movie_.Opened);
    tools_.at("buttonDel")->setEnabled(shown && canvas.buttonDel);
    tools_.at("shapeSelect")->setEnabled(shown && canvas.shapeSelect);
    tools_.at("shapeName")->setEnabled(shown && canvas.shapeName);
    tools_.at("shapeLineWidth")->setEnabled(shown && canvas.shapeLineWidth);
    tools_.at("buttonAdd")->setChecked(canvas.AddMode);
    tools_.at("lock")->setChecked(canvas.Lock);
    for (int i = 0; i < 3; ++i) {
        QAction* color = tools_.at("color" + std::to_string(i + 1));
        color->setIcon(Swatch(canvas.Colors[std::size_t(i)]));
        color->setToolTip(QString::fromStdString(ColorButtonToolTip(i, canvas.Colors[std::size_t(i)])));
    }
    picture_->setCursor(canvas.AddMode ? Qt::CrossCursor : Qt::ArrowCursor);
    picture_->setVisible(!canvas.CurrentMenuID.empty());
    picture_->Refresh();
    rulerTop_->update();
    rulerLeft_->update();
}

} // namespace mw
