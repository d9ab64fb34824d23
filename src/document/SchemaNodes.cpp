#include "document/SchemaNodes.h"
#include "document/TreeQueries.h"

#include "core/Text.h"

namespace mw {

namespace {

DocNode& RootOf(const Document& doc)
{
    DocNode* root = doc.Tree.Root();
    if (!root)
        throw DocTreeError("the document has no root");
    return *root;
}

} // namespace

DocNode& AddObjectNode(DocTree& tree, DocNode& parent, long id, const std::string& text, const std::string& kind)
{
    const std::string number = std::to_string(id);
    DocNode& node = tree.AddChild(parent, "k" + number, text, kind);
    tree.AddChild(node, "", "objectID = " + number, "objectid");
    return node;
}

DocNode& AddNextObjectNode(Document& doc, DocNode& parent, const std::string& text, const std::string& kind)
{
    DocNode& node = AddObjectNode(doc.Tree, parent, doc.NextObjectID, text, kind);
    ++doc.NextObjectID;
    return node;
}

DocNode& AddPropRow(DocTree& tree, DocNode& element, const std::string& name, const std::string& value)
{
    return tree.AddChild(element, "", name + " = " + value, "prop");
}

DocNode& AddTranslationLookup(DocTree& tree, DocNode& table, long lookupId, const std::string& languageCode,
                              const std::string& value)
{
    DocNode& lookup = AddObjectNode(tree, table, lookupId, "TranslationLookup", "translookup");
    DocNode& translation = AddObjectNode(tree, lookup, lookupId + 1, "Translation", "trans");
    AddPropRow(tree, translation, "languageCode", languageCode);
    AddPropRow(tree, translation, "value", value);
    return lookup;
}

DocNode& CreateLanguageMenusNode(Document& doc, const std::string& languageCode)
{
    DocNode& set = AddNextObjectNode(doc, RootOf(doc), "LanguageMenus", "menulang");
    AddPropRow(doc.Tree, set, "languageCode", languageCode);
    AddPropRow(doc.Tree, set, "startingMenuID", "none");
    AddPropRow(doc.Tree, set, "rootMenuID", "none");
    return set;
}

DocNode& GetOrCreateTransNode(Document& doc)
{
    DocNode& root = RootOf(doc);
    if (DocNode* table = ChildNamed(&root, "TranslationTable"))
        return *table;
    return AddNextObjectNode(doc, root, "TranslationTable", "transtable");
}

DocNode& GetMenuTracksOrCreate(Document& doc)
{
    DocNode& root = RootOf(doc);
    DocNode* media = ChildNamed(&root, "Media");
    if (!media)
        media = &AddNextObjectNode(doc, root, "Media", "media");
    if (DocNode* tracks = ChildNamed(media, "MenuTracks"))
        return *tracks;
    return AddNextObjectNode(doc, *media, "MenuTracks", "menutracks");
}

} // namespace mw
