#include "ui/menuplayer/MenuPlayerWindow.h"

#include "ui/QtAudioSinks.h"

#include "core/CommandGuard.h"
#include "document/Project.h"
#include "document/TreeQueries.h"
#include "media/AviCache.h"
#include "menuplayer/ButtonOverlay.h"
#include "render/cDIB.h"
#include "ui/QtDesignTarget.h"
#include "ui/help/HelpWindow.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>

namespace mw {

namespace {

constexpr int kTickMs = 40;
// Frames a second for a menu or title whose movie cannot be opened.
constexpr double kClockFps = 25.0;
constexpr QSize kBlankPicture{720, 576};
const QColor kDeadEndColor{200, 0, 0};

} // namespace

// The menu's picture with the selected button's overlay over it, fitted to the widget.
class PlayerPicture : public QWidget {
public:
    explicit PlayerPicture(QWidget* parent) : QWidget(parent)
    {
        setObjectName("picPlayer");
        setMinimumSize(kBlankPicture / 2);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    }
    QSize sizeHint() const override { return frame_.isNull() ? kBlankPicture : frame_.size(); }

    void SetFrame(const QImage& frame)
    {
        frame_ = frame;
        update();
    }
    void SetOverlay(const QImage& overlay, const QRect& where)
    {
        overlay_ = overlay;
        where_ = where;
        update();
    }
    void SetCaption(const QString& caption)
    {
        caption_ = caption;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::black);
        const QSize source = frame_.isNull() ? kBlankPicture : frame_.size();
        const QSize fitted = source.scaled(size(), Qt::KeepAspectRatio);
        const QRect target(QPoint((width() - fitted.width()) / 2, (height() - fitted.height()) / 2), fitted);
        if (!frame_.isNull())
            painter.drawImage(target, frame_);
        // A button may stand partly outside the movie's picture; the player cuts it there too.
        painter.setClipRect(target);
        const double scale = double(fitted.width()) / source.width();
        if (!overlay_.isNull()) {
            const QRect at(target.left() + int(where_.left() * scale), target.top() + int(where_.top() * scale),
                           int(where_.width() * scale), int(where_.height() * scale));
            painter.drawImage(at, overlay_);
        }
        if (!caption_.isEmpty()) {
            painter.setPen(Qt::white);
            painter.drawText(target.adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap, caption_);
        }
    }

private:
    QImage frame_;
    QImage overlay_;
    QRect where_;
    QString caption_;
};

namespace {

QToolButton* RemoteButton(QWidget* parent, const char* name, const QString& text, const QString& tip)
{
    auto* button = new QToolButton(parent);
    button->setObjectName(name);
    button->setText(text);
    button->setToolTip(tip);
    button->setFocusPolicy(Qt::NoFocus);
    button->setMinimumSize(44, 36);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    return button;
}

} // namespace

