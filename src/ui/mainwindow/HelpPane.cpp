#include "ui/mainwindow/HelpPane.h"

namespace mw {

HelpPane::HelpPane(QWidget* parent) : TextFormatWidget(parent)
{
    setObjectName("TextFormat1");
}

void HelpPane::ShowBlock(const std::string& block)
{
    SetText(QString::fromStdString(block));
}

} // namespace mw
