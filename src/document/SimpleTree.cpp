#include "document/SimpleTree.h"

#include "core/Text.h"
#include "document/NodeSelection.h"
#include "document/TreeQueries.h"

namespace mw {

namespace {

std::vector<const DocNode*> ChildrenNamed(const DocNode& parent, std::string_view name)
{
    std::vector<const DocNode*> found;
    for (const auto& child : parent) {
        if (child->HasChildren() && EqualsNoCase(child->Text, name))
            found.push_back(child.get());
    }
    return found;
}

SimpleRow Prop(const std::string& text)
{
    return {"", text, "prop", {}};
}

// Audio and subtitle rows of the tracks right under a title or chapter, each type counted on
// its own; a chapter's video track gives its frames.
void AddTrackRows(const DocNode& owner, SimpleRow& row, bool withFrames)
{
    int audio = 0;
    int subtitle = 0;
    for (const DocNode* track : ChildrenNamed(owner, "MediaTrack")) {
        const std::string type = Lower(GetPropertyInNode(*track, "type"));
        const std::string id = GetPropertyInNode(*track, "trackid");
        if (type == "video" && withFrames) {
            row.Children.push_back(Prop("startFrame = " + GetPropertyInNode(*track, "startframe")));
            row.Children.push_back(Prop("endFrame = " + GetPropertyInNode(*track, "endframe")));
        } else if (type == "audio") {
            row.Children.push_back(Prop("Audio " + std::to_string(++audio) + " = " + id));
        } else if (type == "subtitle") {
            row.Children.push_back(Prop("Subtitle " + std::to_string(++subtitle) + " = " + id));
        }
    }
}

SimpleRow TitleRow(const DocTree& tree, const DocNode& title, int number)
{
    const std::string name = TranslationOf(tree, GetPropertyInNode(title, "translationlookupid"));
    SimpleRow row{title.Key(), "Title " + std::to_string(number) + name, "title", {}};
    const auto sources = ChildrenNamed(title, "MediaSource");
    if (!sources.empty())
        row.Children.push_back(Prop("location = " + GetPropertyInNode(*sources.front(), "location")));
    row.Children.push_back(Prop("description = " + name));

    SimpleRow chapters{"", "Chapters", "chapter", {}};
    int chapterNumber = 0;
    for (const DocNode* chapter : ChildrenNamed(title, "Chapter")) {
        SimpleRow chapterRow{chapter->Key(), "Chapter " + std::to_string(++chapterNumber), "chapter", {}};
        AddTrackRows(*chapter, chapterRow, true);
        chapters.Children.push_back(std::move(chapterRow));
    }
    row.Children.push_back(std::move(chapters));
    AddTrackRows(title, row, false);
    return row;
}

SimpleRow LanguageSetRow(const DocNode& set)
{
    SimpleRow row{set.Key(), "Menus (" + GetPropertyInNode(set, "languagecode") + ")", set.Image, {}};
    for (const DocNode* menu : ChildrenNamed(set, "DivXMediaMenu")) {
        SimpleRow menuRow{menu->Key(), MenuCaption(*menu), "menu", {}};
        // A button row carries the button's identifier, which is how a click finds it again.
        for (const DocNode* button : ChildrenNamed(*menu, "ButtonMenu"))
            menuRow.Children.push_back({button->Key(), "Button " + GetPropertyInNode(*button, "objectid"), "button", {}});
        row.Children.push_back(std::move(menuRow));
    }
    return row;
}

} // namespace

std::string TranslationOf(const DocTree& tree, const std::string& lookupId)
{
    const DocNode* lookup = tree.ObjectNode(lookupId);
    if (!lookup)
        return {};
    const auto translations = ChildrenNamed(*lookup, "Translation");
    return translations.empty() ? std::string() : GetPropertyInNode(*translations.front(), "value");
}

std::vector<SimpleRow> LoadToSimple(const DocTree& tree)
{
    std::vector<SimpleRow> rows;
    const DocNode* root = tree.Root();
    if (!root)
        return rows;
    SimpleRow titles{"", "Titles", "titles", {}};
    for (const DocNode* media : ChildrenNamed(*root, "media")) {
        int number = 0;
        for (const DocNode* title : ChildrenNamed(*media, "Title"))
            titles.Children.push_back(TitleRow(tree, *title, ++number));
    }
    rows.push_back(std::move(titles));
    for (const DocNode* set : ChildrenNamed(*root, "LanguageMenus"))
        rows.push_back(LanguageSetRow(*set));
    return rows;
}

std::string SimpleRowTarget(const SimpleRow& row)
{
    if (StartsWithNoCase(row.Text, "menu ") || row.Text.starts_with("Menus"))
        return row.Key;
    if (row.Text.starts_with("Button"))
        return "k" + std::to_string(LeadingNumber(std::string_view(row.Text).substr(6)));
    return {};
}

} // namespace mw
