#include "document/UndoHistory.h"
#include "document/TreeQueries.h"

#include "core/Text.h"
#include "document/MenuTrackList.h"
#include "document/ObjectIds.h"
#include "document/Project.h"
#include "document/TreeViewToXml.h"
#include "document/XmlToTreeView.h"

#include <unordered_set>
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

// The children of MenuTracks that rows below `top` name as background or overlay, with the
// sources of those tracks.
std::unordered_set<const DocNode*> TracksReferredBy(const DocTree& tree, const DocNode& top, const DocNode& tracks)
{
    std::unordered_set<const DocNode*> found;
    const auto keep = [&](const std::string& id) -> const DocNode* {
        const DocNode* node = id.empty() ? nullptr : tree.ObjectNode(id);
        if (!node || node->Parent() != &tracks)
            return nullptr;
        found.insert(node);
        return node;
    };
    const auto walk = [&](auto&& self, const DocNode& node) -> void {
        for (const auto& child : node) {
            if (child->HasChildren()) {
                self(self, *child);
                continue;
            }
            const std::string name = Lower(RowName(child->Text));
            if (name != "backgroundvideoid" && name != "backgroundaudioid" && name != "overlayid")
                continue;
            if (const DocNode* track = keep(RowValue(child->Text)))
                keep(GetPropertyInNode(*track, "mediasourceid"));
        }
    };
    walk(walk, top);
    return found;
}

// The child of MenuTracks that holds the node, or nullptr when the node is not below MenuTracks.
const DocNode* TrackOf(const DocNode* node, const DocNode& tracks)
{
    while (node && node->Parent() != &tracks)
        node = node->Parent();
    return node;
}

bool Within(const DocNode* node, const DocNode* top)
{
    for (; node; node = node->Parent()) {
        if (node == top)
            return true;
    }
    return false;
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

bool TakeUndoSnapshot(Document& doc, const std::string& objectID, const std::string& shownMenuID,
                      UndoSnapshot& snapshot, KeptTracks keptTracks)
{
    DocTree& tree = doc.Tree;
    DocNode* node = tree.ObjectNode(objectID);
    DocNode* tracks = MenuTracksOf(tree);
    if (!node || !tracks || !node->Parent())
        return false;
    UndoSnapshot taken;
    taken.MenuXml = NodeToXmlString(*node);
    taken.MenuParentKey = node->Parent()->Key();
    taken.CurrentMenuKey = node->Key();
    taken.MenuPosition = node->PositionInParent();
    taken.ShownMenuID = shownMenuID;
    taken.SelectedKey = SelectionKey(tree.Selected());
    taken.MenuTracksKey = tracks->Key();
    taken.FirstNewID = doc.NextObjectID;
    if (taken.MenuXml.empty() || taken.MenuParentKey.empty() || taken.MenuTracksKey.empty())
        return false;
    const std::unordered_set<const DocNode*> kept =
        keptTracks == KeptTracks::Referred ? TracksReferredBy(tree, *node, *tracks) : std::unordered_set<const DocNode*>{};
    for (const auto& child : *tracks) {
        if (!kept.contains(child.get()))
            continue;
        const DocNode* next = child->Next();
        while (next && (kept.contains(next) || next->Key().empty()))
            next = next->Next();
        taken.Tracks.push_back({NodeToXmlString(*child), next ? next->Key() : std::string()});
        if (taken.Tracks.back().Xml.empty())
            return false;
    }
    snapshot = std::move(taken);
    return true;
}

bool RestoreUndoSnapshot(Document& doc, const UndoSnapshot& snapshot, Prompt& prompt)
{
    DocTree& tree = doc.Tree;
    DocNode* menuParent = tree.Find(snapshot.MenuParentKey);
    DocNode* tracks = tree.Find(snapshot.MenuTracksKey);
    if (!menuParent || !tracks)
        return false;
    DocNode* menu = tree.Find(snapshot.CurrentMenuKey);

    // Every piece read aside first: they must parse, and each objectID in them may only be taken
    // by a node that the restore takes away, so that nothing is removed before it is sure to succeed.
    Document aside;
    DocNode& holder = aside.Tree.Add(nullptr, Relationship::Last, "", "aside", "");
    std::vector<XmlPiece> pieces{{snapshot.MenuXml, &holder, Relationship::Child}};
    for (const TrackPiece& piece : snapshot.Tracks)
        pieces.push_back({piece.Xml, &holder, Relationship::Child});
    if (!LoadXmlStrings(pieces, aside, prompt))
        return false;
    std::unordered_set<const DocNode*> replaced;
    for (const auto& child : *tracks) {
        const std::string id = IdOfKey(child->Key());
        if (!id.empty() && (LeadingNumber(id) >= snapshot.FirstNewID || aside.Tree.Find(child->Key())))
            replaced.insert(child.get());
    }
    // Only objectID keys ("k") can meet: the other keys are counted on above the tree's.
    bool free = true;
    aside.Tree.ForEach([&](DocNode& node) {
        const DocNode* taken = node.Key().starts_with('k') ? tree.Find(node.Key()) : nullptr;
        if (taken && !Within(taken, menu) && !replaced.contains(TrackOf(taken, *tracks)))
            free = false;
    });
    if (!free)
        return false;

    const bool menuInPlace = menu && menu->Parent() == menuParent;
    const std::size_t menuAt = menuInPlace ? menu->PositionInParent() : snapshot.MenuPosition;
    if (menu)
        tree.Remove(*menu);
    for (const DocNode* track : replaced)
        tree.Remove(*const_cast<DocNode*>(track));
    const Place menuPlace = PlaceOf(*menuParent, menuAt);
    pieces = {{snapshot.MenuXml, menuPlace.Relative, menuPlace.How}};
    for (const TrackPiece& piece : snapshot.Tracks) {
        DocNode* next = piece.NextKey.empty() ? nullptr : tree.Find(piece.NextKey);
        const bool before = next && next->Parent() == tracks;
        pieces.push_back({piece.Xml, before ? next : tracks, before ? Relationship::Previous : Relationship::Child});
    }
    if (!LoadXmlStrings(pieces, doc, prompt))
        return false;
    DocNode* selected = tree.Find(snapshot.SelectedKey);
    tree.Select(selected ? selected : tree.Find(snapshot.CurrentMenuKey));
    return true;
}

void Project::UndoAdd()
{
    // With no menu on the canvas there is nothing a menu command could change.
    if (!Canvas.CurrentMenuID.empty())
        UndoAddFor(Canvas.CurrentMenuID, KeptTracks::Referred);
}

void Project::UndoAddFor(const std::string& objectID, KeptTracks kept)
{
    UndoSnapshot snapshot;
    if (TakeUndoSnapshot(Doc, objectID, Canvas.CurrentMenuID, snapshot, kept))
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
    if (last->ShownMenuID.empty() || !Doc.Tree.ObjectNode(last->ShownMenuID))
        Canvas.Forget();
    else
        Canvas.CurrentMenuID = last->ShownMenuID;
    LoadMediaTracsFromMenuTracs(Doc, Doc.MenuTracks);
    MarkDirty();
    Commands.mnuUndo = !Undo.Empty();
}

} // namespace mw