MenuPlayerWindow::MenuPlayerWindow(Project& project, QWidget* parent)
    : QDialog(parent), project_(project), picture_(new PlayerPicture(this)), language_(new QComboBox(this)),
      status_(new QLabel(this)), where_(new QLabel(this)), events_(new QListWidget(this)), timer_(new QTimer(this))
{
    setObjectName("frmMenuPlayer");
    setWindowTitle("Play the menus");
    language_->setObjectName("cmbLanguage");
    language_->setFocusPolicy(Qt::NoFocus);
    const MenuGraph graph(project_.Doc);
    if (const DocNode* root = project_.Doc.Tree.Root()) {
        for (const DocNode* set : graph.LanguageSets(*root))
            language_->addItem(QString::fromStdString(GetPropertyInNode(*set, "languageCode")));
    }
    if (const DocNode* set = graph.LanguageSet({}))
        language_->setCurrentText(QString::fromStdString(GetPropertyInNode(*set, "languageCode")));
    status_->setObjectName("lblStatus");
    status_->setWordWrap(true);
    status_->setFrameShape(QFrame::StyledPanel);
    where_->setObjectName("lblWhere");
    MarkAsOutput(*status_);
    MarkAsOutput(*where_);
    where_->setWordWrap(true);
    events_->setObjectName("lstEvents");
    events_->setFocusPolicy(Qt::NoFocus);
    events_->setWordWrap(true);
    events_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    events_->setMinimumWidth(260);
    timer_->setObjectName("tmrPlay");
    timer_->setInterval(kTickMs);

    auto* remote = new QWidget(this);
    auto* keys = new QGridLayout(remote);
    keys->setSpacing(4);
    const struct {
        const char* Name;
        QString Text;
        QString Tip;
        RemoteKey Key;
        int Row, Column;
    } buttons[] = {
        {"cmdUp", QString::fromUtf8("\u25B2"), "Up (arrow key)", RemoteKey::Up, 0, 1},
        {"cmdLeft", QString::fromUtf8("\u25C0"), "Left (arrow key)", RemoteKey::Left, 1, 0},
        {"cmdOk", "OK", "OK (Enter)", RemoteKey::Ok, 1, 1},
        {"cmdRight", QString::fromUtf8("\u25B6"), "Right (arrow key)", RemoteKey::Right, 1, 2},
        {"cmdDown", QString::fromUtf8("\u25BC"), "Down (arrow key)", RemoteKey::Down, 2, 1},
        {"cmdMenu", "Menu", "The root menu (M or Home)", RemoteKey::Menu, 3, 0},
        {"cmdTitle", "Title", "The title menu (T)", RemoteKey::Title, 3, 2},
    };
    for (const auto& b : buttons) {
        QToolButton* button = RemoteButton(remote, b.Name, b.Text, b.Tip);
        keys->addWidget(button, b.Row, b.Column);
        connect(button, &QToolButton::clicked, this, [this, key = b.Key] { Press(key); });
    }
    QToolButton* restart = RemoteButton(remote, "cmdRestart", "Start again", "From the starting menu of the language");
    keys->addWidget(restart, 4, 0, 1, 3);
    connect(restart, &QToolButton::clicked, this, &MenuPlayerWindow::Restart);

    auto* side = new QVBoxLayout;
    auto* languageRow = new QHBoxLayout;
    languageRow->addWidget(new QLabel("Language", this));
    languageRow->addWidget(language_, 1);
    side->addLayout(languageRow);
    side->addWidget(remote);
    side->addWidget(where_);
    side->addWidget(events_, 1);
    // Off the focus chain, so that the arrows and Enter stay the remote's.
    QPushButton* help = HelpButton(*this);
    help->setFocusPolicy(Qt::NoFocus);
    side->addWidget(help, 0, Qt::AlignRight);

    auto* top = new QHBoxLayout;
    top->addWidget(picture_, 1);
    top->addLayout(side);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top, 1);
    layout->addWidget(status_);

    connect(language_, &QComboBox::currentIndexChanged, this, &MenuPlayerWindow::Restart);
    connect(timer_, &QTimer::timeout, this, &MenuPlayerWindow::Advance);
    Restart();
}

MenuPlayerWindow::~MenuPlayerWindow() = default;

void MenuPlayerWindow::Restart()
{
    timer_->stop();
    movie_.reset();
    movieFile_.clear();
    events_->clear();
    picture_->SetOverlay({}, {});
    session_ = std::make_unique<MenuSession>(project_.Doc, language_->currentText().toStdString(),
                                             [this](const PlayerEvent& event) { Follow(event); });
    ShowStatus("The remote or the keyboard: arrows, Enter for OK, M for the menu key, T for the title key", false);
    RunCommandCaught(project_.Ask(), [this] { session_->Start(); });
    timer_->start();
}

void MenuPlayerWindow::Press(RemoteKey key)
{
    RunCommandCaught(project_.Ask(), [this, key] { session_->Press(key); });
}

void MenuPlayerWindow::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Up:
        return Press(RemoteKey::Up);
    case Qt::Key_Down:
        return Press(RemoteKey::Down);
    case Qt::Key_Left:
        return Press(RemoteKey::Left);
    case Qt::Key_Right:
        return Press(RemoteKey::Right);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return Press(RemoteKey::Ok);
    case Qt::Key_M:
    case Qt::Key_Home:
        return Press(RemoteKey::Menu);
    case Qt::Key_T:
        return Press(RemoteKey::Title);
    default:
        QDialog::keyPressEvent(event);
    }
}

