#include "ui/mainwindow/ToolbarIcons.h"

#include <QApplication>
#include <QStyle>

#include <array>
#include <mutex>
#include <optional>

namespace mw {

namespace {

struct IconEntry {
    std::string_view Key;
    const char* ThemeName; // freedesktop name, or nullptr where none fits
    const char* Drawing;   // our own picture under :/icons, or nullptr
    std::optional<QStyle::StandardPixmap> Standard; // the last resort of a theme name
};

constexpr auto kNoStandard = std::nullopt;

const std::array kIcons{
    IconEntry{"newXml", "document-new", nullptr, QStyle::SP_FileIcon},
    IconEntry{"openXml", "document-open", nullptr, QStyle::SP_DialogOpenButton},
    IconEntry{"save", "document-save", nullptr, QStyle::SP_DialogSaveButton},
    IconEntry{"saveAs", "document-save-as", nullptr, QStyle::SP_DialogSaveButton},
    IconEntry{"addTitle", nullptr, "title-add", kNoStandard},
    IconEntry{"addLang", nullptr, "language-add", kNoStandard},
    IconEntry{"addMenu", nullptr, "menu-add", kNoStandard},
    IconEntry{"DivX", nullptr, "divx", kNoStandard},
    IconEntry{"NoCreateOverlays", nullptr, "overlays-keep", kNoStandard},
    IconEntry{"options", "preferences-system", "options", kNoStandard},
    IconEntry{"help", "help-contents", "help", kNoStandard},
    IconEntry{"buttonAdd", nullptr, "button-add", kNoStandard},
    IconEntry{"buttonDel", nullptr, "button-remove", kNoStandard},
    IconEntry{"shapeSelect", nullptr, "overlay", kNoStandard},
    IconEntry{"shapeName", nullptr, "overlay-shape", kNoStandard},
    IconEntry{"shapeLineWidth", nullptr, "line-width", kNoStandard},
    IconEntry{"color1", nullptr, "colour", kNoStandard},
    IconEntry{"color2", nullptr, "colour", kNoStandard},
    IconEntry{"color3", nullptr, "colour", kNoStandard},
    IconEntry{"lock", nullptr, "lock", kNoStandard},
    IconEntry{"previous", nullptr, "frame-previous", kNoStandard},
    IconEntry{"next", nullptr, "frame-next", kNoStandard},
    IconEntry{"play", "media-playback-start", nullptr, QStyle::SP_MediaPlay},
    IconEntry{"stop", "media-playback-stop", nullptr, QStyle::SP_MediaStop},
    IconEntry{"pause", "media-playback-pause", nullptr, QStyle::SP_MediaPause},
    IconEntry{"closemovie", "media-eject", nullptr, QStyle::SP_DialogCloseButton},
    IconEntry{"menuwright", "menuwright", "menuwright", kNoStandard},
};

// Without a desktop session Qt names no theme, or only the bare "hicolor" one, which has
// no tool bar pictures: then the common GNOME theme is asked, where it is installed.
void PickIconTheme()
{
    static std::once_flag once;
    std::call_once(once, [] {
        const QString current = QIcon::themeName();
        if (current.isEmpty() || current == QLatin1String("hicolor"))
            QIcon::setThemeName(QStringLiteral("Adwaita"));
    });
}

} // namespace

QIcon ToolbarIcon(std::string_view key)
{
    PickIconTheme();
    for (const IconEntry& entry : kIcons) {
        if (entry.Key != key)
            continue;
        QIcon fallback;
        if (entry.Drawing)
            fallback = QIcon(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(entry.Drawing)));
        else if (entry.Standard)
            fallback = QApplication::style()->standardIcon(*entry.Standard);
        return entry.ThemeName ? QIcon::fromTheme(QLatin1String(entry.ThemeName), fallback) : fallback;
    }
    return {};
}

} // namespace mw
