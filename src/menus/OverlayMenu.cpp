#include "menus/OverlayMenu.h"

#include "core/Text.h"

#include <algorithm>
#include <system_error>

namespace fs = std::filesystem;

namespace mw {

namespace {

// The captions of the folder's bitmaps, or one disabled "No overlays".
std::vector<OverlayMenuItem> BitmapItems(const fs::path& folder)
{
    std::vector<std::string> names;
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        const std::string name = it->path().filename().string();
        if (it->is_regular_file(ec) && EndsWithNoCase(name, ".bmp"))
            names.push_back(name.substr(0, name.size() - 4));
    }
    std::sort(names.begin(), names.end());
    std::vector<OverlayMenuItem> items;
    for (std::string& name : names)
        items.push_back({std::move(name), true});
    if (items.empty())
        items.push_back({"No overlays", false});
    return items;
}

// The name without a trailing ".bmp", lowered.
std::string ItemName(std::string name)
{
    if (EndsWithNoCase(name, ".bmp"))
        name.erase(name.size() - 4);
    return Lower(name);
}

int FindItem(const std::vector<OverlayMenuItem>& items, const std::string& name)
{
    const std::string wanted = ItemName(name);
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i].Enabled && Lower(items[i].Caption) == wanted)
            return static_cast<int>(i);
    }
    return -1;
}

} // namespace

void LoadOverlaysToMenu(const fs::path& overlaysFolder, OverlayMenus& menus, Prompt& prompt)
{
    std::vector<std::string> folders;
    std::error_code ec;
    for (fs::directory_iterator it(overlaysFolder, ec), end; !ec && it != end; it.increment(ec)) {
        if (it->is_directory(ec))
            folders.push_back(it->path().filename().string());
    }
    std::sort(folders.begin(), folders.end());
    if (folders.size() > kOverlayFolderMenus) {
        prompt.Message("Only 7 sub folders are supported inside overlays folder. Others will be ignored");
        folders.resize(kOverlayFolderMenus);
    }
    for (std::size_t i = 0; i < menus.Folders.size(); ++i) {
        OverlayFolderMenu& menu = menus.Folders[i];
        menu = {};
        if (i < folders.size())
            menu = {folders[i], true, BitmapItems(overlaysFolder / folders[i])};
    }
    menus.Top = BitmapItems(overlaysFolder);
    menus.Checked = {};
}

OverlayCheck SetOverlayCheckItem(const OverlayMenus& menus, const std::string& name)
{
    using In = OverlayCheck::In;
    if (const std::size_t slash = name.find('\\'); slash != std::string::npos) {
        for (std::size_t f = 0; f < menus.Folders.size(); ++f) {
            if (!menus.Folders[f].Visible || !EqualsNoCase(menus.Folders[f].Caption, name.substr(0, slash)))
                continue;
            const int item = FindItem(menus.Folders[f].Items, name.substr(slash + 1));
            return item < 0 ? OverlayCheck{} : OverlayCheck{In::Folder, static_cast<int>(f), item};
        }
        return {};
    }
    if (name.starts_with('*')) {
        for (std::size_t i = 0; i < kSpecialOverlays.size(); ++i) {
            if (ItemName(name) == Lower(kSpecialOverlays[i]))
                return {In::Special, -1, static_cast<int>(i)};
        }
        return {};
    }
    const int item = FindItem(menus.Top, name);
    return item < 0 ? OverlayCheck{} : OverlayCheck{In::Top, -1, item};
}

} // namespace mw