void MenuPlayerWindow::Follow(const PlayerEvent& event)
{
    using Kind = PlayerEvent::Kind;
    const QString line = QString::fromStdString(DescribeEvent(session_->Graph(), event));
    auto* item = new QListWidgetItem(line, events_);
    if (event.What == Kind::DeadEnd)
        item->setForeground(kDeadEndColor);
    events_->scrollToBottom();
    const MenuGraph& graph = session_->Graph();
    switch (event.What) {
    case Kind::MenuShown:
    case Kind::Looped: {
        const DocNode* menu = graph.Menu(event.MenuID);
        PlayMovie(menu ? graph.BackgroundFile(*menu) : std::string(), event.Frames.Start, event.Frames.End);
        whereText_ = QString::fromStdString(graph.MenuLabel(event.MenuID));
        ShowOverlay();
        break;
    }
    case Kind::ButtonSelected:
        ShowOverlay();
        break;
    case Kind::Play:
        PlayMovie(graph.TitleMovie(event.TitleID), event.Position, event.Frames.End);
        whereText_ = QString::fromStdString(DescribeEvent(graph, event));
        picture_->SetOverlay({}, {});
        break;
    case Kind::Status:
        ShowStatus(line, false);
        break;
    case Kind::DeadEnd:
        ShowStatus(line, true);
        break;
    }
}

void MenuPlayerWindow::ShowStatus(const QString& text, bool deadEnd)
{
    status_->setText(text);
    QPalette palette = status_->palette();
    palette.setColor(QPalette::WindowText, deadEnd ? kDeadEndColor : palette.color(QPalette::Text));
    status_->setPalette(palette);
}

void MenuPlayerWindow::PlayMovie(const std::string& file, long from, long to)
{
    if (file != movieFile_) {
        movie_.reset();
        movieFile_ = file;
        AviCacheScope movies;
        PlayerOpen opened = PlayerOpen::NotFound;
        if (!file.empty())
            movie_ = MoviePlayer::Open(file, [] { return std::chrono::steady_clock::now(); }, DeviceSinks(), opened);
        if (!movie_)
            ShowStatus(QString::fromStdString("the movie \"" + file + "\" cannot be played: its frames go by the clock"),
                       false);
    }
    clock_.start();
    clockFrames_ = 0;
    picture_->SetCaption(movie_ ? QString() : QString::fromStdString(file.empty() ? "no movie" : file));
    if (!movie_) {
        shown_.reset();
        picture_->SetFrame({});
        return;
    }
    const long last = std::max(0L, std::min(to, movie_->LengthFrames()));
    movie_->Play(std::clamp(from, 0L, last), last);
    ShowPicture();
}

void MenuPlayerWindow::ShowPicture()
{
    const std::shared_ptr<const cDIB> frame = movie_ ? movie_->Picture() : nullptr;
    if (frame && frame != shown_)
        picture_->SetFrame(frame->ToImage());
    shown_ = frame;
}

void MenuPlayerWindow::ShowOverlay()
{
    PlayerOverlay overlay;
    if (session_->PlayingTitle() ||
        !PaintButtonOverlay(project_, session_->MenuID(), session_->ButtonID(), overlay)) {
        picture_->SetOverlay({}, {});
        return;
    }
    const ButtonShape& at = overlay.Where;
    picture_->SetOverlay(overlay.Picture.ToImage(true), QRect(int(at.Left), int(at.Top), int(at.Width), int(at.Height)));
}

void MenuPlayerWindow::Advance()
{
    if (session_->MenuID().empty())
        return;
    RunCommandCaught(project_.Ask(), [this] {
        long frames = 0;
        if (movie_) {
            frames = movie_->Position() - session_->Position();
            // A movie that stopped has reached the end of its range, or of the file before it.
            if (movie_->Mode() == PlayerMode::Stopped)
                frames = std::max(frames, session_->Frames().End - session_->Position() + 1);
        } else {
            const qint64 due = qint64(double(clock_.elapsed()) * kClockFps / 1000.0);
            frames = long(due - clockFrames_);
            clockFrames_ = due;
        }
        if (frames > 0)
            session_->Tick(frames);
        ShowPicture();
        where_->setText(QString("%1\nframe %2").arg(whereText_).arg(session_->Position()));
    });
}

void ShowMenuPlayer(Project& project)
{
    MenuPlayerWindow window(project, QApplication::activeWindow());
    LoadTextForDesign(project.Lang(), window);
    window.resize(1100, 680);
    window.exec();
}

} // namespace mw
