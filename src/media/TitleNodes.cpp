#include "media/TitleNodes.h"

#include "core/Paths.h"
#include "core/Text.h"
#include "document/ObjectIds.h"
#include "document/TreeQueries.h"
#include "media/StreamLanguage.h"

namespace mw {

DocNode* FindMediaNode(const Document& doc)
{
    const DocNode* root = doc.Tree.Root();
    if (!root)
        return nullptr;
    for (const auto& child : *root) {
        if (Lower(child->Text) == "media")
            return child.get();
    }
    return nullptr;
}

std::vector<DocNode*> TitleNodes(const Document& doc)
{
    std::vector<DocNode*> titles;
    if (const DocNode* media = FindMediaNode(doc)) {
        for (const auto& child : *media) {
            if (IsTitleNode(child.get()))
                titles.push_back(child.get());
        }
    }
    return titles;
}

bool IsTitleNode(const DocNode* node)
{
    return node && node->HasChildren() && EqualsNoCase(node->Text, "Title");
}

DocNode* MediaSourceOf(const DocNode& title)
{
    for (const auto& child : title) {
        if (EqualsNoCase(child->Text, "MediaSource"))
            return child.get();
    }
    return nullptr;
}

std::string TitleFile(const Document& doc, const DocNode& title)
{
    const DocNode* source = MediaSourceOf(title);
    if (!source)
        return "";
    return ResolveLocation(doc.ProjectFile, GetPropertyInNode(*source, "location"));
}

std::string ObjectIdOf(const DocNode& node)
{
    return GetPropertyInNode(node, "objectID");
}

std::string TrackLanguage(const std::string& strn, const std::string& defLang)
{
    std::string code = StreamLanguageCode(strn);
    return code.empty() ? defLang : code;
}

void RemoveLookups(DocTree& tree, const std::vector<std::string>& ids, const DocNode* inUse)
{
    for (const std::string& id : ids)
        RemoveReferenced(tree, id, "TranslationLookup", inUse);
}

void RemoveOwnTracks(DocTree& tree, DocNode& title)
{
    std::vector<std::string> lookups;
    std::vector<DocNode*> tracks;
    for (const auto& child : title) {
        if (EqualsNoCase(child->Text, "MediaTrack")) {
            lookups.push_back(GetPropertyInNode(*child, "translationlookupid"));
            tracks.push_back(child.get());
        }
    }
    for (DocNode* track : tracks)
        tree.Remove(*track);
    RemoveLookups(tree, lookups, &title);
}

} // namespace mw
