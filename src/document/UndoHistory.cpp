#include "document/UndoHistory.h"
#include "document/TreeQueries.h"

#include "core/Text.h"
#include "document/MenuTrackList.h"
#include "document/Project.h"
#include "document/TreeViewToXml.h"
#include "document/XmlToTreeView.h"

#include <utility>

namespace mw {

namespace {

DocNode* MenuTracksOf(const DocTree& tree)
{
    return ChildNamed(ChildNamed(tree.Root(), "Media"), "MenuTracks");
}

// A row has no key; the element it belongs to stands for it.
std::string SelectionKey(const DocNode* selected)
{
    if (selected && selected->Key().empty() && selected->Parent())
        return selected->Parent()->Key();
    return selected ? selected->Key() : std::string();
}

} // namespace

void UndoHistory::Push(UndoSnapshot snapshot)
{
    if (snapshots_.size() == kDepth)
        snapshots_.pop_front();
    snapshots_.push_back(std::move(snapshot));
}

std::optional<UndoSnapshot> UndoHistory::Pop()
{
    if (snapshots_.empty())
        return std::nullopt;
    UndoSnapshot last = std::move(snapshots_.back());
    snapshots_.pop_back();
    return last;
}

bool TakeUndoSnapshot(DocTree& tree, const std::string& currentMenuID, UndoSnapshot& snapshot)
{
    DocNode* menu = tree.ObjectNode(currentMenuID);
    DocNode* tracks = MenuTracksOf(tree);
    if (!menu || !tracks || !menu->Parent() || !tracks->Parent())
        return false;
    UndoSnapshot taken;
    taken.MenuXml = NodeToXmlString(*menu);
    taken.MenuTracksXml = NodeToXmlString(*tracks);
    taken.MenuParentKey = menu->Parent()->Key();
    taken.MenuTracksParentKey = tracks->Parent()->Key();
    taken.SelectedKey = SelectionKey(tree.Selected());
    taken.CurrentMenuKey = menu->Key();
    taken.MenuPosition = menu->PositionInParent();
    taken.MenuTracksPosition = tracks->PositionInParent();
    if (taken.MenuXml.empty() || taken.MenuTracksXml.empty() || taken.MenuParentKey.empty() ||
        taken.MenuTracksParentKey.empty())
        return false;
    snapshot = std::move(taken);
    return true;
}

namespace {

// Both pieces read aside: they must parse, and each objectID in them may only be taken by the
// node they replace, so that nothing is removed before the restore is sure to succeed.
bool PiecesReadBack(const Document& doc, const UndoSnapshot& snapshot, const DocNode* menu, const DocNode* tracks,
                    Prompt& prompt)
{
    Document aside;
    DocNode& holder = aside.Tree.Add(nullptr, Relationship::Last, "", "aside", "");
    if (!LoadXmlString(snapshot.MenuXml, aside, &holder, Relationship::Child, prompt) ||
        !LoadXmlString(snapshot.MenuTracksXml, aside, &holder, Relationship::Child, prompt))
        return false;
    const auto within = [](const DocNode* node, const DocNode* top) {
        for (; node; node = node->Parent()) {
            if (node == top)
                return true;
        }
        return false;
    };
    // Only objectID keys ("k") can meet: the other keys are counted on above the tree's.
    bool free = true;
    aside.Tree.ForEach([&](DocNode& node) {
        const DocNode* taken = node.Key().starts_with('k') ? doc.Tree.Find(node.Key()) : nullptr;
        if (taken && !within(taken, menu) && !within(taken, tracks))
            free = false;
    });
    return free;
}

// Where a piece goes back: where its node stands now, else where it stood when it was kept,
// else at the end of its parent.
struct Place {
    DocNode* Relative;
    Relationship How;
};

Place PlaceOf(DocNode& parent, std::size_t position)
{
    if (position < parent.ChildCount())
        return {parent.Child(position), Relationship::Previous};
    return {&parent, Relationship::Child};
}

} // namespace

bool RestoreUndoSnapshot(Document& doc, const UndoSnapshot& snapshot, Prompt& prompt)
{
    DocTree& tree = doc.Tree;
    DocNode* menuParent = tree.Find(snapshot.MenuParentKey);
    DocNode* tracksParent = tree.Find(snapshot.MenuTracksParentKey);
    if (!menuParent || !tracksParent)
        return false;
    DocNode* menu = tree.Find(snapshot.CurrentMenuKey);
    DocNode* tracks = MenuTracksOf(tree);
    if (!PiecesReadBack(doc, snapshot, menu, tracks, prompt))
        return false;
    const bool menuInPlace = menu && menu->Parent() == menuParent;
    const bool tracksInPlace = tracks && tracks->Parent() == tracksParent;
    const std::size_t menuAt = menuInPlace ? menu->PositionInParent() : snapshot.MenuPosition;
    const std::size_t tracksAt = tracksInPlace ? tracks->PositionInParent() : snapshot.MenuTracksPosition;
    if (menu)
        tree.Remove(*menu);
    if (tracks)
        tree.Remove(*tracks);
    const Place menuPlace = PlaceOf(*menuParent, menuAt);
    if (!LoadXmlString(snapshot.MenuXml, doc, menuPlace.Relative, menuPlace.How, prompt))
        return false;
    const Place tracksPlace = PlaceOf(*tracksParent, tracksAt);
    if (!LoadXmlString(snapshot.MenuTracksXml, doc, tracksPlace.Relative, tracksPlace.How, prompt))
        return false;
    DocNode* selected = tree.Find(snapshot.SelectedKey);
    tree.Select(selected ? selected : tree.Find(snapshot.CurrentMenuKey));
    return true;
}

void Project::UndoAdd()
{
    // With no menu on the canvas there is nothing a menu command could change.
    if (Canvas.CurrentMenuID.empty())
        return;
    UndoSnapshot snapshot;
    if (TakeUndoSnapshot(Doc.Tree, Canvas.CurrentMenuID, snapshot))
        Undo.Push(std::move(snapshot));
    else
        prompt_.Message("Error in undo");
    Commands.mnuUndo = !Undo.Empty();
}

void Project::UndoDo()
{
    std::optional<UndoSnapshot> last = Undo.Pop();
    if (!last) {
        Commands.mnuUndo = false;
        return;
    }
    if (!RestoreUndoSnapshot(Doc, *last, prompt_)) {
        prompt_.Message("Error trying to undo");
        ClearUndo();
        return;
    }
    Canvas.CurrentMenuID = last->CurrentMenuKey.substr(1);
    LoadMediaTracsFromMenuTracs(Doc, Doc.MenuTracks);
    MarkDirty();
    Commands.mnuUndo = !Undo.Empty();
}

} // namespace mw
