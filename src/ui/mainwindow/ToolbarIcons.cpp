#include "ui/mainwindow/ToolbarIcons.h"

#include <QApplication>
#include <QStandardPaths>

#include <array>
#include <mutex>
#include <utility>

namespace mw {

namespace {

constexpr auto kNoStandard = std::nullopt;

const std::array<std::pair<std::string_view, IconSource>, 27> kIcons{{
    {"newXml", {"document-new", nullptr, QStyle::SP_FileIcon}},
    {"openXml", {"document-open", nullptr, QStyle::SP_DialogOpenButton}},
    {"save", {"document-save", nullptr, QStyle::SP_DialogSaveButton}},
    {"saveAs", {"document-save-as", nullptr, QStyle::SP_DialogSaveButton}},
    {"addTitle", {nullptr, "title-add", kNoStandard}},
    {"addLang", {nullptr, "language-add", kNoStandard}},
    {"addMenu", {nullptr, "menu-add", kNoStandard}},
    {"DivX", {nullptr, "divx", kNoStandard}},
    {"NoCreateOverlays", {nullptr, "overlays-keep", kNoStandard}},
    {"options", {"preferences-system", "options", kNoStandard}},
    {"help", {"help-contents", "help", kNoStandard}},
    {"buttonAdd", {nullptr, "button-add", kNoStandard}},
    {"buttonDel", {nullptr, "button-remove", kNoStandard}},
    {"shapeSelect", {nullptr, "overlay", kNoStandard}},
    {"shapeName", {nullptr, "overlay-shape", kNoStandard}},
    {"shapeLineWidth", {nullptr, "line-width", kNoStandard}},
    {"color1", {nullptr, "colour", kNoStandard}},
    {"color2", {nullptr, "colour", kNoStandard}},
    {"color3", {nullptr, "colour", kNoStandard}},
    {"lock", {nullptr, "lock", kNoStandard}},
    {"previous", {nullptr, "frame-previous", kNoStandard}},
    {"next", {nullptr, "frame-next", kNoStandard}},
    {"play", {"media-playback-start", nullptr, QStyle::SP_MediaPlay}},
    {"stop", {"media-playback-stop", nullptr, QStyle::SP_MediaStop}},
    {"pause", {"media-playback-pause", nullptr, QStyle::SP_MediaPause}},
    {"closemovie", {"media-eject", nullptr, QStyle::SP_DialogCloseButton}},
    {"menuwright", {"menuwright", "menuwright", kNoStandard}},
}};

// Without a desktop session Qt names no theme, or only the bare "hicolor" one, which has
// no tool bar pictures: then the common GNOME theme is asked, where it is installed. Some
// platforms (offscreen) do not even search the system's icon folders.
void PickIconTheme()
{
    static std::once_flag once;
    std::call_once(once, [] {
        const QString current = QIcon::themeName();
        if (!current.isEmpty() && current != QLatin1String("hicolor"))
            return;
        QStringList paths = QIcon::themeSearchPaths();
        for (const QString& folder : QStandardPaths::locateAll(QStandardPaths::GenericDataLocation,
                                                               QStringLiteral("icons"), QStandardPaths::LocateDirectory)) {
            if (!paths.contains(folder))
                paths.append(folder);
        }
        QIcon::setThemeSearchPaths(paths);
        QIcon::setThemeName(QStringLiteral("Adwaita"));
    });
}

} // namespace

QIcon LoadIcon(const IconSource& source)
{
    PickIconTheme();
    QIcon fallback;
    if (source.Drawing)
        fallback = QIcon(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(source.Drawing)));
    else if (source.Standard)
        fallback = QApplication::style()->standardIcon(*source.Standard);
    return source.ThemeName ? QIcon::fromTheme(QLatin1String(source.ThemeName), fallback) : fallback;
}

QIcon ToolbarIcon(std::string_view key)
{
    for (const auto& [name, source] : kIcons) {
        if (name == key)
            return LoadIcon(source);
    }
    return {};
}

} // namespace mw
