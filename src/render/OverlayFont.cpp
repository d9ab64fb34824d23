#include "render/OverlayFont.h"

#include "core/NumberText.h"

#include <QGuiApplication>

#include <algorithm>
#include <string>

namespace mw {

FontChoice FontFromAttribute(std::string_view font, double pointSize)
{
    FontChoice choice;
    const std::string_view flags = font.substr(std::min(font.find(','), font.size()));
    choice.Family = std::string(font.substr(0, font.size() - flags.size()));
    choice.Bold = flags.find(",B") != std::string_view::npos;
    choice.Italic = flags.find(",I") != std::string_view::npos;
    choice.Size = pointSize;
    return choice;
}

QFont OverlayFont(const FontChoice& font)
{
    NeedFontApplication();
    QFont qfont(QString::fromStdString(font.Family));
    qfont.setStyleHint(QFont::SansSerif, QFont::NoAntialias);
    qfont.setPixelSize(std::max(1, int(RoundHalfEven(font.Size * 96 / 72))));
    qfont.setBold(font.Bold);
    qfont.setItalic(font.Italic);
    return qfont;
}

void NeedFontApplication()
{
    if (QGuiApplication::instance() != nullptr)
        return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "menuwright";
    static char* argv[] = {name, nullptr};
    static QGuiApplication app(argc, argv);
}

} // namespace mw
