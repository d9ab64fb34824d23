#include "ui/dialogs/BuildLogWindow.h"

#include "build/CreateDivX.h"
#include "core/CommandGuard.h"
#include "core/settings/clsIniFile.h"
#include "document/Project.h"
#include "ui/dialogs/ToolPathDialog.h"

#include <QDesktopServices>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QMetaObject>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QThread>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

namespace mw {

BuildLogWindow::BuildLogWindow(QWidget* parent)
    : QDialog(parent), lblStep_(new QLabel), ProgressBar1_(new QProgressBar), txtLog_(new QPlainTextEdit),
      cmdCancel_(new QPushButton("Cancel"))
{
    setObjectName("frmBuildLog");
    setWindowTitle("Build log");
    lblStep_->setObjectName("lblStep");
    ProgressBar1_->setObjectName("ProgressBar1");
    ProgressBar1_->setRange(0, 0);
    txtLog_->setObjectName("txtLog");
    txtLog_->setReadOnly(true);
    txtLog_->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtLog_->setFont(QFont("Monospace"));
    cmdCancel_->setObjectName("cmdCancel");
    connect(cmdCancel_, &QPushButton::clicked, this, &BuildLogWindow::cmdCancel_Click);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblStep_);
    layout->addWidget(ProgressBar1_);
    layout->addWidget(txtLog_, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdCancel_);
    layout->addLayout(buttons);
    resize(640, 400);
}

void BuildLogWindow::InWindow(std::function<void()> change)
{
    QMetaObject::invokeMethod(this, std::move(change), Qt::AutoConnection);
}

void BuildLogWindow::Finished()
{
    InWindow([this] {
        running_ = false;
        cmdCancel_->setText("Close");
    });
}

void BuildLogWindow::Step(const std::string& text)
{
    InWindow([this, step = QString::fromStdString(text)] { lblStep_->setText(step); });
}

void BuildLogWindow::Progress(int done, int total)
{
    InWindow([this, done, total] {
        ProgressBar1_->setRange(0, total);
        ProgressBar1_->setValue(done);
    });
}

void BuildLogWindow::Line(const std::string& text)
{
    InWindow([this, line = QString::fromLocal8Bit(text.c_str())] { txtLog_->appendPlainText(line); });
}

void BuildLogWindow::ShowTextFile(const std::filesystem::path& file)
{
    InWindow([this, name = QString::fromStdString(file.string())] {
        QFile log(name);
        txtLog_->appendPlainText("----- " + name + " -----");
        if (log.open(QIODevice::ReadOnly))
            txtLog_->appendPlainText(QString::fromLocal8Bit(log.readAll()));
        show();
        raise();
    });
}

void BuildLogWindow::OpenResult(const std::filesystem::path& file)
{
    InWindow([name = QString::fromStdString(file.string())] { QDesktopServices::openUrl(QUrl::fromLocalFile(name)); });
}

void BuildLogWindow::reject()
{
    if (running_) {
        cmdCancel_Click();
        return;
    }
    QDialog::reject();
}

void BuildLogWindow::cmdCancel_Click()
{
    if (running_ && cancel_) {
        cancel_();
        return;
    }
    close();
}

void WaitInThreadOf(QObject* context, const std::function<void()>& call)
{
    if (QThread::currentThread() == context->thread())
        call();
    else
        QMetaObject::invokeMethod(context, call, Qt::BlockingQueuedConnection);
}

namespace {

// The interface's prompt for a build in another thread: each call waits for the user there.
class PromptInWindowThread : public Prompt {
    template <typename Call>
    auto Answer(Call call) -> decltype(call())
    {
        decltype(call()) answer{};
        WaitInThreadOf(window_, [&] { answer = call(); });
        return answer;
    }

public:
    PromptInWindowThread(QObject* window, Prompt& prompt) : window_(window), prompt_(prompt) {}

    void Message(const std::string& text, const std::string& title, PromptIcon icon) override
    {
        WaitInThreadOf(window_, [&] { prompt_.Message(text, title, icon); });
    }
    PromptAnswer Ask(const std::string& text, PromptButtons buttons, PromptAnswer defaultAnswer,
                     const std::string& title, PromptIcon icon) override
    {
        return Answer([&] { return prompt_.Ask(text, buttons, defaultAnswer, title, icon); });
    }
    std::optional<std::string> Input(const std::string& text, const std::string& title,
                                     const std::string& defaultValue) override
    {
        return Answer([&] { return prompt_.Input(text, title, defaultValue); });
    }
    std::vector<std::string> OpenFiles(const FileDialogRequest& request) override
    {
        return Answer([&] { return prompt_.OpenFiles(request); });
    }
    std::optional<std::string> SaveFile(const FileDialogRequest& request) override
    {
        return Answer([&] { return prompt_.SaveFile(request); });
    }
    std::optional<std::string> PickFolder(const std::string& text) override
    {
        return Answer([&] { return prompt_.PickFolder(text); });
    }
    std::optional<std::uint32_t> PickColor(std::uint32_t initial) override
    {
        return Answer([&] { return prompt_.PickColor(initial); });
    }
    std::optional<FontChoice> PickFont(const FontChoice& initial) override
    {
        return Answer([&] { return prompt_.PickFont(initial); });
    }
    void Progress(const ProgressChannel& channel, const std::string& text) override
    {
        WaitInThreadOf(window_, [&] { prompt_.Progress(channel, text); });
    }

private:
    QObject* window_;
    Prompt& prompt_;
};

} // namespace

BuildEnd RunBuildWithLogWindow(QWidget* parent, Prompt& prompt,
                               const std::function<BuildEnd(Prompt&, ToolRunner&, BuildLog&)>& build)
{
    BuildLogWindow window(parent);
    window.setModal(true);
    ToolRunner runner;
    window.SetCancel([&runner] { runner.Cancel(); });
    PromptInWindowThread asked(&window, prompt);
    BuildEnd end = BuildEnd::Failed;
    // What the build throws is told as any command's error, not left to end the program.
    QThread* worker =
        QThread::create([&] { RunCommandCaught(asked, [&] { end = build(asked, runner, window); }); });
    QObject::connect(worker, &QThread::finished, &window, [&window] { window.Finished(); });
    worker->start();
    window.exec();
    worker->wait();
    delete worker;
    return end;
}

BuildEnd RunDivXBuild(QWidget* window, Project& project)
{
    // The build changes the tree for a moment (the project copy), so nothing may read it here.
    const QSignalBlocker noAutoSave(window->findChild<QTimer*>("tmrAutoSave"));
    window->setUpdatesEnabled(false);
    clsIniFile ini(SettingsFilePath(project.ProgramFolder()).string());
    DivXBuild build = BuildOfProject(project);
    build.LocateTool = [&](int method) {
        ToolAnswer answer;
        WaitInThreadOf(window, [&] { answer = AskForTool(method, project.Values(), ini, project.Ask(), window); });
        return answer;
    };
    const BuildEnd end = RunBuildWithLogWindow(window, project.Ask(), [&](Prompt& prompt, ToolRunner& runner, BuildLog& log) {
        return mnuCreateDivX_Click(build, prompt, runner, log);
    });
    window->setUpdatesEnabled(true);
    return end;
}

void StartWithLogWindow(QWidget* parent, const std::function<bool(ToolRunner&, BuildLog&)>& command)
{
    auto* window = new BuildLogWindow(parent);
    window->setAttribute(Qt::WA_DeleteOnClose);
    ToolRunner runner;
    const bool started = command(runner, *window);
    window->Finished();
    if (started)
        window->close();
    else
        window->show();
}

} // namespace mw
