#include "ui/QtPrompt.h"

#include "core/Version.h"
#include "ui/QtColor.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QFontDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QStringList>

namespace mw {

namespace {

QString Q(const std::string& text) { return QString::fromStdString(text); }

QString TitleOr(const std::string& title) { return Q(title.empty() ? std::string(kAppTitle) : title); }

QMessageBox::Icon BoxIcon(PromptIcon icon)
{
    switch (icon) {
    case PromptIcon::Information:
        return QMessageBox::Information;
    case PromptIcon::Warning:
        return QMessageBox::Warning;
    case PromptIcon::Critical:
        return QMessageBox::Critical;
    case PromptIcon::Question:
        return QMessageBox::Question;
    case PromptIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButton BoxButton(PromptAnswer answer)
{
    switch (answer) {
    case PromptAnswer::Ok:
        return QMessageBox::Ok;
    case PromptAnswer::Cancel:
        return QMessageBox::Cancel;
    case PromptAnswer::Yes:
        return QMessageBox::Yes;
    case PromptAnswer::No:
        return QMessageBox::No;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButtons BoxButtons(PromptButtons buttons)
{
    switch (buttons) {
    case PromptButtons::Ok:
        return QMessageBox::Ok;
    case PromptButtons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case PromptButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case PromptButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

// Where a file dialog opens: the file name inside the initial folder, when both are given.
QString StartPath(const FileDialogRequest& request)
{
    if (request.InitialDir.empty())
        return Q(request.FileName);
    if (request.FileName.empty())
        return Q(request.InitialDir);
    return Q(request.InitialDir) + "/" + Q(request.FileName);
}

} // namespace

QString QtFileFilter(const std::string& filter)
{
    const QStringList parts = Q(filter).split('|');
    QStringList entries;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString patterns = parts[i + 1];
        patterns.replace(';', ' ');
        entries << parts[i] + " (" + patterns.simplified() + ")";
    }
    return entries.join(";;");
}

void QtPrompt::Message(const std::string& text, const std::string& title, PromptIcon icon)
{
    QMessageBox box(BoxIcon(icon), TitleOr(title), Q(text), QMessageBox::Ok, parent_);
    box.exec();
}

PromptAnswer QtPrompt::Ask(const std::string& text, PromptButtons buttons, PromptAnswer defaultAnswer,
                           const std::string& title, PromptIcon icon)
{
    QMessageBox box(BoxIcon(icon), TitleOr(title), Q(text), BoxButtons(buttons), parent_);
    box.setDefaultButton(BoxButton(defaultAnswer));
    switch (box.exec()) {
    case QMessageBox::Ok:
        return PromptAnswer::Ok;
    case QMessageBox::Yes:
        return PromptAnswer::Yes;
    case QMessageBox::No:
        return PromptAnswer::No;
    default:
        return PromptAnswer::Cancel;
    }
}

std::optional<std::string> QtPrompt::Input(const std::string& text, const std::string& title,
                                           const std::string& defaultValue)
{
    bool ok = false;
    const QString value =
        QInputDialog::getText(parent_, TitleOr(title), Q(text), QLineEdit::Normal, Q(defaultValue), &ok);
    if (!ok)
        return std::nullopt;
    return value.toStdString();
}

std::vector<std::string> QtPrompt::OpenFiles(const FileDialogRequest& request)
{
    QStringList chosen;
    if (request.MultiSelect) {
        chosen = QFileDialog::getOpenFileNames(parent_, Q(request.Title), StartPath(request),
                                               QtFileFilter(request.Filter));
    } else if (QString one = QFileDialog::getOpenFileName(parent_, Q(request.Title), StartPath(request),
                                                            QtFileFilter(request.Filter));
               !one.isEmpty()) {
        chosen << one;
    }
    std::vector<std::string> files;
    for (const QString& file : chosen)
        files.push_back(file.toStdString());
    return files;
}

std::optional<std::string> QtPrompt::SaveFile(const FileDialogRequest& request)
{
    QFileDialog dialog(parent_, Q(request.Title), StartPath(request), QtFileFilter(request.Filter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(Q(request.DefaultExt));
    if (!request.OverwritePrompt)
        dialog.setOption(QFileDialog::DontConfirmOverwrite);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().front().toStdString();
}

std::optional<std::string> QtPrompt::PickFolder(const std::string& text)
{
    const QString folder = QFileDialog::getExistingDirectory(parent_, Q(text));
    if (folder.isEmpty())
        return std::nullopt;
    return folder.toStdString();
}

std::optional<std::uint32_t> QtPrompt::PickColor(std::uint32_t initial)
{
    const QColor color = QColorDialog::getColor(ToQColor(initial), parent_);
    if (!color.isValid())
        return std::nullopt;
    return FromQColor(color);
}

std::optional<FontChoice> QtPrompt::PickFont(const FontChoice& initial)
{
    QFont start(Q(initial.Family));
    if (initial.Size > 0)
        start.setPointSizeF(initial.Size);
    start.setBold(initial.Bold);
    start.setItalic(initial.Italic);
    bool ok = false;
    const QFont font = QFontDialog::getFont(&ok, start, parent_);
    if (!ok)
        return std::nullopt;
    return FontChoice{font.family().toStdString(), font.pointSizeF(), font.bold(), font.italic()};
}

void QtPrompt::Progress(const ProgressChannel& channel, const std::string& text)
{
    if (progress_)
        progress_(channel, text);
}

} // namespace mw
