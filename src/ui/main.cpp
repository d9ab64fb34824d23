#include "core/ProgramFolder.h"
#include "core/Version.h"
#include "document/ProgramStart.h"
#include "ui/QtFormHost.h"
#include "ui/QtPrompt.h"
#include "ui/mainwindow/Form1.h"

#include <QApplication>

#include <filesystem>
#include <system_error>

namespace {

// An installed program finds what it ships (the language file, the demo) below its prefix.
std::filesystem::path ShippedResources(const std::filesystem::path& executable)
{
    const std::filesystem::path folder = (executable.parent_path() / MENUWRIGHT_SHIPPED_DIR).lexically_normal();
    std::error_code ec;
    return std::filesystem::is_directory(folder, ec) ? folder : std::filesystem::path();
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(mw::kAppTitle);
    QApplication::setApplicationVersion(mw::kVersionText);
    // Ties the windows to menuwright.desktop, whose icon the desktop then shows.
    QApplication::setDesktopFileName(QStringLiteral("menuwright"));

    const std::filesystem::path executable = mw::ExecutablePath();
    mw::ProgramState program(
        mw::ResolveProgramFolder(executable, mw::ProgramEnvironment::FromProcess(), ShippedResources(executable)));
    mw::StartProgram(program);
    mw::QtPrompt prompt;
    mw::QtFormHost forms;
    mw::Form1 window(program, prompt, forms);
    prompt.SetParent(&window);
    prompt.SetProgressSink(
        [&window](const mw::ProgressChannel& channel, const std::string& text) { window.ShowProgress(channel, text); });
    forms.Attach(window.CurrentProject(), &window);
    window.show();
    window.OpenStartProject();
    return QApplication::exec();
}
