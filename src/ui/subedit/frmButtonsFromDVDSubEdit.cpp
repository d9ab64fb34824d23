#include "ui/subedit/frmButtonsFromDVDSubEdit.h"

#include "document/Project.h"
#include "ui/QtDesignTarget.h"
#include "ui/dialogs/NamedControls.h"
#include "ui/help/HelpWindow.h"
#include "ui/subedit/WindowCapture.h"
#include "ui/subedit/frmDVDSubEditPreview.h"
#include "ui/subedit/frmDVDSubEditSettings.h"

#include <QApplication>
#include <QCheckBox>
#include <QCursor>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace mw {

namespace {

constexpr int kIconSide = 40;

// A cross hair in a frame: what the user drags onto the editor's picture.
QPixmap DragIcon()
{
    QPixmap icon(kIconSide, kIconSide);
    icon.fill(Qt::white);
    QPainter p(&icon);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(Qt::darkGray, 1));
    p.drawRect(0, 0, kIconSide - 1, kIconSide - 1);
    p.setPen(QPen(QColor(200, 40, 40), 2));
    const int mid = kIconSide / 2;
    p.drawEllipse(QPoint(mid, mid), 11, 11);
    p.drawLine(mid, 5, mid, kIconSide - 5);
    p.drawLine(5, mid, kIconSide - 5, mid);
    return icon;
}

QPushButton* Arrow(const char* name, const QString& text, const char* tip)
{
    auto* button = NamedButton(name, "");
    button->setText(text);
    button->setToolTip(tip);
    button->setFixedSize(32, 28);
    return button;
}

// Four arrows in a cross, in a frame: left, up, down, right.
QGroupBox* ArrowFrame(const char* name, const char* caption, const std::array<QPushButton*, 4>& arrows)
{
    auto* frame = new QGroupBox(caption);
    frame->setObjectName(name);
    auto* grid = new QGridLayout(frame);
    grid->addWidget(arrows[0], 1, 0);
    grid->addWidget(arrows[1], 0, 1);
    grid->addWidget(arrows[2], 2, 1);
    grid->addWidget(arrows[3], 1, 2);
    return frame;
}

} // namespace

