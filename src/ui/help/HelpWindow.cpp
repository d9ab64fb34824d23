#include "ui/help/HelpWindow.h"

#include "core/settings/Settings.h"
#include "core/settings/clsIniFile.h"
#include "ui/QtDesignTarget.h"
#include "ui/dialogs/NamedControls.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>
#include <QTextBlock>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace mw {

namespace {

constexpr const char* kContents = "contents";

// The anchors a document defines, to tell the topics it has.
QSet<QString> AnchorsOf(const QTextDocument& document)
{
    QSet<QString> anchors;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            for (const QString& name : it.fragment().charFormat().anchorNames())
                anchors.insert(name);
        }
    }
    return anchors;
}

// F1 opens the help at the topic of the window it was pressed in.
class HelpKey : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1)
            return false;
        auto* widget = qobject_cast<QWidget*>(receiver);
        if (!widget)
            return false;
        ShowHelp(widget->window()->objectName());
        return true;
    }
};

// One help for the program, tied to the main window that handed it over.
struct HelpSource {
    QPointer<QWidget> MainWindow;
    std::filesystem::path ProgramFolder;
    const LangDoc* Lang = nullptr;
    Settings* Values = nullptr;
    QPointer<HelpWindow> Window;
};

HelpSource& Source()
{
    static HelpSource source;
    return source;
}

} // namespace

std::filesystem::path HelpFilePath(const std::filesystem::path& programFolder)
{
    return programFolder / "help" / "Menuwright.html";
}

HelpWindow::HelpWindow(const std::filesystem::path& file, QWidget* parent)
    : QWidget(parent, Qt::Window), browser_(new QTextBrowser)
{
    setObjectName("frmHelp");
    setWindowTitle("Menuwright help");
    browser_->setObjectName("Browser");
    browser_->setOpenExternalLinks(true);

    auto* contents = NamedButton("cmdContents", "Contents");
    auto* back = NamedButton("cmdBack", "< Back");
    auto* forward = NamedButton("cmdForward", "Forward >");
    back->setEnabled(false);
    forward->setEnabled(false);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(contents);
    buttons->addWidget(back);
    buttons->addWidget(forward);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(buttons);
    layout->addWidget(browser_);
    resize(640, 720);

    connect(contents, &QPushButton::clicked, this, [this] { ShowTopic(kContents); });
    connect(back, &QPushButton::clicked, browser_, &QTextBrowser::backward);
    connect(forward, &QPushButton::clicked, browser_, &QTextBrowser::forward);
    connect(browser_, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);

    std::error_code ec;
    if (!std::filesystem::is_regular_file(file, ec)) {
        browser_->setPlainText(QString("The help file %1 was not found.").arg(QString::fromStdString(file.string())));
        return;
    }
    browser_->setSource(QUrl::fromLocalFile(QString::fromStdString(file.string())));
    anchors_ = AnchorsOf(*browser_->document());
}

void HelpWindow::ShowTopic(const QString& topic)
{
    if (anchors_.isEmpty())
        return;
    QUrl url = browser_->source();
    url.setFragment(anchors_.contains(topic) ? topic : kContents);
    if (url == browser_->source())
        browser_->scrollToAnchor(url.fragment());
    else
        browser_->setSource(url);
}

QString HelpWindow::Topic() const
{
    return browser_->source().fragment();
}

void HelpWindow::SetOnTop(bool onTop)
{
    if (onTop == windowFlags().testFlag(Qt::WindowStaysOnTopHint))
        return;
    const bool shown = isVisible();
    setWindowFlag(Qt::WindowStaysOnTopHint, onTop);
    // A window whose flags change is hidden until shown again.
    if (shown)
        show();
}

void ConnectHelp(QWidget& mainWindow, const std::filesystem::path& programFolder, const LangDoc& lang,
                 Settings& settings, QAction& mnuHelpHelp, QAction& mnuHelpOnTop)
{
    HelpSource& source = Source();
    delete source.Window;
    source = HelpSource{&mainWindow, programFolder, &lang, &settings, nullptr};
    qApp->installEventFilter(new HelpKey(&mainWindow));

    QObject::connect(&mnuHelpHelp, &QAction::triggered, &mainWindow, [] { ShowHelp(); });
    mnuHelpOnTop.setCheckable(true);
    mnuHelpOnTop.setChecked(settings.HelpOnTop);
    QObject::connect(&mnuHelpOnTop, &QAction::toggled, &mainWindow, [](bool onTop) {
        HelpSource& help = Source();
        if (!help.Values)
            return;
        clsIniFile ini(SettingsFilePath(help.ProgramFolder).string());
        SaveHelpOnTop(*help.Values, onTop, ini);
        if (help.Window)
            help.Window->SetOnTop(onTop);
    });
}

void ShowHelp(const QString& topic)
{
    HelpSource& source = Source();
    if (!source.MainWindow)
        return;
    // A help opened from a modal window belongs to it, or the modal window would block it.
    QWidget* owner = QApplication::activeModalWidget();
    if (!owner)
        owner = source.MainWindow;
    if (!source.Window)
        source.Window = new HelpWindow(HelpFilePath(source.ProgramFolder), owner);
    else if (source.Window->parentWidget() != owner)
        source.Window->setParent(owner, source.Window->windowFlags());
    // The language may have changed since the window was made.
    LoadTextForDesign(*source.Lang, *source.Window);
    source.Window->SetOnTop(source.Values->HelpOnTop);
    source.Window->ShowTopic(topic);
    source.Window->show();
    source.Window->raise();
    source.Window->activateWindow();
}

HelpWindow* OpenHelpWindow()
{
    HelpWindow* window = Source().Window;
    return window && window->isVisible() ? window : nullptr;
}

QPushButton* HelpButton(QWidget& window)
{
    auto* button = NamedButton("cmdHelp", "Help");
    QObject::connect(button, &QPushButton::clicked, &window, [&window] { ShowHelp(window.objectName()); });
    return button;
}

} // namespace mw
