#include "menus/MenuCommands.h"

#include "core/Text.h"
#include "document/ObjectIds.h"
#include "document/Project.h"
#include "document/TreeQueries.h"

namespace mw {

namespace {

bool IsMenu(const DocNode& node)
{
    return EqualsNoCase(node.Text, "DivXMediaMenu");
}

std::vector<DocNode*> MenusOf(const DocNode& language)
{
    std::vector<DocNode*> menus;
    for (const auto& child : language) {
        if (IsMenu(*child))
            menus.push_back(child.get());
    }
    return menus;
}

// The source of a track, as its mediaSourceID row names it; empty when the track is gone.
std::string SourceOfTrack(const DocTree& tree, const std::string& trackID)
{
    const DocNode* track = tree.ObjectNode(trackID);
    return track ? GetPropertyInNode(*track, "mediasource") : std::string();
}

// Removes a track of the menu from the tree and from the list of menu tracks; returns its
// source. A reference to anything but a MediaTrack outside the menu's own branch removes nothing.
std::string RemoveTrack(Document& doc, const std::string& trackID, const DocNode& menu)
{
    const DocNode* track = doc.Tree.ObjectNode(trackID);
    std::string source = track ? GetPropertyInNode(*track, "mediasource") : "";
    if (!RemoveReferenced(doc.Tree, trackID, "MediaTrack", &menu))
        return "";
    doc.MenuTracks.Remove(trackID);
    return source;
}

} // namespace

DocNode* IsLanguageMenusThere(const DocTree& tree, const std::string& languageCode)
{
    const DocNode* root = tree.Root();
    if (!root)
        return nullptr;
    for (const auto& child : *root) {
        if (EqualsNoCase(child->Text, "LanguageMenus") &&
            EqualsNoCase(GetPropertyInNode(*child, "languagecode"), languageCode))
            return child.get();
    }
    return nullptr;
}

std::vector<std::string> LoadAllMenus(const DocTree& tree, const std::string& languageCode)
{
    std::vector<std::string> ids;
    const DocNode* root = tree.Root();
    if (!root)
        return ids;
    for (const auto& child : *root) {
        if (!EqualsNoCase(child->Text, "LanguageMenus") ||
            Lower(GetPropertyInNode(*child, "languagecode")) != languageCode)
            continue;
        for (const DocNode* menu : MenusOf(*child))
            ids.push_back(GetPropertyInNode(*menu, "objectid"));
        break;
    }
    return ids;
}

std::string MenuCommentText(const std::string& name, const std::string& type)
{
    return " -> Menu" + (name.empty() ? std::string() : " " + name) + " (" + type + ")";
}

void DeleteMenu(Project& project, const std::string& menuID)
{
    Document& doc = project.Doc;
    DocTree& tree = doc.Tree;
    DocNode* menu = tree.ObjectNode(menuID);
    if (!menu || !IsMenu(*menu) || !menu->Parent())
        return;
    project.UndoAdd();
    DocNode& language = *menu->Parent();

    if (DocNode* before = menu->Previous(); before && before->Image == "comment")
        tree.Remove(*before);

    // Gathered first: a damaged file's overlay may stand among the menu's own children.
    std::vector<std::string> overlays;
    for (const auto& child : *menu) {
        if (EqualsNoCase(child->Text, "ButtonMenu"))
            overlays.push_back(GetPropertyInNode(*child, "overlayid"));
    }
    for (const std::string& overlay : overlays)
        RemoveTrack(doc, overlay, *menu);
    const std::string videoSource = RemoveTrack(doc, GetPropertyInNode(*menu, "backgroundvideoid"), *menu);
    const std::string audioSource = RemoveTrack(doc, GetPropertyInNode(*menu, "backgroundaudioid"), *menu);

    // Only the menus of the same language are asked whether they still use a source.
    bool videoSourceUsed = false;
    bool audioSourceUsed = false;
    for (const DocNode* other : MenusOf(language)) {
        if (other == menu)
            continue;
        for (const char* row : {"backgroundvideoid", "backgroundaudioid"}) {
            const std::string source = SourceOfTrack(tree, GetPropertyInNode(*other, row));
            if (source.empty())
                continue;
            videoSourceUsed = videoSourceUsed || source == videoSource;
            audioSourceUsed = audioSourceUsed || source == audioSource;
        }
    }
    if (!videoSourceUsed)
        RemoveReferenced(tree, videoSource, "MediaSource", menu);
    if (!audioSourceUsed)
        RemoveReferenced(tree, audioSource, "MediaSource", menu);

    if (GetPropertyInNode(language, "startingmenuid") == menuID) {
        std::string next = "none";
        for (const DocNode* other : MenusOf(language)) {
            if (other != menu) {
                next = GetPropertyInNode(*other, "objectid");
                break;
            }
        }
        UpdatePropertyInNode(tree, language, "startingMenuID", next, true);
    }

    tree.Remove(*menu);
    project.Canvas.Forget();
    project.MarkDirty();
}

} // namespace mw