frmButtonsFromDVDSubEdit::frmButtonsFromDVDSubEdit(Project& project, QWidget* mainWindow, QWidget* parent)
    : QDialog(parent), project_(project), mainWindow_(mainWindow), Picture1_(NamedLabel("Picture1", "")),
      Label3_(NamedLabel("Label3", "Buttons from DVDSubEdit loaded (max  = 10)")),
      chkForce_(new QCheckBox("Force width/height = ")), Text1_(new QLineEdit("20")),
      chkPasteOverlays_(new QCheckBox("Paste also the overlays")), Command5_(NamedButton("Command5", "")),
      lblMinimize_(NamedLabel("lblMinimize", "Hide Main window")), lblRestore_(NamedLabel("lblRestore", "Show Main window")),
      status_(NamedLabel("status", ""))
{
    setObjectName("frmButtonsFromDVDSubEdit");
    setWindowTitle("Buttons from DVDSubEdit");
    Picture1_->setPixmap(DragIcon());
    Picture1_->setFixedSize(kIconSide, kIconSide);
    Picture1_->setToolTip("Drag this icon and drop it to DVDSubEdit menu picture");
    Picture1_->setCursor(Qt::OpenHandCursor);
    Picture1_->installEventFilter(this);
    auto* Label1 = NamedLabel("Label1", "Drag this icon and drop it to DVDSubEdit menu picture");
    Label1->setWordWrap(true);
    auto* cmdFromFile = NamedButton("cmdFromFile", "Picture from file...");
    cmdFromFile->setToolTip("Read the menu picture from a file, where the editor's window cannot be read");
    auto* cmdSettings = NamedButton("cmdSettings", "DVDSubEdit settings...");

    auto* numbers = new QHBoxLayout;
    numbers->setSpacing(4);
    for (int k = 0; k < kSubEditSetCount; ++k) {
        QLabel* label = NamedLabel(QString("Label2_%1").arg(k + 1).toLatin1().constData(), "");
        label->setText(QString::number(k + 1));
        label->setToolTip("Click to select (make active). Right click to clear these buttons");
        label->setAlignment(Qt::AlignCenter);
        label->setFixedSize(28, 24);
        label->setFrameShape(QFrame::Box);
        label->setAutoFillBackground(true);
        label->installEventFilter(this);
        Label2_[static_cast<std::size_t>(k)] = label;
        numbers->addWidget(label);
    }
    numbers->addStretch();
    Label3_->setToolTip("Right click to clear all the buttons");
    Label3_->installEventFilter(this);

    chkForce_->setObjectName("chkForce");
    Text1_->setObjectName("Text1");
    Text1_->setValidator(new QIntValidator(1, 9999, Text1_));
    Text1_->setMaximumWidth(60);
    chkPasteOverlays_->setObjectName("chkPasteOverlays");
    chkPasteOverlays_->setChecked(true);
    auto* Command14 = NamedButton("Command14", "?");
    Command14->setFixedWidth(28);
    Command14->setToolTip("Where the overlays are saved");

    auto* moveFrame = ArrowFrame("Frame1", "Move buttons",
                                 {Arrow("Command10", QChar(0x25C0), "Move left"), Arrow("Command11", QChar(0x25B2), "Move up"),
                                  Arrow("Command12", QChar(0x25BC), "Move down"),
                                  Arrow("Command13", QChar(0x25B6), "Move right")});
    auto* sizeFrame = ArrowFrame("Frame2", "Resize buttons",
                                 {Arrow("Command6", QChar(0x25C0), "Narrower"), Arrow("Command7", QChar(0x25B2), "Lower"),
                                  Arrow("Command8", QChar(0x25BC), "Higher"), Arrow("Command9", QChar(0x25B6), "Wider")});

    auto* Command2 = NamedButton("Command2", "Create new menu");
    Command2->setToolTip("A new menu of the size of the active buttons' picture");
    auto* Command3 = NamedButton("Command3", "Paste active buttons to menu");
    auto* Command4 = NamedButton("Command4", "Preview active buttons");
    lblRestore_->hide();
    lblMinimize_->hide();
    Command5_->setText(lblMinimize_->text());

    auto* top = new QHBoxLayout;
    top->addWidget(Picture1_);
    top->addWidget(Label1, 1);
    top->addWidget(cmdFromFile);
    top->addWidget(cmdSettings);
    top->addWidget(HelpButton(*this));
    auto* force = new QHBoxLayout;
    force->addWidget(chkForce_);
    force->addWidget(Text1_);
    force->addStretch();
    auto* overlays = new QHBoxLayout;
    overlays->addWidget(chkPasteOverlays_);
    overlays->addWidget(Command14);
    overlays->addStretch();
    auto* arrows = new QHBoxLayout;
    arrows->addWidget(moveFrame);
    arrows->addWidget(sizeFrame);
    arrows->addStretch();
    auto* commands = new QGridLayout;
    commands->addWidget(Command2, 0, 0);
    commands->addWidget(Command3, 0, 1);
    commands->addWidget(Command4, 1, 0);
    commands->addWidget(Command5_, 1, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(status_, 1);
    auto* lblReady = NamedLabel("lblReady", "Ready");
    bottom->addWidget(lblReady);
    for (QLabel* label : {status_, lblReady})
        label->setFrameShape(QFrame::StyledPanel);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(Label3_);
    layout->addLayout(numbers);
    layout->addLayout(force);
    layout->addLayout(overlays);
    layout->addLayout(arrows);
    layout->addLayout(commands);
    layout->addWidget(lblMinimize_);
    layout->addWidget(lblRestore_);
    layout->addLayout(bottom);

    connect(cmdFromFile, &QPushButton::clicked, this, &frmButtonsFromDVDSubEdit::PictureFromFile);
    connect(cmdSettings, &QPushButton::clicked, this, [this] {
        frmDVDSubEditSettings settings(project_.ProgramFolder(), this);
        LoadTextForDesign(project_.Lang(), settings);
        settings.exec();
    });
    connect(Command14, &QPushButton::clicked, this,
            [this] { project_.Ask().Message(SubEditOverlayNaming(project_.ProgramFolder())); });
    const auto step = [this](const char* name, auto change) {
        connect(findChild<QPushButton*>(name), &QPushButton::clicked, this, [this, change] {
            change(sets_);
        });
    };
    step("Command10", [](SubEditSets& s) { s.MoveActive(-1, 0); });
    step("Command11", [](SubEditSets& s) { s.MoveActive(0, -1); });
    step("Command12", [](SubEditSets& s) { s.MoveActive(0, 1); });
    step("Command13", [](SubEditSets& s) { s.MoveActive(1, 0); });
    step("Command6", [](SubEditSets& s) { s.ResizeActive(-1, 0); });
    step("Command7", [](SubEditSets& s) { s.ResizeActive(0, -1); });
    step("Command8", [](SubEditSets& s) { s.ResizeActive(0, 1); });
    step("Command9", [](SubEditSets& s) { s.ResizeActive(1, 0); });
    connect(Command2, &QPushButton::clicked, this, &frmButtonsFromDVDSubEdit::Command2_Click);
    connect(Command3, &QPushButton::clicked, this, &frmButtonsFromDVDSubEdit::Command3_Click);
    connect(Command4, &QPushButton::clicked, this, &frmButtonsFromDVDSubEdit::Command4_Click);
    connect(Command5_, &QPushButton::clicked, this, &frmButtonsFromDVDSubEdit::Command5_Click);
    ShowSets();
}

bool frmButtonsFromDVDSubEdit::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if (type != QEvent::MouseButtonPress && type != QEvent::MouseMove && type != QEvent::MouseButtonRelease)
        return QDialog::eventFilter(watched, event);
    const auto* mouse = static_cast<QMouseEvent*>(event);
    if (watched == Picture1_) {
        if (type == QEvent::MouseButtonPress && mouse->button() == Qt::LeftButton) {
            dragging_ = true;
            Picture1_->grabMouse(Qt::CrossCursor);
        } else if (type == QEvent::MouseMove && dragging_ && CanCaptureWindows()) {
            const std::optional<ForeignWindow> window = WindowUnderPointer();
            status_->setText(window ? window->Description() : QString());
        } else if (type == QEvent::MouseButtonRelease && dragging_) {
            dragging_ = false;
            Picture1_->releaseMouse();
            CatchWindow();
        }
        return true;
    }
    if (type != QEvent::MouseButtonPress)
        return false;
    const bool right = mouse->button() == Qt::RightButton;
    if (watched == Label3_ && right) {
        sets_.ClearAll();
    } else {
        const auto found = std::find(Label2_.begin(), Label2_.end(), watched);
        if (found == Label2_.end())
            return false;
        const int k = static_cast<int>(found - Label2_.begin());
        if (right)
            sets_.Clear(k);
        else
            sets_.Activate(k);
    }
    ShowSets();
    return true;
}

