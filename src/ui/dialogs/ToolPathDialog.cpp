#include "ui/dialogs/ToolPathDialog.h"

#include "core/Prompt.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace mw {

const ToolPathKind kCliPathKind{"frmCliPath", "cli.exe", "Locate file cli.exe", "cli.exe|cli.exe", &Settings::cliPath,
                                &SaveCliPath};
const ToolPathKind kVirtualDubPathKind{"frmVirtualDubPath", "VirtualDubMod.exe", "Locate file VirtualDubMod.exe",
                                       "VirtualDubMod.exe|VirtualDubMod.exe", &Settings::virtualDubPath,
                                       &SaveVirtualDubPath};

ToolPathDialog::ToolPathDialog(const ToolPathKind& kind, Settings& settings, clsIniFile& ini, Prompt& prompt,
                               QWidget* parent)
    : QDialog(parent), kind_(kind), settings_(settings), ini_(ini), prompt_(prompt), Text1_(new QLineEdit)
{
    setObjectName(kind.FormName);
    setWindowTitle(kind.DialogTitle);
    Text1_->setObjectName("Text1");
    Text1_->setText(QString::fromStdString(settings.*kind.Path));

    auto* label = new QLabel(QString("Please locate the file %1:").arg(kind.FileName));
    label->setObjectName("Label1");
    auto* command1 = new QPushButton("Browse...");
    command1->setObjectName("Command1");
    connect(command1, &QPushButton::clicked, this, &ToolPathDialog::Command1_Click);
    auto* ok = new QPushButton("OK");
    ok->setObjectName("OKButton");
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &ToolPathDialog::OKButton_Click);
    auto* cancel = new QPushButton("Cancel");
    cancel->setObjectName("CancelButton");
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    auto* pathRow = new QHBoxLayout;
    pathRow->addWidget(Text1_, 1);
    pathRow->addWidget(command1);
    layout->addLayout(pathRow);
    auto* buttons = new QHBoxLayout;
    auto* builtIn = new QPushButton("Use the built-in encoder instead");
    builtIn->setObjectName("cmdBuiltIn");
    connect(builtIn, &QPushButton::clicked, this, &ToolPathDialog::cmdBuiltIn_Click);
    buttons->addWidget(builtIn);
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    layout->addLayout(buttons);
}

void ToolPathDialog::Command1_Click()
{
    FileDialogRequest request;
    request.Title = kind_.DialogTitle;
    request.Filter = kind_.Filter;
    request.FileName = Text1_->text().toStdString();
    const std::vector<std::string> files = prompt_.OpenFiles(request);
    if (!files.empty() && !files.front().empty())
        Text1_->setText(QString::fromStdString(files.front()));
}

void ToolPathDialog::OKButton_Click()
{
    kind_.Save(settings_, Text1_->text().toStdString(), ini_);
    accept();
}

ToolAnswer AskForTool(int method, Settings& settings, clsIniFile& ini, Prompt& prompt, QWidget* parent)
{
    const ToolPathKind& kind = method == kPicToMenuCli ? kCliPathKind : kVirtualDubPathKind;
    ToolPathDialog dialog(kind, settings, ini, prompt, parent);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    return {true, settings.MethodForPicToMenu == kPicToMenuBuiltIn, settings.*kind.Path};
}

void ToolPathDialog::cmdBuiltIn_Click()
{
    settings_.MethodForPicToMenu = kPicToMenuBuiltIn;
    SaveOptions(settings_, ini_);
    accept();
}

} // namespace mw
