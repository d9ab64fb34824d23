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
    if (taken.MenuXml.empty() || taken.MenuTracksXml.empty() || taken.MenuParentKey.empty() ||
        taken.MenuTracksParentKey.empty())
        return false;
    snapshot = std::move(taken);
    return true;
}

bool RestoreUndoSnapshot(Document& doc, const UndoSnapshot& snapshot, Prompt& prompt)
{
    DocTree& tree = doc.Tree;
    DocNode* menuParent = tree.Find(snapshot.MenuParentKey);
    DocNode* tracksParent = tree.Find(snapshot.MenuTracksParentKey);
    if (!menuParent || !tracksParent)
        return false;
    if (DocNode* menu = tree.Find(snapshot.CurrentMenuKey))
        tree.Remove(*menu);
    if (DocNode* tracks = MenuTracksOf(tree))
        tree.Remove(*tracks);
    if (!LoadXmlString(snapshot.MenuXml, doc, menuParent, Relationship::Child, prompt) ||
        !LoadXmlString(snapshot.MenuTracksXml, doc, tracksParent, Relationship::Child, prompt))
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
