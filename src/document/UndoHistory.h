#pragma once

#include "core/Prompt.h"
#include "document/Document.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <string>

namespace mw {

// What one undo step brings back: the menu on the canvas and MenuTracks as XML, where each of
// them hangs, the selected node and the menu that was on the canvas.
struct UndoSnapshot {
    std::string MenuXml;
    std::string MenuTracksXml;
    std::string MenuParentKey;       // the menu's LanguageMenus
    std::string MenuTracksParentKey; // Media
    std::string SelectedKey;
    std::string CurrentMenuKey;
    // Their places among their siblings, for when the nodes themselves are gone.
    std::size_t MenuPosition = 0;
    std::size_t MenuTracksPosition = 0;
};

// The last snapshots, oldest first. When full, a new one pushes the oldest out.
class UndoHistory {
public:
    static constexpr std::size_t kDepth = 8;

    void Push(UndoSnapshot snapshot);
    std::optional<UndoSnapshot> Pop();
    void Clear() { snapshots_.clear(); }
    // How many snapshots are held (UndoTop).
    std::size_t Count() const { return snapshots_.size(); }
    bool Empty() const { return snapshots_.empty(); }

private:
    std::deque<UndoSnapshot> snapshots_;
};

// Takes the snapshot of the menu with the given identifier. False when the menu, MenuTracks or
// a parent of theirs cannot be found or written.
bool TakeUndoSnapshot(DocTree& tree, const std::string& currentMenuID, UndoSnapshot& snapshot);

// Replaces the menu and MenuTracks by the snapshot's, each in the place its node holds (so the
// menu keeps its place among the menus of its language), and selects the stored node. False
// when a parent is gone or a piece cannot be read back; both are checked before anything is
// removed, so a refused snapshot leaves the tree as it was.
bool RestoreUndoSnapshot(Document& doc, const UndoSnapshot& snapshot, Prompt& prompt);

} // namespace mw
