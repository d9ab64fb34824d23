#include "media/LoadTitlesInForm.h"

#include "core/Text.h"
#include "document/TreeQueries.h"
#include "media/TitleNodes.h"

namespace mw {

TitlesAndMenus LoadTitlesInForm(const Document& doc)
{
    TitlesAndMenus lists;
    for (const DocNode* title : TitleNodes(doc)) {
        TitleListRow row;
        row.TitleID = ObjectIdOf(*title);
        if (const DocNode* source = MediaSourceOf(*title)) {
            row.Path = TitleFile(doc, *title);
            row.SourceID = ObjectIdOf(*source);
        }
        lists.lstTitles.push_back(std::move(row));
    }

    const DocNode* root = doc.Tree.Root();
    if (!root)
        return lists;
    for (const auto& language : *root) {
        if (!EqualsNoCase(language->Text, "LanguageMenus"))
            continue;
        const std::string code = GetPropertyInNode(*language, "languagecode");
        for (const auto& menu : *language) {
            if (!EqualsNoCase(menu->Text, "DivXMediaMenu"))
                continue;
            const std::string id = ObjectIdOf(*menu);
            lists.lstMenus.push_back(
                {"k" + id, GetPropertyInNode(*menu, "menutype"), GetPropertyInNode(*menu, "menuname"), code, id});
        }
    }
    return lists;
}

} // namespace mw