void frmButtonsFromDVDSubEdit::done(int result)
{
    // The main window is never left hidden behind a closed tool.
    if (mainWindow_ && mainWindow_->isHidden())
        mainWindow_->show();
    QDialog::done(result);
}

void frmButtonsFromDVDSubEdit::CatchWindow()
{
    if (!CanCaptureWindows()) {
        PictureFromFile();
        return;
    }
    const std::optional<ForeignWindow> window = WindowUnderPointer();
    if (!window || QApplication::topLevelAt(QCursor::pos())) {
        project_.Ask().Message("Can not find the window");
        return;
    }
    if (!window->Description().contains("DVDSubEdit", Qt::CaseInsensitive) &&
        project_.Ask().Ask("Are you sure you want to apply the command to this window?", PromptButtons::YesNo,
                           PromptAnswer::No) != PromptAnswer::Yes)
        return;
    if (sets_.Full()) {
        project_.Ask().Message(kSubEditSetsFull);
        return;
    }
    Captured(GrabWindow(*window));
}

void frmButtonsFromDVDSubEdit::PictureFromFile()
{
    if (sets_.Full()) {
        project_.Ask().Message(kSubEditSetsFull);
        return;
    }
    FileDialogRequest request;
    request.Title = "Menu picture";
    request.Filter = "Pictures|*.bmp;*.png;*.jpg;*.jpeg;*.gif;*.tif;*.tiff|All files|*.*";
    const std::vector<std::string> files = project_.Ask().OpenFiles(request);
    if (files.empty())
        return;
    const QImage picture(QString::fromStdString(files.front()));
    if (picture.isNull()) {
        project_.Ask().Message("Can not read the picture " + files.front(), {}, PromptIcon::Critical);
        return;
    }
    Captured(picture);
}

