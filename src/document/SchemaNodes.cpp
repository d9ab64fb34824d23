#include "document/SchemaNodes.h"
#include "document/ObjectIds.h"
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
    return AddObjectNode(doc.Tree, parent, TakeObjectID(doc), text, kind);
}

DocNode& AddPropRow(DocTree& tree, DocNode& element, const std::string& name, const std::string& value)
{
    return tree.AddChild(element, "", name + " = " + value, "prop");
}

long AddTranslationLookup(Document& doc, DocNode& table, const std::string& languageCode, const std::string& value)
{
    const long id = TakeObjectID(doc);
    DocNode& lookup = AddObjectNode(doc.Tree, table, id, "TranslationLookup", "translookup");
    DocNode& translation = AddNextObjectNode(doc, lookup, "Translation", "trans");
    AddPropRow(doc.Tree, translation, "languageCode", languageCode);
    AddPropRow(doc.Tree, translation, "value", value);
    return id;
}

std::string TrackNodeKind(const std::string& type)
{
    const std::string lowered = Lower(type);
    if (lowered == "video")
        return "movielink";
    if (lowered == "audio")
        return "audiolink";
    if (lowered == "subtitle")
        return "sublink";
    return "node";
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
