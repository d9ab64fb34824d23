#pragma once

#include "document/Document.h"

#include <string>
#include <vector>

namespace mw {

// A row of the action dialog's title list: the movie, the title and its source.
struct TitleListRow {
    std::string Path;
    std::string TitleID;
    std::string SourceID;
};

// A row of the action dialog's menu list, keyed "k" and the menu's identifier.
struct MenuListRow {
    std::string Key;
    std::string MenuType;
    std::string MenuName;
    std::string LanguageCode;
    std::string MenuID;
};

struct TitlesAndMenus {
    std::vector<TitleListRow> lstTitles;
    std::vector<MenuListRow> lstMenus;
};

// The titles of Media with their movies made absolute, and the menus of every language.
TitlesAndMenus LoadTitlesInForm(const Document& doc);

} // namespace mw
