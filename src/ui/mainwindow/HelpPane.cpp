#include "ui/mainwindow/HelpPane.h"

#include "i18n/TextFormatParser.h"

namespace mw {

HelpPane::HelpPane(QWidget* parent) : QPlainTextEdit(parent)
{
    setObjectName("TextFormat1");
    setReadOnly(true);
}

void HelpPane::ShowBlock(const std::string& block)
{
    const ParsedText parsed = ParseTextFormat(block, FormatMethod::Brackets);
    setPlainText(QString::fromStdString(CopyText(parsed, 0, parsed.Source.size())));
}

} // namespace mw
