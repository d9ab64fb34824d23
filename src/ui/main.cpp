#include "core/ProgramFolder.h"
#include "core/ProgramStart.h"
#include "core/Version.h"
#include "ui/QtFormHost.h"
#include "ui/QtPrompt.h"
#include "ui/mainwindow/Form1.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(mw::kAppTitle);
    QApplication::setApplicationVersion(mw::kVersionText);

    mw::ProgramState program(mw::ResolveProgramFolder(mw::ExecutablePath()));
    mw::StartProgram(program);
    mw::QtPrompt prompt;
    mw::QtFormHost forms;
    mw::Form1 window(program, prompt, forms);
    prompt.SetParent(&window);
    forms.Attach(window.CurrentProject(), &window);
    window.show();
    window.OpenNickFile();
    return QApplication::exec();
}
