#pragma once

#include <QSet>
#include <QWidget>

#include <filesystem>

class QAction;
class QPushButton;
class QTextBrowser;

namespace mw {

class LangDoc;
struct Settings;

// The program's help in a program folder.
std::filesystem::path HelpFilePath(const std::filesystem::path& programFolder);

// The help file with its contents, back and forward. Topics are the file's anchors, most of them
// named after the window they tell of.
class HelpWindow : public QWidget {
public:
    explicit HelpWindow(const std::filesystem::path& file, QWidget* parent = nullptr);

    // A topic the file lacks shows the contents.
    void ShowTopic(const QString& topic);
    QString Topic() const;
    void SetOnTop(bool onTop);

private:
    QTextBrowser* browser_;
    QSet<QString> anchors_;
};

// The main window hands over where the help is, the language its buttons speak and the settings
// that keep it on top, ties the help window to itself, makes F1 open the help in every window, and
// wires its two entries.
void ConnectHelp(QWidget& mainWindow, const std::filesystem::path& programFolder, const LangDoc& lang,
                 Settings& settings, QAction& mnuHelpHelp, QAction& mnuHelpOnTop);

// Opens the one help window at a topic; empty for the contents.
void ShowHelp(const QString& topic = {});
// The help window while it is open.
HelpWindow* OpenHelpWindow();

// A window's local Help button: the help at the window's topic, its object name, as F1 does.
QPushButton* HelpButton(QWidget& window);

} // namespace mw
