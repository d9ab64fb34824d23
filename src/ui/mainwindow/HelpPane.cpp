#include "ui/mainwindow/HelpPane.h"

namespace mw {

HelpPane::HelpPane(const std::filesystem::path& programFolder, QWidget* parent) : TextFormatWidget(parent)
{
    setObjectName("TextFormat1");
    SetProgramFolder(QString::fromStdString(programFolder.string()));
}

void HelpPane::ShowBlock(const std::string& block)
{
    SetText(QString::fromStdString(block));
}

} // namespace mw
