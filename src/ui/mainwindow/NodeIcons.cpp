#include "ui/mainwindow/NodeIcons.h"

#include "ui/mainwindow/ToolbarIcons.h"

#include <QHash>

#include <array>
#include <string_view>
#include <utility>

namespace mw {

namespace {

constexpr auto kNoStandard = std::nullopt;
constexpr IconSource kVideo{"video-x-generic", nullptr, QStyle::SP_FileIcon};
constexpr IconSource kAudio{"audio-x-generic", nullptr, QStyle::SP_FileIcon};
constexpr IconSource kText{"text-x-generic", nullptr, QStyle::SP_FileIcon};
constexpr IconSource kButton{nullptr, "button", kNoStandard};
constexpr IconSource kNode{nullptr, "node", kNoStandard};

const std::array<std::pair<std::string_view, IconSource>, 22> kKinds{{
    {"titles", {"folder-videos", nullptr, QStyle::SP_DirIcon}},
    {"media", {"folder-videos", nullptr, QStyle::SP_DirIcon}},
    {"title", kVideo},
    {"movie", kVideo},
    {"movielink", kVideo},
    {"audiolink", kAudio},
    {"menutracks", kAudio},
    {"sublink", kText},
    {"text", kText},
    {"comment", kText},
    {"trans", kText},
    {"translookup", kText},
    {"transtable", {"accessories-dictionary", nullptr, QStyle::SP_FileDialogDetailedView}},
    {"menulang", {"preferences-desktop-locale", "language", kNoStandard}},
    {"menu", {nullptr, "menu", kNoStandard}},
    {"button", kButton},
    {"menurect", kButton},
    {"chapter", {nullptr, "chapter", kNoStandard}},
    {"action", {nullptr, "action", kNoStandard}},
    {"prop", {nullptr, "property", kNoStandard}},
    {"objectid", {nullptr, "objectid", kNoStandard}},
    {"node", kNode},
}};

} // namespace

QIcon NodeIcon(const std::string& kind)
{
    // The tree asks for every row it paints: each kind's picture is loaded once.
    static QHash<QString, QIcon> icons;
    const QString key = QString::fromStdString(kind);
    if (const auto found = icons.constFind(key); found != icons.constEnd())
        return *found;
    IconSource source = kNode;
    for (const auto& [name, known] : kKinds) {
        if (name == kind)
            source = known;
    }
    return *icons.insert(key, LoadIcon(source));
}

} // namespace mw