void frmButtonsFromDVDSubEdit::Captured(const QImage& picture)
{
    std::string found;
    sets_.Capture(picture, project_.Ask(), found);
    ShowSets();
    status_->setText(QString::fromStdString(found));
}

void frmButtonsFromDVDSubEdit::Command2_Click()
{
    const SubEditSet* set = sets_.Active();
    if (!set) {
        project_.Ask().Message(kSubEditNoActive);
        return;
    }
    NewMenuOfSize(project_, set->Picture.size());
}

void frmButtonsFromDVDSubEdit::Command3_Click()
{
    SubEditPaste paste;
    paste.Overlays = chkPasteOverlays_->isChecked();
    if (chkForce_->isChecked() && Text1_->hasAcceptableInput())
        paste.ForceSide = Text1_->text().toInt();
    const std::vector<std::string> added = PasteSubEditButtons(project_, sets_.Active(), paste);
    if (!added.empty())
        status_->setText(QString("%1 buttons pasted").arg(added.size()));
}

void frmButtonsFromDVDSubEdit::Command4_Click()
{
    const SubEditSet* set = sets_.Active();
    if (!set) {
        project_.Ask().Message(kSubEditNoActive);
        return;
    }
    frmDVDSubEditPreview preview(*set, this);
    LoadTextForDesign(project_.Lang(), preview);
    preview.exec();
}

void frmButtonsFromDVDSubEdit::Command5_Click()
{
    if (!mainWindow_)
        return;
    const bool hide = !mainWindow_->isHidden();
    mainWindow_->setVisible(!hide);
    Command5_->setText(hide ? lblRestore_->text() : lblMinimize_->text());
}

void frmButtonsFromDVDSubEdit::ShowSets()
{
    for (int k = 0; k < kSubEditSetCount; ++k) {
        QLabel* label = Label2_[static_cast<std::size_t>(k)];
        const bool active = k == sets_.ActiveIndex();
        label->setEnabled(!sets_.Set(k).Empty());
        label->setBackgroundRole(active ? QPalette::Highlight : QPalette::Window);
        label->setForegroundRole(active ? QPalette::HighlightedText : QPalette::WindowText);
    }
}

void mnuButtonsFromDVDSubEdit(Project& project)
{
    QWidget* main = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (!main && qobject_cast<QMainWindow*>(window) && window->isVisible())
            main = window;
    }
    // No parent: hiding the main window must leave this one on the screen.
    frmButtonsFromDVDSubEdit window(project, main);
    window.setWindowModality(Qt::ApplicationModal);
    LoadTextForDesign(project.Lang(), window);
    window.exec();
}

} // namespace mw
