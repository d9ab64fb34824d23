#include "ui/dialogs/BuildLogWindow.h"

#include <QDesktopServices>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QMetaObject>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
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

void BuildLogWindow::cmdCancel_Click()
{
    if (running_ && cancel_) {
        cancel_();
        return;
    }
    close();
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
