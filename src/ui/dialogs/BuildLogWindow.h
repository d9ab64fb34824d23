#pragma once

#include "build/BuildLog.h"
#include "build/MuxScripts.h"

#include <QDialog>

#include <functional>

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

namespace mw {

class Project;

// The "normal window" of the outside tools: their output line by line, the step under way and
// a progress bar. Cancel stops the running tool; once the work has ended it closes the window.
// The build may call it from its own thread: every call is carried over to the window's.
class BuildLogWindow : public QDialog, public BuildLog {
    Q_OBJECT
public:
    explicit BuildLogWindow(QWidget* parent = nullptr);

    // What Cancel does while the work runs (ToolRunner::Cancel).
    void SetCancel(std::function<void()> cancel) { cancel_ = std::move(cancel); }
    // The work has ended: Cancel becomes Close.
    void Finished();

    void Step(const std::string& text) override;
    void Progress(int done, int total) override;
    void Line(const std::string& text) override;
    void ShowTextFile(const std::filesystem::path& file) override;
    void OpenResult(const std::filesystem::path& file) override;

    // While the work runs, closing the window (Escape, its title bar) cancels the work instead.
    void reject() override;

private:
    void cmdCancel_Click();
    void InWindow(std::function<void()> change);

    QLabel* lblStep_;
    QProgressBar* ProgressBar1_;
    QPlainTextEdit* txtLog_;
    QPushButton* cmdCancel_;
    std::function<void()> cancel_;
    bool running_ = true;
};

// Runs the call in the thread of `context` and waits for it; at once when already there.
void WaitInThreadOf(QObject* context, const std::function<void()>& call);

// Runs a build off the interface thread with this window showing its steps, its progress by
// menu and the tools' output. The window is modal, so the document is not edited meanwhile;
// the build's questions and messages come up through `prompt` in the interface thread. Returns
// how the build ended once the user has closed the window.
BuildEnd RunBuildWithLogWindow(QWidget* parent, Prompt& prompt,
                               const std::function<BuildEnd(Prompt&, ToolRunner&, BuildLog&)>& build);

// F12: the build of the window's project, the dialogs that ask for a missing tool over the
// window. The window neither paints nor auto-saves the project meanwhile.
BuildEnd RunDivXBuild(QWidget* window, Project& project);

// Starts an outside program by `command` with a runner of its own. The log window shows itself
// only when the start failed, with the lines that say how to start it by hand.
void StartWithLogWindow(QWidget* parent, const std::function<bool(ToolRunner&, BuildLog&)>& command);

} // namespace mw
